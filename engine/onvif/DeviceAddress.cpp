#include "onvif/DeviceAddress.h"

#include <QHostAddress>
#include <QStringList>

namespace {

constexpr int LongestAddress = 2048;

QUrl readUrl(const QString& text, const QStringList& schemes)
{
    if (text.size() > LongestAddress)
        return {};
    const QUrl url(text.trimmed(), QUrl::TolerantMode);
    if (url.toEncoded().size() > LongestAddress)
        return {};
    return url.isValid() && schemes.contains(url.scheme()) && !url.host().isEmpty() ? url : QUrl();
}

} // namespace

QUrl deviceAddress(const QString& typed)
{
    QString text = typed.trimmed();
    if (QHostAddress(text).protocol() == QAbstractSocket::IPv6Protocol)
        text = '[' + text + ']';
    QUrl url = readUrl(text.contains("://") ? text : "http://" + text, {"http", "https"});
    if (!url.isValid() || text.contains(' '))
        return {};
    url.setUserInfo(QString());
    url.setFragment(QString());
    if (url.path().isEmpty() || url.path() == "/")
        url.setPath("/onvif/device_service");
    return url;
}

QUrl serviceAddress(const QUrl& device, const QString& told)
{
    QUrl url = readUrl(told, {"http", "https"});
    if (!url.isValid())
        return {};
    if (url.host() != device.host() || device.scheme() == "https") {
        url.setScheme(device.scheme());
        url.setHost(device.host());
        url.setPort(device.port());
    }
    url.setUserInfo(QString());
    return url;
}

QUrl streamAddress(const QUrl& device, const QString& told)
{
    QUrl url = readUrl(told, {"rtsp", "rtsps", "http", "https"});
    if (!url.isValid())
        return {};
    url.setHost(device.host());
    url.setUserInfo(QString());
    return url;
}
