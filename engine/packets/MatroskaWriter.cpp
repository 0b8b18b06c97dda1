#include "packets/MatroskaWriter.h"

#include <QFile>

bool MatroskaWriter::holds(const StreamFormat& format)
{
    const AVOutputFormat* matroska = av_guess_format("matroska", nullptr, nullptr);
    return matroska && avformat_query_codec(matroska, format.parameters->codec_id, FF_COMPLIANCE_NORMAL) == 1;
}

bool MatroskaWriter::open(const QString& path)
{
    close();
    prepareFFmpeg();
    m_path = path;
    m_format.reset();
    m_count = m_bytes = 0;
    m_error.clear();
    int error = avformat_alloc_output_context2(&m_output, nullptr, "matroska", nullptr);
    if (error >= 0)
        error = avio_open(&m_output->pb, ("file:" + path).toUtf8().constData(), AVIO_FLAG_WRITE);
    if (error >= 0)
        return true;
    return fail(errorText(error));
}

bool MatroskaWriter::write(const EncodedPacket& packet)
{
    if (!m_output)
        return false;
    const int error = packet.isSound() ? appendSound(packet) : append(packet);
    if (error == AVERROR_INPUT_CHANGED)
        return fail("the stream has changed");
    return error >= 0 || fail(errorText(error));
}

void MatroskaWriter::close()
{
    const bool isEmpty = m_output && m_count == 0;
    end();
    if (isEmpty)
        QFile::remove(m_path);
}

int MatroskaWriter::prepare(const EncodedPacket& packet)
{
    if (packet.format == m_format)
        return 0;
    return m_format ? goOn(packet) : begin(packet);
}

int MatroskaWriter::addStream(const StreamFormat& format)
{
    AVStream* stream = avformat_new_stream(m_output, nullptr);
    if (!stream)
        return AVERROR(ENOMEM);
    stream->time_base = format.timeBase;
    const int error = avcodec_parameters_copy(stream->codecpar, format.parameters.get());
    stream->codecpar->codec_tag = 0;
    return error;
}

int MatroskaWriter::begin(const EncodedPacket& packet)
{
    int error = addStream(*packet.format);
    if (error >= 0 && packet.format->sound)
        error = addStream(*packet.format->sound);
    if (error < 0)
        return error;
    m_offset = -packet.packet->dts;
    m_firstMs = packet.wallMs;
    m_lastSound = -1;
    m_lastDts = 0;
    m_firstPts = m_endPts = packet.packet->pts + m_offset;
    // Nothing older than a second is lost if the program is killed: a cluster is written when the next
    // begins.
    AVDictionary* options = nullptr;
    av_dict_set(&options, "cluster_time_limit", "500", 0);
    av_dict_set(&options, "flush_packets", "1", 0);
    const int written = avformat_write_header(m_output, &options);
    av_dict_free(&options);
    if (written >= 0)
        m_format = packet.format;
    return written;
}

/// After a loss the same stream comes back with times of its own: the file goes on by the clock.
int MatroskaWriter::goOn(const EncodedPacket& packet)
{
    if (!m_format->isLike(*packet.format))
        return AVERROR_INPUT_CHANGED;
    const int64_t gapUs = qMax<int64_t>(1, packet.wallMs - m_lastMs) * 1000;
    const int64_t gap = qMax<int64_t>(1, av_rescale_q(gapUs, Microseconds, packet.format->timeBase));
    m_offset = m_lastDts + gap - packet.packet->dts;
    m_format = packet.format;
    return 0;
}

int MatroskaWriter::append(const EncodedPacket& packet)
{
    if (packet.format != m_format && !packet.isKey())
        return 0;
    const int prepared = prepare(packet);
    if (prepared < 0)
        return prepared;
    const int64_t step = packet.packet->dts + m_offset - m_lastDts;
    m_lastDts += step;
    m_lastMs = packet.wallMs;
    const int error = store(packet, m_offset, 0);
    if (error < 0)
        return error;
    ++m_count;
    const int64_t shown = packet.packet->duration > 0 ? packet.packet->duration : step;
    m_firstPts = qMin(m_firstPts, packet.packet->pts + m_offset);
    m_endPts = qMax(m_endPts, packet.packet->pts + m_offset + shown);
    return error;
}

qint64 MatroskaWriter::lengthMs() const
{
    return m_format ? av_rescale_q(m_endPts - m_firstPts, m_format->timeBase, {1, 1000}) : 0;
}

int MatroskaWriter::appendSound(const EncodedPacket& packet)
{
    if (!m_format || packet.format != m_format->sound)
        return 0;
    const int64_t offset = av_rescale_q(m_offset, m_format->timeBase, packet.format->timeBase);
    if (packet.packet->dts + offset <= m_lastSound)
        return 0;
    m_lastSound = packet.packet->dts + offset;
    return store(packet, offset, 1);
}

int MatroskaWriter::store(const EncodedPacket& packet, int64_t offset, int stream)
{
    const AvPacket own(av_packet_clone(packet.packet.get()));
    if (!own)
        return AVERROR(ENOMEM);
    own->pts += offset;
    own->dts += offset;
    own->stream_index = stream;
    av_packet_rescale_ts(own.get(), packet.format->timeBase, m_output->streams[stream]->time_base);
    m_bytes += own->size;
    const int error = av_write_frame(m_output, own.get());
    return error < 0 ? error : m_output->pb->error;
}

void MatroskaWriter::end()
{
    if (!m_output)
        return;
    if (m_format && av_write_trailer(m_output) < 0 && m_error.isEmpty())
        m_error = QString("cannot end %1").arg(m_path);
    if (m_output->pb)
        avio_closep(&m_output->pb);
    avformat_free_context(m_output);
    m_output = nullptr;
}

bool MatroskaWriter::fail(const QString& reason)
{
    m_error = QString("cannot write %1: %2").arg(m_path, reason);
    // What could not be opened is not this one's.
    const bool isEmpty = m_output && m_output->pb && m_count == 0;
    end();
    if (isEmpty)
        QFile::remove(m_path);
    return false;
}
