#pragma once

#include <QBasicTimer>
#include <QHash>
#include <QObject>

class CPaneDeck;
class DeckStreams;
class PaneRings;
class RingPlayer;

/// Plays the last minute of a pane in place of its live video, worked by the bar below the picture. A pane
/// that leaves the screen goes back to live.
class InstantPlayback : public QObject
{
    Q_OBJECT

public:
    InstantPlayback(CPaneDeck* deck, DeckStreams* streams, QObject* parent);

    /// Opens the bar and plays, or goes back to live. A pane of which nothing was kept becomes active, so
    /// that its next minute is.
    void Toggle(int pane);

public Q_SLOTS:
    /// Goes back to live.
    void slot_close(int pane);

Q_SIGNALS:
    /// A line for the log.
    void told(const QString& text);

protected:
    void timerEvent(QTimerEvent* event) override;

private Q_SLOTS:
    void slot_pause(int pane, bool paused);
    void slot_seek(int pane, int position);
    void slot_playerState();

private:
    void Open(int pane);

    CPaneDeck* m_pDeck;
    DeckStreams* m_pStreams;
    PaneRings* m_pRings;
    QHash<int, RingPlayer*> m_hashPlayers;
    QBasicTimer m_timer;
};
