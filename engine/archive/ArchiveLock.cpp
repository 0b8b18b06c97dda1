#include "archive/ArchiveLock.h"

#include <QFile>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

ArchiveLock::Answer ArchiveLock::take(const QString& directory, QString* error)
{
    release();
    m_path = QFile::encodeName(directory + "/lock");
    m_file = ::open(m_path.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0644);
    // Of a lock on an open file description a second one in this process is refused as any other is.
    const bool isTakenNow = m_file >= 0 && ::flock(m_file, LOCK_EX | LOCK_NB) == 0;
    const int reason = errno;
    if (isTakenNow && isTaken())
        return Answer::Taken;
    const bool isHeldElsewhere = isTakenNow || (m_file >= 0 && reason == EWOULDBLOCK);
    release();
    if (!isHeldElsewhere)
        *error = QString("can't lock the archive: %1").arg(QString::fromLocal8Bit(std::strerror(reason)));
    return isHeldElsewhere ? Answer::HeldElsewhere : Answer::Failed;
}

bool ArchiveLock::isTaken() const
{
    struct stat own = {};
    struct stat there = {};
    return m_file >= 0 && ::fstat(m_file, &own) == 0 && ::stat(m_path.constData(), &there) == 0 &&
           own.st_ino == there.st_ino && own.st_dev == there.st_dev;
}

void ArchiveLock::release()
{
    if (m_file >= 0)
        ::close(m_file);
    m_file = -1;
}
