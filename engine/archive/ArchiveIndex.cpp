#include "archive/ArchiveIndex.h"

#include <QDir>
#include <QSqlError>
#include <QSqlQuery>
#include <QUuid>
#include <QVariant>

namespace {

constexpr const char* Schema[] = {
    "PRAGMA journal_mode=WAL",
    "CREATE TABLE IF NOT EXISTS segment (path TEXT PRIMARY KEY, camera TEXT NOT NULL, start_ms INTEGER NOT "
    "NULL, "
    "end_ms INTEGER NOT NULL, bytes INTEGER NOT NULL, sample INTEGER NOT NULL)",
    "CREATE INDEX IF NOT EXISTS segment_time ON segment (camera, start_ms)",
    "CREATE TABLE IF NOT EXISTS span (camera TEXT NOT NULL, kind INTEGER NOT NULL, start_ms INTEGER NOT "
    "NULL, "
    "end_ms INTEGER NOT NULL, sample INTEGER NOT NULL)",
    "CREATE INDEX IF NOT EXISTS span_time ON span (camera, start_ms)",
};

bool run(QSqlQuery& query, const QString& text, const QVariantList& values)
{
    if (!query.prepare(text))
        return false;
    for (const QVariant& value : values)
        query.addBindValue(value);
    return query.exec();
}

qint64 number(const QSqlDatabase& database, const QString& text)
{
    QSqlQuery query(database);
    return run(query, text, {}) && query.next() ? query.value(0).toLongLong() : 0;
}

} // namespace

ArchiveIndex::~ArchiveIndex()
{
    const QString name = m_database.connectionName();
    m_database = QSqlDatabase();
    if (!name.isEmpty())
        QSqlDatabase::removeDatabase(name);
}

bool ArchiveIndex::open(const QString& directory, QString* error)
{
    m_directory = directory;
    if (!QDir().mkpath(directory)) {
        *error = "can't make the archive's directory " + directory;
        return false;
    }
    m_database = QSqlDatabase::addDatabase("QSQLITE", QUuid::createUuid().toString());
    m_database.setDatabaseName(directory + "/index.sqlite");
    if (!m_database.open()) {
        *error = "can't open the archive's index: " + m_database.lastError().text();
        return false;
    }
    for (const char* statement : Schema) {
        QSqlQuery query(m_database);
        if (query.exec(statement))
            continue;
        *error = "can't write the archive's index: " + query.lastError().text();
        m_database.close();
        return false;
    }
    return true;
}

bool ArchiveIndex::add(const Segment& segment)
{
    QSqlQuery query(m_database);
    return run(
        query, "INSERT OR REPLACE INTO segment VALUES (?, ?, ?, ?, ?, ?)",
        {segment.path, segment.camera, segment.startMs, segment.endMs, segment.bytes, int(segment.sample)});
}

bool ArchiveIndex::addSpan(const QString& camera, const Span& span, bool sample)
{
    QSqlQuery query(m_database);
    return run(query, "INSERT INTO span VALUES (?, ?, ?, ?, ?)",
               {camera, int(span.kind), span.startMs, span.endMs, int(sample)});
}

void ArchiveIndex::remove(const Segment& segment)
{
    QSqlQuery query(m_database);
    run(query, "DELETE FROM segment WHERE path = ?", {segment.path});
    run(query,
        "DELETE FROM span WHERE camera = ?1 AND NOT EXISTS (SELECT 1 FROM segment WHERE segment.camera = "
        "span.camera "
        "AND segment.start_ms < span.end_ms AND segment.end_ms > span.start_ms)",
        {segment.camera});
}

QVector<Segment> ArchiveIndex::segments(const QString& camera, qint64 fromMs, qint64 toMs) const
{
    return select("camera = ? AND start_ms < ? AND end_ms > ? ORDER BY start_ms", {camera, toMs, fromMs});
}

QVector<Span> ArchiveIndex::spans(const QString& camera, qint64 fromMs, qint64 toMs) const
{
    QVector<Span> spans;
    QSqlQuery query(m_database);
    run(query,
        "SELECT kind, start_ms, end_ms FROM span WHERE camera = ? AND start_ms < ? AND end_ms > ? ORDER BY "
        "start_ms",
        {camera, toMs, fromMs});
    while (query.next())
        spans.append(
            {Span::Kind(query.value(0).toInt()), query.value(1).toLongLong(), query.value(2).toLongLong()});
    return spans;
}

std::optional<Segment> ArchiveIndex::oldest() const
{
    const QVector<Segment> found = select("1 ORDER BY start_ms LIMIT 1", {});
    return found.isEmpty() ? std::nullopt : std::make_optional(found.first());
}

QVector<Segment> ArchiveIndex::all() const
{
    return select("1 ORDER BY start_ms", {});
}

QVector<Segment> ArchiveIndex::samples() const
{
    return select("sample = 1 ORDER BY start_ms", {});
}

void ArchiveIndex::removeSampleSpans()
{
    QSqlQuery query(m_database);
    run(query, "DELETE FROM span WHERE sample = 1", {});
}

qint64 ArchiveIndex::totalBytes() const
{
    return number(m_database, "SELECT SUM(bytes) FROM segment");
}

QVector<Segment> ArchiveIndex::select(const QString& condition, const QVariantList& values) const
{
    QVector<Segment> segments;
    QSqlQuery query(m_database);
    run(query, "SELECT path, camera, start_ms, end_ms, bytes, sample FROM segment WHERE " + condition,
        values);
    while (query.next()) {
        segments.append({query.value(0).toString(), query.value(1).toString(), query.value(2).toLongLong(),
                         query.value(3).toLongLong(), query.value(4).toLongLong(), query.value(5).toBool()});
    }
    return segments;
}
