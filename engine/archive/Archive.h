#pragma once

#include "archive/ArchiveIndex.h"

#include <functional>

/// The recordings on disk: where a segment goes, which finished ones are known, and how much there may be.
/// A segment is written under a name that ends in ".part" and gets its own name when it is finished, so that
/// a file without ".part" is whole.
class Archive
{
public:
    /// How long a media file plays, milliseconds; 0 or less if nothing in it plays.
    using Probe = std::function<qint64(const QString& path)>;

    explicit Archive(Probe probe) : m_probe(std::move(probe)) {}

    /// Opens the archive and indexes whatever an earlier run left behind. On failure false, with one line in
    /// `error`.
    bool open(const QString& directory, QString* error);

    ArchiveIndex& index() { return m_index; }
    const ArchiveIndex& index() const { return m_index; }

    /// The full path to write a segment to that starts now; its directory exists if it can be made.
    QString partPath(const QString& camera, qint64 startMs, bool sample = false) const;

    /// Gives a finished part its own name and indexes it. An empty file is dropped.
    bool finish(const QString& partPath, const QString& camera, qint64 startMs, qint64 endMs,
                bool sample = false);

    /// Indexes a file as far as it was written; a part in which nothing plays is dropped.
    void recover(const QString& path);

    /// Empty for a segment whose path leads out of the archive.
    QString fullPath(const Segment& segment) const;

    /// Deletes the oldest segments until no more than `bytes` are left.
    void limit(qint64 bytes);

    /// Deletes everything that is marked as a sample. The number of files that went.
    int removeSample();

private:
    void recoverAll();
    bool isOwnFile(const Segment& segment) const;
    void erase(const Segment& segment);

    Probe m_probe;
    ArchiveIndex m_index;
};
