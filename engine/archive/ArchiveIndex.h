#pragma once

#include <QSqlDatabase>
#include <QString>
#include <QVariant>
#include <QVector>

#include <optional>

class QSqlError;
class QSqlQuery;

/// One recorded file. Times are milliseconds since 1970, UTC; the end is the first moment no longer covered.
struct Segment
{
    QString path; ///< below the archive's directory
    QString camera;
    qint64 startMs = 0;
    qint64 endMs = 0;
    qint64 bytes = 0;
    bool sample = false; ///< made so that there is something to see
    qint64 row = 0;      ///< grows in the order in which segments became known

    /// The last moment that an index is believed, in the year 5138: with what lies within, sums don't
    /// overflow.
    static constexpr qint64 LastMs = 100'000'000'000'000;
    bool isPlausible() const { return 0 <= startMs && startMs < endMs && endMs <= LastMs && bytes >= 0; }
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

/// What the archive holds, in an SQLite file beside the recordings. Lists come sorted by their start. It
/// waits for nobody: what another program's lock keeps from happening now is the caller's to try again. One
/// thread.
class ArchiveIndex
{
public:
    enum class Access
    {
        Write,
        Read
    };

    enum class Result
    {
        Done,
        Busy,    ///< another program holds it; later it will do
        Damaged, ///< it is no index, or not a whole one
        Failed,
    };

    ArchiveIndex() = default;
    ~ArchiveIndex() { close(); }
    ArchiveIndex(const ArchiveIndex&) = delete;
    ArchiveIndex& operator=(const ArchiveIndex&) = delete;

    /// Whether what it knows is to be told elsewhere too; see Spool. Before open() for writing.
    void setSpooled(bool spooled) { m_isSpooled = spooled; }

    /// Opens the index of a directory that is there; for writing, it is made or brought to this version. On
    /// failure false, with one line in `error`; result() tells more.
    bool open(const QString& directory, QString* error, Access access = Access::Write);
    void close();
    bool isOpen() const { return m_database.isOpen(); }
    /// False if the file is gone, emptied or another one than was opened. Asks nothing of SQLite.
    bool isIntact() const;
    /// Reads all of one that is not too large for it; false if something in it contradicts itself.
    bool isSound() const;

    /// How the last call went, and the reason if it was not done, one line. A list is then not complete.
    Result result() const { return m_result; }
    const QString& reason() const { return m_reason; }

    /// What comes in between happens as a whole or not at all.
    bool begin() const;
    bool commit() const;
    void rollBack() const;

    /// Adds a segment, or replaces what was known of its path.
    bool add(const Segment& segment);
    /// Adds a span, or replaces the one of its kind that begins with it.
    bool addSpan(const QString& camera, const Span& span, bool sample = false);
    /// Forgets a segment, and the spans up to its end that no segment of its camera touches any more.
    bool remove(const Segment& segment);
    bool removeSampleSpans();
    /// All files are known now; where it is spooled that is told too.
    bool noteWhole();
    /// Takes what another index knows of motion and alarms, if all of it can be read.
    bool takeSpans(const QString& path);

    /// All that touches the time from `fromMs` to before `toMs`, but for what can't be true.
    QVector<Segment> segments(const QString& camera, qint64 fromMs, qint64 toMs) const;
    QVector<Span> spans(const QString& camera, qint64 fromMs, qint64 toMs) const;

    /// One, or none: the first that begins at a moment or later, and the last.
    QVector<Segment> next(const QString& camera, qint64 fromMs) const;
    QVector<Segment> newest(const QString& camera) const;
    /// The same for spans: the first that begins after a moment, and the last that begins before it.
    QVector<Span> spanAfter(const QString& camera, qint64 ms) const;
    QVector<Span> spanBefore(const QString& camera, qint64 ms) const;

    bool knows(const QString& path) const;
    QVector<Segment> oldest(int count) const;
    /// Those that became known after the one of a row, in that order.
    QVector<Segment> after(qint64 row, int count) const;
    QVector<Segment> samples() const;
    qint64 lastRow() const;
    qint64 totalBytes() const;
    qint64 count() const;

private:
    bool run(const QString& text, const QVariantList& values = {}) const;
    bool run(QSqlQuery& query, const QString& text, const QVariantList& values) const;
    bool note(const QSqlError& error) const;
    bool take(const QString& path, Access access);
    bool setUpSpool(QSqlError* error);
    QVector<Segment> select(const QString& condition, const QVariantList& values) const;
    QVector<Span> selectSpans(const QString& condition, const QVariantList& values) const;
    qint64 number(const QString& text, const QVariantList& values = {}) const;

    QString m_path;
    QSqlDatabase m_database;
    quint64 m_inode = 0;
    bool m_isSpooled = false;
    mutable Result m_result = Result::Done;
    mutable QString m_reason;
};
