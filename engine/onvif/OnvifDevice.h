#pragma once

#include "onvif/SoapLine.h"

#include <QDateTime>

/// Where a device is and who asks it.
struct OnvifLogin
{
    QUrl address; ///< of the device service
    QString user;
    QString password;
    QString certificate{};       ///< as in SoapLine::setCertificate()
    bool isPlainAllowed = false; ///< as in SoapLine::setPlainAllowed()
};

/// A device of the network: what it is, and which services it has. Everything is asked without waiting, each
/// call for at most five seconds; answers that point to other hosts are taken as the device's own.
class OnvifDevice : public QObject
{
    Q_OBJECT

public:
    enum class Service
    {
        Device,
        Media,
        Ptz,
        Events,
        Media2, ///< Media's successor, which alone knows of H.265
    };
    using Done = std::function<void(const OnvifFault&)>;

    explicit OnvifDevice(const OnvifLogin& login, QObject* parent = nullptr);

    /// Asks for the device's time, its name and its services. Services that it doesn't tell of are missing
    /// without a fault. Ask again only after `done` has come.
    void open(Done done);

    QUrl address() const { return m_login.address; }
    QString name() const { return m_name; }
    /// Maker and model in one line.
    QString model() const { return m_model; }
    bool hasMedia() const { return has(Service::Media) || has(Service::Media2); }
    bool has(Service service) const { return m_services[int(service)].isValid(); }

    /// An operation of a service; a service that the device hasn't got is told as not supported.
    void call(Service service, const SoapNode& body, SoapLine::Receiver receiver, int timeoutMs = 5000);
    void call(const SoapRequest& request, SoapLine::Receiver receiver) { m_line.call(request, receiver); }
    QUrl address(Service service) const { return m_services[int(service)]; }

    static QString nameSpace(Service service);
    static SoapNode operation(Service service, const QString& name);

private:
    void takeTime(const SoapAnswer& answer);
    void askInformation();
    void askName();
    void askServices();
    void takeServices(const SoapNode& body);
    void askCapabilities();
    void finish(const OnvifFault& fault);
    void setService(Service service, const QString& told);

    OnvifLogin m_login;
    SoapLine m_line;
    QString m_name;
    QString m_model;
    QUrl m_services[5];
    Done m_done;
};
