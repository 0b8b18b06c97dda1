#include "fleet/LeaseKeeper.h"

#include "fleet/FleetSchema.h"

#include <QTimerEvent>

namespace {

constexpr int StepMs = 1000;

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
    step();
}

void LeaseKeeper::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == m_timer.timerId())
        step();
}

void LeaseKeeper::step()
{
    look();
    const bool isDone = (m_database.isOpen() || join()) && m_leases.step(m_health.isWell()) && giveBack();
    // What the run before had to record goes on at once.
    const bool isKnown = isDone || (m_database.isOpen() && m_leases.isAwaited());
    const std::optional<QVector<LeasedCamera>> cameras = isKnown ? m_leases.cameras() : std::nullopt;
    if (cameras)
        takeCameras(*cameras);
    tellElsewhere();
    if (!isDone || !cameras)
        m_database.close();
}

void LeaseKeeper::takeCameras(const QVector<LeasedCamera>& cameras)
{
    m_held.clear();
    for (const LeasedCamera& camera : cameras)
        m_held.append(camera.id);
    tellPlaying(cameras);
    const QString key = keyOf(cameras);
    if (key == m_known)
        return;
    m_known = key;
    Q_EMIT camerasChanged(cameras);
}

bool LeaseKeeper::join()
{
    return m_database.open() && FleetSchema::check(m_database) == FleetSchema::State::Current &&
           m_leases.join();
}

bool LeaseKeeper::giveBack()
{
    if (m_health.stalled().isEmpty())
        return true;
    const std::optional<QStringList> given = m_leases.giveBack(m_health.stalled());
    if (given && !given->isEmpty())
        Q_EMIT told(
            QString("%1 cameras that can't be recorded here go to other recorders").arg(given->size()));
    return given.has_value();
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

/// What plays may have come back from another recorder, or was told while the server was away.
void LeaseKeeper::tellPlaying(const QVector<LeasedCamera>& cameras)
{
    QSet<QString> playing;
    for (const LeasedCamera& camera : cameras) {
        if (!m_playing.contains(camera.id))
            continue;
        playing.insert(camera.id);
        if (!camera.isReady)
            m_leases.setReady(camera.id);
    }
    m_playing = playing;
}

void LeaseKeeper::setReady(const QString& camera)
{
    m_playing.insert(camera);
    if (m_database.isOpen())
        m_leases.setReady(camera);
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
    if (m_database.isOpen() && m_leases.isHere())
        m_leases.leave();
    m_database.close();
}
