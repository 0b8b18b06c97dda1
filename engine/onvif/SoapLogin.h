#pragma once

#include "onvif/HttpDigest.h"
#include "onvif/SoapNode.h"

#include <QMap>

class KDSoapAuthentication;
class QNetworkReply;

/// How a line tells a device who asks: at first by WS-Security's digest of the password, then by what the
/// device asks for in its place. The password itself goes over HTTPS alone, unless it is allowed otherwise.
class SoapLogin
{
public:
    QString user;
    QString password;
    bool isPlainAllowed = false; ///< the password may go over a line that others can read
    qint64 clockOffsetMs = 0;    ///< of the device's clock

    /// HTTP's own headers of a call.
    QMap<QByteArray, QByteArray> headers(const QUrl& address);
    /// WS-Security's digest; empty where the password itself is in plainToken().
    KDSoapAuthentication digestToken(const QUrl& address) const;
    std::vector<SoapNode> plainToken(const QUrl& address) const;

    /// Whether a refused call is worth another try, in another way. `mayTry` is false for one that was such
    /// a try itself.
    bool changeWay(const QNetworkReply* reply, bool isRefusedToken, bool mayTry);
    /// The device asks for the password itself, which it isn't told.
    bool isUnprotected(const QNetworkReply* reply) const;

private:
    enum class Way
    {
        Token,
        HttpDigest, ///< HTTP's own, where Qt doesn't give it
        HttpBasic,
        PlainToken,
    };

    bool mayBePlain(const QUrl& address) const;
    bool isTokenPlain(const QUrl& address) const;
    Way wayFor(const QNetworkReply* reply, bool isRefusedToken);

    Way m_way = Way::Token;
    std::optional<HttpDigest> m_digest;
};
