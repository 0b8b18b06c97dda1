#include "archive/SafeFile.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

namespace {

bool sync(const QString& path)
{
    const int file = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return false;
    const bool isSynced = ::fsync(file) == 0;
    const int reason = errno;
    ::close(file);
    errno = reason;
    // Some file systems know no such thing.
    return isSynced || reason == EINVAL;
}

} // namespace

bool renameSafely(const QString& from, const QString& to, QString* error)
{
    const QByteArray oldName = QFile::encodeName(from);
    const QByteArray newName = QFile::encodeName(to);
    bool isDone = sync(from);
    if (isDone)
        isDone =
            ::renameat2(AT_FDCWD, oldName.constData(), AT_FDCWD, newName.constData(), RENAME_NOREPLACE) == 0;
    // Some file systems can't refuse by themselves.
    if (!isDone && errno == EINVAL && !QFile::exists(to))
        isDone = ::rename(oldName.constData(), newName.constData()) == 0;
    if (isDone && sync(QFileInfo(to).path()))
        return true;
    *error = QString("cannot end %1: %2").arg(from, QString::fromLocal8Bit(std::strerror(errno)));
    return isDone;
}
