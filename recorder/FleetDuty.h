#pragma once

#include "fleet/FleetLink.h"

class RecordedList;
class Recorder;
struct RecorderOptions;

/// What a recorder does for a shared index: records what it is given, tells when it does, and delivers what
/// was recorded. Where the index is away at the start, the cameras of the last time are recorded.
class FleetDuty : public QObject
{
    Q_OBJECT

public:
    FleetDuty(const FleetAddress& address, const RecorderOptions& options, Recorder* recorder,
              RecordedList* list);

    /// The archive is this program's, and from end() on no longer.
    void begin();
    void end() { m_link.reset(); }

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    void takeCameras(const QVector<LeasedCamera>& cameras);
    void noteRecording(const QString& name);
    void noteStalled(const QStringList& names, bool isDiskInDoubt);
    void keep(const QVector<LeasedCamera>& cameras) const;
    QVector<LeasedCamera> kept() const;
    QString keptPath() const;

    FleetAddress m_address;
    FleetRecorder m_self;
    QString m_archiveDir;
    std::unique_ptr<FleetLink> m_link;
    RecordedList* m_list;
    QBasicTimer m_patience; ///< runs until the index has told something
};

/// Makes the shared index one of this version. The program's exit status.
int migrateIndex(const FleetAddress& address);
