#pragma once

#include <QStringList>
#include <QTime>

/// What the user wants of alarms. Kept in the settings.
struct AlarmRules
{
    bool hasSound = true;
    bool hasNotice = true;     ///< by the desktop
    bool hasQuietTime = false; ///< when alarms are listed without sound and notice
    QTime quietFrom{22, 0};
    QTime quietTo{6, 0};    ///< of the next day if it is not later
    QStringList offCameras; ///< ids of those that raise none

    bool isOn(const QString& cameraId) const { return !offCameras.contains(cameraId); }
    bool isQuiet(const QTime& time) const;

    static AlarmRules load();
    void save() const;
};
