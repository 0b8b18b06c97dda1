#include "playback/PlaybackOutput.h"

#include "cameras/CameraList.h"
#include "cameras/ClientArchive.h"
#include "common/Words.h"
#include "panes/DeckStreams.h"
#include "panes/PaneTracks.h"
#include "playback/ExportDialog.h"

#include <CPaneDeck.h>

namespace {

/// What an export begins with.
constexpr qint64 ExportMs = 10'000;

} // namespace

PlaybackOutput::PlaybackOutput(CPaneDeck* deck, DeckStreams* streams, PaneTracks* tracks,
                               const ClientArchive* archive, QWidget* tab)
    : QObject(tab), m_deck(deck), m_streams(streams), m_tracks(tracks), m_archive(archive), m_tab(tab),
      m_clips(new PaneClips(this))
{
    connect(m_clips, &PaneClips::told, this, &PlaybackOutput::told);
    connect(m_clips, &PaneClips::saved, this, &PlaybackOutput::saved);
}

void PlaybackOutput::markClip(int pane)
{
    const qint64 now = m_tracks->clockAt(pane).position();
    const bool isMarked = m_clips->mark(
        pane, now, [&](qint64 from, qint64 to) { return m_tracks->piecesAt(pane, from, to); },
        m_streams->cameraAt(pane)->name);
    m_deck->SetWndBtnState(pane, BTN_RECORD, isMarked);
}

void PlaybackOutput::download()
{
    const int pane = m_deck->GetCurrentWnd();
    const CameraRecord* camera = m_streams->cameraAt(pane);
    if (!camera || m_tracks->isFile(pane))
        return;
    const auto piece = m_tracks->trackAt(pane)->at(m_tracks->clockAt(pane).position());
    if (piece)
        m_clips->download(*piece, camera->name);
    else
        Q_EMIT told(word("No recording at this time"));
}

void PlaybackOutput::askForExport()
{
    if (auto* open = m_tab->findChild<ExportDialog*>()) {
        open->activateWindow();
        return;
    }
    ExportDialog::Choice choice;
    for (const CameraRecord* camera : m_archive->cameras())
        choice.cameras.append(camera->name);
    const int pane = m_deck->GetCurrentWnd();
    const CameraRecord* active = m_tracks->isFile(pane) ? nullptr : m_streams->cameraAt(pane);
    choice.chosen = active ? QStringList{active->name} : QStringList();
    if (active && !choice.cameras.contains(active->name))
        choice.cameras.prepend(active->name);
    choice.fromMs =
        active ? m_tracks->clockAt(pane).position() : QDateTime::currentMSecsSinceEpoch() - ExportMs;
    choice.toMs = choice.fromMs + ExportMs;
    auto* dialog = new ExportDialog(m_archive, choice, m_tab);
    connect(dialog, &ExportDialog::told, this, &PlaybackOutput::told);
    connect(dialog, &ExportDialog::stretchChanged, this, &PlaybackOutput::stretchChanged);
    connect(dialog, &QDialog::finished, this, [this] { Q_EMIT stretchChanged(0, 0); });
    Q_EMIT stretchChanged(choice.fromMs, choice.toMs);
    dialog->show();
}

void PlaybackOutput::setStretch(qint64 fromMs, qint64 toMs)
{
    if (auto* dialog = m_tab->findChild<ExportDialog*>())
        dialog->setStretch(fromMs, toMs);
}
