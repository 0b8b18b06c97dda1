#pragma once

#include <QWidget>

class CameraList;
class QCheckBox;
class QListWidget;
class QTimeEdit;
struct AlarmRules;

/// The rules of alarms in the settings.
class AlarmPage : public QWidget
{
    Q_OBJECT

public:
    AlarmPage(const AlarmRules& rules, const CameraList& cameras);

    AlarmRules rules() const;

private:
    void fillCameras(const AlarmRules& rules, const CameraList& cameras);

    QCheckBox* m_sound;
    QCheckBox* m_notice;
    QCheckBox* m_quiet;
    QTimeEdit* m_from;
    QTimeEdit* m_to;
    QListWidget* m_cameras;
};
