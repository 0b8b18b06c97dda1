#include "archive/ArchiveRecorder.h"

#include "archive/SegmentSink.h"
#include "video/VideoSource.h"

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
    m_vecChannels.push_back({camera, source, sink});
}

void ArchiveRecorder::stop()
{
    for (Channel& channel : m_vecChannels) {
        channel.source->removeSink(channel.sink);
        disconnect(channel.source.data(), nullptr, this, nullptr);
        channel.sink->close();
        CollectFrom(channel);
        AddMotion(channel, false);
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
    for (const FinishedPart& part : parts)
        m_pArchive->Finish(part.path, channel.camera, part.startMs, part.endMs);
    if (parts.empty())
        return false;
    // The index should know of motion as far as it knows of recordings.
    AddMotion(channel, true);
    m_pArchive->Limit(m_nLimitBytes);
    return true;
}

void ArchiveRecorder::slot_motion(bool motion)
{
    for (Channel& channel : m_vecChannels) {
        if (channel.source.data() != sender())
            continue;
        if (motion && channel.motionStartMs == 0)
            channel.motionStartMs = QDateTime::currentMSecsSinceEpoch();
        else if (!motion)
            AddMotion(channel, false);
    }
}

void ArchiveRecorder::AddMotion(Channel& channel, bool goesOn)
{
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    if (channel.motionStartMs > 0 && now > channel.motionStartMs)
        m_pArchive->Index().AddSpan(channel.camera, {Span::Motion, channel.motionStartMs, now});
    channel.motionStartMs = goesOn && channel.motionStartMs > 0 ? now : 0;
}
