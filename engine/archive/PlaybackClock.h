#pragma once

#include <QtGlobal>

#include <chrono>
#include <mutex>

/// The moment that players in step show: a place in recorded time, milliseconds since 1970, that runs at a
/// speed. Any thread.
class PlaybackClock
{
public:
    using Clock = std::chrono::steady_clock;

    static constexpr int NormalSpeed = 1024;
    static constexpr int SlowestSpeed = NormalSpeed / 8;
    static constexpr int FastestSpeed = NormalSpeed * 8;

    /// Stands still at first.
    explicit PlaybackClock(qint64 positionMs = 0) : m_baseMs(positionMs), m_baseTime(Clock::now()) {}

    qint64 position(Clock::time_point now = Clock::now()) const;
    void setPosition(qint64 ms, Clock::time_point now = Clock::now());
    void setRunning(bool running, Clock::time_point now = Clock::now());
    bool isRunning() const;
    /// 1024 is normal; brought into the range of an eighth to eight times that.
    void setSpeed(int speed, Clock::time_point now = Clock::now());
    int speed() const;
    /// Whether it runs towards what was before; at first it doesn't.
    void setBackward(bool backward, Clock::time_point now = Clock::now());
    bool isBackward() const;

    /// When the clock will be at a place, as it runs now; while it stands still, as if it ran from `now`.
    Clock::time_point timeOf(qint64 ms, Clock::time_point now = Clock::now()) const;

private:
    qint64 positionLocked(Clock::time_point now) const;

    mutable std::mutex m_mutex;
    qint64 m_baseMs;
    Clock::time_point m_baseTime;
    int m_speed = NormalSpeed;
    bool m_running = false;
    bool m_backward = false;
};
