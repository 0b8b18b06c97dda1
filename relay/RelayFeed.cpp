#include "RelayFeed.h"

namespace {

constexpr guint64 MostWaiting = 4 << 20;

/// The part of the pipeline for such packets, without its number; empty for what can't be handed on.
QByteArray payloader(const AVCodecParameters& parameters)
{
    switch (parameters.codec_id) {
    case AV_CODEC_ID_H264:
        return "rtph264pay config-interval=-1 aggregate-mode=zero-latency";
    case AV_CODEC_ID_HEVC:
        return "rtph265pay config-interval=-1 aggregate-mode=zero-latency";
    case AV_CODEC_ID_MJPEG:
        return "rtpjpegpay";
    case AV_CODEC_ID_PCM_MULAW:
        return "rtppcmupay";
    case AV_CODEC_ID_PCM_ALAW:
        return "rtppcmapay";
    case AV_CODEC_ID_AAC:
        return parameters.extradata_size > 0 ? "rtpmp4gpay" : "";
    default:
        return "";
    }
}

const char* capsName(AVCodecID codec)
{
    switch (codec) {
    case AV_CODEC_ID_H264:
        return "video/x-h264,stream-format=byte-stream,alignment=au";
    case AV_CODEC_ID_HEVC:
        return "video/x-h265,stream-format=byte-stream,alignment=au";
    case AV_CODEC_ID_MJPEG:
        return "image/jpeg";
    case AV_CODEC_ID_PCM_MULAW:
        return "audio/x-mulaw";
    case AV_CODEC_ID_PCM_ALAW:
        return "audio/x-alaw";
    default:
        return "audio/mpeg,mpegversion=4,stream-format=raw";
    }
}

GstCaps* capsOf(const AVCodecParameters& parameters)
{
    GstCaps* caps = gst_caps_from_string(capsName(parameters.codec_id));
    if (parameters.codec_type == AVMEDIA_TYPE_VIDEO) {
        gst_caps_set_simple(caps, "width", G_TYPE_INT, parameters.width, "height", G_TYPE_INT,
                            parameters.height, nullptr);
        return caps;
    }
    gst_caps_set_simple(caps, "rate", G_TYPE_INT, parameters.sample_rate, "channels", G_TYPE_INT,
                        parameters.ch_layout.nb_channels, nullptr);
    if (parameters.codec_id != AV_CODEC_ID_AAC)
        return caps;
    GstBuffer* head = gst_buffer_new_memdup(parameters.extradata, gsize(parameters.extradata_size));
    gst_caps_set_simple(caps, "codec_data", GST_TYPE_BUFFER, head, nullptr);
    gst_buffer_unref(head);
    return caps;
}

/// What is not installed of what such a part needs, in words for `error`; empty if all is.
QString lackOf(const QByteArray& payloader)
{
    const QByteArray element = payloader.left(payloader.indexOf(' '));
    for (const auto& [name, package] :
         {std::pair(QByteArray("appsrc"), "base"), std::pair(element, "good")}) {
        GstElementFactory* factory = gst_element_factory_find(name.constData());
        if (!factory)
            return QString("GStreamer has no %1 here, which is in Debian's gstreamer1.0-plugins-%2")
                .arg(QString::fromLatin1(name), package);
        gst_object_unref(factory);
    }
    return QString();
}

QByteArray branch(const char* name, const QByteArray& payloader, int number)
{
    return QByteArray("appsrc name=") + name + " is-live=true format=time leaky-type=downstream ! " +
           payloader + " name=pay" + QByteArray::number(number) + " pt=" + QByteArray::number(96 + number) +
           ' ';
}

/// Never null, as each element is there.
GstElement* newBin(const QByteArray& pictures, const QByteArray& sound)
{
    const QByteArray heard = sound.isEmpty() ? QByteArray() : branch("sound", sound, 1);
    return gst_parse_launch("( " + branch("pictures", pictures, 0) + heard + ')', nullptr);
}

GstAppSrc* sourceIn(GstElement* bin, const char* name, const AVCodecParameters& parameters)
{
    auto* source = GST_APP_SRC(gst_bin_get_by_name(GST_BIN(bin), name));
    GstCaps* caps = capsOf(parameters);
    gst_app_src_set_caps(source, caps);
    gst_caps_unref(caps);
    gst_app_src_set_max_bytes(source, MostWaiting);
    return source;
}

void release(gpointer packet)
{
    delete static_cast<PacketPtr*>(packet);
}

/// The bytes stay where they are, as long as anybody sends them.
GstBuffer* bufferOf(const PacketPtr& packet)
{
    const auto size = gsize(packet->packet->size);
    return gst_buffer_new_wrapped_full(GST_MEMORY_FLAG_READONLY, packet->packet->data, size, 0, size,
                                       new PacketPtr(packet), release);
}

/// On the way to playing there is a clock, but not yet the time from which it counts: what is laid by that
/// would be held back for hours.
qint64 runningNs(GstAppSrc* source)
{
    GstClock* clock = nullptr;
    if (GST_STATE(GST_ELEMENT(source)) == GST_STATE_PLAYING)
        clock = gst_element_get_clock(GST_ELEMENT(source));
    if (!clock)
        return 0;
    const auto now = qint64(gst_clock_get_time(clock) - gst_element_get_base_time(GST_ELEMENT(source)));
    gst_object_unref(clock);
    return qMax<qint64>(0, now);
}

} // namespace

RelayFeed::~RelayFeed()
{
    stop();
    for (GstAppSrc* source : {m_pictures, m_sound}) {
        if (source)
            gst_object_unref(source);
    }
}

GstElement* RelayFeed::open(QString* error)
{
    if (!m_reader.open()) {
        *error = m_reader.error();
        return nullptr;
    }
    const auto format = m_reader.format();
    const QByteArray pictures = payloader(*format->parameters);
    QByteArray sound = format->sound ? payloader(*format->sound->parameters) : QByteArray();
    *error = pictures.isEmpty() ? "its pictures are of a kind that can't be handed on" : lackOf(pictures);
    if (!error->isEmpty())
        return nullptr;
    // Pictures without sound are better than nothing.
    if (!sound.isEmpty() && !lackOf(sound).isEmpty())
        sound.clear();
    GstElement* bin = newBin(pictures, sound);
    m_pictures = sourceIn(bin, "pictures", *format->parameters);
    m_sound = sound.isEmpty() ? nullptr : sourceIn(bin, "sound", *format->sound->parameters);
    return bin;
}

void RelayFeed::start(std::function<void()> lost)
{
    m_reader.start([this](const PacketPtr& packet) { take(packet); }, std::move(lost));
}

void RelayFeed::take(const PacketPtr& packet)
{
    const bool isFirst = !m_hasKey && packet->isKey();
    m_hasKey = m_hasKey || isFirst;
    GstAppSrc* target = packet->isSound() ? m_sound : m_pictures;
    if (!m_hasKey || !target)
        return;
    GstBuffer* buffer = bufferOf(packet);
    // What a camera tells of its pictures beside them, its pictures need not tell again.
    const AVCodecParameters& parameters = *packet->format->parameters;
    if (isFirst && parameters.extradata_size > 0) {
        GstBuffer* head = gst_buffer_new_memdup(parameters.extradata, gsize(parameters.extradata_size));
        buffer = gst_buffer_append(head, buffer);
    }
    push(target, packet, buffer);
}

void RelayFeed::push(GstAppSrc* target, const PacketPtr& packet, GstBuffer* buffer)
{
    constexpr AVRational Nanoseconds{1, 1'000'000'000};
    const qint64 own = av_rescale_q(packet->packet->pts, packet->format->timeBase, Nanoseconds);
    GST_BUFFER_PTS(buffer) = GstClockTime(qMax<qint64>(0, m_stamps.lay(own, runningNs(target))));
    if (!packet->isKey() && !packet->isSound())
        GST_BUFFER_FLAG_SET(buffer, GST_BUFFER_FLAG_DELTA_UNIT);
    gst_app_src_push_buffer(target, buffer);
}
