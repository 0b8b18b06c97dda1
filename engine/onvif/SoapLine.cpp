#include "onvif/SoapLine.h"

#include "onvif/HttpDigest.h"

#include <KDSoapClient/KDSoapAuthentication.h>
#include <KDSoapClient/KDSoapClientInterface.h>
#include <KDSoapClient/KDSoapMessageAddressingProperties.h>

#include <QAuthenticator>
#include <QCryptographicHash>
#include <QDateTime>
#include <QNetworkAccessManager>
#include <QNetworkCookieJar>
#include <QNetworkReply>
#include <QRandomGenerator>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QTimer>
#include <QUuid>

namespace {

constexpr qint64 LargestAnswer = 1 << 20;

KDSoapValue valueOf(const SoapNode& node, const QString& around)
{
    const QString space = node.nameSpace.isEmpty() ? around : node.nameSpace;
    KDSoapValue value(node.name, node.text.isEmpty() ? QVariant() : QVariant(node.text));
    value.setNamespaceUri(space);
    value.setQualified(true);
    for (const auto& [name, text] : node.attributes)
        value.childValues().attributes().append(KDSoapValue(name, QVariant(text)));
    for (const SoapNode& child : node.children)
        value.childValues().append(valueOf(child, space));
    return value;
}

KDSoapMessage messageOf(const SoapRequest& request, const QString& action)
{
    KDSoapMessage message;
    message = valueOf(request.body, QString());
    if (request.isAddressed) {
        KDSoapMessageAddressingProperties addressing;
        addressing.setAction(action);
        addressing.setDestination(request.address.toString());
        addressing.setMessageID("urn:uuid:" + QUuid::createUuid().toString(QUuid::WithoutBraces));
        message.setMessageAddressingProperties(addressing);
    }
    return message;
}

KDSoapHeaders headersOf(const SoapRequest& request)
{
    KDSoapMessage holder;
    for (const SoapNode& header : request.headers)
        holder.childValues().append(valueOf(header, QString()));
    KDSoapHeaders headers;
    if (!request.headers.empty())
        headers.append(holder);
    return headers;
}

/// KDSoap keeps its manager to itself, but that is the parent of the cookie jar. It is wanted as KDSoap reads
/// an answer of any length and descends as deep as it goes.
QNetworkAccessManager* manager(const KDSoapClientInterface& client)
{
    return static_cast<QNetworkAccessManager*>(client.cookieJar()->parent());
}

QNetworkReply* newestReply(const KDSoapClientInterface& client)
{
    return manager(client)->findChildren<QNetworkReply*>(QString(), Qt::FindDirectChildrenOnly).last();
}

QByteArray question(const QNetworkReply* reply)
{
    return reply->rawHeader("WWW-Authenticate");
}

/// HTTP's own authentication, but none that leaves the password unknown to who listens.
bool asksForMore(const QNetworkReply* reply)
{
    return !question(reply).isEmpty() && !HttpDigest::read(question(reply));
}

SoapAnswer answerOf(QNetworkReply* reply)
{
    using Kind = OnvifFault::Kind;
    const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (reply->property("tooLarge").toBool())
        return {{Kind::Nonsense, {}}, {}};
    const QString unknown = reply->property("certificate").toString();
    if (status == 0 && !unknown.isEmpty())
        return {{Kind::Untrusted, unknown}, {}};
    if (status == 0 || reply->error() == QNetworkReply::OperationCanceledError)
        return {{Kind::NoAnswer, {}}, {}};
    const bool isPlain = reply->url().scheme() != "https";
    if (status == 401 && isPlain && asksForMore(reply))
        return {{Kind::Unprotected, {}}, {}};
    const auto envelope = SoapNode::parse(reply->peek(LargestAnswer));
    const SoapNode body = envelope ? envelope->at("Body") : SoapNode();
    const SoapNode content = body.children.empty() ? SoapNode() : body.children.front();
    const OnvifFault fault = faultOf(status, content);
    return {fault, fault ? SoapNode() : content};
}

} // namespace

struct SoapLine::Private
{
    KDSoapClientInterface client{QString(), QString()};
    QString user;
    QString password;
    QString certificate;
    std::optional<HttpDigest> digest; ///< of a device that asks for it over HTTP
    qint64 clockOffsetMs = 0;

    QMap<QByteArray, QByteArray> headers(const QUrl& address)
    {
        // A few packed kilobytes can become gigabytes.
        QMap<QByteArray, QByteArray> made{{"Accept-Encoding", "identity"}};
        if (digest && address.scheme() != "https")
            made.insert("Authorization", digest->answer(address, user, password));
        return made;
    }

    /// Whether there is an answer now to what the device asks for before it does anything.
    bool takeQuestion(const QNetworkReply* reply, bool mayAnswer)
    {
        if (reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt() != 401)
            return false;
        const bool canAnswer = mayAnswer && !user.isEmpty() && reply->url().scheme() != "https";
        digest = canAnswer ? HttpDigest::read(question(reply)) : std::nullopt;
        return digest.has_value();
    }

    KDSoapAuthentication authentication() const
    {
        KDSoapAuthentication made;
        if (user.isEmpty())
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
};

SoapLine::SoapLine(QObject* parent) : QObject(parent), d(std::make_unique<Private>())
{
    d->client.setSoapVersion(KDSoapClientInterface::SOAP1_2);
    d->client.setStyle(KDSoapClientInterface::DocumentStyle);
    connect(manager(d->client), &QNetworkAccessManager::sslErrors, this, &SoapLine::checkCertificate);
    // KDSoap and Qt would answer with the plain password too, which only a line that is closed may see.
    using Manager = QNetworkAccessManager;
    disconnect(manager(d->client), &Manager::authenticationRequired, nullptr, nullptr);
    connect(manager(d->client), &Manager::authenticationRequired, this,
            [this](QNetworkReply* reply, QAuthenticator* asked) {
                if (reply->property("isAsked").toBool() || reply->url().scheme() != "https")
                    return;
                reply->setProperty("isAsked", true);
                asked->setUser(d->user);
                asked->setPassword(d->password);
            });
}

/// Of a device's own certificate this very one counts, whatever it says of itself. Its faults alone are
/// forgiven: what is forgiven holds for all connections to this device that follow.
void SoapLine::checkCertificate(QNetworkReply* reply, const QList<QSslError>& errors)
{
    const QByteArray digest = reply->sslConfiguration().peerCertificate().digest(QCryptographicHash::Sha256);
    const QString fingerprint = QString::fromLatin1(digest.toHex());
    if (!fingerprint.isEmpty() && fingerprint == d->certificate)
        reply->ignoreSslErrors(errors);
    else
        reply->setProperty("certificate", fingerprint);
}

SoapLine::~SoapLine() = default;

bool SoapLine::isBuilt()
{
    return true;
}

void SoapLine::setCredentials(const QString& user, const QString& password)
{
    d->user = user;
    d->password = password;
}

void SoapLine::setCertificate(const QString& fingerprint)
{
    d->certificate = fingerprint;
}

void SoapLine::setClockOffset(qint64 ms)
{
    d->clockOffsetMs = ms;
}

void SoapLine::call(const SoapRequest& request, Receiver receiver)
{
    send(request, std::move(receiver), true);
}

void SoapLine::send(const SoapRequest& request, Receiver receiver, bool mayAnswer)
{
    const QString action =
        request.action.isEmpty() ? request.body.nameSpace + '/' + request.body.name : request.action;
    d->client.setEndPoint(request.address.toString());
    d->client.setRawHTTPHeaders(d->headers(request.address));
    d->client.setAuthentication(request.isSigned ? d->authentication() : KDSoapAuthentication());
    const KDSoapPendingCall pending =
        d->client.asyncCall(QString(), messageOf(request, action), action, headersOf(request));
    QNetworkReply* reply = newestReply(d->client);
    connect(reply, &QNetworkReply::downloadProgress, reply, [reply](qint64 received) {
        if (received <= LargestAnswer)
            return;
        reply->setProperty("tooLarge", true);
        reply->abort();
    });
    QTimer::singleShot(request.timeoutMs, reply, &QNetworkReply::abort);
    // The pending call owns the reply, and lasts as long as this object.
    auto* keeper = new QObject(this);
    const auto answer = [=, pending = pending, receiver = std::move(receiver)] {
        keeper->deleteLater();
        if (d->takeQuestion(reply, mayAnswer))
            send(request, receiver, false);
        else
            receiver(answerOf(reply));
    };
    connect(reply, &QNetworkReply::finished, keeper, answer, Qt::QueuedConnection);
}
