#pragma once

#include <QString>

/// Decides which program records into an archive: the one that holds its lock. The lock goes with its
/// holder's death, however it dies.
class ArchiveLock
{
public:
    enum class Answer
    {
        Taken,
        HeldElsewhere, ///< by another program, or by another lock of this one
        Failed,
    };

    ArchiveLock() = default;
    ~ArchiveLock() { release(); }
    ArchiveLock(const ArchiveLock&) = delete;
    ArchiveLock& operator=(const ArchiveLock&) = delete;

    /// Doesn't wait. On a failure `error` is one line.
    Answer take(const QString& directory, QString* error);
    /// True while it is taken and the file that it lies on is the directory's still.
    bool isTaken() const;
    void release();

private:
    QByteArray m_path;
    int m_file = -1;
};
