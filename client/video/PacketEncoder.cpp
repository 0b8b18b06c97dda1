#include "video/PacketEncoder.h"

#include "video/PacketSink.h"

namespace {

constexpr int PicturesPerSecond = 12;
constexpr int BitsPerSecond = 600'000;
constexpr AVRational Milliseconds{1, 1000};

int half(int side)
{
    return qMax(2, side / 2 & ~1);
}

AvCodec openCodec(QSize size)
{
    const AVCodec* encoder = avcodec_find_encoder(AV_CODEC_ID_MPEG4);
    AvCodec codec(encoder ? avcodec_alloc_context3(encoder) : nullptr);
    if (!codec)
        return nullptr;
    codec->width = half(size.width());
    codec->height = half(size.height());
    codec->pix_fmt = AV_PIX_FMT_YUV420P;
    codec->time_base = Milliseconds;
    codec->gop_size = PicturesPerSecond;
    codec->bit_rate = BitsPerSecond;
    codec->thread_count = 1;
    codec->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    return avcodec_open2(codec.get(), encoder, nullptr) >= 0 ? std::move(codec) : nullptr;
}

} // namespace

void PacketEncoder::encode(const Frame& frame, PacketHub& hub)
{
    m_isOdd = !m_isOdd;
    if (!m_isOdd || (frame.size() != m_size && !open(frame)) || !m_codec || !convert(frame))
        return;
    // The clock may be set back: the encoder's times must grow all the same.
    m_picture->pts = qMax<int64_t>(m_picture->pts + 1, frame.wallMs - m_firstMs);
    if (avcodec_send_frame(m_codec.get(), m_picture.get()) >= 0)
        deliver(hub, frame.wallMs);
}

bool PacketEncoder::open(const Frame& frame)
{
    m_size = frame.size();
    m_codec = openCodec(m_size);
    m_picture.reset(av_frame_alloc());
    m_packet.reset(av_packet_alloc());
    if (!m_codec || !m_picture || !m_packet)
        return false;
    m_format = StreamFormat::of(*m_codec);
    m_scaler.reset(sws_getContext(m_size.width(), m_size.height(), AV_PIX_FMT_RGB24, m_codec->width,
                                  m_codec->height, m_codec->pix_fmt, SWS_POINT, nullptr, nullptr, nullptr));
    m_picture->format = m_codec->pix_fmt;
    m_picture->width = m_codec->width;
    m_picture->height = m_codec->height;
    m_picture->pts = -1;
    m_firstMs = frame.wallMs;
    return m_format && m_scaler && av_frame_get_buffer(m_picture.get(), 0) >= 0;
}

bool PacketEncoder::convert(const Frame& frame)
{
    if (!m_scaler || av_frame_make_writable(m_picture.get()) < 0)
        return false;
    const uint8_t* rows[] = {frame.pixels(), nullptr, nullptr, nullptr};
    const int strides[] = {frame.rowBytes(), 0, 0, 0};
    return sws_scale(m_scaler.get(), rows, strides, 0, frame.height, m_picture->data, m_picture->linesize) >
           0;
}

void PacketEncoder::deliver(PacketHub& hub, qint64 wallMs)
{
    while (avcodec_receive_packet(m_codec.get(), m_packet.get()) >= 0) {
        AvPacket own(av_packet_clone(m_packet.get()));
        if (own)
            hub.give(std::make_shared<EncodedPacket>(EncodedPacket{std::move(own), m_format, wallMs}));
        av_packet_unref(m_packet.get());
    }
}
