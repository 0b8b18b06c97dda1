#include "packets/PacketClock.h"

#include <QDateTime>

#include <chrono>

namespace {

/// Clocks of cameras run wrong by a hundredth of a per cent; a step of this share for each packet keeps up.
constexpr qint64 FollowShare = 1024;

} // namespace

PacketArrival PacketArrival::now()
{
    const auto steady = std::chrono::steady_clock::now().time_since_epoch();
    return {std::chrono::duration_cast<std::chrono::microseconds>(steady).count(),
            QDateTime::currentMSecsSinceEpoch(),
            {}};
}

PacketArrival PacketArrival::of(const AVPacket& packet)
{
    PacketArrival arrival = now();
    size_t size = 0;
    const uint8_t* data = av_packet_get_side_data(&packet, AV_PKT_DATA_PRFT, &size);
    if (data && size >= sizeof(AVProducerReferenceTime))
        arrival.senderMs = reinterpret_cast<const AVProducerReferenceTime*>(data)->wallclock / 1000;
    return arrival;
}

qint64 PacketClock::wallMs(qint64 ownUs, const PacketArrival& arrival)
{
    const auto& sender = arrival.senderMs;
    if (sender && *sender >= arrival.wallMs - MostSenderOffMs && *sender <= arrival.wallMs + MostSenderOffMs)
        return *sender;
    const qint64 offset = arrival.wallMs * 1000 - ownUs;
    const qint64 late = m_offsetUs ? offset - *m_offsetUs : 0;
    const bool isNew = !m_offsetUs || qAbs(late) > MostOffMs * 1000;
    m_offsetUs = isNew || late < 0 ? offset : *m_offsetUs + late / FollowShare;
    return (ownUs + *m_offsetUs) / 1000;
}
