#include "archive/IndexFile.h"

#include <QFile>
#include <QtEndian>

#include <sys/stat.h>

namespace {

constexpr int HeaderBytes = 100;
constexpr int PageSizeAt = 16;
constexpr int PageCountAt = 28;

} // namespace

quint64 IndexFile::inode(const QString& path)
{
    struct stat found = {};
    return ::stat(QFile::encodeName(path).constData(), &found) == 0 ? quint64(found.st_ino) : 0;
}

bool IndexFile::looksWhole(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return file.exists();
    const QByteArray header = file.read(HeaderBytes);
    if (header.size() < HeaderBytes || !header.startsWith(QByteArray("SQLite format 3\0", PageSizeAt)))
        return false;
    // A page of 64 kB does not fit into the field and is written as 1.
    const qint64 pageSize = qFromBigEndian<quint16>(header.constData() + PageSizeAt);
    const qint64 pages = qFromBigEndian<quint32>(header.constData() + PageCountAt);
    return file.size() >= pages * (pageSize == 1 ? 65536 : pageSize);
}

QString IndexFile::asideName(const QString& path)
{
    return path + ".damaged";
}

bool IndexFile::setAside(const QString& path)
{
    const QString aside = asideName(path);
    for (const char* tail : {"", "-wal", "-shm"}) {
        QFile::remove(aside + tail);
        QFile::rename(path + tail, aside + tail);
    }
    return !QFile::exists(path) && !QFile::exists(path + "-wal");
}
