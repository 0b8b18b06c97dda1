#pragma once

#include "fleet/FleetAddress.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QVariant>

#include <functional>

/// A connection to the shared index. One thread; each call waits for the server, a few seconds at most where
/// it is gone.
class FleetDatabase
{
public:
    enum class Result
    {
        Done,
        Away,    ///< no server, or no way to it; later it may do
        Refused, ///< the role may not do this, or the server can't as it is now
        Failed,  ///< what was given can't be taken, ever
    };

    explicit FleetDatabase(const FleetAddress& address) : m_address(address) {}
    ~FleetDatabase() { close(); }
    FleetDatabase(const FleetDatabase&) = delete;
    FleetDatabase& operator=(const FleetDatabase&) = delete;

    bool open();
    void close();
    bool isOpen() const { return m_database.isOpen(); }

    /// Runs one statement in one round trip, a value in the place of each `?`; the query then gives its rows.
    /// A connection that was lost in it is closed by whoever asks.
    bool run(QSqlQuery& query, const QString& text, const QVariantList& values = {});
    bool run(const QString& text, const QVariantList& values = {});
    /// Runs one after the other, up to the first that fails.
    template <size_t Count> bool runAll(const char* const (&statements)[Count])
    {
        for (const char* statement : statements) {
            if (!run(statement))
                return false;
        }
        return true;
    }
    /// Runs changes of which desks are told in one transaction: all of them, or none.
    bool change(const std::function<bool()>& steps);
    /// What is there is of no use; the reason in one line.
    void refuse(const QString& reason);
    /// Ends a transaction that has failed; result() stays that of what failed.
    void rollBack();
    /// An empty query of this connection, for run().
    QSqlQuery query() const { return QSqlQuery(m_database); }
    /// For notifications.
    QSqlDriver* driver() const { return m_database.driver(); }

    /// How the last call went, and the reason if it was not done, one line.
    Result result() const { return m_result; }
    const QString& reason() const { return m_reason; }

private:
    bool note(const QSqlError& error);

    FleetAddress m_address;
    QSqlDatabase m_database;
    Result m_result = Result::Done;
    QString m_reason;
};
