#pragma once

#include <QSqlDatabase>
#include <QString>
#include <QVariant>
#include <QVector>

#include <optional>

/// One recorded file. Times are milliseconds since 1970, UTC; the end is the first moment no longer covered.
struct Segment
{
    QString path; ///< below the archive's directory
    QString camera;
    qint64 startMs = 0;
    qint64 endMs = 0;
    qint64 bytes = 0;
    bool sample = false; ///< made by the client so that there is something to see
};

/// A stretch of time in which something was seen.
struct Span
{
    enum Kind
    {
        Motion = 1,
        Alarm = 2
    };

    Kind kind = Motion;
    qint64 startMs = 0;
    qint64 endMs = 0;
};

/// What the archive holds, in an SQLite file beside the recordings. Lists come sorted by their start.
class ArchiveIndex
{
public:
    ArchiveIndex() = default;
    ~ArchiveIndex();
    ArchiveIndex(const ArchiveIndex&) = delete;
    ArchiveIndex& operator=(const ArchiveIndex&) = delete;

    /// Opens or makes the index of an archive's directory. On failure false, with one line in `error`.
    bool Open(const QString& directory, QString* error);

    bool IsOpen() const { return m_database.isOpen(); }
    const QString& Directory() const { return m_strDirectory; }

    /// Adds a segment, or replaces what was known of its path.
    bool Add(const Segment& segment);
    bool AddSpan(const QString& camera, const Span& span, bool sample = false);

    /// Forgets a segment, and the spans that no segment of its camera touches any more.
    void Remove(const Segment& segment);

    /// All that touches the time from `fromMs` to before `toMs`.
    QVector<Segment> Segments(const QString& camera, qint64 fromMs, qint64 toMs) const;
    QVector<Span> Spans(const QString& camera, qint64 fromMs, qint64 toMs) const;

    /// The segment that covers a moment, or else the first one that starts after it.
    std::optional<Segment> AtOrAfter(const QString& camera, qint64 ms) const;

    QVector<Segment> All() const;
    std::optional<Segment> Oldest() const;
    QVector<Segment> Samples() const;
    void RemoveSampleSpans();
    qint64 TotalBytes() const;
    QStringList Cameras() const;

private:
    QVector<Segment> Select(const QString& condition, const QVariantList& values) const;

    QString m_strDirectory;
    QSqlDatabase m_database;
};
