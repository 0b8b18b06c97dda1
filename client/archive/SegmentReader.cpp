#include "archive/SegmentReader.h"

namespace {

constexpr AVRational Milliseconds{1, 1000};

} // namespace

bool SegmentReader::open(const TrackPiece& piece, QString* error)
{
    prepareFFmpeg();
    m_piece = piece;
    m_packet.reset(av_packet_alloc());
    AVFormatContext* context = nullptr;
    const QByteArray location = ("file:" + piece.path).toUtf8();
    int result = avformat_open_input(&context, location.constData(), nullptr, nullptr);
    m_input.reset(context);
    if (result >= 0)
        result = avformat_find_stream_info(context, nullptr);
    if (result >= 0)
        result = m_stream = av_find_best_stream(context, AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0);
    if (result < 0 || !m_packet) {
        *error = "cannot open " + piece.path + ": " + errorText(result);
        return false;
    }
    for (unsigned i = 0; i < context->nb_streams; ++i)
        context->streams[i]->discard = int(i) == m_stream ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
    const AVStream& stream = *context->streams[m_stream];
    m_firstStamp = stream.start_time == AV_NOPTS_VALUE ? 0 : stream.start_time;
    m_format = StreamFormat::of(*stream.codecpar, stream.time_base);
    return m_format != nullptr;
}

void SegmentReader::seek(qint64 ms)
{
    const int64_t stamp =
        m_firstStamp + av_rescale_q(qMax<qint64>(0, ms - m_piece.startMs), Milliseconds, m_format->timeBase);
    if (av_seek_frame(m_input.get(), m_stream, stamp, AVSEEK_FLAG_BACKWARD) < 0)
        av_seek_frame(m_input.get(), -1, 0, AVSEEK_FLAG_BYTE);
}

const AVPacket* SegmentReader::read()
{
    while (true) {
        av_packet_unref(m_packet.get());
        if (av_read_frame(m_input.get(), m_packet.get()) < 0)
            return nullptr;
        if (m_packet->stream_index != m_stream)
            continue;
        if (m_packet->dts == AV_NOPTS_VALUE)
            m_packet->dts = m_packet->pts;
        if (m_packet->pts == AV_NOPTS_VALUE)
            m_packet->pts = m_packet->dts;
        if (m_packet->pts != AV_NOPTS_VALUE)
            return m_packet.get();
    }
}

qint64 SegmentReader::momentOf(int64_t stamp) const
{
    return m_piece.startMs + av_rescale_q(stamp - m_firstStamp, m_format->timeBase, Milliseconds);
}

qint64 SegmentReader::duration(const QString& path)
{
    SegmentReader reader;
    QString error;
    if (!reader.open({path, 0, 0}, &error))
        return 0;
    if (reader.m_input->duration > 0)
        return reader.m_input->duration / 1000;
    qint64 last = 0;
    while (const AVPacket* packet = reader.read())
        last = qMax(last, reader.momentOf(packet->pts + packet->duration));
    return last;
}
