#include "alarms/FleetAlarms.h"

#include "alarms/AlarmCenter.h"
#include "cameras/CameraList.h"
#include "cameras/FleetDesk.h"

#include <QTimerEvent>

namespace {

/// A mark that goes on has news twice a second, which may wait for as long again at each of two steps.
constexpr int OverMs = 3000;
constexpr int LookMs = 500;

} // namespace

FleetAlarms::FleetAlarms(FleetDesk* fleet, const CameraList& cameras, AlarmCenter* center)
    : m_fleet(fleet), m_cameras(cameras), m_center(center)
{
    center->leaveToOthers();
    connect(fleet, &FleetDesk::marked, this, &FleetAlarms::takeMarks);
    connect(center->book(), &AlarmBook::seen, this, &FleetAlarms::acknowledge);
    connect(fleet, &FleetDesk::rightsChanged, this,
            [this] { m_center->book()->setAcknowledging(m_fleet->rights().acknowledges); });
}

void FleetAlarms::takeMarks(const QString& camera, const QVector<FleetMark>& marks)
{
    const CameraRecord* record = m_cameras.byArchiveName(camera);
    if (!record || marks.isEmpty())
        return;
    const QString id = record->about.id;
    Lasting& known = m_lasting[id];
    // What happened while the connection was lost comes now; of what was before this start only the last.
    const qint64 from = known.startMs > 0 ? known.startMs : marks.last().span.startMs - 1;
    for (const FleetMark& mark : marks) {
        if (mark.isAcknowledged)
            m_center->book()->setSeenAt(id, mark.span.startMs);
        else if (mark.span.startMs > from)
            raise(*record, mark.span);
    }
    const Span& newest = marks.last().span;
    if (newest.startMs <= known.startMs && newest.endMs <= known.endMs)
        return;
    known.startMs = newest.startMs;
    known.endMs = newest.endMs;
    known.sinceNews.start();
    // News of many cameras come more often than it goes off.
    if (!m_timer.isActive())
        m_timer.start(LookMs, this);
}

/// Only the newest of a camera lasts.
void FleetAlarms::raise(const CameraRecord& camera, const Span& span)
{
    m_center->book()->end(camera.about.id, span.startMs);
    m_center->noteTold(camera, span.startMs);
}

void FleetAlarms::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_timer.timerId())
        return;
    bool isWaiting = false;
    for (auto one = m_lasting.begin(); one != m_lasting.end(); ++one) {
        if (!one->sinceNews.isValid())
            continue;
        isWaiting = true;
        if (!one->sinceNews.hasExpired(OverMs))
            continue;
        one->sinceNews.invalidate();
        m_center->book()->end(one.key(), one->endMs);
    }
    if (!isWaiting)
        m_timer.stop();
}

void FleetAlarms::acknowledge(const QString& cameraId, qint64 startMs)
{
    const CameraRecord* camera = m_cameras.byId(cameraId);
    if (camera && m_fleet->rightsOf(cameraId).acknowledges)
        m_fleet->acknowledge(camera->about.archiveName(), startMs);
}
