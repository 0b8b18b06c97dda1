#pragma once

#include "onvif/OnvifEvents.h"
#include "onvif/OnvifPtz.h"

struct CameraDescription;

/// The device of one camera: it is opened once somebody wants something of it, and again after it was lost.
class OnvifCamera : public QObject
{
    Q_OBJECT

public:
    OnvifCamera(const CameraDescription& about, const QString& password, QObject* parent = nullptr);

    /// True if it is the same device with the same user, password and profile.
    bool isFor(const CameraDescription& about, const QString& password) const;

    /// A command of the deck's sig_SendPtzCommand.
    void steer(int command, bool start);
    /// Brings a part of the picture, in shares of its size, to fill it.
    void moveTo(const QRectF& part);
    void goTo(const PtzPreset& preset);
    void stop() { m_ptz.steering()->stop(); }
    bool isStopping() const { return m_ptz.steering()->isStopping(); }

    void readPresets(OnvifPtz::PresetsDone done);
    void storePreset(const QString& name, OnvifDevice::Done done);

    /// Listens for motion and alarms from now on. A wrong password ends that, as a device locks out who tries
    /// it again and again.
    void listen();
    /// Stops what turns and listens no more: what lasts is told as over. It may go once isLeaving() is false.
    void leave();
    /// The device has not answered yet that nobody listens.
    bool isLeaving() const { return m_events.isEnding(); }

Q_SIGNALS:
    /// It can't be turned, and why.
    void failed(const OnvifFault& fault);
    /// isStopping() or isLeaving() is false again.
    void settled();
    void motionChanged(bool on);
    void alarmChanged(bool on);

private:
    void open(OnvifDevice::Done done);
    void takeOpened(const OnvifFault& fault);
    void move(const PtzMove& move);
    void startEvents();
    void endEvents();
    void takeEvents(const OnvifFault& fault);
    void takeEvent(const OnvifEvent& event);
    void setOn(OnvifEvent::Kind kind, const QSet<QString>& sources);

    OnvifLogin m_login;
    QString m_profile;
    OnvifDevice m_device;
    OnvifPtz m_ptz;
    OnvifEvents m_events;
    bool m_isOpen = false;
    bool m_isLeft = false;
    std::vector<OnvifDevice::Done> m_waiting; ///< for the device to be open
    QStringList m_sources;                    ///< what events about this camera name; empty for all
    QSet<QString> m_on[2];                    ///< sources of motion and alarms that last
    QTimer m_again;
};
