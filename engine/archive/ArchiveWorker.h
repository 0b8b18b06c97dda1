#pragma once

#include "archive/ArchiveKeeper.h"
#include "archive/ArchiveLock.h"

#include <QBasicTimer>

/// What an ArchiveKeeper does in its thread.
class ArchiveWorker : public QObject
{
    Q_OBJECT

public:
    ArchiveWorker(const QString& directory, const ArchiveLimits& limits, Telling telling)
        : m_archive(directory, &contentOf, telling), m_limits(limits)
    {
    }

    const std::shared_ptr<ArchivePaths>& paths() const { return m_archive.paths(); }

    void start();
    /// Ends its thread.
    void end();
    void finish(const FinishedPart& part);
    void setSpans(const QVector<CameraSpan>& spans);
    void removeSample();
    void keepLimits();

Q_SIGNALS:
    void roleTaken(ArchiveRole role, const QString& reason);
    void changed(const QString& camera);
    void troubled(const QString& line);
    void sampleRemoved(int count);

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    using Clock = std::chrono::steady_clock;

    bool isRecorder() const { return m_role == ArchiveRole::Recorder; }
    void takeRole(ArchiveRole role, const QString& reason = {});
    void seekRole();
    void seekIndex();
    void checkIndex();
    bool isDamagedWithin();
    void look();
    void recover();
    void tell();

    Archive m_archive;
    ArchiveLimits m_limits;
    ArchiveLock m_lock;
    ArchiveRole m_role = ArchiveRole::Starting;
    QString m_reason;
    ArchiveIndex m_view; ///< of a viewer
    qint64 m_seenRow = 0;
    bool m_isSuspect = false; ///< the index did not look whole the last time
    Clock::time_point m_readNext;
    QString m_toldIndex; ///< why the index can't be written
    QBasicTimer m_tick;
    QBasicTimer m_recovery;
};
