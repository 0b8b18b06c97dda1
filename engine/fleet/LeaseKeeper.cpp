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

LeaseKeeper::LeaseKeeper(const FleetAddress& address, const FleetRecorder& recorder)
    : m_database(address), m_recorder(recorder), m_leases(m_database, m_recorder)
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
    const bool isReady = m_database.isOpen() ||
                         (m_database.open() &&
                          FleetSchema::check(m_database) == FleetSchema::State::Current && m_leases.join());
    const bool isDone = isReady && m_leases.step();
    const std::optional<QVector<LeasedCamera>> cameras = isDone ? m_leases.cameras() : std::nullopt;
    if (!cameras) {
        m_database.close();
        return;
    }
    tellPlaying(*cameras);
    const QString key = keyOf(*cameras);
    if (key == m_known)
        return;
    m_known = key;
    Q_EMIT camerasChanged(*cameras);
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

void LeaseKeeper::end()
{
    m_timer.stop();
    if (m_database.isOpen())
        m_leases.leave();
    m_database.close();
}
