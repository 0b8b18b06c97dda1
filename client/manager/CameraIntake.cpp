#include "manager/CameraIntake.h"

#include "onvif/CameraStreams.h"

namespace {

/// A name that a list of cameras takes, whatever the device calls itself.
QString plainName(QString name)
{
    for (const char mark : {'=', '|', '/'})
        name.replace(mark, ' ');
    name = name.simplified();
    return name.isEmpty() ? QString("ONVIF") : name;
}

CameraDescription describe(const DeviceCamera& camera, const OnvifLogin& login)
{
    CameraDescription about;
    about.name = plainName(camera.name);
    about.mainUrl = camera.mainUrl;
    about.smallUrl = camera.smallUrl;
    about.user = login.user;
    about.isPlainAllowed = login.isPlainAllowed;
    about.onvifAddress = login.address.toString();
    about.onvifCertificate = login.certificate;
    about.onvifMainProfile = camera.main.token;
    about.onvifSmallProfile = camera.small.token;
    if (camera.main.turns)
        about.ptz = CameraDescription::Ptz::Onvif;
    return about;
}

} // namespace

CameraIntake::CameraIntake(const OnvifLogin& login, QObject* parent)
    : QObject(parent), m_login(login), m_device(login)
{
}

void CameraIntake::start()
{
    m_device.open([this](const OnvifFault& fault) {
        if (fault)
            Q_EMIT finished(fault, {});
        else
            readStreams();
    });
}

void CameraIntake::readStreams()
{
    readCameras(&m_device, [this](const OnvifFault& fault, const QVector<DeviceCamera>& found) {
        QVector<CameraDescription> cameras;
        for (DeviceCamera camera : found) {
            // A device may have an engine for its turning that its service doesn't tell of.
            camera.main.turns = camera.main.turns && m_device.has(OnvifDevice::Service::Ptz);
            cameras.append(describe(camera, m_login));
        }
        Q_EMIT finished(fault, cameras);
    });
}
