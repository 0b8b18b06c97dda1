#pragma once

#include "archive/Archive.h"

#include <QBasicTimer>
#include <QObject>
#include <QSharedPointer>

#include <memory>
#include <vector>

class ArchiveKeeper;
class PacketGate;
class PacketQueue;
class SegmentSink;
class VideoSource;
class WriteProgress;

/// Records sources into an archive without a break, as their packets come, in segments of a minute, with the
/// spans of motion and alarms. No source waits for the disk. What can't be written is told once for each
/// camera, tried again after two seconds, and told again when it goes well.
class ArchiveRecorder : public QObject
{
    Q_OBJECT

public:
    static constexpr qint64 SegmentMs = 60'000;

    /// The keeper, the archive's recorder, must outlive this.
    explicit ArchiveRecorder(ArchiveKeeper* keeper, qint64 segmentMs = SegmentMs, QObject* parent = nullptr);
    /// Ends the segments that are being written.
    ~ArchiveRecorder() override;

    enum class When
    {
        Always,
        OnMotion, ///< from five seconds before a motion or an alarm until ten after
    };

    /// `motionSource` is whose motion counts: a smaller stream of the same pictures, if there is one.
    void record(const QString& camera, QSharedPointer<VideoSource> source,
                QSharedPointer<VideoSource> motionSource = {}, When when = When::Always);
    /// Ends the running segment of a camera and its recording; of one that isn't recorded it does nothing.
    void forget(const QString& camera);
    /// Ends the running segment of a camera with the next key frame, where the next one begins.
    void cut(const QString& camera);
    /// An alarm of a camera begins or ends; of one that isn't recorded it is not kept.
    void setAlarm(const QString& camera, bool on);
    /// A number that grows while a camera is recorded as it is to be, and stands still while nothing of it
    /// comes or can be written; -1 for one that isn't recorded.
    qint64 progress(const QString& camera) const;
    /// Ends the running segments and the recording.
    void stop();

Q_SIGNALS:
    /// One line, once until it goes well again.
    void failed(const QString& camera, const QString& error);
    void wellAgain(const QString& camera);

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    /// A span that has begun; the index knows it as far as it has come.
    struct OpenSpan
    {
        Span::Kind kind;
        qint64 startMs = 0; ///< 0 while there is none
    };

    struct Channel
    {
        QString camera;
        QSharedPointer<VideoSource> source;
        QSharedPointer<VideoSource> motionSource;
        std::shared_ptr<SegmentSink> sink;
        std::shared_ptr<PacketGate> gate; ///< none where all is recorded
        std::shared_ptr<WriteProgress> progress;
        std::shared_ptr<PacketQueue> queue;
        OpenSpan motion{Span::Motion};
        OpenSpan alarm{Span::Alarm};
    };

    std::shared_ptr<SegmentSink> makeSink(const QString& camera);
    void end(std::vector<Channel> channels);
    void takeFailure(const QString& camera, const QString& error);
    void noteMotion(const VideoSource* source, bool motion);
    void setSpan(const Channel& channel, OpenSpan& span, bool on);
    void keepSpans();

    ArchiveKeeper* m_keeper;
    qint64 m_segmentMs;
    std::vector<Channel> m_channels;
    QBasicTimer m_spanTimer;
};
