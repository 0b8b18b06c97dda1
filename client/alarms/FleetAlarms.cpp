#include "alarms/FleetAlarms.h"

#include "alarms/AlarmCenter.h"
#include "cameras/CameraList.h"
#include "cameras/FleetDesk.h"

#include <QDateTime>
#include <QTimerEvent>

namespace {

/// A mark that goes on has news twice a second, which may wait for as long again at each of two steps.
constexpr int OverMs = 3000;
constexpr int LookMs = 500;
constexpr size_t MostTold = 2000;

/// One that follows soon after another is the same alarm, as in the book.
void join(QVector<Span>* all, const Span& next)
{
    if (!all->isEmpty() && next.startMs - all->last().endMs < AlarmBook::SoonMs)
        all->last().endMs = qMax(all->last().endMs, next.endMs);
    else
        all->append(next);
}

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
    QVector<Span> fresh;
    for (const FleetMark& mark : marks) {
        const bool isNew = known.told.insert(mark.span.startMs).second;
        if (mark.isAcknowledged)
            m_center->book()->setSeenAt(id, mark.span.startMs);
        else if (isNew)
            join(&fresh, mark.span);
    }
    for (const Span& span : qAsConst(fresh))
        takeNew(*record, known, span, span.startMs == fresh.last().startMs);
    while (known.told.size() > MostTold)
        known.told.erase(known.told.begin());
    noteNewest(known, marks);
}

/// Marks overlap: a camera's alarm lasts as long as any of them.
void FleetAlarms::noteNewest(Lasting& known, const QVector<FleetMark>& marks)
{
    const qint64 startMs = known.startMs;
    const qint64 endMs = known.endMs;
    // What a recorder says whose clock is ahead makes none of the others' late.
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    for (const FleetMark& mark : marks) {
        known.startMs = qMax(known.startMs, qMin(mark.span.startMs, now));
        known.endMs = qMax(known.endMs, mark.span.endMs);
    }
    if (known.startMs == startMs && known.endMs == endMs)
        return;
    known.sinceNews.start();
    // News of many cameras come more often than it goes off.
    if (!m_timer.isActive())
        m_timer.start(LookMs, this);
}

/// Only the newest of a camera lasts. What happened while the connection was lost, or another recorder kept
/// while its way here was cut, comes late.
void FleetAlarms::takeNew(const CameraRecord& camera, const Lasting& known, const Span& span, bool isLast)
{
    if (!isLast || span.startMs < known.startMs)
        return m_center->notePast(camera, span);
    m_center->book()->end(camera.about.id, qMin(known.endMs, span.startMs));
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
