#include "onvif/SoapLogin.h"

#include <KDSoapClient/KDSoapAuthentication.h>

#include <QDateTime>
#include <QNetworkReply>
#include <QRandomGenerator>
#include <QRegularExpression>

namespace {

const QString Wss = "http://docs.oasis-open.org/wss/2004/01/oasis-200401-wss-";

QByteArray question(const QNetworkReply* reply)
{
    const bool isAsked = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt() == 401;
    return isAsked ? reply->rawHeader("WWW-Authenticate") : QByteArray();
}

bool isClosed(const QUrl& address)
{
    return address.scheme() == "https";
}

bool asksForBasic(const QByteArray& question)
{
    static const QRegularExpression basic(R"((?:^|[\s,])Basic\b)", QRegularExpression::CaseInsensitiveOption);
    return basic.match(QString::fromLatin1(question)).hasMatch();
}

} // namespace

QMap<QByteArray, QByteArray> SoapLogin::headers(const QUrl& address)
{
    // A few packed kilobytes can become gigabytes.
    QMap<QByteArray, QByteArray> made{{"Accept-Encoding", "identity"}};
    if (isClosed(address))
        return made;
    if (m_way == Way::HttpDigest)
        made.insert("Authorization", m_digest->answer(address, user, password));
    else if (m_way == Way::HttpBasic)
        made.insert("Authorization", "Basic " + (user + ':' + password).toUtf8().toBase64());
    return made;
}

bool SoapLogin::mayBePlain(const QUrl& address) const
{
    return isPlainAllowed || isClosed(address);
}

/// A device may tell services of both kinds of lines.
bool SoapLogin::isTokenPlain(const QUrl& address) const
{
    return m_way == Way::PlainToken && mayBePlain(address);
}

KDSoapAuthentication SoapLogin::digestToken(const QUrl& address) const
{
    KDSoapAuthentication made;
    if (user.isEmpty() || isTokenPlain(address))
        return made;
    made.setUser(user);
    made.setPassword(password);
    made.setUseWSUsernameToken(true);
    made.setOverrideWSUsernameCreatedTime(QDateTime::currentDateTimeUtc().addMSecs(clockOffsetMs));
    // KDSoap's own nonces are the same after each start.
    QByteArray nonce(16, Qt::Uninitialized);
    QRandomGenerator::system()->generate(nonce.begin(), nonce.end());
    made.setOverrideWSUsernameNonce(nonce);
    return made;
}

std::vector<SoapNode> SoapLogin::plainToken(const QUrl& address) const
{
    if (!isTokenPlain(address))
        return {};
    SoapNode secret("Password", password);
    secret.set("Type", Wss + "username-token-profile-1.0#PasswordText");
    SoapNode security("Security");
    security.nameSpace = Wss + "wssecurity-secext-1.0.xsd";
    return {security.add(SoapNode("UsernameToken").add(SoapNode("Username", user)).add(secret))};
}

SoapLogin::Way SoapLogin::wayFor(const QNetworkReply* reply, bool isRefusedToken)
{
    const QByteArray asked = question(reply);
    if (asked.isEmpty()) {
        const bool mayTryPlain = mayBePlain(reply->url()) && m_way != Way::PlainToken;
        return isRefusedToken && mayTryPlain ? Way::PlainToken : Way::Token;
    }
    if (isClosed(reply->url()))
        return Way::Token;
    m_digest = HttpDigest::read(asked);
    if (m_digest)
        return Way::HttpDigest;
    return isPlainAllowed && asksForBasic(asked) ? Way::HttpBasic : Way::Token;
}

bool SoapLogin::changeWay(const QNetworkReply* reply, bool isRefusedToken, bool mayTry)
{
    if (user.isEmpty() || (question(reply).isEmpty() && !isRefusedToken))
        return false;
    m_way = mayTry ? wayFor(reply, isRefusedToken) : Way::Token;
    return m_way != Way::Token;
}

bool SoapLogin::isUnprotected(const QNetworkReply* reply) const
{
    const QByteArray asked = question(reply);
    return !isPlainAllowed && !isClosed(reply->url()) && !asked.isEmpty() && !HttpDigest::read(asked);
}
