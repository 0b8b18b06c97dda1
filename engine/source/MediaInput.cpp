#include "source/MediaInput.h"

#include "packets/PictureLimit.h"
#include "packets/PictureOrder.h"
#include "source/LoginQuestion.h"

#include <QHostInfo>
#include <QRegularExpression>
#include <QUrl>

#include <algorithm>
#include <thread>
#include <vector>

namespace {

using namespace std::chrono_literals;

constexpr auto UsualPatience = 10s;
constexpr auto DevicePoll = 5ms;
/// Longer than a read takes to end when patience does.
constexpr auto StandstillSlack = 2s;

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

/// FFmpeg takes the word of an address for how packets are to come.
bool canBeInterleaved(const QString& location)
{
    static const QRegularExpression otherwise("[?&](udp|multicast)(&|$)");
    return location.startsWith("rtsp") && !location.contains(otherwise);
}

/// FFmpeg takes the network of a link-local address as the system does, not as in a URL.
QString withPlainZone(QString location)
{
    static const QRegularExpression zone("^(\\w+://[^/]*\\[[0-9A-Fa-f:.]+)%25");
    return location.replace(zone, "\\1%");
}

/// FFmpeg looks into the pictures of each stream, and would decode what is too large. Of a file's it tells
/// the size then, which the reason names.
class ProbeOptions
{
public:
    explicit ProbeOptions(unsigned streams) : m_options(streams)
    {
        for (AVDictionary*& options : m_options)
            av_dict_set_int(&options, "max_pixels", PictureLimit::MostPixels, 0);
    }
    ~ProbeOptions()
    {
        for (AVDictionary*& options : m_options)
            av_dict_free(&options);
    }
    ProbeOptions(const ProbeOptions&) = delete;
    ProbeOptions& operator=(const ProbeOptions&) = delete;

    AVDictionary** data() { return m_options.empty() ? nullptr : m_options.data(); }

private:
    std::vector<AVDictionary*> m_options;
};

bool isOrdered(const AVStream* stream)
{
    return stream->codecpar->codec_type != AVMEDIA_TYPE_VIDEO || PictureOrder::isKept(*stream->codecpar);
}

} // namespace

MediaInput::MediaInput(const SourceAddress& address, std::function<bool()> isStopped)
    : m_address(address), m_isStopped(std::move(isStopped)), m_patience(UsualPatience)
{
    prepareFFmpeg();
}

int MediaInput::isInterrupted(void* input)
{
    auto* self = static_cast<MediaInput*>(input);
    self->m_isTired = self->m_isTired || Clock::now() > self->m_patienceEnds;
    return self->m_isStopped() || self->m_isBrokenOff || self->m_isTired;
}

bool MediaInput::open()
{
    m_packet.reset(av_packet_alloc());
    if (!m_packet)
        return fail("out of memory");
    return mayLogIn() && openContext() && findStreams();
}

/// A camera that asks for the password itself gets it only where that is allowed.
bool MediaInput::mayLogIn()
{
    if (m_address.isPlainAllowed() || m_address.kind() != SourceAddress::Kind::Url)
        return true;
    watch();
    const LoginQuestion asked = LoginQuestion::ask(QUrl(m_address.location()), {isInterrupted, this});
    if (asked.error < 0)
        return fail("cannot open: %1", asked.error);
    return asked.way != LoginQuestion::Way::Plain ||
           fail("cannot open: the camera wants the password unprotected");
}

bool MediaInput::openContext()
{
    using Transport = SourceAddress::Transport;
    const char* name = formatName(m_address.kind());
    const AVInputFormat* format = name ? av_find_input_format(name) : nullptr;
    if (name && !format)
        return fail(QString("this FFmpeg has no %1").arg(name));
    const bool isAuto = m_address.transport() == Transport::Auto;
    Transport transport = isAuto ? Transport::Tcp : m_address.transport();
    int result = openBy(transport, format);
    if (isAuto && result == AVERROR(EPROTONOSUPPORT))
        result = openBy(transport = Transport::Udp, format);
    m_canWait = transport == Transport::Tcp && canBeInterleaved(m_address.location());
    return result >= 0 || fail("cannot open: %1", result);
}

int MediaInput::openBy(SourceAddress::Transport transport, const AVInputFormat* format)
{
    AVFormatContext* context = avformat_alloc_context();
    if (!context)
        return AVERROR(ENOMEM);
    context->interrupt_callback = {isInterrupted, this};
    if (m_address.kind() == SourceAddress::Kind::Device)
        context->flags |= AVFMT_FLAG_NONBLOCK;
    AVDictionary* options = nullptr;
    const bool isTcp = transport == SourceAddress::Transport::Tcp;
    av_dict_set(&options, "rtsp_transport", isTcp ? "tcp" : "udp+udp_multicast", 0);
    // A live stream begins with its first picture, not after some that tell its rate.
    if (m_address.isLive())
        av_dict_set(&options, "fpsprobesize", "0", 0);
    watch();
    const bool isFile = m_address.kind() == SourceAddress::Kind::File;
    const QByteArray location =
        (isFile ? "file:" + m_address.location() : withPlainZone(m_address.location())).toUtf8();
    const int opened = avformat_open_input(&context, location.constData(), format, &options);
    av_dict_free(&options);
    m_context.reset(context);
    return opened;
}

bool MediaInput::findStreams()
{
    watch();
    // FFmpeg waits for seven pictures to learn their order, which may take longer than to the first one.
    if (m_address.isLive() &&
        std::all_of(m_context->streams, m_context->streams + m_context->nb_streams, isOrdered))
        m_context->max_ts_probe = 1;
    ProbeOptions options(m_context->nb_streams);
    const bool isFile = m_address.kind() == SourceAddress::Kind::File;
    const int found = avformat_find_stream_info(m_context.get(), isFile ? nullptr : options.data());
    if (found < 0)
        return fail("cannot read: %1", found);
    m_streams = InputStreams(*m_context);
    if (m_streams.format())
        return true;
    return fail(m_streams.pictures() < 0 ? "no pictures in it" : "out of memory");
}

int MediaInput::read()
{
    av_packet_unref(m_packet.get());
    m_isTired = m_isTired || hasStoodStill();
    // What was broken off still gives the last picture that it had begun.
    if (m_isTired)
        return AVERROR_EXIT;
    watch();
    const int error = av_read_frame(m_context.get(), m_packet.get());
    if (error == AVERROR(EAGAIN))
        std::this_thread::sleep_for(DevicePoll);
    const bool isOld = hasStoodStill();
    m_isTired = m_isTired || isOld;
    return isOld ? AVERROR_EXIT : error;
}

/// A program that was stopped finds what waited for it all the while: none of it is a picture of now.
bool MediaInput::hasStoodStill() const
{
    return m_address.isLive() && Clock::now() > m_patienceEnds + StandstillSlack;
}

bool MediaInput::rewind()
{
    watch();
    if (av_seek_frame(m_context.get(), -1, start(), AVSEEK_FLAG_BACKWARD) >= 0)
        return true;
    const bool hasBytes = m_address.kind() == SourceAddress::Kind::File;
    return hasBytes && av_seek_frame(m_context.get(), -1, 0, AVSEEK_FLAG_BYTE) >= 0;
}

void MediaInput::setPatience(Clock::duration patience)
{
    m_patience = qMax<Clock::duration>(UsualPatience, patience);
}

bool MediaInput::isPlain() const
{
    const AVCodecID codec = m_streams.format()->parameters->codec_id;
    return codec == AV_CODEC_ID_RAWVIDEO || codec == AV_CODEC_ID_WRAPPED_AVFRAME;
}

int64_t MediaInput::start() const
{
    return m_context->start_time == AV_NOPTS_VALUE ? 0 : m_context->start_time;
}

qint64 MediaInput::placeOf(int64_t stamp, AVRational timeBase) const
{
    return av_rescale_q(stamp, timeBase, Microseconds) - start();
}

bool MediaInput::fail(const QString& error)
{
    m_error = error;
    return false;
}

bool MediaInput::fail(const QString& what, int error)
{
    return fail(what.arg(reasonOf(error)));
}

QString MediaInput::reasonOf(int error) const
{
    const bool isStopped = m_isStopped() || m_isBrokenOff;
    if ((error == AVERROR_EXIT && !isStopped) || error == AVERROR(ETIMEDOUT))
        return "no answer";
    if (m_address.kind() != SourceAddress::Kind::Url || isStopped)
        return errorText(error);
    switch (error) {
    case AVERROR(ECONNREFUSED):
        return "refused";
    case AVERROR_HTTP_UNAUTHORIZED:
    case AVERROR_HTTP_FORBIDDEN:
        return "wrong password";
    case AVERROR_HTTP_NOT_FOUND:
        return "not found";
    default:
        break;
    }
    // FFmpeg has no number of its own for a name that nobody knows.
    const QString host = QUrl(m_address.location()).host();
    const bool isUnknown = error == AVERROR(EIO) && !host.isEmpty() &&
                           QHostInfo::fromName(host).error() == QHostInfo::HostNotFound;
    return isUnknown ? QString("no such name") : errorText(error);
}

void MediaInput::watch()
{
    m_patienceEnds = Clock::now() + m_patience;
}
