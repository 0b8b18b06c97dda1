#include "archive/PlayGroup.h"

#include <QTimerEvent>

#include <algorithm>

namespace {

constexpr int TickMs = 100;

} // namespace

PlayGroup::PlayGroup(QObject* parent) : QObject(parent), m_clock(std::make_shared<PlaybackClock>()) {}

ArchivePlayer* PlayGroup::add(std::shared_ptr<SegmentTrack> track)
{
    m_players.removeAll(QPointer<ArchivePlayer>());
    auto* player = new ArchivePlayer(std::move(track), m_clock);
    player->setPaused(!m_clock->isRunning());
    m_players.append(player);
    return player;
}

QVector<ArchivePlayer*> PlayGroup::players() const
{
    QVector<ArchivePlayer*> players;
    for (const QPointer<ArchivePlayer>& player : m_players) {
        if (player)
            players.append(player);
    }
    return players;
}

void PlayGroup::play(bool run)
{
    m_clock->setRunning(run);
    for (ArchivePlayer* player : players())
        player->setPaused(!run);
    if (m_clock->isBackward())
        seek(m_clock->position());
    if (run)
        m_timer.start(TickMs, this);
    else
        m_timer.stop();
}

void PlayGroup::setBackward(bool backward)
{
    if (m_clock->isBackward() == backward)
        return;
    m_clock->setBackward(backward);
    seek(m_clock->position());
}

void PlayGroup::seek(qint64 ms)
{
    Q_EMIT moved(ms);
    m_clock->setPosition(ms);
    for (ArchivePlayer* player : players())
        player->seek(ms);
}

void PlayGroup::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_timer.timerId())
        return;
    const qint64 position = m_clock->position();
    Q_EMIT moved(position);
    bool isAnything = false;
    for (ArchivePlayer* player : players()) {
        const bool has = player->track().at(position).has_value();
        isAnything = isAnything || has;
        // One that rested in a gap goes on when the clock has passed it.
        if (has && player->state() == SourceState::Ended)
            player->seek(position);
    }
    if (!isAnything && m_clock->isBackward())
        stepBackOverGap(position);
    else if (!isAnything)
        stepOverGap(position);
}

std::optional<qint64> PlayGroup::startAfter(qint64 ms) const
{
    std::optional<qint64> next;
    for (const ArchivePlayer* player : players()) {
        const std::optional<qint64> start = player->track().nextStart(ms);
        if (start && (!next || *start < *next))
            next = start;
    }
    return next;
}

std::optional<qint64> PlayGroup::endBefore(qint64 ms) const
{
    std::optional<qint64> last;
    for (const ArchivePlayer* player : players()) {
        const std::optional<TrackPiece> piece = player->track().before(ms);
        if (piece && (!last || *last < piece->endMs))
            last = piece->endMs;
    }
    return last;
}

void PlayGroup::stepOverGap(qint64 position)
{
    if (const std::optional<qint64> next = startAfter(position)) {
        seek(*next);
        return;
    }
    play(false);
    Q_EMIT ended();
}

void PlayGroup::stepBackOverGap(qint64 position)
{
    std::optional<qint64> last = endBefore(position);
    if (!last) {
        Q_EMIT lookedBack(position);
        last = endBefore(position);
    }
    if (last) {
        seek(*last - 1);
        return;
    }
    m_clock->setBackward(false);
    play(false);
    seek(startAfter(position).value_or(position));
    Q_EMIT begun();
}
