#include "archive/SegmentReader.h"

#include "archive/RecordingAccess.h"

namespace {

constexpr AVRational Milliseconds{1, 1000};
/// That of a single picture.
constexpr qint64 ShortestMs = 40;

} // namespace

bool SegmentReader::open(const TrackPiece& piece, QString* error, Expect expect)
{
    prepareFFmpeg();
    m_piece = piece;
    m_packet.reset(av_packet_alloc());
    AVFormatContext* context = nullptr;
    AVDictionary* options = RecordingAccess::options(piece.path);
    const AVInputFormat* expected = expect == Expect::Recording ? av_find_input_format("matroska") : nullptr;
    int result =
        avformat_open_input(&context, RecordingAccess::location(piece.path).constData(), expected, &options);
    av_dict_free(&options);
    m_input.reset(context);
    if (result >= 0)
        result = avformat_find_stream_info(context, nullptr);
    if (result >= 0)
        m_streams = InputStreams(*context);
    if (result >= 0 && m_streams.pictures() < 0)
        result = m_streams.pictures();
    if (result < 0 || !m_packet || !format()) {
        *error = refusal(result < 0 ? result : AVERROR(ENOMEM));
        return false;
    }
    const AVStream& stream = *context->streams[m_streams.pictures()];
    m_firstStamp = stream.start_time == AV_NOPTS_VALUE ? 0 : stream.start_time;
    return true;
}

QString SegmentReader::refusal(int error) const
{
    return "cannot open " + m_piece.path + ": " + errorText(error);
}

QString SegmentReader::trouble() const
{
    return m_end < 0 && m_end != AVERROR_EOF ? refusal(m_end) : QString();
}

void SegmentReader::seek(qint64 ms)
{
    const int64_t stamp =
        m_firstStamp + av_rescale_q(qMax<qint64>(0, ms - m_piece.startMs), Milliseconds, format()->timeBase);
    if (av_seek_frame(m_input.get(), m_streams.pictures(), stamp, AVSEEK_FLAG_BACKWARD) < 0)
        av_seek_frame(m_input.get(), -1, 0, AVSEEK_FLAG_BYTE);
}

const AVPacket* SegmentReader::read()
{
    while (true) {
        av_packet_unref(m_packet.get());
        m_end = av_read_frame(m_input.get(), m_packet.get());
        if (m_end < 0)
            return nullptr;
        if (m_packet->stream_index != m_streams.pictures() && !isSound(*m_packet))
            continue;
        if (m_packet->dts == AV_NOPTS_VALUE)
            m_packet->dts = m_packet->pts;
        if (m_packet->pts == AV_NOPTS_VALUE)
            m_packet->pts = m_packet->dts;
        if (m_packet->pts != AV_NOPTS_VALUE)
            return m_packet.get();
    }
}

qint64 SegmentReader::momentOf(int64_t stamp, bool isSound) const
{
    const AVRational base = isSound ? soundFormat()->timeBase : format()->timeBase;
    const int64_t first = isSound ? av_rescale_q(m_firstStamp, format()->timeBase, base) : m_firstStamp;
    return m_piece.startMs + av_rescale_q(stamp - first, base, Milliseconds);
}

qint64 SegmentReader::measure()
{
    // What is guessed from the size of a file that was not ended is far off.
    if (m_input->duration > 0 && m_input->duration_estimation_method != AVFMT_DURATION_FROM_BITRATE)
        return m_input->duration / 1000;
    std::optional<qint64> last;
    while (const AVPacket* packet = read()) {
        if (!isSound(*packet))
            last = qMax(last.value_or(0), momentOf(packet->pts + packet->duration) - m_piece.startMs);
    }
    return last ? qMax(*last, ShortestMs) : 0;
}

qint64 SegmentReader::duration(const QString& path)
{
    SegmentReader reader;
    QString error;
    return reader.open({path, 0, 0}, &error) ? reader.measure() : 0;
}
