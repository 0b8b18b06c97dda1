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
    void Toggle(int pane);
    /// Nobody hears this pane from now on.
    void Hush(int pane);
    bool IsHeard(int pane) const { return m_nHeard == pane; }
    bool HasSound(int pane) const;
    /// Brings the toolbar's control to the volume; it has no other way to know.
    void ShowVolume();

Q_SIGNALS:
    /// One line for the log.
    void told(const QString& text);
    /// HasSound() or IsHeard() is new.
    void changed(int pane);

private Q_SLOTS:
    void slot_started(int pane);
    void slot_stopped(int pane);
    void slot_sourceState();
    void slot_volume(int pane, int value);
    void slot_failed(const QString& error);

private:
    CPaneDeck* m_pDeck;
    DeckStreams* m_pStreams;
    std::shared_ptr<SoundOutput> m_output;
    int m_nHeard = -1;
};
