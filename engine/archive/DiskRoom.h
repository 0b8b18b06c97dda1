#pragma once

#include <QString>

/// The room on the disk that a directory lies on, bytes.
struct DiskRoom
{
    qint64 total = 0;
    qint64 free = 0; ///< for this user

    /// All 0 if it can't be told.
    static DiskRoom of(const QString& directory);
    /// What is to stay free: a twentieth, but no more than a gigabyte.
    qint64 reserve() const;
    bool isShort() const { return free < reserve(); }
    bool isAllButFull() const { return free < reserve() / 2; }
};
