#pragma once

#include "archive/Archive.h"

#include <QObject>

class ArchiveWorker;
class QThread;

/// What this program may do with an archive.
enum class ArchiveRole
{
    Starting,
    Unusable,
    Viewer,  ///< another program records there
    Recorder ///< it holds the archive's lock
};

Q_DECLARE_METATYPE(ArchiveRole)

/// An archive in a thread of its own, which does all that may have to wait: files are finished and deleted
/// there, the index is written, the limits are kept. It looks for the archive's lock until it has it, and
/// goes on looking where an archive can't be used.
class ArchiveKeeper : public QObject
{
    Q_OBJECT

public:
    ArchiveKeeper(const QString& directory, const ArchiveLimits& limits, QObject* parent = nullptr,
                  Telling telling = Telling::Nobody);
    /// Ends what was asked for before, within a few seconds.
    ~ArchiveKeeper() override;

    void start();
    ArchiveRole role() const { return m_role; }
    /// Why the archive can't be used, one line.
    const QString& reason() const { return m_reason; }
    const std::shared_ptr<ArchivePaths>& paths() const { return m_paths; }

    // What is asked for happens soon, in order; any thread. Who isn't the recorder asks for nothing.
    void finish(const FinishedPart& part);
    void setSpans(const QVector<CameraSpan>& spans);
    void removeSample();
    /// The disk is full: the oldest are to go at once.
    void makeRoom();

Q_SIGNALS:
    /// role() or reason() is new.
    void roleChanged();
    /// The archive knows more, or less, of this camera now; of all cameras if the name is empty.
    void changed(const QString& camera);
    /// Something is wrong with a single file, or with the index; one line, told once.
    void troubled(const QString& line);
    void sampleRemoved(int count);

private:
    void takeRole(ArchiveRole role, const QString& reason);

    std::shared_ptr<ArchivePaths> m_paths;
    QThread* m_thread;
    ArchiveWorker* m_worker;
    ArchiveRole m_role = ArchiveRole::Starting;
    QString m_reason;
};
