#pragma once

#include "onvif/DeviceSearch.h"

#include <QDialog>

class CameraList;
struct CameraDescription;
struct OnvifFault;
class PlainConsent;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;
struct OnvifLogin;

/// Looks for the cameras of the network, and adds those that are chosen, with their streams, to the list.
class FindCamerasDialog : public QDialog
{
    Q_OBJECT

public:
    FindCamerasDialog(CameraList* cameras, QWidget* parent);

private:
    QWidget* makeSearch();
    QWidget* makeLogin();
    QWidget* makeButtons();
    void search();
    void showSearch();
    void addTyped();
    QTreeWidgetItem* addDevice(const FoundDevice& device);
    void offer(QTreeWidgetItem* row);
    bool isKnown(const QUrl& address) const;
    void addChosen();
    void ask(QTreeWidgetItem* row, const OnvifLogin& login);
    void askForTrust(QTreeWidgetItem* row, const OnvifLogin& login);
    void take(QTreeWidgetItem* row, const OnvifFault& fault, QVector<CameraDescription> cameras,
              const QString& password);
    QString freeName(const QString& name, const QVector<CameraDescription>& cameras) const;
    void check();

    CameraList* m_cameras;
    DeviceSearch m_search;
    QTreeWidget* m_devices;
    QTreeWidgetItem* m_offered = nullptr; ///< chosen without the user, if one is
    QLabel* m_note;
    QProgressBar* m_progress;
    QLineEdit* m_address;
    QLineEdit* m_user;
    QLineEdit* m_password;
    PlainConsent* m_plain;
    QPushButton* m_again;
    QPushButton* m_addAddress;
    QPushButton* m_add;
};
