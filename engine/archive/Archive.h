#pragma once

#include "archive/ArchiveIndex.h"
#include "archive/ArchivePaths.h"
#include "archive/SegmentContent.h"

#include <QStringList>

#include <chrono>
#include <deque>
#include <functional>
#include <memory>

class ArchiveRecovery;

/// A finished part.
struct FinishedPart
{
    QString path;
    QString camera;
    qint64 startMs = 0;
    qint64 endMs = 0;
    bool isWhole = true; ///< false if the end of it could not be written
    bool isSample = false;
};

/// A span of a camera.
struct CameraSpan
{
    QString camera;
    Span span;
    bool isSample = false;
    bool goesOn = false; ///< it is known as far as it has come, and no news yet
};

/// How much an archive may hold; the oldest segments go.
struct ArchiveLimits
{
    qint64 bytes = qint64(8) << 30;
    int days = 0; ///< 0 for any age
};

/// Whether what an archive knows is to be told to a shared index too.
enum class Telling
{
    Nobody,
    Spooled
};

/// The recordings on disk: which finished ones are known, and how much there may be. A segment is written
/// under a name that ends in ".part" and gets its own name when it is finished, so that a file without
/// ".part" is whole. What the index can't take now is kept until it can. One thread, of whoever holds the
/// archive's lock.
class Archive
{
public:
    using Probe = std::function<SegmentContent(const QString& path)>;
    /// The newest minute goes for no limit; but of a disk that is all but full only these seconds stay, as
    /// the next ones would find no room.
    static constexpr std::chrono::seconds Protected{60};
    static constexpr std::chrono::seconds ProtectedAtLast{10};

    explicit Archive(const QString& directory, Probe probe = &contentOf, Telling telling = Telling::Nobody);
    ~Archive();

    /// Opens the index. A damaged one is set aside, and a new one is made of the files by recoverSome(). On
    /// failure false, with one line in `error`; what is finished meanwhile is indexed later.
    bool open(QString* error);
    const std::shared_ptr<ArchivePaths>& paths() const { return m_paths; }
    ArchiveIndex& index() { return m_index; }

    /// Goes on looking for what an earlier run left behind, a few files at a time. False when it is done.
    bool recoverSome();

    /// Gives a finished part its own name and indexes it. One without a picture is dropped; one that was not
    /// ended is indexed as far as it was written.
    void finish(const FinishedPart& part);
    void setSpans(const QVector<CameraSpan>& spans);
    /// Deletes everything that is marked as a sample. The number of files that went.
    int removeSample();
    /// Deletes the oldest segments until the limits are kept and a twentieth of the disk, but no more than a
    /// gigabyte, is free.
    void limit(const ArchiveLimits& limits, qint64 nowMs);
    /// Puts the index aside and opens a new one, which recoverSome() fills. What the other knows of motion
    /// and alarms is kept if it can be read.
    bool remake(QString* error);
    /// The same for one that is no longer what was opened; tells of it.
    bool remakeDamaged(QString* error);
    void close();

    /// Writes into the index what it could not take before.
    ArchiveIndex::Result flush();
    /// Cameras of which more or less is known since the last call.
    QStringList takeChanged();
    /// What is wrong with single files, a line each, told once.
    QStringList takeTroubles();

private:
    friend class ArchiveRecovery;
    using Change = std::function<bool(ArchiveIndex&)>;
    using Clock = std::chrono::steady_clock;

    bool openSound(QString* error);
    void change(const QString& camera, Change change);
    bool applyChanges();
    bool takeFile(const QString& path, const RecordedName& name);
    bool rename(const QString& partPath, const QString& path);
    void add(const Segment& segment);
    void erase(const Segment& segment);
    void forget(const Segment& segment);
    std::optional<Segment> nextOldest();
    bool isProtected(const Segment& segment, std::chrono::seconds span) const;
    void trouble(const QString& line);

    std::shared_ptr<ArchivePaths> m_paths;
    Probe m_probe;
    ArchiveIndex m_index;
    std::unique_ptr<ArchiveRecovery> m_recovery;
    std::deque<Change> m_changes;
    std::deque<Segment> m_oldest;                                 ///< known candidates for the next to go
    std::deque<std::pair<QString, Clock::time_point>> m_youngest; ///< those that are protected still
    qint64 m_totalBytes = 0;
    QStringList m_changed;
    QStringList m_troubles;
    QSet<QString> m_told;
};
