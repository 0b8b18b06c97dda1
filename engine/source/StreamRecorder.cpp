#include "source/StreamRecorder.h"

#include "packets/MatroskaWriter.h"
#include "packets/PacketQueue.h"
#include "packets/PacketSink.h"
#include "source/VideoSource.h"

#include <mutex>

namespace {

constexpr std::chrono::seconds Patience{3};

} // namespace

/// Takes packets in the queue's thread, which alone knows the file once packets come.
class StreamRecorder::Writer : public PacketSink
{
public:
    explicit Writer(StreamRecorder* recorder) : m_recorder(recorder) {}

    bool open(const QString& path)
    {
        const bool isOpen = m_file.open(path);
        note();
        return isOpen;
    }

    void silence()
    {
        const std::lock_guard lock(m_mutex);
        m_recorder = nullptr;
    }

    void take(const PacketPtr& packet) override
    {
        if (!m_file.isOpen())
            return;
        const bool isWritten = m_file.write(*packet);
        note();
        if (!isWritten)
            tell(&StreamRecorder::takeFailure);
    }

    void skip() override
    {
        if (!std::exchange(m_hasSkipped, true))
            tell(&StreamRecorder::skipped);
    }

    void end() override
    {
        m_file.close();
        note();
    }

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
    void note()
    {
        const std::lock_guard lock(m_mutex);
        m_error = m_file.error();
        m_count = m_file.count();
    }

    void tell(void (StreamRecorder::*what)())
    {
        const std::lock_guard lock(m_mutex);
        if (m_recorder)
            QMetaObject::invokeMethod(m_recorder, what, Qt::QueuedConnection);
    }

    MatroskaWriter m_file;
    bool m_hasSkipped = false;
    mutable std::mutex m_mutex; ///< of what follows
    StreamRecorder* m_recorder;
    QString m_error;
    qint64 m_count = 0;
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
    m_queue = std::make_shared<PacketQueue>(m_writer);
    m_source->addSink(m_queue);
    return true;
}

void StreamRecorder::stop()
{
    if (m_source)
        m_source->removeSink(m_queue);
    m_writer->silence();
    if (!m_queue)
        return;
    m_queue->close();
    m_queue->wait(PacketQueue::Clock::now() + Patience);
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
        m_source->removeSink(m_queue);
    Q_EMIT failed(m_writer->error());
}
