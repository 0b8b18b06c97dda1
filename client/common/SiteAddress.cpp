#include "common/SiteAddress.h"

#include <QUrl>

namespace {

constexpr int MostLetters = 60;

/// What may follow a name has an equals sign of its own.
int addressAt(const QString& text)
{
    const int sign = text.indexOf('=');
    const int scheme = text.indexOf("://");
    return sign >= 0 && sign < scheme ? sign + 1 : 0;
}

QString nameOf(const QString& address)
{
    const QUrl url(address);
    const QString name = url.host().isEmpty() ? url.path().mid(1) : url.host();
    return name.isEmpty() ? QString("index") : name;
}

} // namespace

std::optional<SiteAddress> SiteAddress::parse(const QString& text, QString* error)
{
    const int at = addressAt(text);
    const QString given = text.left(qMax(0, at - 1)).simplified();
    const std::optional<FleetAddress> index = FleetAddress::parse(text.mid(at), error);
    if (!index)
        return std::nullopt;
    const QString name = given.isEmpty() ? nameOf(text.mid(at)) : given;
    if (name.contains('/') || name.size() > MostLetters) {
        *error = QString("'%1' can't be the name of a site").arg(name);
        return std::nullopt;
    }
    return SiteAddress{name, *index};
}
