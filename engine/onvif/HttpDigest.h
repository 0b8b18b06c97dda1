#pragma once

#include <QString>
#include <QUrl>

#include <optional>

/// A device's question for HTTP's digest of a password, and the answers to it, which don't give the password
/// away. Qt has this too, but lets the one who asks choose the plain password in its place.
class HttpDigest
{
public:
    /// Of the header WWW-Authenticate; none if it asks for no digest that can be given.
    static std::optional<HttpDigest> read(const QByteArray& header);

    /// The header Authorization of a POST to that address; another one each time.
    QByteArray answer(const QUrl& address, const QString& user, const QString& password);

private:
    QByteArray digest(const QByteArray& text) const;

    QByteArray m_realm;
    QByteArray m_nonce;
    QByteArray m_opaque;
    QByteArray m_algorithm; ///< empty for MD5
    bool m_hasQuality = false;
    quint32 m_count = 0;
};
