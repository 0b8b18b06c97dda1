#include "archive/ClipMuxer.h"

namespace {

constexpr AVRational PictureBase{1, 90'000};

const char* nameOf(ClipMuxer::Container container)
{
    return container == ClipMuxer::Container::Mp4 ? "mp4" : "matroska";
}

} // namespace

QString ClipMuxer::suffix(Container container)
{
    return container == Container::Mp4 ? ".mp4" : ".mkv";
}

bool ClipMuxer::holds(Container container, const StreamFormat& format)
{
    const AVOutputFormat* output = av_guess_format(nameOf(container), nullptr, nullptr);
    return output && avformat_query_codec(output, format.parameters->codec_id, FF_COMPLIANCE_NORMAL) == 1;
}

bool ClipMuxer::open(const QString& path, Container container, const StreamFormat& format)
{
    end();
    m_error.clear();
    m_lastDts[0] = m_lastDts[1] = AV_NOPTS_VALUE;
    int error = avformat_alloc_output_context2(&m_output, nullptr, nameOf(container), nullptr);
    if (error < 0)
        return fail(error);
    if (!addStream(format, PictureBase, container))
        return fail(AVERROR(ENOMEM));
    const StreamFormat* sound = format.sound.get();
    if (sound && holds(container, *sound) &&
        !addStream(*sound, {1, qMax(1, sound->parameters->sample_rate)}, container))
        return fail(AVERROR(ENOMEM));
    error = avio_open(&m_output->pb, ("file:" + path).toUtf8().constData(), AVIO_FLAG_WRITE);
    if (error >= 0)
        error = avformat_write_header(m_output, nullptr);
    return error >= 0 || fail(error);
}

bool ClipMuxer::addStream(const StreamFormat& format, AVRational timeBase, Container container)
{
    AVStream* stream = avformat_new_stream(m_output, nullptr);
    if (!stream || avcodec_parameters_copy(stream->codecpar, format.parameters.get()) < 0)
        return false;
    stream->time_base = timeBase;
    // By the other one of its two tags some players don't know it.
    const bool isNamed = container == Container::Mp4 && format.parameters->codec_id == AV_CODEC_ID_HEVC;
    stream->codecpar->codec_tag = isNamed ? MKTAG('h', 'v', 'c', '1') : 0;
    return true;
}

bool ClipMuxer::write(const AVPacket& packet, AVRational timeBase, bool isSound, qint64 offsetUs)
{
    if (!m_output || (isSound && !hasSound()))
        return m_output;
    const AvPacket own(av_packet_clone(&packet));
    if (!own)
        return fail(AVERROR(ENOMEM));
    const AVStream& stream = *m_output->streams[isSound ? 1 : 0];
    const int64_t offset = av_rescale_q(offsetUs, Microseconds, stream.time_base);
    av_packet_rescale_ts(own.get(), timeBase, stream.time_base);
    int64_t& last = m_lastDts[isSound ? 1 : 0];
    own->dts += offset;
    if (last != AV_NOPTS_VALUE)
        own->dts = qMax(own->dts, last + 1);
    last = own->dts;
    own->pts = qMax(own->pts + offset, own->dts);
    own->stream_index = stream.index;
    own->pos = -1;
    const int error = av_interleaved_write_frame(m_output, own.get());
    return (error >= 0 && m_output->pb->error >= 0) || fail(error < 0 ? error : m_output->pb->error);
}

bool ClipMuxer::close()
{
    if (!m_output)
        return false;
    int error = av_write_trailer(m_output);
    if (const int closed = avio_closep(&m_output->pb); error >= 0)
        error = closed;
    if (error < 0)
        return fail(error);
    end();
    return true;
}

bool ClipMuxer::fail(int error)
{
    m_error = errorText(error);
    end();
    return false;
}

void ClipMuxer::end()
{
    if (m_output && m_output->pb)
        avio_closep(&m_output->pb);
    avformat_free_context(m_output);
    m_output = nullptr;
}
