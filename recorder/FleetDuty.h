#pragma once

#include "cameras/CameraDescription.h"
#include "fleet/FleetLink.h"

class CameraPasswords;
class Recorder;
struct RecordedCamera;
struct RecorderOptions;

/// What a recorder does for a shared index: records what it is given, tells when it does, and delivers what
/// was recorded. Where the index is away at the start, the cameras of the last time are recorded.
class FleetDuty : public QObject
{
    Q_OBJECT

public:
    FleetDuty(const FleetAddress& address, const RecorderOptions& options, Recorder* recorder);

    /// The archive is this program's, and from end() on no longer.
    void begin();
    void end() { m_link.reset(); }

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    void takeCameras(const QVector<LeasedCamera>& cameras);
    void takePassword(const QString& id, const QString& password);
    void noteRecording(const QString& name);
    void keep(const QVector<LeasedCamera>& cameras) const;
    QVector<LeasedCamera> kept() const;
    QString keptPath() const;

    FleetAddress m_address;
    FleetRecorder m_self;
    QString m_archiveDir;
    Recorder* m_recorder;
    std::unique_ptr<FleetLink> m_link;
    CameraPasswords* m_store;
    QHash<QString, CameraDescription> m_asked; ///< cameras whose passwords are looked for, by their ids
    QVector<RecordedCamera> m_found;           ///< those of them that can be recorded
    QHash<QString, QString> m_ids;             ///< of these, by their names in the archive
    QBasicTimer m_patience;                    ///< runs until the index has told something
};

/// Makes the shared index one of this version. The program's exit status.
int migrateIndex(const FleetAddress& address);
