#pragma once

#include "archive/RecordingReader.h"

#include <QImage>
#include <QObject>
#include <QSize>

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>

/// Small pictures of recordings, made in a thread of its own from the key frame at or before a moment. The
/// newest request comes first, and of those that wait for long the oldest are dropped.
class KeyPictures : public QObject
{
    Q_OBJECT

public:
    /// Pictures fit into `size`; no more than `most` requests wait.
    KeyPictures(ReaderMaker makeReader, QSize size, int most, QObject* parent = nullptr);
    ~KeyPictures() override;

    /// `camera` is the name that the archive knows it by. One that waits already comes first now.
    void ask(const QString& camera, qint64 ms);

Q_SIGNALS:
    /// Null where nothing was recorded, or can't be read. A request that was dropped is not answered.
    void made(const QString& camera, qint64 ms, const QImage& picture);

private:
    struct Request
    {
        QString camera;
        qint64 ms;

        bool operator==(const Request& other) const { return ms == other.ms && camera == other.camera; }
    };

    void run();

    ReaderMaker m_makeReader;
    QSize m_size;
    size_t m_most;
    std::mutex m_mutex;
    std::condition_variable m_asked;
    std::deque<Request> m_requests; ///< the newest last
    bool m_isEnding = false;
    std::thread m_thread;
};
