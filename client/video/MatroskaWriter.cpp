#include "video/MatroskaWriter.h"

#include <QFile>

bool MatroskaWriter::open(const QString& path)
{
    close();
    prepareFFmpeg();
    m_path = path;
    m_format.reset();
    m_count = 0;
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
    if (packet.format != m_format && !packet.isKey())
        return true;
    int error = prepare(packet);
    if (error == AVERROR_INPUT_CHANGED)
        return fail("the stream has changed");
    if (error >= 0)
        error = append(packet);
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

int MatroskaWriter::begin(const EncodedPacket& packet)
{
    AVStream* stream = avformat_new_stream(m_output, nullptr);
    if (!stream)
        return AVERROR(ENOMEM);
    const int error = avcodec_parameters_copy(stream->codecpar, packet.format->parameters.get());
    if (error < 0)
        return error;
    stream->codecpar->codec_tag = 0;
    stream->time_base = packet.format->timeBase;
    m_offset = -packet.packet->dts;
    m_firstMs = packet.wallMs;
    // Nothing older than a second is lost if the program is killed.
    AVDictionary* options = nullptr;
    av_dict_set(&options, "cluster_time_limit", "1000", 0);
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
    const AvPacket own(av_packet_clone(packet.packet.get()));
    if (!own)
        return AVERROR(ENOMEM);
    own->pts += m_offset;
    own->dts += m_offset;
    own->stream_index = 0;
    m_lastDts = own->dts;
    m_lastMs = packet.wallMs;
    av_packet_rescale_ts(own.get(), packet.format->timeBase, m_output->streams[0]->time_base);
    const int error = av_write_frame(m_output, own.get());
    if (error < 0)
        return error;
    ++m_count;
    return m_output->pb->error;
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
    end();
    return false;
}
