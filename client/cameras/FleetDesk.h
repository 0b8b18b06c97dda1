#pragma once

#include "fleet/FleetReader.h"

class CameraList;

/// A client's part in a fleet: its cameras are those of the shared index, where what is changed here goes,
/// and its recordings those that all recorders have told.
class FleetDesk : public QObject
{
    Q_OBJECT

public:
    /// The list must outlive this. Passwords are kept beside the user's own list.
    FleetDesk(const FleetAddress& address, CameraList* cameras, const QString& camerasPath);

    FleetReader* reader() { return &m_reader; }

Q_SIGNALS:
    /// For the log, one line.
    void told(const QString& line);

private:
    void takeCameras(const QVector<LeasedCamera>& cameras);
    void tellAway();
    bool keep(const QVector<CameraDescription>& cameras, QString* error);

    FleetReader m_reader;
    CameraList* m_cameras;
    bool m_wasAway = false;
};
