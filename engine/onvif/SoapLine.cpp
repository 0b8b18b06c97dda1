#include "onvif/SoapLine.h"

#include "onvif/SoapLogin.h"

#include <KDSoapClient/KDSoapAuthentication.h>
#include <KDSoapClient/KDSoapClientInterface.h>
#include <KDSoapClient/KDSoapMessageAddressingProperties.h>

#include <QAuthenticator>
#include <QCryptographicHash>
#include <QNetworkAccessManager>
#include <QNetworkCookieJar>
#include <QNetworkReply>
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

KDSoapHeaders headersOf(const std::vector<SoapNode>& nodes)
{
    KDSoapMessage holder;
    for (const SoapNode& node : nodes)
        holder.childValues().append(valueOf(node, QString()));
    KDSoapHeaders headers;
    if (!nodes.empty())
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

SoapAnswer answerOf(QNetworkReply* reply, const SoapLogin& login)
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
    if (login.isUnprotected(reply))
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
    SoapLogin login;
    QString certificate;
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
                asked->setUser(d->login.user);
                asked->setPassword(d->login.password);
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
    d->login.user = user;
    d->login.password = password;
}

void SoapLine::setPlainAllowed(bool allowed)
{
    d->login.isPlainAllowed = allowed;
}

void SoapLine::setCertificate(const QString& fingerprint)
{
    d->certificate = fingerprint;
}

void SoapLine::setClockOffset(qint64 ms)
{
    d->login.clockOffsetMs = ms;
}

void SoapLine::call(const SoapRequest& request, Receiver receiver)
{
    send(request, std::move(receiver), true);
}

void SoapLine::send(const SoapRequest& request, Receiver receiver, bool mayTry)
{
    const QString action =
        request.action.isEmpty() ? request.body.nameSpace + '/' + request.body.name : request.action;
    d->client.setEndPoint(request.address.toString());
    d->client.setRawHTTPHeaders(d->login.headers(request.address));
    d->client.setAuthentication(request.isSigned ? d->login.digestToken(request.address)
                                                 : KDSoapAuthentication());
    std::vector<SoapNode> headers =
        request.isSigned ? d->login.plainToken(request.address) : std::vector<SoapNode>();
    headers.insert(headers.end(), request.headers.begin(), request.headers.end());
    const KDSoapPendingCall pending =
        d->client.asyncCall(QString(), messageOf(request, action), action, headersOf(headers));
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
        const SoapAnswer told = answerOf(reply, d->login);
        const bool isRefused = request.isSigned && told.fault.kind == OnvifFault::Kind::WrongPassword;
        if (d->login.changeWay(reply, isRefused, mayTry))
            send(request, receiver, false);
        else
            receiver(told);
    };
    connect(reply, &QNetworkReply::finished, keeper, answer, Qt::QueuedConnection);
}
