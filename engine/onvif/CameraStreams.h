#pragma once

#include "onvif/OnvifDevice.h"

#include <QSize>
#include <QVector>

/// A media profile of a device.
struct MediaProfile
{
    QString token;
    QString source; ///< the video source that it shows
    QString sourceConfiguration;
    QString encoding;
    QSize size;
    bool turns = false;                                         ///< its source can be turned or zoomed
    OnvifDevice::Service service = OnvifDevice::Service::Media; ///< where its stream is asked for
};

/// A camera of a device: one of its video sources.
struct DeviceCamera
{
    QString name;
    MediaProfile main;
    MediaProfile small; ///< without a token if there is none that fits
    QString mainUrl;
    QString smallUrl; ///< empty if there is none
};

/// The profiles in an answer of GetProfiles of either media service, at most 64.
QVector<MediaProfile> readProfiles(const SoapNode& body);

/// Asks an open device for its profiles: Media2, or Media where that has none. `done` comes once.
using ProfilesDone = std::function<void(const OnvifFault&, const QVector<MediaProfile>&)>;
void askProfiles(OnvifDevice* device, ProfilesDone done);

/// One camera for each video source, in their order: its main profile is the largest that doesn't consist of
/// still pictures, its small one the largest of the same encoding that is no wider than half of that and
/// 1024. Profiles without pictures, of sound or data alone, count for nothing beside others.
QVector<DeviceCamera> chooseProfiles(const QVector<MediaProfile>& profiles);

/// Asks an open device for its cameras and their streams; a camera without a stream is left out. `done` comes
/// once, if the device lives that long.
using CamerasDone = std::function<void(const OnvifFault&, const QVector<DeviceCamera>&)>;
void readCameras(OnvifDevice* device, CamerasDone done);
