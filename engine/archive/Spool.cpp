#include "archive/Spool.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QUuid>
#include <QVariant>

namespace {

constexpr const char* Tables[] = {
    "CREATE TABLE spool (id TEXT NOT NULL, told INTEGER NOT NULL DEFAULT 0)",
    "CREATE TABLE outbox (seq INTEGER PRIMARY KEY AUTOINCREMENT, what INTEGER NOT NULL, key TEXT NOT NULL "
    "UNIQUE, gone "
    "INTEGER NOT NULL, path TEXT, camera TEXT, kind INTEGER, start_ms INTEGER, end_ms INTEGER, bytes "
    "INTEGER, sample "
    "INTEGER)",
};

constexpr const char* Gone[] = {
    "DROP TRIGGER IF EXISTS segment_told", "DROP TRIGGER IF EXISTS segment_untold",
    "DROP TRIGGER IF EXISTS span_told",    "DROP TRIGGER IF EXISTS span_untold",
    "DROP TABLE IF EXISTS outbox",         "DROP TABLE IF EXISTS spool"};

/// What is written into the outbox for a row of each table.
QString outboxRow(const QString& table, const QString& row, int isGone)
{
    const QString columns =
        table == "segment"
            ? "1, 'f' || %1path, %2, %1path, %1camera, NULL, %1start_ms, %1end_ms, %1bytes, %1sample"
            : "2, 's' || %1kind || ' ' || %1start_ms || ' ' || %1camera, %2, NULL, %1camera, %1kind, "
              "%1start_ms, "
              "%1end_ms, NULL, %1sample";
    return "INSERT OR REPLACE INTO outbox (what, key, gone, path, camera, kind, start_ms, end_ms, bytes, "
           "sample) SELECT " +
           columns.arg(row).arg(isGone);
}

QStringList triggers()
{
    QStringList statements;
    for (const QString& table : {QString("segment"), QString("span")}) {
        statements.append(QString("CREATE TRIGGER %1_told AFTER INSERT ON %1 BEGIN %2; END")
                              .arg(table, outboxRow(table, "NEW.", 0)));
        statements.append(QString("CREATE TRIGGER %1_untold AFTER DELETE ON %1 BEGIN %2; END")
                              .arg(table, outboxRow(table, "OLD.", 1)));
    }
    return statements;
}

QString allRows(const QString& table)
{
    return outboxRow(table, "", 0) + " FROM " + table + " ORDER BY start_ms";
}

bool run(QSqlDatabase& index, const QString& text, QSqlError* error, const QVariantList& values = {})
{
    QSqlQuery query(index);
    query.prepare(text);
    for (const QVariant& value : values)
        query.addBindValue(value);
    if (query.exec())
        return true;
    *error = query.lastError();
    return false;
}

bool makeAll(QSqlDatabase& index, QSqlError* error)
{
    const QString id = QUuid::createUuid().toString(QUuid::WithoutBraces);
    for (const char* table : Tables) {
        if (!run(index, table, error))
            return false;
    }
    for (const QString& statement : triggers()) {
        if (!run(index, statement, error))
            return false;
    }
    return run(index, allRows("segment"), error) && run(index, allRows("span"), error) &&
           run(index, "INSERT INTO spool (id) VALUES (?)", error, {id});
}

bool beginAnew(QSqlDatabase& index, QSqlError* error)
{
    const QString id = QUuid::createUuid().toString(QUuid::WithoutBraces);
    return run(index, "UPDATE spool SET id = ?, told = 0", error, {id}) &&
           run(index, "DELETE FROM outbox", error) && run(index, allRows("segment"), error) &&
           run(index, allRows("span"), error) && Spool::noteWhole(index, error);
}

template <class Change> bool runWhole(QSqlDatabase& index, QSqlError* error, Change change)
{
    if (!run(index, "BEGIN IMMEDIATE", error))
        return false;
    if (change(index, error) && run(index, "COMMIT", error))
        return true;
    index.rollback();
    return false;
}

} // namespace

bool Spool::arm(QSqlDatabase& index, QSqlError* error)
{
    if (!index.tables().contains("spool"))
        return runWhole(index, error, &makeAll);
    // Spools of before did not know how far they had told.
    return index.record("spool").contains("told") ||
           run(index, "ALTER TABLE spool ADD COLUMN told INTEGER NOT NULL DEFAULT 0", error);
}

bool Spool::renew(QSqlDatabase& index, QSqlError* error)
{
    return runWhole(index, error, &beginAnew);
}

bool Spool::noteWhole(QSqlDatabase& index, QSqlError* error)
{
    return run(index, "INSERT OR REPLACE INTO outbox (what, key, gone) VALUES (3, 'w', 0)", error);
}

bool Spool::disarm(QSqlDatabase& index, QSqlError* error)
{
    if (!index.tables().contains("spool"))
        return true;
    for (const char* statement : Gone) {
        if (!run(index, statement, error))
            return false;
    }
    return true;
}
