#include "archive/ArchiveWorker.h"

#include "archive/DiskRoom.h"

#include <QDateTime>
#include <QDir>
#include <QSet>
#include <QThread>
#include <QTimerEvent>

#include <algorithm>

namespace {

constexpr int TickMs = 1000;
constexpr int RowsAtOnce = 1000;
/// Between two readings of the whole index: at least so long, and so many times as long as one takes.
constexpr std::chrono::seconds ReadPause{5};
constexpr int ReadShare = 50;

} // namespace

void ArchiveWorker::start()
{
    m_tick.start(TickMs, this);
    seekRole();
}

void ArchiveWorker::end()
{
    m_tick.stop();
    m_recovery.stop();
    m_archive.flush();
    m_archive.close();
    m_view.close();
    m_lock.release();
    thread()->quit();
}

void ArchiveWorker::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == m_recovery.timerId()) {
        recover();
        return;
    }
    if (isRecorder() && m_lock.isTaken()) {
        checkIndex();
        keepLimits();
        return;
    }
    seekRole();
    if (m_role == ArchiveRole::Viewer)
        look();
}

void ArchiveWorker::takeRole(ArchiveRole role, const QString& reason)
{
    if (role == m_role && reason == m_reason)
        return;
    m_role = role;
    m_reason = reason;
    Q_EMIT roleTaken(role, reason);
}

void ArchiveWorker::seekRole()
{
    const QString& directory = paths()->directory();
    QString error;
    m_recovery.stop();
    m_archive.close();
    if (!QDir().mkpath(directory)) {
        takeRole(ArchiveRole::Unusable, "can't make the archive's directory " + directory);
        return;
    }
    const ArchiveLock::Answer answer = m_lock.take(directory, &error);
    if (answer != ArchiveLock::Answer::Taken) {
        const bool isFailed = answer == ArchiveLock::Answer::Failed;
        takeRole(isFailed ? ArchiveRole::Unusable : ArchiveRole::Viewer, error);
        return;
    }
    m_view.close();
    seekIndex();
}

/// A recorder goes on without an index that another program holds for a while.
void ArchiveWorker::seekIndex()
{
    QString error;
    const bool isOpen = m_archive.open(&error);
    if (!isOpen && m_archive.index().result() != ArchiveIndex::Result::Busy) {
        m_lock.release();
        takeRole(ArchiveRole::Unusable, error);
        return;
    }
    if (isOpen)
        m_recovery.start(0, this);
    takeRole(ArchiveRole::Recorder);
    tell();
}

void ArchiveWorker::checkIndex()
{
    if (!m_archive.index().isOpen()) {
        seekIndex();
        return;
    }
    // Another program that writes into it may be half through.
    const bool wasSuspect = std::exchange(m_isSuspect, !m_archive.index().isIntact());
    const ArchiveIndex::Result result = m_archive.flush();
    if (result == ArchiveIndex::Result::Damaged || (wasSuspect && m_isSuspect) || isDamagedWithin()) {
        QString error;
        m_isSuspect = false;
        if (m_archive.remakeDamaged(&error))
            m_recovery.start(0, this);
    }
    const bool isFailed = result == ArchiveIndex::Result::Failed;
    const QString reason = isFailed ? m_archive.index().reason() : QString();
    if (isFailed && m_toldIndex.isEmpty())
        Q_EMIT troubled("can't write the archive's index: " + reason);
    m_toldIndex = reason;
    tell();
}

/// Reads the index as somebody else would, past what this one remembers of it; the longer that takes the more
/// seldom.
bool ArchiveWorker::isDamagedWithin()
{
    const Clock::time_point start = Clock::now();
    if (start < m_readNext)
        return false;
    QString error;
    ArchiveIndex view;
    const bool isSound =
        view.open(paths()->directory(), &error, ArchiveIndex::Access::Read) && view.isSound();
    const bool contradictsItself = view.isOpen() && view.result() == ArchiveIndex::Result::Done;
    m_readNext = Clock::now() + std::max<Clock::duration>(ReadPause, ReadShare * (Clock::now() - start));
    return !isSound && (contradictsItself || view.result() == ArchiveIndex::Result::Damaged);
}

void ArchiveWorker::keepLimits()
{
    if (!isRecorder() || !m_archive.index().isOpen())
        return;
    const DiskRoom room = DiskRoom::of(paths()->directory());
    paths()->setRoom(qMin(m_limits.bytes, room.total - room.reserve()));
    m_archive.limit(m_limits, QDateTime::currentMSecsSinceEpoch());
    tell();
}

/// What has come to an archive that another program writes.
void ArchiveWorker::look()
{
    QString error;
    if (!m_view.isIntact()) {
        if (!m_view.open(paths()->directory(), &error, ArchiveIndex::Access::Read))
            return;
        m_seenRow = m_view.lastRow();
        Q_EMIT changed({});
        return;
    }
    QSet<QString> cameras;
    const QVector<Segment> found = m_view.after(m_seenRow, RowsAtOnce);
    for (const Segment& segment : found) {
        m_seenRow = segment.row;
        cameras.insert(segment.camera);
    }
    for (const QString& camera : qAsConst(cameras))
        Q_EMIT changed(camera);
}

void ArchiveWorker::recover()
{
    if (!m_archive.recoverSome())
        m_recovery.stop();
    tell();
}

void ArchiveWorker::tell()
{
    const QStringList cameras = m_archive.takeChanged();
    for (const QString& camera : cameras)
        Q_EMIT changed(camera);
    const QStringList troubles = m_archive.takeTroubles();
    for (const QString& line : troubles)
        Q_EMIT troubled(line);
}

void ArchiveWorker::finish(const FinishedPart& part)
{
    if (!isRecorder())
        return;
    m_archive.finish(part);
    keepLimits();
    tell();
}

void ArchiveWorker::setSpans(const QVector<CameraSpan>& spans)
{
    if (!isRecorder())
        return;
    m_archive.setSpans(spans);
    tell();
}

void ArchiveWorker::removeSample()
{
    const int count = isRecorder() ? m_archive.removeSample() : 0;
    tell();
    Q_EMIT sampleRemoved(count);
}
