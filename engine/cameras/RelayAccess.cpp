#include "cameras/RelayAccess.h"

#include "cameras/PrivateFile.h"

#include <QFileInfo>
#include <QUrl>

namespace {

constexpr qint64 MostBytes = 1 << 20;

/// What systemd hands a service lies where nobody else gets to, whatever its mode says.
bool isPrivate(const QString& file)
{
    constexpr auto Others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
    const QString credentials = qEnvironmentVariable("CREDENTIALS_DIRECTORY");
    const bool isCredential = !credentials.isEmpty() && file.startsWith(credentials + '/');
    return isCredential || !(QFileInfo(file).permissions() & Others);
}

} // namespace

QString RelayAccess::path(const QString& cameraId, bool isSmall)
{
    return '/' + QString::fromLatin1(QUrl::toPercentEncoding(cameraId)) + (isSmall ? "/small" : "");
}

bool RelayAccess::isRelay(const QString& url)
{
    const QUrl parsed(url, QUrl::StrictMode);
    const bool isBare = parsed.userInfo().isEmpty() && parsed.path().isEmpty() && !parsed.hasQuery();
    return parsed.isValid() && parsed.scheme() == "rtsp" && !parsed.host().isEmpty() && isBare;
}

std::optional<SourceAddress> RelayAccess::address(const QString& relay, const QString& cameraId, bool isSmall,
                                                  const Login& login)
{
    if (!isRelay(relay))
        return std::nullopt;
    std::optional<SourceAddress> address =
        SourceAddress::of(cameraId, relay + path(cameraId, isSmall), QString());
    if (address) {
        address->setLogin(login.user, login.password, false);
        address->setTransport(SourceAddress::Transport::Tcp);
    }
    return address;
}

std::optional<QVector<Login>> RelayAccess::readLogins(const QString& file, QString* error)
{
    const std::optional<QByteArray> text = readPrivateFile(file, MostBytes, error);
    if (!text)
        return std::nullopt;
    QVector<Login> logins;
    const QStringList lines = QString::fromUtf8(*text).split('\n');
    for (const QString& line : lines) {
        const int colon = line.indexOf(':');
        if (colon > 0 && colon + 1 < line.size() && !line.startsWith('#'))
            logins.append({line.left(colon), line.mid(colon + 1)});
    }
    if (isPrivate(file) && !logins.isEmpty())
        return logins;
    *error = isPrivate(file) ? QString("no line USER:PASSWORD in %1").arg(file)
                             : QString("others may read %1: it needs mode 0600").arg(file);
    return std::nullopt;
}
