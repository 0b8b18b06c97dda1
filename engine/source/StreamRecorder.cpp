#include "source/StreamRecorder.h"

#include "packets/MatroskaWriter.h"
#include "packets/PacketSink.h"
#include "source/VideoSource.h"

#include <mutex>

/// Takes packets in the source's thread; the recorder opens and closes it.
class StreamRecorder::Writer : public PacketSink
{
public:
    explicit Writer(StreamRecorder* recorder) : m_recorder(recorder) {}

    bool open(const QString& path)
    {
        const std::lock_guard lock(m_mutex);
        return m_file.open(path);
    }

    void close()
    {
        const std::lock_guard lock(m_mutex);
        m_recorder = nullptr;
        m_file.close();
    }

    void take(const PacketPtr& packet) override
    {
        const std::lock_guard lock(m_mutex);
        if (m_file.isOpen() && !m_file.write(*packet) && m_recorder)
            QMetaObject::invokeMethod(m_recorder, &StreamRecorder::takeFailure, Qt::QueuedConnection);
    }

    QString error() const
    {
        const std::lock_guard lock(m_mutex);
        return m_file.error();
    }

    qint64 count() const
    {
        const std::lock_guard lock(m_mutex);
        return m_file.count();
    }

private:
    mutable std::mutex m_mutex;
    StreamRecorder* m_recorder;
    MatroskaWriter m_file;
};

StreamRecorder::StreamRecorder(VideoSource* source, const QString& path, QObject* parent)
    : QObject(parent), m_source(source), m_path(path), m_writer(std::make_shared<Writer>(this))
{
}

StreamRecorder::~StreamRecorder()
{
    stop();
}

bool StreamRecorder::start()
{
    if (!m_source || !m_writer->open(m_path))
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
