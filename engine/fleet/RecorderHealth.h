#pragma once

#include <QDeadlineTimer>
#include <QStringList>

/// Whether a recorder can record at all, by how it goes with its cameras. A disk that can't be written, or
/// stays all but full, or none of several cameras that comes, is the recorder's own trouble; it then rests
/// for half a minute, and longer each time that it comes back soon. One thread; it waits for the disk.
class RecorderHealth
{
public:
    /// `directory` is that of the archive.
    explicit RecorderHealth(const QString& directory) : m_directory(directory) {}

    /// These cameras are not recorded now; the disk is in doubt if packets of any come all the same.
    void setStalled(const QStringList& cameras, bool isDiskInDoubt);
    const QStringList& stalled() const { return m_stalled; }

    /// Looks how it goes, once a second; `held` are the cameras that are to be recorded. True if that is
    /// news.
    bool look(const QStringList& held);
    bool isWell() const { return m_reason.isEmpty(); }
    /// Why it is not well, one line.
    const QString& reason() const { return m_reason; }

private:
    QString trouble(const QStringList& held);
    bool isAlone(const QStringList& held) const;
    bool isDiskFine();
    void rest(const QString& reason);

    QString m_directory;
    QStringList m_stalled;
    bool m_isDiskInDoubt = false;
    int m_fullSteps = 0; ///< how often the disk was all but full, one after the other
    QString m_reason;
    int m_restMs = 0;
    QDeadlineTimer m_rest;      ///< until it may be well again
    QDeadlineTimer m_trial;     ///< until its last rest is forgotten
    QDeadlineTimer m_nextProbe; ///< of a disk in doubt
};
