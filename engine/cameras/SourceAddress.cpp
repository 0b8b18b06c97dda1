#include "cameras/SourceAddress.h"

#include <QRegularExpression>
#include <QUrl>

namespace {

constexpr int HighestNumber = 9999;

struct Prefix
{
    const char* text;
    SourceAddress::Kind kind;
};

constexpr Prefix Prefixes[] = {
    {"synthetic:", SourceAddress::Kind::Synthetic},
    {"v4l2:", SourceAddress::Kind::Device},
    {"lavfi:", SourceAddress::Kind::Graph},
};

const QStringList& liveSchemes()
{
    static const QStringList schemes{"rtsp", "rtsps", "rtp", "srtp", "udp", "rtmp", "rtmps", "srt"};
    return schemes;
}

QString schemeOf(const QString& url)
{
    static const QRegularExpression scheme("^([A-Za-z][A-Za-z0-9+.-]*)://");
    return scheme.match(url).captured(1).toLower();
}

/// A bar that no URL follows belongs to the path or graph that it stands in.
std::pair<QString, QString> splitUrls(const QString& text)
{
    static const QRegularExpression two(
        "^(.*[^|\\s])\\s*\\|\\s*((?:file:|[A-Za-z][A-Za-z0-9+.-]*://)[^|]*)$");
    const QRegularExpressionMatch match = two.match(text);
    return match.hasMatch() ? std::pair(match.captured(1), match.captured(2)) : std::pair(text, QString());
}

/// A text to show, in which no URL tells who may log in.
QString withoutLogin(QString text)
{
    static const QRegularExpression login("://\\S*@");
    return text.replace(login, "://...@");
}

QString withLogin(const QString& url, const QString& login)
{
    static const QRegularExpression authority("^([A-Za-z][A-Za-z0-9+.-]*://)(?:[^/?#]*@)?");
    return QString(url).replace(authority, "\\1" + login);
}

} // namespace

Login takeLogin(QString* url)
{
    static const QRegularExpression login("^([A-Za-z][A-Za-z0-9+.-]*://)([^/?#:@]*)(:[^/?#]*)?@");
    const QRegularExpressionMatch match = login.match(*url);
    if (!match.hasMatch())
        return {};
    *url = match.captured(1) + url->mid(match.capturedEnd());
    const auto plain = [](const QString& text) { return QUrl::fromPercentEncoding(text.toUtf8()); };
    return {plain(match.captured(2)), plain(match.captured(3).mid(1))};
}

SourceAddress::SourceAddress(Kind kind, const QString& name, const QString& location, int number)
    : m_kind(kind), m_name(name), m_location(location), m_number(number)
{
}

SourceAddress SourceAddress::synthetic(int number, const QString& name)
{
    const int known = qBound(1, number, HighestNumber);
    const QString own = QString("Camera %1").arg(known, 2, 10, QChar('0'));
    return {Kind::Synthetic, name.isEmpty() ? own : name, QString(), known};
}

std::optional<SourceAddress> SourceAddress::parse(const QString& text, QString* error)
{
    const int equals = text.indexOf('=');
    QString why("NAME=URL expected");
    std::optional<SourceAddress> address;
    const QString name = text.left(qMax(0, equals)).simplified();
    const auto [url, smallUrl] = splitUrls(text.mid(equals + 1).trimmed());
    // A URL's own "=" makes no name of what stands before it, which may be a password.
    if (equals >= 0 && (name.isEmpty() || name.contains("://")))
        why = "the name before \"=\" is missing";
    else if (equals >= 0)
        address = of(name, url, smallUrl, &why);
    if (!address && error)
        *error = QString("source \"%1\": %2").arg(withoutLogin(text.simplified()), why.simplified());
    return address;
}

std::optional<SourceAddress> SourceAddress::of(const QString& name, const QString& url,
                                               const QString& smallUrl, QString* error)
{
    QString why;
    auto address = read(name, url, &why);
    if (address && !smallUrl.isEmpty() && !read(name, smallUrl, &why))
        address.reset();
    if (address)
        address->m_smallUrl = smallUrl;
    else if (error)
        *error = why.simplified();
    return address;
}

QString SourceAddress::url() const
{
    if (m_kind == Kind::Synthetic)
        return QString("synthetic:%1").arg(m_number);
    for (const Prefix& prefix : Prefixes) {
        if (prefix.kind == m_kind)
            return prefix.text + m_location;
    }
    return m_location;
}

void SourceAddress::setLogin(const QString& user, const QString& password, bool isPlainAllowed)
{
    m_isPlainAllowed = isPlainAllowed;
    const QByteArray login = QUrl::toPercentEncoding(user) + ':' + QUrl::toPercentEncoding(password) + '@';
    if (m_kind == Kind::Url)
        m_location = withLogin(m_location, QString::fromLatin1(login));
    m_smallUrl = withLogin(m_smallUrl, QString::fromLatin1(login));
}

bool SourceAddress::isSameStream(const SourceAddress& other) const
{
    return m_kind == other.m_kind && m_location == other.m_location && m_number == other.m_number &&
           m_smallUrl == other.m_smallUrl && m_transport == other.m_transport &&
           m_isPlainAllowed == other.m_isPlainAllowed &&
           (m_kind != Kind::Synthetic || m_name == other.m_name);
}

std::optional<SourceAddress> SourceAddress::read(const QString& name, const QString& url, QString* why)
{
    const auto refuse = [why](const QString& reason) -> std::optional<SourceAddress> {
        *why = reason;
        return std::nullopt;
    };
    if (url.isEmpty())
        return refuse("nothing follows the \"=\"");
    for (const Prefix& prefix : Prefixes) {
        if (!url.startsWith(prefix.text))
            continue;
        const QString rest = url.mid(int(qstrlen(prefix.text)));
        if (rest.isEmpty())
            return refuse(QString("nothing follows \"%1\"").arg(prefix.text));
        return prefix.kind == Kind::Synthetic ? readNumber(name, rest, why)
                                              : SourceAddress(prefix.kind, name, rest);
    }
    if (url.startsWith("/dev/video"))
        return SourceAddress(Kind::Device, name, url);
    if (!url.startsWith("file:"))
        return SourceAddress(schemeOf(url).isEmpty() ? Kind::File : Kind::Url, name, url);
    const QString path = QUrl(url).toLocalFile();
    return path.isEmpty() ? refuse("no path follows \"file:\"") : SourceAddress(Kind::File, name, path);
}

std::optional<SourceAddress> SourceAddress::readNumber(const QString& name, const QString& text, QString* why)
{
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (isNumber && number >= 1 && number <= HighestNumber)
        return synthetic(number, name);
    *why = QString("\"%1\" is no camera from 1 to %2").arg(text).arg(HighestNumber);
    return std::nullopt;
}

std::optional<SourceAddress> SourceAddress::small() const
{
    QString why;
    auto small = m_smallUrl.isEmpty() ? std::nullopt : read(m_name, m_smallUrl, &why);
    if (!small)
        return small;
    small->m_transport = m_transport;
    small->m_isPlainAllowed = m_isPlainAllowed;
    return small;
}

bool SourceAddress::isLive() const
{
    if (m_kind == Kind::Url)
        return liveSchemes().contains(schemeOf(m_location));
    return m_kind == Kind::Synthetic || m_kind == Kind::Device;
}
