#include "source/MediaFeed.h"

#include "source/SourceLink.h"

#include <QDateTime>

namespace {

using namespace std::chrono_literals;

/// How long a source may keep silent before it counts as lost.
constexpr auto Patience = 10s;
constexpr auto DevicePoll = 5ms;

const char* formatName(SourceAddress::Kind kind)
{
    switch (kind) {
    case SourceAddress::Kind::Device:
        return "v4l2";
    case SourceAddress::Kind::Graph:
        return "lavfi";
    default:
        return nullptr;
    }
}

} // namespace

MediaFeed::MediaFeed(const SourceAddress& address, SourceLink& link)
    : m_address(address), m_link(link), m_sound(link.sound())
{
    prepareFFmpeg();
}

FeedMaker MediaFeed::maker(const SourceAddress& address)
{
    return [address](SourceLink& link) { return std::make_unique<MediaFeed>(address, link); };
}

int MediaFeed::isInterrupted(void* feed)
{
    const auto* self = static_cast<const MediaFeed*>(feed);
    return self->m_link.isStopped() || std::chrono::steady_clock::now() > self->m_patienceEnds;
}

bool MediaFeed::open()
{
    m_packet.reset(av_packet_alloc());
    if (!m_packet)
        return fail("out of memory");
    return openInput() && openDecoder();
}

bool MediaFeed::openInput()
{
    const char* name = formatName(m_address.kind());
    const AVInputFormat* format = name ? av_find_input_format(name) : nullptr;
    if (name && !format)
        return fail(QString("this FFmpeg has no %1").arg(name));

    AVFormatContext* context = avformat_alloc_context();
    if (!context)
        return fail("out of memory");
    context->interrupt_callback = {isInterrupted, this};
    if (m_address.kind() == SourceAddress::Kind::Device)
        context->flags |= AVFMT_FLAG_NONBLOCK;
    AVDictionary* options = nullptr;
    av_dict_set(&options, "rtsp_flags", "prefer_tcp", 0);
    watch();
    const bool isFile = m_address.kind() == SourceAddress::Kind::File;
    const QByteArray location = ((isFile ? "file:" : "") + m_address.location()).toUtf8();
    const int opened = avformat_open_input(&context, location.constData(), format, &options);
    av_dict_free(&options);
    if (opened < 0)
        return failWith("cannot open", opened);
    m_input.reset(context);

    watch();
    const int found = avformat_find_stream_info(m_input.get(), nullptr);
    return found >= 0 || failWith("cannot read", found);
}

bool MediaFeed::openDecoder()
{
    m_streams = InputStreams(*m_input);
    const auto format = m_streams.format();
    if (!format)
        return fail(m_streams.pictures() < 0 ? "no pictures in it" : "out of memory");
    const AVCodecID codec = format->parameters->codec_id;
    if (codec != AV_CODEC_ID_RAWVIDEO && codec != AV_CODEC_ID_WRAPPED_AVFRAME)
        m_stamper = std::make_unique<PacketStamper>(format);
    m_sound.begin(m_streams.soundFormat());
    m_link.setSound(m_streams.soundFormat() != nullptr);
    QString error;
    return m_decoder.open(*format, &error) || fail(error);
}

bool MediaFeed::failWith(const QString& what, int error)
{
    const bool tired = error == AVERROR_EXIT && !m_link.isStopped();
    return fail(what + ": " + (tired ? QString("no answer") : errorText(error)));
}

SourceFeed::Step MediaFeed::advance()
{
    m_shown = SourceLink::Clock::now();
    while (true) {
        const Step step = m_decoder.advance([this] { return feedDecoder(); });
        m_sawPicture = m_sawPicture || step == Step::Picture;
        if (step != Step::End)
            return step;
        if (!loop())
            return Step::Failed;
    }
}

bool MediaFeed::feedDecoder()
{
    if (m_link.isStopped())
        return fail("stopped");
    watch();
    const int error = av_read_frame(m_input.get(), m_packet.get());
    if (error == AVERROR(EAGAIN))
        m_link.waitUntil(SourceLink::Clock::now() + DevicePoll);
    else if (error == AVERROR_EOF)
        m_decoder.drain();
    else if (error < 0)
        return failWith("cannot read", error);
    else
        takePacket();
    return true;
}

void MediaFeed::takePacket()
{
    if (m_packet->stream_index == m_streams.sound()) {
        giveSound();
        hearSound();
    } else if (m_packet->stream_index == m_streams.pictures()) {
        givePacket();
        const AVRational timeBase = m_streams.format()->timeBase;
        m_decoder.send(*m_packet, [=](int64_t stamp) { return placeOf(stamp, timeBase); });
    }
    av_packet_unref(m_packet.get());
}

void MediaFeed::givePacket()
{
    if (!m_stamper)
        return;
    // Stamped also while nobody takes it, so that the times go on without a break.
    const PacketPtr packet = m_stamper->stamp(*m_packet);
    if (packet && m_link.packets().hasSinks())
        m_link.packets().give(packet);
}

void MediaFeed::giveSound()
{
    const auto& format = m_streams.format()->sound;
    if (!m_stamper || !format)
        return;
    const PacketPtr packet = m_stamper->stampSound(*m_packet, format);
    if (packet && m_link.packets().hasSinks())
        m_link.packets().give(packet);
}

/// The sound of a stream is heard as it comes; that of a file lies where its pictures do.
void MediaFeed::hearSound()
{
    if (!m_sawPicture || m_packet->pts == AV_NOPTS_VALUE)
        return;
    const qint64 ahead =
        isLive() ? 0 : placeOf(m_packet->pts, m_streams.soundFormat()->timeBase) - m_decoder.placeUs();
    m_sound.hear(*m_packet, m_shown + std::chrono::microseconds(ahead));
}

qint64 MediaFeed::placeOf(int64_t stamp, AVRational timeBase) const
{
    const qint64 start = m_input->start_time == AV_NOPTS_VALUE ? 0 : m_input->start_time;
    return av_rescale_q(stamp, timeBase, Microseconds) - start + m_offset;
}

bool MediaFeed::loop()
{
    if (!m_sawPicture)
        return fail("no pictures in it");
    if (isLive() || !rewind())
        return fail("the stream has ended");
    m_decoder.startOver();
    if (m_stamper)
        m_stamper->startOver();
    m_offset = m_decoder.endUs();
    m_sawPicture = false;
    return true;
}

bool MediaFeed::rewind()
{
    watch();
    const qint64 start = m_input->start_time == AV_NOPTS_VALUE ? 0 : m_input->start_time;
    if (av_seek_frame(m_input.get(), -1, start, AVSEEK_FLAG_BACKWARD) >= 0)
        return true;
    const bool hasBytes = m_address.kind() == SourceAddress::Kind::File;
    return hasBytes && av_seek_frame(m_input.get(), -1, 0, AVSEEK_FLAG_BYTE) >= 0;
}

FramePtr MediaFeed::picture()
{
    const std::shared_ptr<Frame> frame = m_decoder.picture();
    if (frame)
        frame->wallMs = QDateTime::currentMSecsSinceEpoch();
    return frame;
}

void MediaFeed::watch()
{
    m_patienceEnds = std::chrono::steady_clock::now() + Patience;
}
