#pragma once

#include "fleet/FleetMark.h"

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QHash>
#include <QObject>

#include <set>

class AlarmCenter;
class CameraList;
class FleetDesk;
struct CameraRecord;

/// The alarms of a fleet: what its recorders have marked is raised here as on every desk, and what is
/// acknowledged on one desk is so on all.
class FleetAlarms : public QObject
{
    Q_OBJECT

public:
    /// All must outlive it.
    FleetAlarms(FleetDesk* fleet, const CameraList& cameras, AlarmCenter* center);

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    struct Lasting
    {
        qint64 startMs = 0;
        qint64 endMs = 0;
        std::set<qint64> told; ///< when marks that were told begin; not of the oldest
        QElapsedTimer sinceNews;
    };

    void takeMarks(const QString& camera, const QVector<FleetMark>& marks);
    void noteNewest(Lasting& known, const QVector<FleetMark>& marks);
    void takeNew(const CameraRecord& camera, const Lasting& known, const Span& span, bool isLast);
    void acknowledge(const QString& cameraId, qint64 startMs);

    FleetDesk* m_fleet;
    const CameraList& m_cameras;
    AlarmCenter* m_center;
    QHash<QString, Lasting> m_lasting; ///< by the cameras' ids
    QBasicTimer m_timer;
};
