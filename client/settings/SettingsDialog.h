#pragma once

#include "alarms/AlarmRules.h"
#include "cameras/SourceAddress.h"
#include "common/ClientSettings.h"

#include <QDialog>

class AlarmPage;
class SitesPage;
class CameraList;
class FolderField;
class QCheckBox;
class QComboBox;
class QFormLayout;
class QLabel;
class QSpinBox;

/// All that can be set. It changes nothing itself: who opened it takes what it gives.
class SettingsDialog : public QDialog
{
    Q_OBJECT

public:
    struct Choice
    {
        ClientSettings settings;
        AlarmRules alarms;
        Login relay; ///< who this desk is at its sites' relays; without a user where it asks none
        bool showsLabels = true;
        bool startsWithSession = false;
        QString startView; ///< the name of one of the views; empty for the last one
    };

    /// `views` are the names of those that there are. `usualArchive` and `usualSnapshots` are where things go
    /// that have no folder chosen.
    SettingsDialog(const Choice& now, const CameraList& cameras, const QStringList& views,
                   const QString& usualArchive, const QString& usualSnapshots, QWidget* parent);

    Choice choice() const;

    void accept() override;

private:
    QWidget* generalPage(const QStringList& views);
    QWidget* picturePage(const QString& usualSnapshots);
    QWidget* recordingPage(const QString& usualArchive);
    QWidget* soundPage();
    void fillLanguages();
    void fillViews(const QStringList& views);
    void findSoundDevices();
    void addSoundDevices(const QStringList& names);
    QString fault() const;
    void changePassword();

    Choice m_now;
    QLabel* m_fault;
    QComboBox* m_language;
    QComboBox* m_style;
    QComboBox* m_startView;
    QCheckBox* m_autostart;
    QCheckBox* m_signals;
    QCheckBox* m_labels;
    QComboBox* m_decoding;
    FolderField* m_snapshots;
    FolderField* m_archive;
    QSpinBox* m_gigabytes;
    QSpinBox* m_days;
    QComboBox* m_device;
    AlarmPage* m_alarms;
    SitesPage* m_sites;
};
