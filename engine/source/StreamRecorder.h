#pragma once

#include <QObject>
#include <QPointer>

#include <memory>

class VideoSource;

/// Writes a source's packets as they are into a Matroska file, from the next key frame on.
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
    /// Ends the file; one without a picture is removed.
    void stop();

    const QString& path() const { return m_path; }
    /// One line, empty while all is well.
    QString error() const;
    /// Packets written so far.
    qint64 packetCount() const;

Q_SIGNALS:
    /// The disk is full or the stream has changed; what was written until now is kept and the file is ended.
    void failed(const QString& error);

private:
    class Writer;

    void takeFailure();

    QPointer<VideoSource> m_source;
    QString m_path;
    std::shared_ptr<Writer> m_writer;
};
