#pragma once

#include "cameras/CameraDescription.h"
#include "onvif/OnvifDevice.h"

#include <QVector>

/// Asks a device of the network for its cameras, each as it would be added to the list, without an id.
class CameraIntake : public QObject
{
    Q_OBJECT

public:
    CameraIntake(const OnvifLogin& login, QObject* parent);

    void start();

Q_SIGNALS:
    /// With a fault there are none.
    void finished(const OnvifFault& fault, const QVector<CameraDescription>& cameras);

private:
    void readStreams();

    OnvifLogin m_login;
    OnvifDevice m_device;
};
