#include "source/MediaFeed.h"

#include "source/SourceLink.h"

#include <QDateTime>

namespace {

using namespace std::chrono_literals;

/// How long a source may keep silent before it counts as lost.
constexpr auto Patience = 10s;
constexpr auto DevicePoll = 5ms;
constexpr qint64 UsualStepUs = 40'000;

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
    m_picture.reset(av_frame_alloc());
    if (!m_packet || !m_picture)
        return fail("out of memory");
    return openInput() && openCodec();
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

bool MediaFeed::openCodec()
{
    m_streams = InputStreams(*m_input);
    const auto format = m_streams.format();
    if (!format)
        return fail(m_streams.pictures() < 0 ? "no pictures in it" : "out of memory");
    const AVCodecID codec = format->parameters->codec_id;
    if (codec != AV_CODEC_ID_RAWVIDEO && codec != AV_CODEC_ID_WRAPPED_AVFRAME)
        m_stamper = std::make_unique<PacketStamper>(format);
    QString error;
    m_codec = format->openDecoder(&error);
    m_sound.begin(m_streams.soundFormat());
    m_link.setSound(m_streams.soundFormat() != nullptr);
    return m_codec || fail(error);
}

bool MediaFeed::failWith(const QString& what, int error)
{
    const bool tired = error == AVERROR_EXIT && !m_link.isStopped();
    return fail(what + ": " + (tired ? QString("no answer") : errorText(error)));
}

SourceFeed::Step MediaFeed::advance()
{
    m_shown = SourceLink::Clock::now();
    while (!m_link.isStopped()) {
        const int error = avcodec_receive_frame(m_codec.get(), m_picture.get());
        if (error >= 0) {
            place();
            return Step::Picture;
        }
        const Step step = error == AVERROR_EOF ? loop() : feedCodec();
        if (step != Step::Picture)
            return step;
    }
    fail("stopped");
    return Step::Failed;
}

/// Picture stands for: go on.
SourceFeed::Step MediaFeed::feedCodec()
{
    if (m_draining) {
        avcodec_send_packet(m_codec.get(), nullptr);
        return Step::Picture;
    }
    watch();
    const int error = av_read_frame(m_input.get(), m_packet.get());
    if (error == AVERROR(EAGAIN)) {
        m_link.waitUntil(SourceLink::Clock::now() + DevicePoll);
        return Step::Picture;
    }
    if (error == AVERROR_EOF) {
        m_draining = true;
        return Step::Picture;
    }
    if (error < 0) {
        failWith("cannot read", error);
        return Step::Failed;
    }
    if (m_packet->stream_index == m_streams.sound()) {
        giveSound();
        hearSound();
    } else if (m_packet->stream_index == m_streams.pictures()) {
        givePacket();
        avcodec_send_packet(m_codec.get(), m_packet.get());
    }
    av_packet_unref(m_packet.get());
    return Step::Picture;
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
    const qint64 ahead = isLive() ? 0 : placeOf(m_packet->pts, m_streams.soundFormat()->timeBase) - m_pts;
    m_sound.hear(*m_packet, m_shown + std::chrono::microseconds(ahead));
}

qint64 MediaFeed::placeOf(int64_t stamp, AVRational timeBase) const
{
    const qint64 start = m_input->start_time == AV_NOPTS_VALUE ? 0 : m_input->start_time;
    return av_rescale_q(stamp, timeBase, Microseconds) - start + m_offset;
}

SourceFeed::Step MediaFeed::loop()
{
    if (!m_sawPicture) {
        fail("no pictures in it");
        return Step::Failed;
    }
    if (isLive() || !rewind()) {
        fail("the stream has ended");
        return Step::Failed;
    }
    avcodec_flush_buffers(m_codec.get());
    if (m_stamper)
        m_stamper->startOver();
    m_offset = m_end;
    m_draining = false;
    m_sawPicture = false;
    return Step::Picture;
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

void MediaFeed::place()
{
    const AVStream& stream = *m_input->streams[m_streams.pictures()];
    const qint64 stamp = m_picture->best_effort_timestamp;
    m_pts = stamp == AV_NOPTS_VALUE ? m_end : placeOf(stamp, stream.time_base);
    const qint64 length = av_rescale_q(m_picture->pkt_duration, stream.time_base, Microseconds);
    m_end = m_pts + (length > 0 ? length : UsualStepUs);
    m_sawPicture = true;
}

FramePtr MediaFeed::picture()
{
    const std::shared_ptr<Frame> frame = m_converter.convert(*m_picture);
    if (!frame)
        return nullptr;
    frame->pts = m_pts;
    frame->wallMs = QDateTime::currentMSecsSinceEpoch();
    return frame;
}

void MediaFeed::watch()
{
    m_patienceEnds = std::chrono::steady_clock::now() + Patience;
}
