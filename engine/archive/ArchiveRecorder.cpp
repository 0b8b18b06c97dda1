#include "archive/ArchiveRecorder.h"

#include "archive/SegmentSink.h"
#include "source/VideoSource.h"

#include <QDateTime>

ArchiveRecorder::ArchiveRecorder(Archive* archive, qint64 limitBytes, qint64 segmentMs, QObject* parent)
    : QObject(parent), m_archive(archive), m_limitBytes(limitBytes), m_segmentMs(segmentMs)
{
}

ArchiveRecorder::~ArchiveRecorder()
{
    stop();
}

void ArchiveRecorder::record(const QString& camera, QSharedPointer<VideoSource> source)
{
    auto sink = std::make_shared<SegmentSink>(
        this, [this] { collect(); }, *m_archive, camera, m_segmentMs);
    source->addSink(sink);
    connect(source.data(), &VideoSource::motionChanged, this,
            [this, from = source.data()](bool motion) { noteMotion(from, motion); });
    source->setMotionDetection(true);
    Channel channel;
    channel.camera = camera;
    channel.source = source;
    channel.sink = sink;
    m_channels.push_back(channel);
}

void ArchiveRecorder::stop()
{
    for (Channel& channel : m_channels) {
        channel.source->removeSink(channel.sink);
        disconnect(channel.source.data(), nullptr, this, nullptr);
        channel.sink->close();
        collectFrom(channel);
        endSpans(channel, false);
    }
    m_channels.clear();
}

void ArchiveRecorder::collect()
{
    QStringList changed;
    QString error;
    for (Channel& channel : m_channels) {
        const QString reason = channel.sink->takeError();
        if (!reason.isEmpty())
            error = reason;
        if (collectFrom(channel))
            changed.append(channel.camera);
    }
    if (!error.isEmpty() && !m_isTold) {
        m_isTold = true;
        Q_EMIT failed(error);
    } else if (error.isEmpty() && !changed.isEmpty()) {
        m_isTold = false;
    }
    for (const QString& camera : qAsConst(changed))
        Q_EMIT recorded(camera);
}

bool ArchiveRecorder::collectFrom(Channel& channel)
{
    const std::vector<FinishedPart> parts = channel.sink->takeFinished();
    for (const FinishedPart& part : parts) {
        if (part.isWhole)
            m_archive->finish(part.path, channel.camera, part.startMs, part.endMs);
        else
            m_archive->recover(part.path);
    }
    if (parts.empty())
        return false;
    // The index should know of motion and alarms as far as it knows of recordings.
    endSpans(channel, true);
    m_archive->limit(m_limitBytes);
    return true;
}

void ArchiveRecorder::noteMotion(const VideoSource* source, bool motion)
{
    for (Channel& channel : m_channels) {
        if (channel.source.data() == source)
            setSpan(channel, channel.motion, motion, QDateTime::currentMSecsSinceEpoch());
    }
}

void ArchiveRecorder::setAlarm(const QString& camera, bool on)
{
    for (Channel& channel : m_channels) {
        if (channel.camera != camera ||
            !setSpan(channel, channel.alarm, on, QDateTime::currentMSecsSinceEpoch()))
            continue;
        Q_EMIT recorded(camera);
        return;
    }
}

/// True if the index has a new span.
bool ArchiveRecorder::setSpan(const Channel& channel, OpenSpan& span, bool on, qint64 now)
{
    if (on && span.startMs == 0)
        span.startMs = now;
    if (on || span.startMs == 0)
        return false;
    const qint64 start = std::exchange(span.startMs, 0);
    return now > start && m_archive->index().addSpan(channel.camera, {span.kind, start, now});
}

void ArchiveRecorder::endSpans(Channel& channel, bool goOn)
{
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    for (OpenSpan* span : {&channel.motion, &channel.alarm}) {
        const bool isOpen = span->startMs > 0;
        setSpan(channel, *span, false, now);
        setSpan(channel, *span, isOpen && goOn, now);
    }
}
