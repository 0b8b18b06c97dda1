#pragma once

#include "archive/ArchivePaths.h"
#include "archive/RecordingReader.h"
#include "fleet/FleetDatabase.h"

/// What the shared index knows of recordings, read by those who show them. Lists come sorted by their start;
/// one that could not be read to its end is none. One thread.
class FleetIndex
{
public:
    /// As many as a server tells of in some hundredths of a second.
    static constexpr int CamerasAtOnce = 64;

    explicit FleetIndex(FleetDatabase& database) : m_database(database) {}

    /// All that touches the time from `fromMs` to before `toMs`, each with the full path or address at which
    /// its recorder says that it is read. A file that lies outside of what its recorder writes is left out.
    std::optional<QVector<Segment>> segments(const QString& camera, qint64 fromMs, qint64 toMs);
    std::optional<QVector<Span>> spans(const QString& camera, qint64 fromMs, qint64 toMs);
    /// Each of the cameras, by what the server puts together.
    std::optional<QHash<QString, RecordedTimes>> times(const QStringList& cameras, qint64 fromMs,
                                                       qint64 toMs);
    /// The start of the first segment that begins at a moment or later, and of the last one; 0 if there is
    /// none.
    std::optional<qint64> nextMs(const QString& camera, qint64 fromMs);
    std::optional<qint64> newestMs(const QString& camera);
    /// One or none: the first span that begins after a moment, and the last that begins before it.
    std::optional<QVector<Span>> spanAfter(const QString& camera, qint64 ms);
    std::optional<QVector<Span>> spanBefore(const QString& camera, qint64 ms);

private:
    std::optional<QVector<Span>> spansOf(const QString& condition, const QVariantList& values);
    std::optional<qint64> number(const QString& text, const QVariantList& values);

    FleetDatabase& m_database;
};

/// Where the files of a recorder are read, by the address that it gives: a directory, or a URL of file, http
/// or https.
class FleetPlace
{
public:
    explicit FleetPlace(const QString& recorderUrl);

    bool isKnown() const { return !m_root.isEmpty(); }
    /// Empty if the path leads out of what lies there, or nobody knows the place.
    QString full(const QString& path) const;

private:
    ArchivePaths m_paths;
    QString m_root;
    bool m_isRemote = false;
};
