#pragma once

#include <QElapsedTimer>
#include <QObject>

class CPaneDeck;
class DeckStreams;
class VideoSource;

/// Tells how long it takes from a seek to the first picture in the active pane of a deck.
class SeekReport : public QObject
{
    Q_OBJECT

public:
    SeekReport(CPaneDeck* deck, DeckStreams* streams, QObject* parent);

    void begin() { m_sinceSeek.start(); }

Q_SIGNALS:
    /// A line for the log.
    void told(const QString& text);

private:
    void watch(int pane);
    void takeFrame(const VideoSource& source);

    CPaneDeck* m_deck;
    DeckStreams* m_streams;
    QElapsedTimer m_sinceSeek; ///< invalid once it has been told
};
