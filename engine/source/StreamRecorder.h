#pragma once

#include <QObject>
#include <QPointer>

#include <memory>

class PacketQueue;
class VideoSource;

/// Writes a source's packets as they are into a Matroska file, from the next key frame on. The source never
/// waits for the disk.
class StreamRecorder : public QObject
{
    Q_OBJECT

public:
    /// Nothing is written before start().
    StreamRecorder(VideoSource* source, const QString& path, QObject* parent = nullptr);
    /// Ends the file.
    ~StreamRecorder() override;

    /// False if the file can't be made; error() tells why. A file of that name is written over.
    bool start();
    /// Ends the file when all that has come is written, waiting for a slow disk no longer than three seconds;
    /// one without a picture is removed.
    void stop();

    const QString& path() const { return m_path; }
    /// One line, empty while all is well.
    QString error() const;
    /// Packets written so far.
    qint64 packetCount() const;

Q_SIGNALS:
    /// The disk is full or the stream has changed; what was written until now is kept and the file is ended.
    void failed(const QString& error);
    /// The disk is too slow: pictures are left out up to a key frame. Told once.
    void skipped();

private:
    class Writer;

    void takeFailure();

    QPointer<VideoSource> m_source;
    QString m_path;
    std::shared_ptr<Writer> m_writer;
    std::shared_ptr<PacketQueue> m_queue;
};
