#include "video/StreamRecorder.h"

#include "video/EncodedPacket.h"
#include "video/PacketSink.h"
#include "video/VideoSource.h"

#include <QFile>

/// Takes packets in the source's thread; the GUI opens and closes it.
class StreamRecorder::Writer : public PacketSink
{
public:
    Writer(StreamRecorder* recorder, const QString& path) : m_recorder(recorder), m_path(path) {}

    bool open();
    void close();
    void take(const PacketPtr& packet) override;

    QString error() const
    {
        const std::lock_guard lock(m_mutex);
        return m_error;
    }

    qint64 count() const
    {
        const std::lock_guard lock(m_mutex);
        return m_count;
    }

private:
    int begin(const EncodedPacket& packet);
    int goOn(const EncodedPacket& packet);
    int write(const EncodedPacket& packet);
    void end();
    void fail(const QString& reason);

    mutable std::mutex m_mutex;
    StreamRecorder* m_recorder;
    const QString m_path;
    AVFormatContext* m_output = nullptr;
    std::shared_ptr<const StreamFormat> m_format;
    int64_t m_offset = 0; ///< from a packet's times to the file's, on the stream's time base
    int64_t m_lastDts = 0;
    qint64 m_lastMs = 0;
    qint64 m_count = 0;
    QString m_error;
};

bool StreamRecorder::Writer::open()
{
    const std::lock_guard lock(m_mutex);
    prepareFFmpeg();
    int error = avformat_alloc_output_context2(&m_output, nullptr, "matroska", nullptr);
    if (error >= 0)
        error = avio_open(&m_output->pb, ("file:" + m_path).toUtf8().constData(), AVIO_FLAG_WRITE);
    if (error >= 0)
        return true;
    m_error = QString("cannot write %1: %2").arg(m_path, errorText(error));
    end();
    return false;
}

void StreamRecorder::Writer::close()
{
    const std::lock_guard lock(m_mutex);
    m_recorder = nullptr;
    const bool isEmpty = m_output && m_count == 0;
    end();
    if (isEmpty)
        QFile::remove(m_path);
}

void StreamRecorder::Writer::take(const PacketPtr& packet)
{
    const std::lock_guard lock(m_mutex);
    if (!m_output)
        return;
    if (packet->format != m_format) {
        if (!packet->isKey())
            return;
        const int error = m_format ? goOn(*packet) : begin(*packet);
        if (error < 0) {
            fail(error == AVERROR_INPUT_CHANGED ? QString("the stream has changed") : errorText(error));
            return;
        }
    }
    const int error = write(*packet);
    if (error < 0)
        fail(errorText(error));
}

int StreamRecorder::Writer::begin(const EncodedPacket& packet)
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
int StreamRecorder::Writer::goOn(const EncodedPacket& packet)
{
    if (!m_format->isLike(*packet.format))
        return AVERROR_INPUT_CHANGED;
    const int64_t gapUs = qMax<int64_t>(1, packet.wallMs - m_lastMs) * 1000;
    const int64_t gap = qMax<int64_t>(1, av_rescale_q(gapUs, Microseconds, packet.format->timeBase));
    m_offset = m_lastDts + gap - packet.packet->dts;
    m_format = packet.format;
    return 0;
}

int StreamRecorder::Writer::write(const EncodedPacket& packet)
{
    const AvPacket own(av_packet_clone(packet.packet.get()));
    if (!own)
        return AVERROR(ENOMEM);
    own->pts += m_offset;
    own->dts += m_offset;
    m_lastDts = own->dts;
    m_lastMs = packet.wallMs;
    av_packet_rescale_ts(own.get(), packet.format->timeBase, m_output->streams[0]->time_base);
    const int error = av_write_frame(m_output, own.get());
    if (error < 0)
        return error;
    ++m_count;
    return m_output->pb->error;
}

void StreamRecorder::Writer::end()
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

void StreamRecorder::Writer::fail(const QString& reason)
{
    m_error = QString("cannot write %1: %2").arg(m_path, reason);
    end();
    if (m_recorder)
        QMetaObject::invokeMethod(m_recorder, "takeFailure", Qt::QueuedConnection);
}

StreamRecorder::StreamRecorder(VideoSource* source, const QString& path, QObject* parent)
    : QObject(parent), m_source(source), m_path(path), m_writer(std::make_shared<Writer>(this, path))
{
}

StreamRecorder::~StreamRecorder()
{
    stop();
}

bool StreamRecorder::start()
{
    if (!m_source || !m_writer->open())
        return false;
    m_source->addSink(m_writer);
    return true;
}

void StreamRecorder::stop()
{
    if (m_source)
        m_source->removeSink(m_writer);
    m_writer->close();
}

QString StreamRecorder::error() const
{
    return m_writer->error();
}

qint64 StreamRecorder::packetCount() const
{
    return m_writer->count();
}

void StreamRecorder::takeFailure()
{
    if (m_source)
        m_source->removeSink(m_writer);
    Q_EMIT failed(m_writer->error());
}
