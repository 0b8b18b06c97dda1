#include "packets/PacketStamper.h"

#include <QDateTime>

namespace {

constexpr int64_t UsualStepUs = 40'000;
/// A step back by more than this is a stream that starts over by itself.
constexpr int64_t MostBackUs = 1'000'000;

} // namespace

std::shared_ptr<const EncodedPacket> PacketStamper::stamp(const AVPacket& packet)
{
    AvPacket own(av_packet_clone(&packet));
    if (!own)
        return nullptr;
    own->pts = shiftedPts(packet);
    own->dts = shiftedDts(packet, own->pts);
    own->pts = qMax(own->pts, own->dts);
    own->stream_index = 0;
    const int64_t usual = qMax<int64_t>(1, av_rescale_q(UsualStepUs, Microseconds, m_format->timeBase));
    m_end = qMax(m_end, own->pts + (own->duration > 0 ? own->duration : usual));
    m_lastDts = own->dts;
    return std::make_shared<EncodedPacket>(
        EncodedPacket{std::move(own), m_format, QDateTime::currentMSecsSinceEpoch()});
}

std::shared_ptr<const EncodedPacket>
PacketStamper::stampSound(const AVPacket& packet, const std::shared_ptr<const StreamFormat>& format)
{
    const int64_t known = packet.dts != AV_NOPTS_VALUE ? packet.dts : packet.pts;
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
    const int64_t mostBack = av_rescale_q(MostBackUs, Microseconds, m_format->timeBase);
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
