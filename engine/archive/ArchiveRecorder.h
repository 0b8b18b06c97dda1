#pragma once

#include "archive/Archive.h"

#include <QObject>
#include <QSharedPointer>

#include <memory>
#include <vector>

class SegmentSink;
class VideoSource;

/// Records sources into an archive without a break, as their packets come, in segments of a minute, with the
/// spans of motion and alarms. What can't be written is told once, and tried again a minute later.
class ArchiveRecorder : public QObject
{
    Q_OBJECT

public:
    static constexpr qint64 SegmentMs = 60'000;

    /// `limitBytes` is how much the archive may hold; the oldest segments go. The archive must outlive the
    /// recorder.
    ArchiveRecorder(Archive* archive, qint64 limitBytes, qint64 segmentMs = SegmentMs,
                    QObject* parent = nullptr);
    /// Ends the segments that are being written.
    ~ArchiveRecorder() override;

    void record(const QString& camera, QSharedPointer<VideoSource> source);
    /// An alarm of a camera begins or ends; of one that isn't recorded it is not kept.
    void setAlarm(const QString& camera, bool on);
    /// Ends the running segments and the recording.
    void stop();

Q_SIGNALS:
    /// The archive knows more, or less, of this camera now.
    void recorded(const QString& camera);
    /// One line, once until something could be written again.
    void failed(const QString& error);

private:
    /// A span that has begun and is not in the index yet.
    struct OpenSpan
    {
        Span::Kind kind;
        qint64 startMs = 0; ///< 0 while there is none
    };

    struct Channel
    {
        QString camera;
        QSharedPointer<VideoSource> source;
        std::shared_ptr<SegmentSink> sink;
        OpenSpan motion{Span::Motion};
        OpenSpan alarm{Span::Alarm};
    };

    void collect();
    void noteMotion(const VideoSource* source, bool motion);
    bool collectFrom(Channel& channel);
    bool setSpan(const Channel& channel, OpenSpan& span, bool on, qint64 now);
    void endSpans(Channel& channel, bool goOn);

    Archive* m_archive;
    qint64 m_limitBytes;
    qint64 m_segmentMs;
    std::vector<Channel> m_channels;
    bool m_isTold = false;
};
