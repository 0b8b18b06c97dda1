#include "LiveStamps.h"

namespace {

constexpr qint64 MostBehindNs = 1'000'000'000;

} // namespace

qint64 LiveStamps::lay(qint64 ownNs, qint64 nowNs)
{
    const bool isNear =
        m_offsetNs && ownNs + *m_offsetNs <= nowNs && ownNs + *m_offsetNs >= nowNs - MostBehindNs;
    if (!isNear)
        m_offsetNs = nowNs - ownNs;
    return ownNs + *m_offsetNs;
}
