#pragma once

#include <QSize>

#include <vector>

struct Frame;

/// Tells whether something moves, from a few thousand points of a picture against a background that follows
/// slowly. It takes two looks to begin and two quiet seconds to end; a clock in the picture is too small to
/// count.
class MotionDetector
{
public:
    /// What the picture tells, as of its wallMs; pictures closer than a fifth of a second are not looked at.
    bool look(const Frame& frame);

private:
    void start(const Frame& frame);
    double changedShare(const Frame& frame);
    int brightness(const Frame& frame, size_t point) const;

    QSize m_size;
    int m_columns = 0;
    int m_step = 1;
    std::vector<int> m_background; ///< in sixteenths
    qint64 m_lastLookMs = 0;
    qint64 m_lastBusyMs = 0;
    int m_busyLooks = 0;
    bool m_isMoving = false;
};
