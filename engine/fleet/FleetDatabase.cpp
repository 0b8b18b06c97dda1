#include "fleet/FleetDatabase.h"

#include <QSqlError>
#include <QUuid>

namespace {

using Result = FleetDatabase::Result;

/// By PostgreSQL's classes of errors.
Result resultOf(const QSqlError& error)
{
    const QString state = error.nativeErrorCode();
    if (error.type() == QSqlError::ConnectionError || state.startsWith("08") || state.startsWith("57P"))
        return Result::Away;
    // A statement that no server answered has no state.
    if (state.isEmpty())
        return Result::Away;
    // What another one holds, or a standby that does not take it now.
    if (state.startsWith("40") || state.startsWith("55") || state == "25006")
        return Result::Away;
    // Values that no table takes; all else, a full disk among it, is the server's own fault.
    for (const char* fault : {"21", "22", "23", "54"}) {
        if (state.startsWith(fault))
            return Result::Failed;
    }
    return Result::Refused;
}

} // namespace

bool FleetDatabase::open()
{
    close();
    m_database = QSqlDatabase::addDatabase("QPSQL", QUuid::createUuid().toString());
    m_address.applyTo(m_database);
    if (m_database.open())
        return note({});
    const QSqlError error = m_database.lastError();
    close();
    return note(error);
}

void FleetDatabase::close()
{
    const QString name = m_database.connectionName();
    m_database = QSqlDatabase();
    if (!name.isEmpty())
        QSqlDatabase::removeDatabase(name);
}

bool FleetDatabase::run(QSqlQuery& query, const QString& text, const QVariantList& values)
{
    bool isDone = values.isEmpty() ? query.exec(text) : query.prepare(text);
    // A text that was never set is empty, and not unknown.
    for (const QVariant& value : values)
        query.addBindValue(value.isNull() && value.canConvert<QString>() ? QVariant(QString("")) : value);
    isDone = isDone && (values.isEmpty() || query.exec());
    return isDone ? note({}) : note(query.lastError());
}

bool FleetDatabase::run(const QString& text, const QVariantList& values)
{
    QSqlQuery query(m_database);
    const bool isDone = run(query, text, values);
    // What was prepared can't be freed in a transaction that has failed.
    if (!isDone && m_isChanging)
        rollBack();
    return isDone;
}

/// The lock is that of tell_change(), before any row's: two desks that took it after their first rows would
/// wait for each other. One that is cut off in between would hold all recorders up with it.
bool FleetDatabase::change(const std::function<bool()>& steps)
{
    m_isChanging = true;
    const bool isDone = run("BEGIN") && run("SET LOCAL idle_in_transaction_session_timeout = '5s'") &&
                        run("SELECT pg_advisory_xact_lock(hashtext('panedeck change'))") && steps() &&
                        run("COMMIT");
    if (!isDone && m_isChanging)
        rollBack();
    m_isChanging = false;
    return isDone;
}

void FleetDatabase::refuse(const QString& reason)
{
    m_result = Result::Failed;
    m_reason = reason;
}

void FleetDatabase::rollBack()
{
    m_isChanging = false;
    QSqlQuery query(m_database);
    query.exec("ROLLBACK");
}

bool FleetDatabase::note(const QSqlError& error)
{
    m_result = error.isValid() ? resultOf(error) : Result::Done;
    m_reason = error.isValid() ? error.databaseText().simplified() : QString();
    return m_result == Result::Done;
}
