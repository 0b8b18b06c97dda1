#include "archive/ArchiveIndex.h"

#include "archive/IndexFile.h"
#include "archive/IndexSchema.h"
#include "archive/Spool.h"

#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>
#include <QUuid>

namespace {

/// SQLite's numbers for what an index can suffer from.
enum SqliteError
{
    Statement = 1,
    Busy = 5,
    Locked = 6,
    Corrupt = 11,
    NotADatabase = 26
};

/// More than this would keep the recordings waiting for long.
constexpr qint64 LargestToRead = 256 << 20;

constexpr const char* Options[] = {"QSQLITE_BUSY_TIMEOUT=20", "QSQLITE_BUSY_TIMEOUT=5;QSQLITE_OPEN_READONLY"};

ArchiveIndex::Result resultOf(const QSqlError& error)
{
    constexpr int Primary = 0xff;
    switch (error.nativeErrorCode().toInt() & Primary) {
    case Busy:
    case Locked:
        return ArchiveIndex::Result::Busy;
    case Statement:
        return error.databaseText().startsWith("no such") ? ArchiveIndex::Result::Damaged
                                                          : ArchiveIndex::Result::Failed;
    case Corrupt:
    case NotADatabase:
        return ArchiveIndex::Result::Damaged;
    default:
        return ArchiveIndex::Result::Failed;
    }
}

/// What touches a stretch of time. Nothing that begins earlier than the camera's longest one is long does.
QString touching(const QString& table)
{
    return QString("camera = ? AND start_ms < ? AND end_ms > ? AND start_ms > ? - COALESCE((SELECT end_ms - "
                   "start_ms FROM %1 WHERE camera = ? ORDER BY end_ms - start_ms DESC LIMIT 1), 0) AND "
                   "start_ms >= 0 AND end_ms <= ? ORDER BY start_ms")
        .arg(table);
}

} // namespace

bool ArchiveIndex::open(const QString& directory, QString* error, Access access)
{
    close();
    m_path = directory + "/index.sqlite";
    const bool isOpened = take(m_path, access);
    if (!isOpened) {
        *error = m_reason;
        const Result result = m_result;
        close();
        m_result = result;
    }
    m_inode = IndexFile::inode(m_path);
    return isOpened;
}

bool ArchiveIndex::take(const QString& path, Access access)
{
    m_result = Result::Done;
    m_database = QSqlDatabase::addDatabase("QSQLITE", QUuid::createUuid().toString());
    m_database.setDatabaseName(path);
    m_database.setConnectOptions(Options[access == Access::Read]);
    QSqlError error;
    auto state = IndexSchema::State::Failed;
    if (!m_database.open())
        error = m_database.lastError();
    else
        state = access == Access::Read ? IndexSchema::check(m_database, &error)
                                       : IndexSchema::migrate(m_database, &error);
    const bool isCurrent = state == IndexSchema::State::Current;
    if (isCurrent && (access == Access::Read || setUpSpool(&error)))
        return true;
    note(error);
    if (state == IndexSchema::State::Newer)
        m_reason = "it was made by a newer version";
    if (state == IndexSchema::State::Newer || m_result == Result::Done)
        m_result = Result::Failed;
    m_reason = "can't open the archive's index: " + m_reason;
    return false;
}

bool ArchiveIndex::setUpSpool(QSqlError* error)
{
    return m_isSpooled ? Spool::arm(m_database, error) : Spool::disarm(m_database, error);
}

bool ArchiveIndex::noteWhole()
{
    QSqlError error;
    return !m_isSpooled || Spool::noteWhole(m_database, &error) || note(error);
}

void ArchiveIndex::close()
{
    const QString name = m_database.connectionName();
    m_database = QSqlDatabase();
    if (!name.isEmpty())
        QSqlDatabase::removeDatabase(name);
}

bool ArchiveIndex::isIntact() const
{
    return isOpen() && IndexFile::inode(m_path) == m_inode && IndexFile::looksWhole(m_path);
}

bool ArchiveIndex::isSound() const
{
    if (QFileInfo(m_path).size() > LargestToRead)
        return true;
    QSqlQuery query(m_database);
    return run(query, "PRAGMA quick_check(1)", {}) && query.next() && query.value(0).toString() == "ok";
}

/// Keeps how a statement went.
bool ArchiveIndex::note(const QSqlError& error) const
{
    m_result = error.isValid() ? resultOf(error) : Result::Done;
    m_reason = error.isValid() ? error.databaseText().simplified() : QString();
    return m_result == Result::Done;
}

bool ArchiveIndex::run(QSqlQuery& query, const QString& text, const QVariantList& values) const
{
    query.setForwardOnly(true);
    bool isDone = query.prepare(text);
    for (const QVariant& value : values)
        query.addBindValue(value);
    isDone = isDone && query.exec();
    return note(query.lastError()) && isDone;
}

bool ArchiveIndex::run(const QString& text, const QVariantList& values) const
{
    QSqlQuery query(m_database);
    return run(query, text, values);
}

bool ArchiveIndex::begin() const
{
    return run("BEGIN IMMEDIATE");
}

bool ArchiveIndex::commit() const
{
    return run("COMMIT");
}

void ArchiveIndex::rollBack() const
{
    const Result result = m_result;
    const QString reason = m_reason;
    run("ROLLBACK");
    m_result = result;
    m_reason = reason;
}

bool ArchiveIndex::add(const Segment& segment)
{
    return run(
        "INSERT OR REPLACE INTO segment VALUES (?, ?, ?, ?, ?, ?)",
        {segment.path, segment.camera, segment.startMs, segment.endMs, segment.bytes, int(segment.sample)});
}

bool ArchiveIndex::addSpan(const QString& camera, const Span& span, bool sample)
{
    return run("INSERT OR REPLACE INTO span VALUES (?, ?, ?, ?, ?)",
               {camera, int(span.kind), span.startMs, span.endMs, int(sample)});
}

bool ArchiveIndex::remove(const Segment& segment)
{
    return run("DELETE FROM segment WHERE path = ?", {segment.path}) &&
           run("DELETE FROM span WHERE camera = ? AND start_ms < ? AND NOT EXISTS (SELECT 1 FROM segment "
               "WHERE segment.camera = span.camera AND segment.start_ms < span.end_ms AND segment.end_ms > "
               "span.start_ms)",
               {segment.camera, segment.endMs});
}

bool ArchiveIndex::removeSampleSpans()
{
    return run("DELETE FROM span WHERE sample = 1");
}

bool ArchiveIndex::takeSpans(const QString& path)
{
    if (!run("ATTACH ? AS other", {path}))
        return false;
    const bool isTaken = run("INSERT OR IGNORE INTO span SELECT camera, kind, start_ms, end_ms, sample FROM "
                             "other.span");
    return run("DETACH other") && isTaken;
}

QVector<Segment> ArchiveIndex::segments(const QString& camera, qint64 fromMs, qint64 toMs) const
{
    return select(touching("segment"), {camera, toMs, fromMs, fromMs, camera, Segment::LastMs});
}

QVector<Span> ArchiveIndex::spans(const QString& camera, qint64 fromMs, qint64 toMs) const
{
    return selectSpans(touching("span"), {camera, toMs, fromMs, fromMs, camera, Segment::LastMs});
}

QVector<Span> ArchiveIndex::spanAfter(const QString& camera, qint64 ms) const
{
    return selectSpans("camera = ? AND start_ms > ? AND end_ms <= ? ORDER BY start_ms LIMIT 1",
                       {camera, ms, Segment::LastMs});
}

QVector<Span> ArchiveIndex::spanBefore(const QString& camera, qint64 ms) const
{
    return selectSpans("camera = ? AND start_ms < ? AND start_ms >= 0 ORDER BY start_ms DESC LIMIT 1",
                       {camera, ms});
}

QVector<Segment> ArchiveIndex::next(const QString& camera, qint64 fromMs) const
{
    return select("camera = ? AND start_ms >= ? AND end_ms <= ? ORDER BY start_ms LIMIT 1",
                  {camera, fromMs, Segment::LastMs});
}

QVector<Segment> ArchiveIndex::newest(const QString& camera) const
{
    return select("camera = ? AND start_ms >= 0 AND end_ms <= ? ORDER BY start_ms DESC LIMIT 1",
                  {camera, Segment::LastMs});
}

bool ArchiveIndex::knows(const QString& path) const
{
    return number("SELECT COUNT(*) FROM segment WHERE path = ?", {path}) > 0;
}

QVector<Segment> ArchiveIndex::oldest(int count) const
{
    return select("1 ORDER BY start_ms LIMIT ?", {count});
}

QVector<Segment> ArchiveIndex::after(qint64 row, int count) const
{
    return select("rowid > ? ORDER BY rowid LIMIT ?", {row, count});
}

QVector<Segment> ArchiveIndex::samples() const
{
    return select("sample = 1 ORDER BY start_ms", {});
}

qint64 ArchiveIndex::lastRow() const
{
    return number("SELECT MAX(rowid) FROM segment");
}

qint64 ArchiveIndex::totalBytes() const
{
    return number("SELECT CAST(TOTAL(MAX(bytes, 0)) AS INTEGER) FROM segment");
}

qint64 ArchiveIndex::count() const
{
    return number("SELECT COUNT(*) FROM segment");
}

qint64 ArchiveIndex::number(const QString& text, const QVariantList& values) const
{
    QSqlQuery query(m_database);
    const qint64 found = run(query, text, values) && query.next() ? query.value(0).toLongLong() : 0;
    note(query.lastError());
    return found;
}

QVector<Segment> ArchiveIndex::select(const QString& condition, const QVariantList& values) const
{
    QVector<Segment> segments;
    QSqlQuery query(m_database);
    run(query, "SELECT path, camera, start_ms, end_ms, bytes, sample, rowid FROM segment WHERE " + condition,
        values);
    while (query.next()) {
        segments.append({query.value(0).toString(), query.value(1).toString(), query.value(2).toLongLong(),
                         query.value(3).toLongLong(), query.value(4).toLongLong(), query.value(5).toBool(),
                         query.value(6).toLongLong()});
    }
    note(query.lastError());
    return segments;
}

QVector<Span> ArchiveIndex::selectSpans(const QString& condition, const QVariantList& values) const
{
    QVector<Span> spans;
    QSqlQuery query(m_database);
    run(query, "SELECT kind, start_ms, end_ms FROM span WHERE " + condition, values);
    while (query.next())
        spans.append(
            {Span::Kind(query.value(0).toInt()), query.value(1).toLongLong(), query.value(2).toLongLong()});
    note(query.lastError());
    return spans;
}
