#include "panes/PaneLease.h"

#include "cameras/CameraList.h"
#include "cameras/PtzLeases.h"
#include "common/Words.h"
#include "panes/DeckStreams.h"

#include <QMenu>

#include <utility>

namespace {

/// A camera that moves long after it was asked to would surprise.
constexpr int SoonMs = 1500;

} // namespace

PaneLease::PaneLease(DeckStreams* streams, PtzLeases* leases, QObject* parent)
    : QObject(parent), m_streams(streams), m_leases(leases)
{
    if (!leases)
        return;
    connect(leases, &PtzLeases::granted, this, &PaneLease::takeGrant);
    connect(leases, &PtzLeases::given, this, &PaneLease::takeGift);
    connect(leases, &PtzLeases::refused, this, &PaneLease::takeRefusal);
    connect(leases, &PtzLeases::lost, this, &PaneLease::lost);
}

void PaneLease::whenMine(int pane, std::function<void()> turn)
{
    const CameraRecord* camera = m_streams->cameraAt(pane);
    if (!camera)
        return;
    if (!m_leases)
        return turn();
    const QString id = camera->about.id;
    const bool isMine = m_leases->isMine(id);
    if (!isMine) {
        Waiting waiting{id, std::move(turn), {}};
        waiting.since.start();
        m_waiting.insert(pane, waiting);
    } else {
        turn();
    }
    // Each gesture makes it last longer.
    m_leases->take(id);
}

void PaneLease::takeGrant(const QString& camera)
{
    const QHash<int, Waiting> waiting = m_waiting;
    for (auto one = waiting.cbegin(); one != waiting.cend(); ++one) {
        if (one->camera != camera || !m_waiting.remove(one.key()))
            continue;
        const CameraRecord* there = m_streams->cameraAt(one.key());
        if (there && there->about.id == camera && !one->since.hasExpired(SoonMs))
            one->turn();
    }
}

void PaneLease::takeGift(const QString& camera)
{
    for (int pane = 0; pane < m_streams->paneCount(); ++pane) {
        const CameraRecord* there = m_streams->cameraAt(pane);
        if (there && there->about.id == camera)
            Q_EMIT told(pane, word("%1 is yours to turn").arg(there->name));
    }
}

void PaneLease::takeRefusal(const QString& camera, const QString& reason)
{
    for (int pane = 0; pane < m_streams->paneCount(); ++pane) {
        const CameraRecord* there = m_streams->cameraAt(pane);
        if (!there || there->about.id != camera || !m_waiting.remove(pane))
            continue;
        const QString holder = m_leases->holderOf(camera);
        Q_EMIT told(pane,
                    holder.isEmpty()
                        ? word("%1 can't be turned: %2").arg(there->name, reason)
                        : word("%1 is turned by %2. The pane's menu asks for it.").arg(there->name, holder));
    }
}

void PaneLease::setTurning(const QString& camera, bool on)
{
    if (!m_leases)
        return;
    if (on)
        m_leases->hold(camera);
    else
        m_leases->letGo(camera);
}

void PaneLease::fillMenu(QMenu* menu, int pane) const
{
    const CameraRecord* camera = m_streams->cameraAt(pane);
    if (!m_leases || !camera)
        return;
    const QString id = camera->about.id;
    const QString holder = m_leases->holderOf(id).replace('&', "&&");
    const QString asker = m_leases->askerOf(id).replace('&', "&&");
    PtzLeases* leases = m_leases;
    if (!holder.isEmpty()) {
        const bool isAsked = leases->isAsked(id);
        QAction* ask = menu->addAction(
            (isAsked ? word("%1 is asked for the camera") : word("Ask %1 for the camera")).arg(holder),
            leases, [leases, id] { leases->ask(id); });
        ask->setEnabled(!isAsked);
    } else if (leases->isMine(id)) {
        menu->addAction(asker.isEmpty() ? word("Let others turn the camera")
                                        : word("Give the camera to %1").arg(asker),
                        leases, [leases, id] { leases->give(id); });
    }
}
