#pragma once

#include "panes/PaneTracks.h"
#include "tabs/DeckTab.h"

class DayOverview;
class DayScale;
class PlaybackBar;
class PlaybackKeys;
class PlaybackNavigator;
class PlaybackOutput;
class SeekReport;

/// Recorded video. All panes that show a camera's recording play in step, and the day's scale is that of the
/// active pane's camera; a pane that shows a file plays for itself, with the file's own slider.
class PlaybackTab : public DeckTab
{
    Q_OBJECT

public:
    PlaybackTab(CameraHub* hub, EventLog* log, ClientArchive* archive);
    ~PlaybackTab() override;

    void showCamera(const CameraRecord& camera, int pane) override;

    /// Plays the recording of a camera from a moment, milliseconds since 1970, in the active pane if it is in
    /// none yet.
    void showMoment(const CameraRecord& camera, qint64 ms);

    void fillPaneMenu(QMenu* menu, int pane) override;

protected:
    void showEvent(QShowEvent* event) override;
    void firstShown() override;
    void buttonClicked(int pane, Btn_type_EX button) override;
    void closePane(int pane) override;
    void cameraChanged(const CameraRecord* camera, const CameraRecord& before) override;

private Q_SLOTS:
    void archiveChanged(const QString& camera);
    void goToDay(const QDate& day);
    void openFile(const QString& path);
    void showPane(int pane);
    void soundChanged(int pane);

private:
    void layOut();
    void listen();
    /// A button of what plays in a pane, which is there.
    void playButtonClicked(int pane, Btn_type_EX button);
    void goToNewest();
    void goToWanted();
    /// False while nothing is known of the moment that was asked for: what just happened is being written.
    bool playWanted();
    void awaitMore();
    void askForMore(const QString& camera, qint64 afterMs);
    void cutAhead();
    void askForFile();
    void showToolbar();
    void showColors();
    void showPosition();

    ClientArchive* m_archive;
    DayScale* m_scale;
    SeekReport* m_seekReport;
    PaneTracks m_tracks;
    PlaybackOutput* m_output;
    PlaybackNavigator* m_navigator;
    PlaybackKeys* m_playbackKeys;
    DayOverview* m_overview;
    PlaybackBar* m_bar;
    const CameraRecord* m_wanted = nullptr; ///< whose recording is to be played as soon as the deck has panes
    qint64 m_wantedMs = 0;
    qint64 m_cutMs = 0;       ///< the end of what was known when more was asked for
    bool m_isAwaited = false; ///< it is played as soon as it is known
    bool m_hasPanes = false;
};
