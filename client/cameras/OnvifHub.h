#pragma once

#include <QHash>
#include <QObject>

class CameraList;
class OnvifCamera;
struct CameraRecord;

/// The devices of those cameras that speak ONVIF. It stops what turns when the program is left for another
/// one, ends, or lets go of a camera.
class OnvifHub : public QObject
{
    Q_OBJECT

public:
    explicit OnvifHub(const CameraList& cameras, QObject* parent = nullptr);
    ~OnvifHub() override;

    /// The device of a camera; null for one without ONVIF, and while it is switched off or its password
    /// unknown.
    OnvifCamera* find(const CameraRecord& camera);
    void stopAll();

Q_SIGNALS:
    /// A device can't be turned; one line.
    void failed(const CameraRecord* camera, const QString& reason);
    /// A device reports, itself.
    void motionChanged(const CameraRecord* camera, bool on);
    void alarmChanged(const CameraRecord* camera, bool on);

private:
    void listen();
    void update(const CameraRecord* camera);
    void letGo(const CameraRecord* camera);
    void settle();

    const CameraList& m_cameras;
    QHash<const CameraRecord*, OnvifCamera*> m_devices;
};
