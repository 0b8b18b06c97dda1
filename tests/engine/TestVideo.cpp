#include "engine/TestVideo.h"

#include "packets/InputStreams.h"
#include "packets/PacketStamper.h"
#include "source/MediaFeed.h"

extern "C" {
#include <libavutil/opt.h>
}

#include <cstring>

namespace {

constexpr int GreyStep = 10;
constexpr int SoundRate = 8000;
constexpr int SoundPerPicture = SoundRate / TestVideo::PicturesPerSecond;

AvCodec openEncoder(const TestVideo::Recipe& recipe)
{
    const AVCodec* encoder = avcodec_find_encoder(recipe.codec);
    AvCodec codec(avcodec_alloc_context3(encoder));
    codec->width = recipe.size.width();
    codec->height = recipe.size.height();
    codec->pix_fmt = recipe.codec == AV_CODEC_ID_MJPEG ? AV_PIX_FMT_YUVJ420P : AV_PIX_FMT_YUV420P;
    codec->time_base = {1, TestVideo::PicturesPerSecond};
    codec->framerate = {TestVideo::PicturesPerSecond, 1};
    codec->gop_size = recipe.keyDistance;
    codec->max_b_frames = recipe.reordered;
    codec->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    // However much a picture changes, key frames come by their distance alone.
    av_opt_set_int(codec.get(), "sc_threshold", 1'000'000'000, AV_OPT_SEARCH_CHILDREN);
    return avcodec_open2(codec.get(), encoder, nullptr) >= 0 ? std::move(codec) : nullptr;
}

int grey(const AVCodecContext& codec, int number)
{
    const bool isFullRange = codec.pix_fmt == AV_PIX_FMT_YUVJ420P;
    return isFullRange ? qRound(number * GreyStep * 255 / 219.0) : 16 + number * GreyStep;
}

AvFrame picture(const AVCodecContext& codec, int number)
{
    AvFrame frame(av_frame_alloc());
    frame->format = codec.pix_fmt;
    frame->width = codec.width;
    frame->height = codec.height;
    frame->pts = number;
    av_frame_get_buffer(frame.get(), 0);
    for (int plane = 0; plane < 3; ++plane) {
        const int rows = plane == 0 ? codec.height : (codec.height + 1) / 2;
        const int value = plane == 0 ? grey(codec, number) : 128;
        std::memset(frame->data[plane], value, size_t(frame->linesize[plane]) * size_t(rows));
    }
    return frame;
}

void drain(AVCodecContext& codec, AVFormatContext& output)
{
    const AvPacket packet(av_packet_alloc());
    while (avcodec_receive_packet(&codec, packet.get()) >= 0) {
        av_packet_rescale_ts(packet.get(), codec.time_base, output.streams[0]->time_base);
        av_interleaved_write_frame(&output, packet.get());
    }
}

void addSound(AVFormatContext& output)
{
    AVStream* stream = avformat_new_stream(&output, nullptr);
    AVCodecParameters& parameters = *stream->codecpar;
    parameters.codec_type = AVMEDIA_TYPE_AUDIO;
    parameters.codec_id = AV_CODEC_ID_PCM_S16LE;
    parameters.sample_rate = SoundRate;
    parameters.bits_per_coded_sample = 16;
    av_channel_layout_default(&parameters.ch_layout, 1);
    stream->time_base = {1, SoundRate};
}

void writeSound(AVFormatContext& output, int number)
{
    const AvPacket packet(av_packet_alloc());
    av_new_packet(packet.get(), SoundPerPicture * int(sizeof(qint16)));
    auto* samples = reinterpret_cast<qint16*>(packet->data);
    std::fill(samples, samples + SoundPerPicture, qint16(number * TestVideo::SoundStep));
    packet->stream_index = 1;
    packet->pts = packet->dts = number * SoundPerPicture;
    packet->duration = SoundPerPicture;
    packet->flags = AV_PKT_FLAG_KEY;
    av_packet_rescale_ts(packet.get(), {1, SoundRate}, output.streams[1]->time_base);
    av_interleaved_write_frame(&output, packet.get());
}

} // namespace

bool TestVideo::write(const QString& path, const Recipe& recipe)
{
    prepareFFmpeg();
    const AvCodec codec = openEncoder(recipe);
    AVFormatContext* output = nullptr;
    const QByteArray name = path.toUtf8();
    if (!codec || avformat_alloc_output_context2(&output, nullptr, "matroska", name.constData()) < 0)
        return false;
    AVStream* stream = avformat_new_stream(output, nullptr);
    stream->time_base = codec->time_base;
    avcodec_parameters_from_context(stream->codecpar, codec.get());
    if (recipe.hasSound)
        addSound(*output);
    bool isWritten = avio_open(&output->pb, name.constData(), AVIO_FLAG_WRITE) >= 0 &&
                     avformat_write_header(output, nullptr) >= 0;
    for (int i = 0; isWritten && i <= recipe.pictures; ++i) {
        const AvFrame frame = i < recipe.pictures ? picture(*codec, i) : nullptr;
        avcodec_send_frame(codec.get(), frame.get());
        drain(*codec, *output);
        if (frame && recipe.hasSound)
            writeSound(*output, i);
    }
    isWritten = isWritten && av_write_trailer(output) >= 0;
    avio_closep(&output->pb);
    avformat_free_context(output);
    return isWritten;
}

FeedMaker TestVideo::player(const QString& url)
{
    return MediaFeed::maker(*SourceAddress::parse("Test=" + url));
}

int TestVideo::number(const QImage& picture)
{
    // Grey 16 is black and 235 is white once the picture is decoded.
    const int grey = qGray(picture.pixel(picture.width() / 2, picture.height() / 2));
    return qRound(grey * 219.0 / 255.0 / GreyStep);
}

std::vector<PacketPtr> TestVideo::packets(const QString& path, qint64 startMs)
{
    prepareFFmpeg();
    std::vector<PacketPtr> packets;
    AVFormatContext* context = nullptr;
    if (avformat_open_input(&context, path.toUtf8().constData(), nullptr, nullptr) < 0)
        return packets;
    const AvInput input(context);
    avformat_find_stream_info(context, nullptr);
    const InputStreams streams(*context);
    PacketStamper stamper(streams.format());
    const AvPacket packet(av_packet_alloc());
    qint64 pictures = 0;
    while (av_read_frame(context, packet.get()) >= 0) {
        const bool isSound = packet->stream_index == streams.sound();
        const auto stamped =
            isSound ? stamper.stampSound(*packet, streams.soundFormat()) : stamper.stamp(*packet);
        av_packet_unref(packet.get());
        const qint64 wallMs = startMs + (isSound ? pictures : pictures++) * StepMs;
        packets.push_back(std::make_shared<EncodedPacket>(
            EncodedPacket{AvPacket(av_packet_clone(stamped->packet.get())), stamped->format, wallMs}));
    }
    return packets;
}

QByteArray TestVideo::data(const PacketPtr& packet)
{
    return {reinterpret_cast<const char*>(packet->packet->data), packet->packet->size};
}
