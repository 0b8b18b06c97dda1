#pragma once

#include <PaneDeckTypes.h>

#include <QObject>

#include <memory>

class CPaneDeck;
class DeckStreams;
class SoundOutput;

/// Lets the operator hear one pane of a deck, chosen by its audio button, and keeps the button's state. The
/// volume is one for all decks, and lasts until the next start.
class PaneSound : public QObject
{
    Q_OBJECT

public:
    PaneSound(CPaneDeck* deck, DeckStreams* streams, std::shared_ptr<SoundOutput> output, QObject* parent);

    /// The pane's audio button was pressed.
    void toggle(int pane);
    /// Nobody hears this pane from now on.
    void hush(int pane);
    bool isHeard(int pane) const { return m_heardPane == pane; }
    bool hasSound(int pane) const;
    /// Brings the toolbar's control to the volume; it has no other way to know.
    void showVolume();

Q_SIGNALS:
    /// One line for the log.
    void told(const QString& text);
    /// hasSound() or isHeard() is new.
    void changed(int pane);

private Q_SLOTS:
    void paneStarted(int pane);
    void paneStopped(int pane);
    void sourceStateChanged();
    void setVolume(int pane, int value);
    void outputFailed(const QString& error);

private:
    CPaneDeck* m_deck;
    DeckStreams* m_streams;
    std::shared_ptr<SoundOutput> m_output;
    int m_heardPane = -1;
};
