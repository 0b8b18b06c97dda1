#include "panes/PaneRings.h"

#include "packets/PacketRing.h"
#include "panes/DeckStreams.h"
#include "source/VideoSource.h"

#include <CPaneDeck.h>

#include <QTimer>

namespace {

constexpr int MostRings = 4;

} // namespace

QVector<int> panesWithRing(const QVector<int>& playing, int active)
{
    if (playing.size() <= MostRings)
        return playing;
    return playing.contains(active) ? QVector<int>{active} : QVector<int>();
}

PaneRings::PaneRings(CPaneDeck* deck, DeckStreams* streams, QObject* parent)
    : QObject(parent), m_deck(deck), m_streams(streams)
{
    connect(deck, &CPaneDeck::sig_activeWnd, this, &PaneRings::updateLater);
    connect(streams, &DeckStreams::started, this, &PaneRings::updateLater);
    connect(streams, &DeckStreams::stopped, this, &PaneRings::updateLater);
}

PaneRings::~PaneRings() = default;

std::vector<PacketPtr> PaneRings::snapshot(int pane) const
{
    const Kept kept = m_kept.value(pane);
    return kept.source && kept.ring ? kept.ring->snapshot() : std::vector<PacketPtr>();
}

void PaneRings::updateLater()
{
    // A page step stops and starts its panes one by one: rings come and go once all of them have.
    if (m_isUpdatePending)
        return;
    m_isUpdatePending = true;
    QTimer::singleShot(0, this, &PaneRings::update);
}

void PaneRings::update()
{
    m_isUpdatePending = false;
    QVector<int> playing;
    for (int pane = 0; pane < m_streams->paneCount(); ++pane) {
        if (m_streams->sourceAt(pane))
            playing.append(pane);
    }
    const QVector<int> wanted = panesWithRing(playing, m_deck->GetCurrentWnd());
    for (int pane : m_kept.keys()) {
        if (!wanted.contains(pane) || m_kept[pane].source != m_streams->sourceAt(pane))
            drop(pane);
    }
    for (int pane : wanted) {
        if (m_kept.contains(pane))
            continue;
        const Kept kept{m_streams->sourceAt(pane), std::make_shared<PacketRing>()};
        kept.source->addSink(kept.ring);
        m_kept.insert(pane, kept);
    }
}

void PaneRings::drop(int pane)
{
    const Kept kept = m_kept.take(pane);
    if (kept.source)
        kept.source->removeSink(kept.ring);
}
