#include "fleet/LeaseKeeper.h"

#include "fleet/FleetSchema.h"

#include <QTimerEvent>

namespace {

constexpr int StepMs = 1000;
/// How many cameras that begin at once are told in one step.
constexpr int SoonMs = 100;

/// All that a recorder would do anything about.
QString keyOf(const QVector<LeasedCamera>& cameras)
{
    QString key;
    for (const LeasedCamera& camera : cameras)
        key += camera.id + '\n' + camera.name + '\n' + camera.description + '\n';
    return key;
}

} // namespace

LeaseKeeper::LeaseKeeper(const FleetAddress& address, const FleetRecorder& recorder, const QString& directory)
    : m_database(address), m_recorder(recorder), m_leases(m_database, m_recorder), m_health(directory)
{
    qRegisterMetaType<QVector<LeasedCamera>>();
}

void LeaseKeeper::start()
{
    m_timer.start(StepMs, this);
    look();
    step();
}

void LeaseKeeper::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_timer.timerId() && event->timerId() != m_soon.timerId())
        return;
    m_soon.stop();
    if (event->timerId() == m_timer.timerId())
        look();
    step();
}

void LeaseKeeper::step()
{
    const bool isJoined = m_database.isOpen() || join();
    const auto news =
        isJoined ? m_leases.step({m_health.isWell(), m_health.stalled(), (m_playing & m_unready).values()})
                 : std::nullopt;
    if (news && !news->given.isEmpty())
        Q_EMIT told(
            QString("%1 cameras that can't be recorded here go to other recorders").arg(news->given.size()));
    // What the run before had to record goes on at once.
    const bool isAwaited = !news && m_database.isOpen() && m_leases.isAwaited();
    const std::optional<QVector<LeasedCamera>> cameras = isAwaited ? m_leases.cameras()
                                                         : news    ? news->cameras
                                                                   : std::nullopt;
    if (cameras)
        takeCameras(*cameras);
    tellElsewhere();
    if (!news)
        m_database.close();
}

bool LeaseKeeper::join()
{
    if (m_database.open() && FleetSchema::check(m_database) == FleetSchema::State::Current)
        return m_leases.join();
    m_leases.noteAway();
    return false;
}

void LeaseKeeper::takeCameras(const QVector<LeasedCamera>& cameras)
{
    m_held.clear();
    m_unready.clear();
    for (const LeasedCamera& camera : cameras) {
        m_held.append(camera.id);
        if (!camera.isReady)
            m_unready.insert(camera.id);
    }
    m_playing &= QSet<QString>(m_held.begin(), m_held.end());
    const QString key = keyOf(cameras);
    if (key == m_known)
        return;
    m_known = key;
    Q_EMIT camerasChanged(cameras);
}

/// Of two programs with one number, one alone records.
void LeaseKeeper::tellElsewhere()
{
    if (m_leases.isElsewhere() == m_isElsewhere)
        return;
    m_isElsewhere = m_leases.isElsewhere();
    if (!m_isElsewhere) {
        Q_EMIT told("no other program has this recorder's number any more");
        return;
    }
    Q_EMIT told("records nothing: another program has this recorder's number. A copied archive gets one of "
                "its own where the file recorder-id is removed from it");
    m_held.clear();
    m_playing.clear();
    m_known = QString();
    Q_EMIT camerasChanged({});
}

/// Before anything is given back: whether all of them are stalled tells whose trouble it is. Who reaches not
/// even the server has no network, and rests from nothing once it is back.
void LeaseKeeper::look()
{
    if (!m_health.look(m_database.isOpen() ? m_held : QStringList()))
        return;
    Q_EMIT told(m_health.isWell() ? "takes cameras again"
                                  : "takes only what nobody else can record: " + m_health.reason());
}

/// What plays already when it comes back from another recorder is told with the next step.
void LeaseKeeper::setReady(const QString& camera)
{
    m_playing.insert(camera);
    if (m_database.isOpen() && m_unready.contains(camera) && !m_soon.isActive())
        m_soon.start(SoonMs, this);
}

void LeaseKeeper::setStalled(const QStringList& cameras, bool isDiskInDoubt)
{
    m_health.setStalled(cameras, isDiskInDoubt);
    for (const QString& camera : cameras)
        m_playing.remove(camera);
}

void LeaseKeeper::end()
{
    m_timer.stop();
    m_soon.stop();
    if (m_database.isOpen() && m_leases.isHere())
        m_leases.leave();
    m_database.close();
}
