#pragma once

#include <QSet>
#include <QString>

#include <atomic>
#include <limits>
#include <mutex>
#include <optional>

/// What the path of a recorded file says of it.
struct RecordedName
{
    QString camera;
    qint64 startMs = 0;
    bool isSample = false;
    bool isPart = false;
};

/// Where the files of an archive lie, and which parts are being written. Each camera's directory is named so
/// that people find it, and holds the camera's very name in a file. Any thread.
class ArchivePaths
{
public:
    explicit ArchivePaths(const QString& directory) : m_directory(directory) {}

    const QString& directory() const { return m_directory; }
    QString index() const { return m_directory + "/index.sqlite"; }

    /// The full path to write a segment to that starts now; its directory exists if it can be made. No other
    /// file has that path, and the part counts as open until endPart().
    QString beginPart(const QString& camera, qint64 startMs, bool sample = false);
    void endPart(const QString& path);
    bool isOpenPart(const QString& path) const;

    /// How much all recordings may take, and how large that lets a part grow: several go into what there is,
    /// so that the oldest can go one by one. Bytes.
    void setRoom(qint64 bytes) { m_room = bytes; }
    qint64 mostPartBytes() const;

    /// Empty for a file that is not the archive's.
    static std::optional<RecordedName> read(const QString& path);
    /// The path that a part gets when it is whole.
    static QString wholePath(const QString& partPath);
    QString relative(const QString& path) const;
    /// Empty for a path that leads out of the archive.
    QString full(const QString& relative) const;
    /// True if there is such a file, and no link on the way to it leads out of the archive. The index is a
    /// file that anybody may have written: only what this is true of is the archive's.
    bool isOwnFile(const QString& relative) const;
    /// True if a directory on the way to a path can't be looked into, so that nobody can tell what is there.
    bool isHidden(const QString& relative) const;

private:
    QString m_directory;
    mutable std::mutex m_mutex;
    QSet<QString> m_openParts;
    std::atomic<qint64> m_room{std::numeric_limits<qint64>::max()};
};
