#pragma once

#include "panes/PaneClips.h"

class ClientArchive;
class CPaneDeck;
class DeckStreams;
class PaneTracks;
class QWidget;

/// What an operator takes out of what a playback deck plays: clips, whole files and exports.
class PlaybackOutput : public QObject
{
    Q_OBJECT

public:
    PlaybackOutput(CPaneDeck* deck, DeckStreams* streams, PaneTracks* tracks, const ClientArchive* archive,
                   QWidget* tab);

    bool isMarked(int pane) const { return m_clips->isMarked(pane); }
    void forget(int pane) { m_clips->forget(pane); }
    /// A pane that plays something begins or ends a clip here.
    void markClip(int pane);

public Q_SLOTS:
    /// Saves a copy of the file that the active pane plays from.
    void download();
    /// Brings up the dialog that asks what to export, the one that is there if it is.
    void askForExport();

    /// Changes what the dialog asks, if it is there; milliseconds since 1970.
    void setStretch(qint64 fromMs, qint64 toMs);

Q_SIGNALS:
    /// What the dialog asks to export; both are 0 once it has gone.
    void stretchChanged(qint64 fromMs, qint64 toMs);
    /// A line for the log.
    void told(const QString& text);
    /// A file lies there now.
    void saved(const QString& path);

private:
    CPaneDeck* m_deck;
    DeckStreams* m_streams;
    PaneTracks* m_tracks;
    const ClientArchive* m_archive;
    QWidget* m_tab;
    PaneClips* m_clips;
};
