#include "SimulatedDevice.h"

#include <QDateTime>
#include <QTcpSocket>
#include <QTimer>
#include <QUuid>

/// What an operation does to the subscription, or why it is refused.
QByteArray SimulatedDevice::subscribe(const SoapNode& operation)
{
    if (m_subscriptionEnds.hasExpired())
        m_subscription.clear();
    if (operation.name == "Unsubscribe") {
        m_subscription.clear();
        Q_EMIT tellsLine(QString::number(m_clock.elapsed()) + " Unsubscribe");
    }
    if (operation.name == "Renew" && m_subscription.isEmpty())
        return fault("Sender", "ResourceUnknown", "nobody has subscribed");
    if (operation.name == "CreatePullPointSubscription") {
        if (habits.takesOneListener && !m_subscription.isEmpty())
            return fault("Receiver", "MaxPullPoints", "there is a listener");
        m_subscription = QUuid::createUuid().toString(QUuid::WithoutBraces);
    }
    if (operation.name == "Renew" || operation.name == "CreatePullPointSubscription")
        m_subscriptionEnds.setRemainingTime(1000 * habits.keepsSeconds);
    return {};
}

void SimulatedDevice::report(const QString& topic, const QString& source, bool on)
{
    m_messages +=
        fill("Message", {{"topic", topic},
                         {"kind", topic.contains("Input") ? "InputToken" : "VideoSourceConfigurationToken"},
                         {"source", source},
                         {"state", on ? "true" : "false"},
                         {"now", now().toString(Qt::ISODate)}});
}

/// Held back until something happens, three seconds at the longest.
void SimulatedDevice::answerPull(QTcpSocket* socket)
{
    auto* waiting = new QTimer(socket);
    const qint64 ends = m_clock.elapsed() + 3000;
    connect(waiting, &QTimer::timeout, this, [=] {
        if (m_messages.isEmpty() && m_clock.elapsed() < ends && !m_subscription.isEmpty())
            return;
        waiting->deleteLater();
        const QString body =
            fill("PullMessages", {{"messages", std::exchange(m_messages, {})},
                                  {"now", now().toString(Qt::ISODate)},
                                  {"then", now().addSecs(habits.keepsSeconds).toString(Qt::ISODate)}});
        send(socket, 200, fill("Envelope", {{"header", {}}, {"body", body}}).toUtf8());
    });
    waiting->start(20);
}
