#include "source/Pacer.h"

namespace {

using namespace std::chrono_literals;

constexpr auto Grid = 40ms;
constexpr auto LatestShown = 500ms;
constexpr qint64 LongestStepUs = 10'000'000;

Pacer::Clock::time_point nextOnGrid(Pacer::Clock::time_point now)
{
    const auto past = now.time_since_epoch() % Grid;
    return past.count() == 0 ? now : now + (Grid - past);
}

} // namespace

Pacer::Clock::time_point Pacer::due(qint64 pts, Clock::time_point now)
{
    const qint64 step = pts - m_lastPts;
    m_lastPts = pts;
    if (m_running && step >= 0 && step <= LongestStepUs) {
        const auto time = m_start + std::chrono::microseconds(pts - m_firstPts);
        if (now - time <= LatestShown)
            return time;
    }
    m_running = true;
    m_firstPts = pts;
    m_start = nextOnGrid(now);
    return m_start;
}
