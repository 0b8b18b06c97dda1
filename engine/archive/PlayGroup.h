#pragma once

#include "archive/ArchivePlayer.h"

#include <QBasicTimer>
#include <QPointer>
#include <QVector>

/// Players in step by one clock. When none of them has anything at the clock's moment, the clock steps to
/// where the first one goes on; after the last recording it stops. So it does backwards, before the first
/// one, where it turns round.
class PlayGroup : public QObject
{
    Q_OBJECT

public:
    explicit PlayGroup(QObject* parent = nullptr);

    /// A stopped player that joins the group: start() it when it is wanted.
    ArchivePlayer* add(std::shared_ptr<SegmentTrack> track);

    void play(bool run);
    void seek(qint64 ms);
    void setSpeed(int speed) { m_clock->setSpeed(speed); }
    void setBackward(bool backward);
    const PlaybackClock& clock() const { return *m_clock; }

Q_SIGNALS:
    /// The clock goes or has run to a moment. Before the players and the group look what is there.
    void moved(qint64 ms);
    /// Nothing is known of before a moment: the tracks can be told now.
    void lookedBack(qint64 ms);
    /// It has come to the end of all recordings and stands still.
    void ended();
    /// It has come to their beginning.
    void begun();

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    QVector<ArchivePlayer*> players() const;
    void stepOverGap(qint64 position);
    void stepBackOverGap(qint64 position);
    std::optional<qint64> endBefore(qint64 ms) const;
    std::optional<qint64> startAfter(qint64 ms) const;

    std::shared_ptr<PlaybackClock> m_clock;
    QVector<QPointer<ArchivePlayer>> m_players;
    QBasicTimer m_timer;
};
