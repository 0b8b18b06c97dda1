#include "panes/PaneRings.h"

#include "packets/PacketRing.h"
#include "panes/DeckStreams.h"
#include "panes/RingChoice.h"
#include "source/VideoSource.h"

#include <CPaneDeck.h>

#include <QTimer>

PaneRings::PaneRings(CPaneDeck* deck, DeckStreams* streams, QObject* parent)
    : QObject(parent), m_pDeck(deck), m_pStreams(streams)
{
    connect(deck, SIGNAL(sig_activeWnd(int)), SLOT(slot_changed()));
    connect(streams, SIGNAL(started(int)), SLOT(slot_changed()));
    connect(streams, SIGNAL(stopped(int)), SLOT(slot_changed()));
}

PaneRings::~PaneRings() = default;

std::vector<PacketPtr> PaneRings::Snapshot(int pane) const
{
    const Kept kept = m_hashKept.value(pane);
    return kept.source && kept.ring ? kept.ring->snapshot() : std::vector<PacketPtr>();
}

void PaneRings::slot_changed()
{
    // A page step stops and starts its panes one by one: rings come and go once all of them have.
    if (m_bUpdatePending)
        return;
    m_bUpdatePending = true;
    QTimer::singleShot(0, this, SLOT(slot_update()));
}

void PaneRings::slot_update()
{
    m_bUpdatePending = false;
    QVector<int> playing;
    for (int pane = 0; pane < m_pStreams->PaneCount(); ++pane) {
        if (m_pStreams->SourceAt(pane))
            playing.append(pane);
    }
    const QVector<int> wanted = PanesWithRing(playing, m_pDeck->GetCurrentWnd());
    for (int pane : m_hashKept.keys()) {
        if (!wanted.contains(pane) || m_hashKept[pane].source != m_pStreams->SourceAt(pane))
            Drop(pane);
    }
    for (int pane : wanted) {
        if (m_hashKept.contains(pane))
            continue;
        const Kept kept{m_pStreams->SourceAt(pane), std::make_shared<PacketRing>()};
        kept.source->addSink(kept.ring);
        m_hashKept.insert(pane, kept);
    }
}

void PaneRings::Drop(int pane)
{
    const Kept kept = m_hashKept.take(pane);
    if (kept.source)
        kept.source->removeSink(kept.ring);
}
