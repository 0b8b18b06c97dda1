#include "onvif/OnvifDevice.h"

#include "onvif/DeviceAddress.h"

namespace {

using Service = OnvifDevice::Service;

constexpr const char* NameSpaces[] = {
    "http://www.onvif.org/ver10/device/wsdl", "http://www.onvif.org/ver10/media/wsdl",
    "http://www.onvif.org/ver20/ptz/wsdl",    "http://www.onvif.org/ver10/events/wsdl",
    "http://www.onvif.org/ver20/media/wsdl",
};

QDateTime readTime(const SoapNode& utc)
{
    const SoapNode& date = utc.at("Date");
    const SoapNode& time = utc.at("Time");
    return QDateTime(
        QDate(date.at("Year").text.toInt(), date.at("Month").text.toInt(), date.at("Day").text.toInt()),
        QTime(time.at("Hour").text.toInt(), time.at("Minute").text.toInt(), time.at("Second").text.toInt()),
        Qt::UTC);
}

QString nameIn(const SoapNode& scopes)
{
    const QString prefix = "onvif://www.onvif.org/name/";
    for (const SoapNode& scope : scopes.children) {
        const QString text = scope.at("ScopeItem").line();
        if (text.startsWith(prefix, Qt::CaseInsensitive))
            return SoapNode({}, QUrl::fromPercentEncoding(text.mid(prefix.size()).toUtf8())).line();
    }
    return {};
}

} // namespace

OnvifDevice::OnvifDevice(const OnvifLogin& login, QObject* parent) : QObject(parent), m_login(login)
{
    m_line.setCredentials(login.user, login.password);
    m_line.setCertificate(login.certificate);
    m_line.setPlainAllowed(login.isPlainAllowed);
}

QString OnvifDevice::nameSpace(Service service)
{
    return NameSpaces[int(service)];
}

SoapNode OnvifDevice::operation(Service service, const QString& name)
{
    SoapNode body(name);
    body.nameSpace = nameSpace(service);
    return body;
}

void OnvifDevice::open(Done done)
{
    m_done = std::move(done);
    for (QUrl& service : m_services)
        service.clear();
    m_services[int(Service::Device)] = m_login.address;
    SoapRequest request;
    request.address = m_login.address;
    request.body = operation(Service::Device, "GetSystemDateAndTime");
    request.isSigned = false;
    m_line.call(request, [this](const SoapAnswer& answer) { takeTime(answer); });
}

/// A digest is good for some seconds of the device's own time. A device that keeps its time to itself is
/// asked by ours.
void OnvifDevice::takeTime(const SoapAnswer& answer)
{
    using Kind = OnvifFault::Kind;
    if (answer.fault.kind == Kind::NoAnswer || answer.fault.kind == Kind::NotBuilt ||
        answer.fault.kind == Kind::Untrusted || answer.fault.kind == Kind::Unprotected)
        return finish(answer.fault);
    const QDateTime time = readTime(answer.body.at("SystemDateAndTime/UTCDateTime"));
    m_line.setClockOffset(time.isValid() ? QDateTime::currentDateTimeUtc().msecsTo(time) : 0);
    askInformation();
}

void OnvifDevice::askInformation()
{
    call(Service::Device, operation(Service::Device, "GetDeviceInformation"),
         [this](const SoapAnswer& answer) {
             using Kind = OnvifFault::Kind;
             if (answer.fault.kind == Kind::NoAnswer || answer.fault.kind == Kind::WrongPassword ||
                 answer.fault.kind == Kind::Unprotected || answer.fault.kind == Kind::Nonsense)
                 return finish(answer.fault);
             m_model =
                 (answer.body.at("Manufacturer").line() + ' ' + answer.body.at("Model").line()).trimmed();
             askName();
         });
}

void OnvifDevice::askName()
{
    call(Service::Device, operation(Service::Device, "GetScopes"), [this](const SoapAnswer& answer) {
        m_name = nameIn(answer.body);
        if (m_name.isEmpty())
            m_name = m_model.isEmpty() ? m_login.address.host() : m_model;
        askServices();
    });
}

void OnvifDevice::askServices()
{
    SoapNode body = operation(Service::Device, "GetServices");
    body.add(SoapNode("IncludeCapability", "false"));
    call(Service::Device, body, [this](const SoapAnswer& answer) {
        takeServices(answer.body);
        if (hasMedia())
            return finish({});
        askCapabilities();
    });
}

void OnvifDevice::takeServices(const SoapNode& body)
{
    for (const SoapNode& service : body.children) {
        for (const Service one : {Service::Media, Service::Ptz, Service::Events, Service::Media2}) {
            if (service.at("Namespace").text == nameSpace(one))
                setService(one, service.at("XAddr").text);
        }
    }
}

/// What devices of before GetServices have in its place.
void OnvifDevice::askCapabilities()
{
    SoapNode body = operation(Service::Device, "GetCapabilities");
    body.add(SoapNode("Category", "All"));
    call(Service::Device, body, [this](const SoapAnswer& answer) {
        const SoapNode& all = answer.body.at("Capabilities");
        setService(Service::Media, all.at("Media/XAddr").text);
        setService(Service::Ptz, all.at("PTZ/XAddr").text);
        setService(Service::Events, all.at("Events/XAddr").text);
        finish(hasMedia() ? OnvifFault() : answer.fault);
    });
}

void OnvifDevice::setService(Service service, const QString& told)
{
    if (!has(service))
        m_services[int(service)] = serviceAddress(m_login.address, told);
}

void OnvifDevice::finish(const OnvifFault& fault)
{
    const Done done = std::exchange(m_done, nullptr);
    if (done)
        done(fault);
}

void OnvifDevice::call(Service service, const SoapNode& body, SoapLine::Receiver receiver, int timeoutMs)
{
    SoapRequest request;
    request.address = address(service);
    request.body = body;
    request.timeoutMs = timeoutMs;
    if (has(service)) {
        m_line.call(request, std::move(receiver));
        return;
    }
    QMetaObject::invokeMethod(
        this,
        [receiver] {
            receiver({{OnvifFault::Kind::NotSupported, {}}, {}});
        },
        Qt::QueuedConnection);
}
