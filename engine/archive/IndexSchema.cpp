#include "archive/IndexSchema.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

namespace {

using State = IndexSchema::State;

/// The log beside the index stays below half a megabyte: on a small disk it would take a recording's place.
constexpr const char* Settings[] = {"PRAGMA journal_mode=WAL", "PRAGMA synchronous=NORMAL",
                                    "PRAGMA wal_autocheckpoint=100", "PRAGMA journal_size_limit=409600"};

/// The first version had no number, so that its tables may be there.
constexpr const char* First[] = {
    "CREATE TABLE IF NOT EXISTS segment (path TEXT PRIMARY KEY, camera TEXT NOT NULL, start_ms INTEGER NOT "
    "NULL, end_ms INTEGER NOT NULL, bytes INTEGER NOT NULL, sample INTEGER NOT NULL)",
    "CREATE INDEX IF NOT EXISTS segment_time ON segment (camera, start_ms)",
    "CREATE TABLE IF NOT EXISTS span (camera TEXT NOT NULL, kind INTEGER NOT NULL, start_ms INTEGER NOT "
    "NULL, end_ms INTEGER NOT NULL, sample INTEGER NOT NULL)",
    "CREATE INDEX IF NOT EXISTS span_time ON span (camera, start_ms)",
    "PRAGMA user_version=1",
};

/// A span that goes on replaces what is known of it, and the oldest segments are found without a search.
constexpr const char* Second[] = {
    "DELETE FROM span WHERE rowid NOT IN (SELECT MAX(rowid) FROM span GROUP BY camera, kind, start_ms)",
    "CREATE UNIQUE INDEX span_key ON span (camera, kind, start_ms)",
    "CREATE INDEX segment_age ON segment (start_ms)",
    "PRAGMA user_version=2",
};

/// How long the longest of a camera is bounds the search for what touches a moment.
constexpr const char* Third[] = {
    "CREATE INDEX segment_length ON segment (camera, end_ms - start_ms)",
    "CREATE INDEX span_length ON span (camera, end_ms - start_ms)",
    "PRAGMA user_version=3",
};

template <size_t Count>
bool runAll(QSqlDatabase& database, const char* const (&statements)[Count], QSqlError* error)
{
    for (const char* statement : statements) {
        QSqlQuery query(database);
        if (query.exec(statement))
            continue;
        *error = query.lastError();
        return false;
    }
    return true;
}

template <size_t Count>
bool runWhole(QSqlDatabase& database, const char* const (&statements)[Count], QSqlError* error)
{
    constexpr const char* Begin[] = {"BEGIN IMMEDIATE"};
    constexpr const char* End[] = {"COMMIT"};
    if (runAll(database, Begin, error) && runAll(database, statements, error) && runAll(database, End, error))
        return true;
    database.rollback();
    return false;
}

int versionOf(QSqlDatabase& database, QSqlError* error)
{
    QSqlQuery query(database);
    if (query.exec("PRAGMA user_version") && query.next())
        return query.value(0).toInt();
    *error = query.lastError();
    return -1;
}

} // namespace

State IndexSchema::migrate(QSqlDatabase& database, QSqlError* error)
{
    const int version = versionOf(database, error);
    if (version > Version)
        return State::Newer;
    if (version < 0 || !runAll(database, Settings, error))
        return State::Failed;
    if (version < 1 && !runWhole(database, First, error))
        return State::Failed;
    if (version < 2 && !runWhole(database, Second, error))
        return State::Failed;
    if (version < 3 && !runWhole(database, Third, error))
        return State::Failed;
    return State::Current;
}

State IndexSchema::check(QSqlDatabase& database, QSqlError* error)
{
    const int version = versionOf(database, error);
    if (version > Version)
        return State::Newer;
    return version < Version ? State::Failed : State::Current;
}
