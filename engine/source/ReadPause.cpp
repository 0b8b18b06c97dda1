#include "source/ReadPause.h"

#include <utility>

ReadPause::Clock::duration ReadPause::after(qint64 placeUs, size_t bytes, Clock::time_point now)
{
    using namespace std::chrono;
    const qint64 nowUs = duration_cast<microseconds>(now.time_since_epoch()).count();
    const qint64 cameMs = m_clock.wallMs(placeUs, {nowUs, nowUs / 1000, {}});
    const microseconds step(placeUs - std::exchange(m_placeUs, placeUs));
    m_bytes += bytes;
    // One that is nearly due is waited for: that it was not there yet tells when pictures really come.
    const bool isNextDue = milliseconds(cameMs) + step / 2 <= microseconds(nowUs);
    if (now < m_trialEnds || isNextDue)
        return {};
    const Clock::duration took = qMin<Clock::duration>(Trial, now - std::exchange(m_lastEnd, now));
    const Clock::duration fitting = took * Room / (std::exchange(m_bytes, 0) + 1);
    const Clock::duration pause = qMin<Clock::duration>(Longest, fitting);
    return pause > step ? pause : Clock::duration();
}
