#pragma once

#include <QString>

#include <optional>

class QSqlDatabase;

/// Where the index lies that several machines share:
/// `postgresql://[user@]host[:port]/database[?name=value&…]`, with the parameters of libpq behind the
/// question mark, `service` and `sslmode` among them. A password in it is refused, as everybody sees a
/// command line: it belongs into libpq's service or password file.
class FleetAddress
{
public:
    /// Nothing for what is no such address, with one line in `error`, without any of a password.
    static std::optional<FleetAddress> parse(const QString& text, QString* error);

    FleetAddress(const FleetAddress&) = default;
    FleetAddress& operator=(const FleetAddress&) = default;

    void applyTo(QSqlDatabase& database) const;

private:
    FleetAddress() = default;

    QString m_host;
    int m_port = -1;
    QString m_database;
    QString m_user;
    QString m_options; ///< as Qt's driver takes them
};
