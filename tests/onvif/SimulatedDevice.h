#pragma once

#include "onvif/SoapNode.h"

#include <QDateTime>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QTcpServer>
#include <QUdpSocket>
#include <QUrl>

/// What a simulated device does other than ONVIF says, or can't do. Each stands for something that devices on
/// the market are known for.
struct Habits
{
    QString user; ///< empty for a device that asks nobody
    QString password;
    QString authentication = "token"; ///< or "text", or "digest" or "basic", HTTP's own
    QString name = "Simulated camera";
    QString foreignHost;  ///< told in place of the device's own
    QString mood;         ///< "silent", "malformed", "deep", "endless", "html", "busy"; empty for a good one
    QStringList missing;  ///< operations that it hasn't got
    QStringList silentOn; ///< operations that it never answers
    QString stream;       ///< the address of each stream; empty for the video that it serves itself
    QString video;        ///< a file
    bool asksForReference = false;           ///< knows a subscription by its reference parameters alone
    bool takesOneListener = false;           ///< a second subscription is refused
    int keepsSeconds = 60;                   ///< a subscription that is not renewed
    bool isSecure = false;                   ///< speaks HTTPS, with a certificate of its own
    QString certificate = "certificate.pem"; ///< a file beside this one
    int clockSeconds = 0;                    ///< how far its clock is ahead
    int delayMs = 0;
    int sources = 1;
    QString tokens;                ///< before each profile's own
    bool isChunked = false;        ///< answers come in chunks
    bool hasEmptyProfiles = false; ///< without a video encoder, and without a source
    bool isFoundByV4 = true;
    QString media = "1"; ///< or "2" for Media2 alone, "12" for both
};

/// HTTP, or HTTPS with a certificate.
class DeviceServer : public QTcpServer
{
    Q_OBJECT

public:
    explicit DeviceServer(const Habits& habits)
        : m_isSecure(habits.isSecure), m_certificate(pathOf(habits.certificate))
    {
    }
    static QString pathOf(const QString& certificate);

protected:
    void incomingConnection(qintptr handle) override;

private:
    bool m_isSecure;
    QString m_certificate;
};

/// A device of the network that has ONVIF's discovery, device, media, PTZ and event services, as far as their
/// answers lie in answers/, and remembers what it was told.
class SimulatedDevice : public QObject
{
    Q_OBJECT

public:
    explicit SimulatedDevice(const Habits& habits, quint16 port = 0);

    /// The one nonce of HTTP's digest that it gives out.
    static constexpr const char* Nonce = "0123456789abcdef";

    Habits habits;
    QString address() const;
    /// Each operation that moves, stops or stores, with its numbers, in the order in which they came.
    QStringList told() const { return m_told; }
    /// All operations, those that were refused for want of a password among them.
    QStringList asked() const { return m_asked; }

    /// Answers probes from now on.
    void discover(quint16 port);
    /// Something happens, for whoever has subscribed.
    void report(const QString& topic, const QString& source, bool on);
    /// Forgets the subscription, as after a start.
    void forget() { m_subscription.clear(); }

Q_SIGNALS:
    void tellsLine(const QString& line);

private:
    using Marks = QVector<QPair<QString, QString>>;

    void serve(QTcpSocket* socket);
    void answer(QTcpSocket* socket, const QByteArray& head, const QByteArray& content);
    void answerMood(QTcpSocket* socket);
    void answerVideo(QTcpSocket* socket);
    void answerPull(QTcpSocket* socket);
    QByteArray answerTo(const SoapNode& operation);
    Marks marksFor(const SoapNode& operation);
    QString profiles(const QString& kind, const QString& only = {}) const;
    QString services() const;
    QByteArray subscribe(const SoapNode& operation);
    void note(const SoapNode& operation);
    bool isSigned(const SoapNode& envelope, const QByteArray& head);
    bool hasToken(const SoapNode& token);
    QString base() const;
    QDateTime now() const { return QDateTime::currentDateTimeUtc().addSecs(habits.clockSeconds); }
    void answerProbe(QUdpSocket* socket);
    void send(QTcpSocket* socket, int status, const QByteArray& body, const QByteArray& headers = {});
    static QByteArray header(const QByteArray& head, const QByteArray& name);
    static QByteArray fault(const QString& side, const QString& code, const QString& reason);
    static QString fill(const QString& name, const Marks& marks);

    DeviceServer m_server;
    QUdpSocket m_discovery;
    QUdpSocket m_discovery6;
    QElapsedTimer m_clock;
    QStringList m_told;
    QStringList m_asked;
    QStringList m_presets{"Door"};
    QString m_subscription;
    QDeadlineTimer m_subscriptionEnds;
    QString m_messages;
};
