#include "cameras/AddressFault.h"

#include "cameras/SourceAddress.h"

#include <QRegularExpression>
#include <QStringList>
#include <QUrl>

namespace {

const QStringList Schemes{"rtsp",  "rtsps", "rtp",  "srtp",  "udp", "rtmp", "rtmps",
                          "rtmpt", "srt",   "http", "https", "mms", "tcp"};

QString streamFault(const QString& url)
{
    const QString scheme = url.section("://", 0, 0).toLower();
    if (!Schemes.contains(scheme))
        return QString("%1:// is no kind of stream").arg(scheme);
    static const QRegularExpression blank("\\s");
    const QUrl parsed(url, QUrl::TolerantMode);
    if (url.contains(blank) || !parsed.isValid())
        return "it is no address";
    return parsed.host().isEmpty() ? QString("the device is missing behind ://") : QString();
}

} // namespace

QString addressFault(const QString& url)
{
    if (url.trimmed().isEmpty())
        return "an address is needed";
    QString error;
    const auto address = SourceAddress::of("camera", url.trimmed(), QString(), &error);
    if (!address)
        return error;
    if (address->kind() == SourceAddress::Kind::Url)
        return streamFault(url.trimmed());
    const bool isFile = address->kind() == SourceAddress::Kind::File;
    return isFile && !address->location().startsWith('/') ? QString("it begins with rtsp://, http:// or /")
                                                          : QString();
}
