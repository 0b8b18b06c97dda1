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
    void toggle(int pane);

public Q_SLOTS:
    /// Goes back to live.
    void goLive(int pane);

Q_SIGNALS:
    /// A line for the log.
    void told(const QString& text);

protected:
    void timerEvent(QTimerEvent* event) override;

private Q_SLOTS:
    void setPaused(int pane, bool paused);
    void seek(int pane, int position);
    void playerStateChanged();

private:
    void open(int pane);

    CPaneDeck* m_deck;
    DeckStreams* m_streams;
    PaneRings* m_rings;
    QHash<int, RingPlayer*> m_players;
    QBasicTimer m_timer;
};
