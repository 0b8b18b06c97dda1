#include "packets/PacketStamper.h"

#include <QDateTime>

namespace {

constexpr int64_t UsualStepUs = 40'000;
/// A step back by more than this is a stream that starts over by itself.
constexpr int64_t MostBackUs = 1'000'000;
/// A step forward by so much more than the time it took is a clock that was set.
constexpr int64_t MostLeapUs = 2'000'000;
/// So much may wait on its way while the network is down.
constexpr int64_t MostHeldUs = 10'000'000;

int64_t knownTime(const AVPacket& packet)
{
    return packet.dts != AV_NOPTS_VALUE ? packet.dts : packet.pts;
}

} // namespace

std::shared_ptr<const EncodedPacket> PacketStamper::stamp(const AVPacket& packet)
{
    const std::shared_ptr<EncodedPacket> own = stamped(packet);
    if (own)
        own->wallMs = QDateTime::currentMSecsSinceEpoch();
    return own;
}

std::shared_ptr<const EncodedPacket> PacketStamper::stamp(const AVPacket& packet,
                                                          const PacketArrival& arrival)
{
    followArrival(packet, arrival.steadyUs);
    const std::shared_ptr<EncodedPacket> own = stamped(packet);
    if (own)
        own->wallMs =
            m_clock.wallMs(av_rescale_q(own->packet->pts, m_format->timeBase, Microseconds), arrival);
    return own;
}

/// Lays the stream's own times anew where they don't go on with the clock.
void PacketStamper::followArrival(const AVPacket& packet, qint64 steadyUs)
{
    const int64_t known = knownTime(packet);
    const qint64 tookUs = steadyUs - std::exchange(m_lastCameUs, steadyUs);
    const std::optional<int64_t> before = std::exchange(m_lastKnown, known);
    m_isByArrival = known == AV_NOPTS_VALUE;
    if (m_startsOver || !before || known == AV_NOPTS_VALUE || *before == AV_NOPTS_VALUE) {
        m_end = m_lastDts && known == AV_NOPTS_VALUE ? *m_lastDts + ownTime(tookUs) : m_end;
        m_aheadUs = 0;
        return;
    }
    const qint64 stepUs = av_rescale_q(known, m_format->timeBase, Microseconds) -
                          av_rescale_q(*before, m_format->timeBase, Microseconds);
    m_aheadUs += stepUs - tookUs;
    const bool leaps = stepUs < -MostBackUs || stepUs > tookUs + MostLeapUs;
    if (known != *before && !leaps && qAbs(m_aheadUs) <= MostHeldUs)
        return;
    m_isByArrival = true;
    m_offset = *m_lastDts + ownTime(tookUs) - known;
    m_aheadUs = 0;
}

std::shared_ptr<EncodedPacket> PacketStamper::stamped(const AVPacket& packet)
{
    AvPacket own(av_packet_clone(&packet));
    if (!own)
        return nullptr;
    own->pts = shiftedPts(packet);
    own->dts = shiftedDts(packet, own->pts);
    own->pts = qMax(own->pts, own->dts);
    own->stream_index = 0;
    const int64_t usual = qMax<int64_t>(1, ownTime(UsualStepUs));
    m_end = qMax(m_end, own->pts + (own->duration > 0 ? own->duration : usual));
    m_lastDts = own->dts;
    return std::make_shared<EncodedPacket>(EncodedPacket{std::move(own), m_format, 0});
}

std::shared_ptr<const EncodedPacket>
PacketStamper::stampSound(const AVPacket& packet, const std::shared_ptr<const StreamFormat>& format)
{
    const int64_t known = knownTime(packet);
    if (m_startsOver || known == AV_NOPTS_VALUE)
        return nullptr;
    const int64_t time = known + av_rescale_q(m_offset, m_format->timeBase, format->timeBase);
    AvPacket own(m_lastSound && time <= *m_lastSound ? nullptr : av_packet_clone(&packet));
    if (!own)
        return nullptr;
    m_lastSound = own->pts = own->dts = time;
    return std::make_shared<EncodedPacket>(
        EncodedPacket{std::move(own), format, QDateTime::currentMSecsSinceEpoch()});
}

int64_t PacketStamper::shiftedPts(const AVPacket& packet)
{
    const int64_t known = packet.pts != AV_NOPTS_VALUE ? packet.pts : packet.dts;
    if (known == AV_NOPTS_VALUE)
        return m_end;
    const int64_t mostBack = ownTime(MostBackUs);
    const bool jumpsBack = m_lastDts && known + m_offset < *m_lastDts - mostBack;
    if (m_startsOver || jumpsBack)
        m_offset = m_end - known;
    m_startsOver = false;
    return known + m_offset;
}

int64_t PacketStamper::shiftedDts(const AVPacket& packet, int64_t pts) const
{
    const int64_t dts = packet.dts != AV_NOPTS_VALUE ? packet.dts + m_offset : pts;
    return m_lastDts ? qMax(dts, *m_lastDts + 1) : dts;
}
