#include "cameras/CameraDescription.h"

#include <QSet>
#include <QUuid>

#include <tuple>

namespace {

auto tied(const CameraDescription& camera)
{
    const CameraDescription& c = camera;
    return std::tie(c.id, c.name, c.group, c.recordedAs, c.mainUrl, c.smallUrl, c.user, c.transport,
                    c.recording, c.sensitivity, c.zones, c.ptz, c.isEnabled, c.onvifAddress,
                    c.onvifCertificate, c.isPlainAllowed, c.onvifMainProfile, c.onvifSmallProfile);
}

} // namespace

bool operator==(const CameraDescription& one, const CameraDescription& other)
{
    return tied(one) == tied(other);
}

std::optional<SourceAddress> CameraDescription::address(const QString& password, QString* error) const
{
    if (!isEnabled)
        return std::nullopt;
    auto address = SourceAddress::of(name, mainUrl, smallUrl, error);
    if (!address)
        return std::nullopt;
    address->setTransport(transport);
    if (!user.isEmpty())
        address->setLogin(user, password, isPlainAllowed);
    return address;
}

QString newCameraId()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces);
}

QString faultOf(const QVector<CameraDescription>& cameras)
{
    QSet<QString> ids;
    QSet<QString> names;
    QSet<QString> archiveNames;
    for (const CameraDescription& camera : cameras) {
        if (camera.id.isEmpty() || camera.name.isEmpty())
            return "a camera has no name";
        if (names.contains(camera.name))
            return QString("two cameras are called %1").arg(camera.name);
        if (ids.contains(camera.id))
            return QString("there are two cameras of the id \"%1\"").arg(camera.id);
        if (archiveNames.contains(camera.archiveName()))
            return QString("there are two cameras with the recordings of \"%1\"").arg(camera.archiveName());
        names.insert(camera.name);
        ids.insert(camera.id);
        archiveNames.insert(camera.archiveName());
    }
    return QString();
}
