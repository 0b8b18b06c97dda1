#include "source/PictureDecoder.h"

namespace {

constexpr qint64 UsualStepUs = 40'000;

} // namespace

bool PictureDecoder::open(std::shared_ptr<const StreamFormat> format, QString* error)
{
    for (AvFrame* frame : {&m_coming, &m_shown}) {
        if (!*frame)
            frame->reset(av_frame_alloc());
        if (*frame)
            continue;
        *error = "out of memory";
        return false;
    }
    return m_codec.open(std::move(format), error);
}

void PictureDecoder::setWanted(qint64 us, qint64 fullyDecodedUs)
{
    m_wantedUs = us;
    m_fullyDecodedUs = fullyDecodedUs;
    m_hasLeftOut = false;
}

SourceFeed::Step PictureDecoder::advance(const std::function<bool()>& feed)
{
    while (true) {
        const int result = m_codec.receive(*m_coming);
        if (result == AVERROR_EOF)
            return SourceFeed::Step::End;
        if (result >= 0 && takeComing())
            return SourceFeed::Step::Picture;
        if (result >= 0)
            continue;
        if (m_codec.isDraining())
            drain();
        else if (!feed())
            return SourceFeed::Step::Failed;
    }
}

void PictureDecoder::send(const AVPacket& packet, const std::function<qint64(int64_t)>& place)
{
    AvPacket own(av_packet_clone(&packet));
    if (!own)
        return;
    own->pts = packet.pts == AV_NOPTS_VALUE ? packet.pts : place(packet.pts);
    own->dts = packet.dts == AV_NOPTS_VALUE ? packet.dts : place(packet.dts);
    own->duration = av_rescale_q(packet.duration, m_codec.format().timeBase, Microseconds);
    const bool isPassedOver = own->pts != AV_NOPTS_VALUE && own->pts < m_wantedUs - m_fullyDecodedUs;
    m_codec.send(std::move(own), isPassedOver || m_isHurried);
}

bool PictureDecoder::takeComing()
{
    const qint64 stamp = m_coming->best_effort_timestamp;
    m_placeUs = stamp == AV_NOPTS_VALUE ? m_endUs : stamp;
    m_endUs = m_placeUs + (m_coming->pkt_duration > 0 ? m_coming->pkt_duration : UsualStepUs);
    m_shown.swap(m_coming);
    m_hasLeftOut = m_placeUs < m_wantedUs;
    return !m_hasLeftOut;
}

std::shared_ptr<Frame> PictureDecoder::picture(const ShownSize& shown)
{
    std::shared_ptr<Frame> frame = m_converter.convert(*m_shown, shown.of({m_shown->width, m_shown->height}));
    if (frame)
        frame->pts = m_placeUs;
    return frame;
}
