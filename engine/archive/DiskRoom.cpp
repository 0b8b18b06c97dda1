#include "archive/DiskRoom.h"

#include <QFile>

#include <sys/statvfs.h>

namespace {

constexpr qint64 LargestReserve = qint64(1) << 30;
constexpr int ReserveShare = 20;

} // namespace

DiskRoom DiskRoom::of(const QString& directory)
{
    struct statvfs found = {};
    if (::statvfs(QFile::encodeName(directory).constData(), &found) != 0)
        return {};
    const auto block = qint64(found.f_frsize);
    return {block * qint64(found.f_blocks), block * qint64(found.f_bavail)};
}

qint64 DiskRoom::reserve() const
{
    return qMin(total / ReserveShare, LargestReserve);
}
