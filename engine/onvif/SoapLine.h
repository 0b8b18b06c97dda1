#pragma once

#include "onvif/OnvifFault.h"
#include "onvif/SoapNode.h"

#include <QObject>
#include <QUrl>

#include <functional>
#include <memory>

class QNetworkReply;
class QSslError;

/// One call of a service.
struct SoapRequest
{
    QUrl address;
    SoapNode body;                 ///< named for the operation, with the service's namespace
    QString action;                ///< empty for namespace/operation
    bool isAddressed = false;      ///< with WS-Addressing's headers, as events ask for
    std::vector<SoapNode> headers; ///< further ones, such as a subscription's own
    bool isSigned = true;          ///< with the credentials, if there are any
    int timeoutMs = 5000;
};

struct SoapAnswer
{
    OnvifFault fault;
    SoapNode body; ///< the response; empty with a fault
};

/// The line to one device: SOAP 1.2 over HTTP with a user's name and the digest of a password in each call,
/// or in another way that the device asks for: but the password itself goes over HTTPS alone, if it is not
/// allowed otherwise. Nothing waits here. An answer of more than a megabyte is cut off as nonsense.
class SoapLine : public QObject
{
    Q_OBJECT

public:
    using Receiver = std::function<void(const SoapAnswer&)>;

    explicit SoapLine(QObject* parent = nullptr);
    ~SoapLine() override;

    /// False where the build has no KDSoap: each call is answered so then.
    static bool isBuilt();

    void setCredentials(const QString& user, const QString& password);
    /// The password itself may go over a line that others can read, to a device that takes nothing else.
    void setPlainAllowed(bool allowed);
    /// Over HTTPS a certificate that nobody vouches for is taken if it has this SHA-256, in hexadecimal
    /// digits; any other one is answered so, with its own as the reason, before anything is said.
    void setCertificate(const QString& fingerprint);
    /// How far the device's clock is ahead of ours: a digest is good by the device's time.
    void setClockOffset(qint64 ms);

    /// `receiver` is called once, later, and may delete the line; never after the line has gone.
    void call(const SoapRequest& request, Receiver receiver);

private:
    void send(const SoapRequest& request, Receiver receiver, bool mayTry);
    void checkCertificate(QNetworkReply* reply, const QList<QSslError>& errors);

    struct Private;
    std::unique_ptr<Private> d;
};
