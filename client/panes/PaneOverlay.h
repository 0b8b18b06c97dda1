#pragma once

#include <QObject>
#include <QVector>

#include <functional>

class CPaneDeck;
class DeckStreams;
class PaneRecorders;
class PaneSound;
class PaneStrip;
class PtzLeases;
struct CameraRecord;
struct PaneLabel;

/// What stands in the corners of a deck's pictures: name, recording, sound, and whether the picture can be
/// trusted, which is told even while the rest is switched off.
class PaneOverlay : public QObject
{
    Q_OBJECT

public:
    /// `leases` tell who turns a camera; null where nobody else does.
    PaneOverlay(CPaneDeck* deck, DeckStreams* streams, PaneSound* sound, PaneRecorders* recorders,
                const PtzLeases* leases = nullptr);

    using IsArchived = std::function<bool(const CameraRecord&)>;
    /// Who tells which cameras the archive records; nobody at first.
    void setArchived(IsArchived isArchived);

    void setShown(bool shown);

    /// Whether labels are shown, as it was last chosen; they are at first.
    static bool chosen();
    static void choose(bool shown);

public Q_SLOTS:
    void update(int pane);
    void updateAll();

private:
    PaneLabel labelOf(int pane) const;
    QString nameOf(int pane) const;
    QString stateOf(int pane) const;

    CPaneDeck* m_deck;
    DeckStreams* m_streams;
    PaneSound* m_sound;
    QVector<PaneStrip*> m_strips;
    const PtzLeases* m_leases;
    IsArchived m_isArchived;
    bool m_isShown;
};
