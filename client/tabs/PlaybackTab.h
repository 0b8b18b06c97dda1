#pragma once

#include "archive/PlayGroup.h"
#include "tabs/DeckTab.h"

#include <QDate>
#include <QElapsedTimer>
#include <QHash>
#include <QSharedPointer>

class ClientArchive;
class DayField;
class PaneClips;

/// Recorded video. All panes that show a camera's recording play in step, and the day's scale is that of the
/// active pane's camera; a pane that shows a file plays for itself, with the file's own slider.
class PlaybackTab : public DeckTab
{
    Q_OBJECT

public:
    PlaybackTab(CameraHub* hub, EventLog* log, ClientArchive* archive);
    ~PlaybackTab() override;

    void ShowCamera(const CameraRecord& camera, int pane) override;

protected:
    void FirstShown() override;
    void ButtonClicked(int pane, Btn_type_EX button) override;
    void ClosePane(int pane) override;
    void timerEvent(QTimerEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private Q_SLOTS:
    void slot_archiveChanged(const QString& camera);
    void slot_active(int pane);
    void slot_day(const QDate& day);
    void slot_timeChosen(int pane);
    void slot_timeDoubleClicked(int pane);
    void slot_fileMoved(int pane, int value);
    void slot_download();
    void slot_ended();
    void slot_frame();
    void slot_fileChosen(const QString& path);
    void slot_sound(int pane);

private:
    struct OpenFile;

    QSharedPointer<VideoSource> MakeSource(int pane, const CameraRecord& camera);
    std::shared_ptr<SegmentTrack> Track(const QString& camera);
    PlayGroup* Group(int pane);
    bool IsFile(int pane) const { return m_hashFiles.contains(pane); }
    /// The panes that play with this one.
    QVector<int> Companions(int pane) const;
    void Play(int pane, bool run);
    void Stop(int pane);
    void ChangeSpeed(int pane, int speed);
    void SeekDay();
    void SeekTo(qint64 ms);
    void MarkClip(int pane);
    void AskForFile();
    void ShowToolbar();
    void ShowColors();
    void ShowPosition();
    void GoToNewest();

    ClientArchive* m_pArchive;
    DayField* m_pDay;
    PaneClips* m_pClips;
    PlayGroup m_group;
    QHash<QString, std::shared_ptr<SegmentTrack>> m_hashTracks;
    QHash<int, QSharedPointer<OpenFile>> m_hashFiles;
    QBasicTimer m_timer;
    QElapsedTimer m_sinceSeek;
    bool m_bSeeking = false;
    bool m_bPlaced = false; ///< the clock has been put to a moment
};
