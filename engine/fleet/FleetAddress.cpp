#include "fleet/FleetAddress.h"

#include <QSqlDatabase>
#include <QStringList>
#include <QUrl>
#include <QUrlQuery>

namespace {

/// A server that is gone must be noticed before a lease of ten seconds is over, whatever the network does.
constexpr const char* Watchfulness[][2] = {
    {"connect_timeout", "3"},     {"tcp_user_timeout", "4000"}, {"keepalives_idle", "2"},
    {"keepalives_interval", "1"}, {"keepalives_count", "3"},    {"application_name", "panedeck"},
};

/// The driver puts options into a line of libpq's, where these characters end a value or begin another.
bool isPlain(const QString& text)
{
    for (const QChar c : text) {
        if (c.isSpace() || c == ';' || c == '\'' || c == '\\' || c == '=' || !c.isPrint())
            return false;
    }
    return !text.isEmpty();
}

} // namespace

std::optional<FleetAddress> FleetAddress::parse(const QString& text, QString* error)
{
    const QUrl url(text, QUrl::StrictMode);
    const QUrlQuery query(url);
    if (!url.password().isEmpty() || query.hasQueryItem("password") || query.hasQueryItem("sslpassword")) {
        *error = "an index's address with a password is refused: it belongs into the service file";
        return std::nullopt;
    }
    if (!url.isValid() || (url.scheme() != "postgresql" && url.scheme() != "postgres")) {
        *error = "an index's address is postgresql://[user@]host[:port]/database";
        return std::nullopt;
    }
    FleetAddress address;
    address.m_host = url.host();
    address.m_port = url.port();
    address.m_user = url.userName();
    address.m_database = url.path().mid(1);
    QStringList options;
    for (const auto& item : query.queryItems(QUrl::FullyDecoded)) {
        if (!isPlain(item.first) || !isPlain(item.second)) {
            *error =
                QString("the index's address has a parameter that can't be passed on: %1").arg(item.first);
            return std::nullopt;
        }
        options.append(item.first + "=" + item.second);
    }
    for (const auto& [name, value] : Watchfulness) {
        if (!query.hasQueryItem(name))
            options.append(QString("%1=%2").arg(name, value));
    }
    address.m_options = options.join(';');
    return address;
}

void FleetAddress::applyTo(QSqlDatabase& database) const
{
    database.setHostName(m_host);
    database.setPort(m_port);
    database.setDatabaseName(m_database);
    database.setUserName(m_user);
    database.setConnectOptions(m_options);
}
