#include "decode/PacketEncoder.h"

#include "packets/PacketHub.h"

namespace {

constexpr int PicturesPerSecond = 12;
constexpr int BitsPerSecond = 600'000;
constexpr AVRational Milliseconds{1, 1000};

/// One component of BT.601 in its narrow range, in 256ths of a colour's value.
struct Component
{
    int red;
    int green;
    int blue;
    int base;

    uint8_t of(const uchar* pixel) const
    {
        return uint8_t(((red * pixel[0] + green * pixel[1] + blue * pixel[2] + 128) >> 8) + base);
    }
};

constexpr Component Light{66, 129, 25, 16};
constexpr Component Blue{-38, -74, 112, 128};
constexpr Component Red{112, -94, -18, 128};

int half(int side)
{
    return side / 2 & ~1;
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
    if ((frame.size() != m_size && !open(frame)) || !m_codec || !convert(frame))
        return;
    // The clock may be set back: the encoder's times must grow all the same.
    m_picture->pts = qMax<int64_t>(m_picture->pts + 1, frame.wallMs - m_firstMs);
    if (avcodec_send_frame(m_codec.get(), m_picture.get()) >= 0)
        deliver(hub, frame.wallMs);
}

bool PacketEncoder::open(const Frame& frame)
{
    m_size = frame.size();
    m_codec.reset();
    if (half(m_size.width()) == 0 || half(m_size.height()) == 0)
        return false;
    m_codec = openCodec(m_size);
    m_picture.reset(av_frame_alloc());
    m_packet.reset(av_packet_alloc());
    if (!m_codec || !m_picture || !m_packet)
        return false;
    m_format = StreamFormat::of(*m_codec);
    m_picture->format = m_codec->pix_fmt;
    m_picture->width = m_codec->width;
    m_picture->height = m_codec->height;
    m_picture->pts = -1;
    m_firstMs = frame.wallMs;
    return m_format && av_frame_get_buffer(m_picture.get(), 0) >= 0;
}

/// Takes every second pixel of every second row, and every fourth for the colours: half the cost of a scaler.
bool PacketEncoder::convert(const Frame& frame)
{
    if (av_frame_make_writable(m_picture.get()) < 0)
        return false;
    for (int y = 0; y < m_picture->height; ++y) {
        const uchar* source = frame.pixels() + 2 * y * frame.rowBytes();
        uint8_t* light = m_picture->data[0] + y * m_picture->linesize[0];
        for (int x = 0; x < m_picture->width; ++x)
            light[x] = Light.of(source + 6 * x);
    }
    for (int y = 0; y < m_picture->height / 2; ++y) {
        const uchar* source = frame.pixels() + 4 * y * frame.rowBytes();
        uint8_t* blue = m_picture->data[1] + y * m_picture->linesize[1];
        uint8_t* red = m_picture->data[2] + y * m_picture->linesize[2];
        for (int x = 0; x < m_picture->width / 2; ++x) {
            blue[x] = Blue.of(source + 12 * x);
            red[x] = Red.of(source + 12 * x);
        }
    }
    return true;
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
