#include "archive/ArchiveRecorder.h"

#include "archive/SegmentSink.h"
#include "source/VideoSource.h"

#include <QDateTime>

ArchiveRecorder::ArchiveRecorder(Archive* archive, qint64 limitBytes, qint64 segmentMs, QObject* parent)
    : QObject(parent), m_pArchive(archive), m_nLimitBytes(limitBytes), m_nSegmentMs(segmentMs)
{
}

ArchiveRecorder::~ArchiveRecorder()
{
    stop();
}

void ArchiveRecorder::record(const QString& camera, QSharedPointer<VideoSource> source)
{
    auto sink = std::make_shared<SegmentSink>(this, *m_pArchive, camera, m_nSegmentMs);
    source->addSink(sink);
    connect(source.data(), SIGNAL(motionChanged(bool)), SLOT(slot_motion(bool)));
    source->setMotionDetection(true);
    Channel channel;
    channel.camera = camera;
    channel.source = source;
    channel.sink = sink;
    m_vecChannels.push_back(channel);
}

void ArchiveRecorder::stop()
{
    for (Channel& channel : m_vecChannels) {
        channel.source->removeSink(channel.sink);
        disconnect(channel.source.data(), nullptr, this, nullptr);
        channel.sink->close();
        CollectFrom(channel);
        EndSpans(channel, false);
    }
    m_vecChannels.clear();
}

void ArchiveRecorder::collect()
{
    QStringList changed;
    QString error;
    for (Channel& channel : m_vecChannels) {
        const QString reason = channel.sink->takeError();
        if (!reason.isEmpty())
            error = reason;
        if (CollectFrom(channel))
            changed.append(channel.camera);
    }
    if (!error.isEmpty() && !m_bTold) {
        m_bTold = true;
        Q_EMIT failed(error);
    } else if (error.isEmpty() && !changed.isEmpty()) {
        m_bTold = false;
    }
    for (const QString& camera : qAsConst(changed))
        Q_EMIT recorded(camera);
}

bool ArchiveRecorder::CollectFrom(Channel& channel)
{
    const std::vector<FinishedPart> parts = channel.sink->takeFinished();
    for (const FinishedPart& part : parts) {
        if (part.isWhole)
            m_pArchive->Finish(part.path, channel.camera, part.startMs, part.endMs);
        else
            m_pArchive->Recover(part.path);
    }
    if (parts.empty())
        return false;
    // The index should know of motion and alarms as far as it knows of recordings.
    EndSpans(channel, true);
    m_pArchive->Limit(m_nLimitBytes);
    return true;
}

void ArchiveRecorder::slot_motion(bool motion)
{
    for (Channel& channel : m_vecChannels) {
        if (channel.source.data() == sender())
            SetSpan(channel, channel.motion, motion, QDateTime::currentMSecsSinceEpoch());
    }
}

void ArchiveRecorder::setAlarm(const QString& camera, bool on)
{
    for (Channel& channel : m_vecChannels) {
        if (channel.camera != camera ||
            !SetSpan(channel, channel.alarm, on, QDateTime::currentMSecsSinceEpoch()))
            continue;
        Q_EMIT recorded(camera);
        return;
    }
}

/// True if the index has a new span.
bool ArchiveRecorder::SetSpan(const Channel& channel, OpenSpan& span, bool on, qint64 now)
{
    if (on && span.startMs == 0)
        span.startMs = now;
    if (on || span.startMs == 0)
        return false;
    const qint64 start = std::exchange(span.startMs, 0);
    return now > start && m_pArchive->Index().AddSpan(channel.camera, {span.kind, start, now});
}

void ArchiveRecorder::EndSpans(Channel& channel, bool goOn)
{
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    for (OpenSpan* span : {&channel.motion, &channel.alarm}) {
        const bool isOpen = span->startMs > 0;
        SetSpan(channel, *span, false, now);
        SetSpan(channel, *span, isOpen && goOn, now);
    }
}
