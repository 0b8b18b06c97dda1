#pragma once

#include <QtGlobal>

#include <chrono>

/// Tells when a picture is due. The first one starts the clock, on a grid of 40 ms common to all sources:
/// pictures of many sources then come in bursts, and a window repaints once for all of them.
class Pacer
{
public:
    using Clock = std::chrono::steady_clock;

    /// When the picture at `pts` (microseconds) is to be shown. After a jump, and when the picture is late by
    /// more than half a second, the clock starts anew from `now`.
    Clock::time_point due(qint64 pts, Clock::time_point now);
    /// The next picture starts the clock anew.
    void reset() { m_running = false; }

private:
    bool m_running = false;
    qint64 m_firstPts = 0;
    qint64 m_lastPts = 0;
    Clock::time_point m_start;
};
