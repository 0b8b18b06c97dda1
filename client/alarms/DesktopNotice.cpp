#include "alarms/DesktopNotice.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QFileInfo>
#include <QVariantMap>

namespace {

constexpr int ShownMs = 8000;

/// Without one a bus would be looked for by starting it, which takes its time and is nobody's wish here.
bool hasSessionBus()
{
    return qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS") ||
           QFileInfo::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + "/bus");
}

} // namespace

void DesktopNotice::show(const QString& title, const QString& text)
{
    if (!hasSessionBus())
        return;
    const QString service = "org.freedesktop.Notifications";
    QDBusMessage call =
        QDBusMessage::createMethodCall(service, "/org/freedesktop/Notifications", service, "Notify");
    call << QString("PaneDeck") << m_last << QCoreApplication::applicationName() << title
         << text.toHtmlEscaped() << QStringList() << QVariantMap() << ShownMs;
    auto* watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        const QDBusPendingReply<quint32> reply = *watcher;
        m_last = reply.isError() ? 0 : reply.value();
        watcher->deleteLater();
    });
}
