#include "panes/InstantPlayback.h"

#include "common/EngineText.h"
#include "common/Words.h"
#include "panes/DeckStreams.h"
#include "panes/PaneRings.h"
#include "source/RingPlayer.h"

#include <CPaneDeck.h>

#include <QTimerEvent>

namespace {

constexpr int PositionMs = 200;

} // namespace

InstantPlayback::InstantPlayback(CPaneDeck* deck, DeckStreams* streams, QObject* parent)
    : QObject(parent), m_deck(deck), m_streams(streams), m_rings(new PaneRings(deck, streams, this))
{
    connect(deck, &CPaneDeck::sig_btnStopClick, this, &InstantPlayback::setPaused);
    connect(deck, &CPaneDeck::sig_btnCloseClick, this, &InstantPlayback::goLive);
    connect(deck, &CPaneDeck::sig_ReplaySeek, this, &InstantPlayback::seek);
    connect(streams, &DeckStreams::stopped, this, &InstantPlayback::goLive);
}

void InstantPlayback::toggle(int pane)
{
    if (m_players.contains(pane))
        goLive(pane);
    else
        open(pane);
}

void InstantPlayback::open(int pane)
{
    const VideoSource* live = m_streams->sourceAt(pane);
    std::vector<PacketPtr> packets = m_rings->snapshot(pane);
    if (!live || packets.empty()) {
        m_deck->setChecked(BTN_INSTANT_PLAYBACK, false, pane);
        Q_EMIT told(word("nothing was kept of pane %1 yet").arg(pane));
        m_deck->SetActiveWnd(pane);
        return;
    }
    auto* player = new RingPlayer(std::move(packets), this);
    connect(player, &VideoSource::stateChanged, this, &InstantPlayback::playerStateChanged);
    m_players.insert(pane, player);
    m_deck->OpenPlayBackSlider(pane);
    m_streams->setReplay(pane, player);
    player->start();
    if (!m_timer.isActive())
        m_timer.start(PositionMs, this);
    Q_EMIT told(word("instant playback in pane %1").arg(pane));
}

void InstantPlayback::goLive(int pane)
{
    RingPlayer* player = m_players.take(pane);
    if (!player)
        return;
    if (m_players.isEmpty())
        m_timer.stop();
    m_streams->setReplay(pane, nullptr);
    m_deck->ClosePlayBackSlider(pane);
    // The player may be the one that is telling its state.
    player->disconnect(this);
    player->deleteLater();
    Q_EMIT told(word("pane %1 is live again").arg(pane));
}

void InstantPlayback::setPaused(int pane, bool paused)
{
    if (RingPlayer* player = m_players.value(pane))
        player->setPaused(paused);
}

void InstantPlayback::seek(int pane, int position)
{
    if (RingPlayer* player = m_players.value(pane))
        player->seek(position);
}

void InstantPlayback::playerStateChanged()
{
    auto* player = static_cast<RingPlayer*>(sender());
    if (player->state() != SourceState::Lost)
        return;
    Q_EMIT told(engineText(player->reason()));
    goLive(m_players.key(player, -1));
}

void InstantPlayback::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_timer.timerId())
        return;
    for (auto it = m_players.cbegin(); it != m_players.cend(); ++it)
        m_deck->SetPlayBackSliderPos(it.key(), it.value()->position(), long(it.value()->positionMs() / 1000));
}
