#include "onvif/OnvifEvents.h"

#include "onvif/DeviceAddress.h"

namespace {

using Service = OnvifDevice::Service;

constexpr int CallMs = 5000;
constexpr int FirstPauseMs = 1000;
/// A device that answers every pull at once and empty is not asked more often.
constexpr int ShortestPullMs = 500;
constexpr int MostEvents = 128;
constexpr int LongestSource = 256;
const QString PullPort = "http://www.onvif.org/ver10/events/wsdl/PullPointSubscription/";
const QString Notification = "http://docs.oasis-open.org/wsn/b-2";
const QString SubscriptionPort = "http://docs.oasis-open.org/wsn/bw-2/SubscriptionManager/";

QString seconds(int count)
{
    return QString("PT%1S").arg(count);
}

bool isTrue(const QString& value)
{
    return value == "1" || value.compare("true", Qt::CaseInsensitive) == 0 ||
           value.compare("active", Qt::CaseInsensitive) == 0;
}

std::optional<OnvifEvent::Kind> kindOf(const QString& topic)
{
    if (topic.contains("Motion") || topic.contains("FieldDetector"))
        return OnvifEvent::Kind::Motion;
    if (topic.contains("DigitalInput") || topic.contains("AlarmIn"))
        return OnvifEvent::Kind::Alarm;
    return {};
}

/// Some devices tell more than the state, such as the rule or the object before it.
const SoapNode& stateIn(const SoapNode& data)
{
    static const QStringList names{"State", "IsMotion", "IsInside", "LogicalState", "Value"};
    for (const SoapNode& item : data.children) {
        if (names.contains(item.attribute("Name"), Qt::CaseInsensitive))
            return item;
    }
    return data.at("SimpleItem");
}

std::optional<OnvifEvent> eventOf(const SoapNode& notification)
{
    const auto kind = kindOf(notification.at("Topic").text);
    const SoapNode& message = notification.at("Message/Message");
    const SoapNode& value = stateIn(message.at("Data"));
    if (!kind || value.name.isEmpty())
        return {};
    OnvifEvent event{*kind, {}, isTrue(value.attribute("Value"))};
    if (message.attribute("PropertyOperation") == "Deleted")
        event.isOn = false;
    for (const SoapNode& item : message.at("Source").children) {
        const QString name = item.attribute("Name");
        if (name.contains("Source") || name.contains("Token"))
            event.source = item.attribute("Value").left(LongestSource);
        if (name.startsWith("VideoSource"))
            break;
    }
    return event;
}

} // namespace

QVector<OnvifEvent> readEvents(const SoapNode& body)
{
    QVector<OnvifEvent> events;
    for (const SoapNode& node : body.children) {
        const auto event = node.name == "NotificationMessage" ? eventOf(node) : std::nullopt;
        if (event && events.size() < MostEvents)
            events.append(*event);
    }
    return events;
}

OnvifEvents::OnvifEvents(OnvifDevice* device, QObject* parent) : QObject(parent), m_device(device)
{
    m_next.setSingleShot(true);
    m_renew.setInterval(RenewMs);
    connect(&m_renew, &QTimer::timeout, this, &OnvifEvents::renew);
    connect(&m_next, &QTimer::timeout, this, [this] { m_isSubscribed ? pull() : subscribe(); });
}

void OnvifEvents::start()
{
    if (m_isRunning)
        return;
    m_isRunning = true;
    m_pauseMs = 0;
    m_hasToldLoss = false;
    subscribe();
}

void OnvifEvents::stop()
{
    if (!std::exchange(m_isRunning, false))
        return;
    ++m_turn;
    m_next.stop();
    m_renew.stop();
    if (std::exchange(m_isAsked, false))
        ++m_ends;
    if (std::exchange(m_isSubscribed, false))
        unsubscribe();
}

void OnvifEvents::unsubscribe()
{
    SoapNode body("Unsubscribe");
    body.nameSpace = Notification;
    ++m_ends;
    m_device->call(request(body, SubscriptionPort + "UnsubscribeRequest"),
                   [this](const SoapAnswer&) { takeEnd(); });
}

void OnvifEvents::takeEnd()
{
    if (--m_ends == 0)
        Q_EMIT ended();
}

SoapRequest OnvifEvents::request(const SoapNode& body, const QString& action) const
{
    SoapRequest request;
    request.address = m_address;
    request.body = body;
    request.action = action;
    request.isAddressed = true;
    request.headers = m_headers;
    request.timeoutMs = CallMs;
    return request;
}

void OnvifEvents::subscribe()
{
    m_headers.clear();
    m_address = m_device->address(Service::Events);
    if (!m_address.isValid())
        return lose({OnvifFault::Kind::NotSupported, {}});
    SoapNode body = OnvifDevice::operation(Service::Events, "CreatePullPointSubscription");
    body.add(SoapNode("InitialTerminationTime", seconds(KeepSeconds)));
    const QString action =
        "http://www.onvif.org/ver10/events/wsdl/EventPortType/CreatePullPointSubscriptionRequest";
    m_isAsked = true;
    m_device->call(request(body, action), [this, turn = ++m_turn](const SoapAnswer& answer) {
        if (turn == m_turn)
            return takeSubscription(answer);
        // It was stopped before it had begun.
        if (!answer.fault && !m_isSubscribed) {
            takePlace(answer.body.at("SubscriptionReference"));
            unsubscribe();
        }
        takeEnd();
    });
}

void OnvifEvents::takePlace(const SoapNode& reference)
{
    const QUrl told = serviceAddress(m_device->address(), reference.at("Address").text);
    if (told.isValid())
        m_address = told;
    m_headers = reference.at("ReferenceParameters").children;
}

void OnvifEvents::takeSubscription(const SoapAnswer& answer)
{
    m_isAsked = false;
    if (answer.fault)
        return lose(answer.fault);
    takePlace(answer.body.at("SubscriptionReference"));
    m_isSubscribed = true;
    m_hasToldLoss = false;
    m_renew.start(RenewMs);
    renewBefore(answer.body);
    Q_EMIT stateChanged({});
    if (m_isRunning)
        pull();
}

void OnvifEvents::pull()
{
    SoapNode body = OnvifDevice::operation(Service::Events, "PullMessages");
    body.add(SoapNode("Timeout", seconds(PullMs / 1000))).add(SoapNode("MessageLimit", "32"));
    SoapRequest pulled = request(body, PullPort + "PullMessagesRequest");
    pulled.timeoutMs += PullMs;
    m_sincePull.start();
    m_device->call(pulled, [this, turn = m_turn](const SoapAnswer& answer) {
        if (turn == m_turn)
            takeMessages(answer);
    });
}

void OnvifEvents::takeMessages(const SoapAnswer& answer)
{
    if (answer.fault)
        return lose(answer.fault);
    m_pauseMs = 0;
    m_next.start(int(qMax<qint64>(0, ShortestPullMs - m_sincePull.elapsed())));
    for (const OnvifEvent& event : readEvents(answer.body))
        Q_EMIT told(event);
}

/// A device without a Renew keeps a subscription that is pulled; one that ends it refuses the next pull.
void OnvifEvents::renew()
{
    SoapNode body("Renew");
    body.nameSpace = Notification;
    body.add(SoapNode("TerminationTime", seconds(KeepSeconds)));
    m_device->call(request(body, SubscriptionPort + "RenewRequest"),
                   [this, turn = m_turn](const SoapAnswer& answer) {
                       if (turn == m_turn)
                           renewBefore(answer.body);
                   });
}

/// Twice within the time that a device has granted, by its own clock.
void OnvifEvents::renewBefore(const SoapNode& times)
{
    const auto now = QDateTime::fromString(times.at("CurrentTime").text, Qt::ISODate);
    const auto end = QDateTime::fromString(times.at("TerminationTime").text, Qt::ISODate);
    if (now.isValid() && end.isValid())
        m_renew.start(int(qBound(qint64(ShortestPullMs), now.msecsTo(end) / 2, qint64(RenewMs))));
}

void OnvifEvents::lose(const OnvifFault& fault)
{
    ++m_turn;
    if (std::exchange(m_isSubscribed, false))
        unsubscribe();
    m_renew.stop();
    m_pauseMs = qBound(FirstPauseMs, 2 * m_pauseMs, LongestPauseMs);
    m_next.start(m_pauseMs);
    if (!std::exchange(m_hasToldLoss, true))
        Q_EMIT stateChanged(fault);
}
