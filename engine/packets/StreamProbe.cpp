#include "packets/StreamProbe.h"

#include "packets/EncodedPacket.h"

namespace {

/// Pictures that were waiting come all at once.
constexpr qint64 LeastMs = 500;

QString nameOf(AVCodecID codec)
{
    switch (codec) {
    case AV_CODEC_ID_H264:
        return "H.264";
    case AV_CODEC_ID_HEVC:
        return "H.265";
    default:
        return QString::fromLatin1(avcodec_get_name(codec)).toUpper();
    }
}

} // namespace

void StreamProbe::take(const PacketPtr& packet)
{
    if (packet->isSound() || !packet->format)
        return;
    const std::lock_guard lock(m_mutex);
    m_codec = nameOf(packet->format->parameters->codec_id);
    m_lastMs = packet->wallMs;
    if (m_pictures++ == 0)
        m_firstMs = packet->wallMs;
    else
        m_bytes += qint64(packet->bytes());
}

StreamProbe::Finding StreamProbe::finding() const
{
    const std::lock_guard lock(m_mutex);
    const qint64 span = m_lastMs - m_firstMs;
    Finding finding{m_codec, 0, 0};
    if (span >= LeastMs) {
        finding.rate = double(m_pictures - 1) * 1000 / double(span);
        finding.kilobits = int(m_bytes * 8 / span);
    }
    return finding;
}
