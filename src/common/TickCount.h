#pragma once

#include <QtGlobal>

#include <chrono>

/// Milliseconds of a clock that never goes back; starts again at 0 after about 49.7 days.
inline quint32 TickCount()
{
    using namespace std::chrono;
    return static_cast<quint32>(duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}

/// Whether more than a number of ticks have passed since an earlier tick, also over the start at 0.
inline bool IsTickPast(quint32 dwNow, quint32 dwEarlier, quint32 dwTicks)
{
    return dwNow - dwEarlier > dwTicks;
}
