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
    bool sample = false; ///< made so that there is something to see
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
    bool open(const QString& directory, QString* error);

    bool isOpen() const { return m_database.isOpen(); }
    const QString& directory() const { return m_directory; }

    /// Adds a segment, or replaces what was known of its path.
    bool add(const Segment& segment);
    bool addSpan(const QString& camera, const Span& span, bool sample = false);

    /// Forgets a segment, and the spans that no segment of its camera touches any more.
    void remove(const Segment& segment);

    /// All that touches the time from `fromMs` to before `toMs`.
    QVector<Segment> segments(const QString& camera, qint64 fromMs, qint64 toMs) const;
    QVector<Span> spans(const QString& camera, qint64 fromMs, qint64 toMs) const;

    QVector<Segment> all() const;
    std::optional<Segment> oldest() const;
    QVector<Segment> samples() const;
    void removeSampleSpans();
    qint64 totalBytes() const;

private:
    QVector<Segment> select(const QString& condition, const QVariantList& values) const;

    QString m_directory;
    QSqlDatabase m_database;
};
