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

QSqlError lost()
{
    return QSqlError(QString(), "the connection was lost", QSqlError::ConnectionError);
}

/// As one of no type yet, which its place gives it; both signs escaped, whatever the server's settings say.
QString literalOf(const QVariant& value)
{
    // A text that was never set is empty, and not unknown.
    if (value.isNull() && !value.canConvert<QString>())
        return "NULL";
    return "E'" + value.toString().replace("\\", "\\\\").replace("'", "''") + "'";
}

/// To prepare a statement and to forget it again takes two round trips more than to run it.
QString withValues(const QString& text, const QVariantList& values)
{
    QString whole;
    int from = 0;
    for (const QVariant& value : values) {
        const int place = text.indexOf('?', from);
        if (place < 0)
            break;
        whole += text.mid(from, place - from) + literalOf(value);
        from = place + 1;
    }
    return whole + text.mid(from);
}

} // namespace

bool FleetDatabase::open()
{
    close();
    m_database = QSqlDatabase::addDatabase("QPSQL", QUuid::createUuid().toString());
    m_address.applyTo(m_database);
    // A server that goes in the middle of it leaves a connection that was lost.
    if (m_database.open() && isOpen())
        return note({});
    const QSqlError error = m_database.lastError();
    close();
    return note(error.isValid() ? error : lost());
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
    if (!isOpen())
        return note(lost());
    return query.exec(withValues(text, values)) ? note({}) : note(query.lastError());
}

bool FleetDatabase::run(const QString& text, const QVariantList& values)
{
    QSqlQuery query(m_database);
    return run(query, text, values);
}

/// The lock is that of tell_change(), before any row's: two desks that took it after their first rows would
/// wait for each other. One that is cut off in between would hold all recorders up with it.
bool FleetDatabase::change(const std::function<bool()>& steps)
{
    const bool isDone = run("BEGIN") && run("SET LOCAL idle_in_transaction_session_timeout = '5s'") &&
                        run("SELECT pg_advisory_xact_lock(hashtext('panedeck change'))") && steps() &&
                        run("COMMIT");
    if (!isDone)
        rollBack();
    return isDone;
}

void FleetDatabase::refuse(const QString& reason)
{
    m_result = Result::Failed;
    m_reason = reason;
}

void FleetDatabase::rollBack()
{
    QSqlQuery query(m_database);
    if (isOpen())
        query.exec("ROLLBACK");
}

bool FleetDatabase::note(const QSqlError& error)
{
    m_result = error.isValid() ? resultOf(error) : Result::Done;
    m_reason = error.isValid() ? error.databaseText().simplified() : QString();
    return m_result == Result::Done;
}
