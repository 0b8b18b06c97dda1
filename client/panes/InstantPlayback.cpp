#include "panes/InstantPlayback.h"

#include "panes/DeckStreams.h"
#include "panes/PaneRings.h"
#include "source/RingPlayer.h"

#include <CPaneDeck.h>

#include <QTimerEvent>

namespace {

constexpr int PositionMs = 200;

} // namespace

InstantPlayback::InstantPlayback(CPaneDeck* deck, DeckStreams* streams, QObject* parent)
    : QObject(parent), m_pDeck(deck), m_pStreams(streams), m_pRings(new PaneRings(deck, streams, this))
{
    connect(deck, SIGNAL(sig_btnStopClick(int,bool)), SLOT(slot_pause(int,bool)));
    connect(deck, SIGNAL(sig_btnCloseClick(int)), SLOT(slot_close(int)));
    connect(deck, SIGNAL(sig_ReplaySeek(int,int)), SLOT(slot_seek(int,int)));
    connect(streams, SIGNAL(stopped(int)), SLOT(slot_close(int)));
}

void InstantPlayback::Toggle(int pane)
{
    if (m_hashPlayers.contains(pane))
        slot_close(pane);
    else
        Open(pane);
}

void InstantPlayback::Open(int pane)
{
    const VideoSource* live = m_pStreams->SourceAt(pane);
    std::vector<PacketPtr> packets = m_pRings->Snapshot(pane);
    if (!live || packets.empty()) {
        m_pDeck->setChecked(BTN_INSTANT_PLAYBACK, false, pane);
        Q_EMIT told(QString("nothing was kept of pane %1 yet").arg(pane));
        m_pDeck->SetActiveWnd(pane);
        return;
    }
    auto* player = new RingPlayer(live->address(), std::move(packets), this);
    connect(player, SIGNAL(stateChanged()), SLOT(slot_playerState()));
    m_hashPlayers.insert(pane, player);
    m_pDeck->OpenPlayBackSlider(pane);
    m_pStreams->SetReplay(pane, player);
    player->start();
    if (!m_timer.isActive())
        m_timer.start(PositionMs, this);
    Q_EMIT told(QString("instant playback in pane %1").arg(pane));
}

void InstantPlayback::slot_close(int pane)
{
    RingPlayer* player = m_hashPlayers.take(pane);
    if (!player)
        return;
    if (m_hashPlayers.isEmpty())
        m_timer.stop();
    m_pStreams->SetReplay(pane, nullptr);
    m_pDeck->ClosePlayBackSlider(pane);
    // The player may be the one that is telling its state.
    player->disconnect(this);
    player->deleteLater();
    Q_EMIT told(QString("pane %1 is live again").arg(pane));
}

void InstantPlayback::slot_pause(int pane, bool paused)
{
    if (RingPlayer* player = m_hashPlayers.value(pane))
        player->setPaused(paused);
}

void InstantPlayback::slot_seek(int pane, int position)
{
    if (RingPlayer* player = m_hashPlayers.value(pane))
        player->seek(position);
}

void InstantPlayback::slot_playerState()
{
    auto* player = static_cast<RingPlayer*>(sender());
    if (player->state() != SourceState::Lost)
        return;
    Q_EMIT told(player->reason());
    slot_close(m_hashPlayers.key(player, -1));
}

void InstantPlayback::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_timer.timerId())
        return;
    for (auto it = m_hashPlayers.cbegin(); it != m_hashPlayers.cend(); ++it)
        m_pDeck->SetPlayBackSliderPos(it.key(), it.value()->position(),
                                      long(it.value()->positionMs() / 1000));
}
