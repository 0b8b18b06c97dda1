#include "archive/PlaybackClock.h"

qint64 PlaybackClock::position(Clock::time_point now) const
{
    const std::lock_guard lock(m_mutex);
    return positionLocked(now);
}

void PlaybackClock::setPosition(qint64 ms, Clock::time_point now)
{
    const std::lock_guard lock(m_mutex);
    m_baseMs = ms;
    m_baseTime = now;
}

void PlaybackClock::setRunning(bool running, Clock::time_point now)
{
    const std::lock_guard lock(m_mutex);
    m_baseMs = positionLocked(now);
    m_baseTime = now;
    m_running = running;
}

bool PlaybackClock::isRunning() const
{
    const std::lock_guard lock(m_mutex);
    return m_running;
}

void PlaybackClock::setSpeed(int speed, Clock::time_point now)
{
    const std::lock_guard lock(m_mutex);
    m_baseMs = positionLocked(now);
    m_baseTime = now;
    m_speed = qBound(SlowestSpeed, speed, FastestSpeed);
}

int PlaybackClock::speed() const
{
    const std::lock_guard lock(m_mutex);
    return m_speed;
}

void PlaybackClock::setBackward(bool backward, Clock::time_point now)
{
    const std::lock_guard lock(m_mutex);
    m_baseMs = positionLocked(now);
    m_baseTime = now;
    m_backward = backward;
}

bool PlaybackClock::isBackward() const
{
    const std::lock_guard lock(m_mutex);
    return m_backward;
}

PlaybackClock::Clock::time_point PlaybackClock::timeOf(qint64 ms, Clock::time_point now) const
{
    const std::lock_guard lock(m_mutex);
    const qint64 ahead = (ms - positionLocked(now)) * (m_backward ? -1 : 1);
    return now + std::chrono::microseconds(ahead * 1000 * NormalSpeed / m_speed);
}

qint64 PlaybackClock::positionLocked(Clock::time_point now) const
{
    if (!m_running)
        return m_baseMs;
    using namespace std::chrono;
    const qint64 passedUs = duration_cast<microseconds>(now - m_baseTime).count();
    const qint64 wayMs = passedUs * m_speed / NormalSpeed / 1000;
    return m_backward ? m_baseMs - wayMs : m_baseMs + wayMs;
}
