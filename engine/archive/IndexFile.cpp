#include "archive/IndexFile.h"

#include <QFile>

#include <sys/stat.h>

namespace {

constexpr int HeaderBytes = 100;

} // namespace

quint64 IndexFile::inode(const QString& path)
{
    struct stat found = {};
    return ::stat(QFile::encodeName(path).constData(), &found) == 0 ? quint64(found.st_ino) : 0;
}

bool IndexFile::looksWhole(const QString& path)
{
    struct stat found = {};
    return ::stat(QFile::encodeName(path).constData(), &found) == 0 && found.st_size >= HeaderBytes;
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
