#pragma once

#include <QHash>
#include <QObject>
#include <QPointer>

class CameraList;
class PtzLeases;
class QMessageBox;
class QWidget;

/// Tells the operator that another one asks for a camera that is turned here, in a window that takes neither
/// the keys nor the mouse from the deck.
class PtzQuestion : public QObject
{
    Q_OBJECT

public:
    /// All must outlive it, but for the leases.
    PtzQuestion(PtzLeases* leases, const CameraList& cameras, QWidget* window);

private:
    void ask(const QString& camera);
    void close();

    PtzLeases* m_leases;
    const CameraList& m_cameras;
    QWidget* m_window;
    QHash<QString, QPointer<QMessageBox>> m_open; ///< by the camera's id
};
