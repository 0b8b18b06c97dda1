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

    void showCamera(const CameraRecord& camera, int pane) override;

protected:
    void firstShown() override;
    void buttonClicked(int pane, Btn_type_EX button) override;
    void closePane(int pane) override;
    void timerEvent(QTimerEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private Q_SLOTS:
    void archiveChanged(const QString& camera);
    void showPane(int pane);
    void goToDay(const QDate& day);
    void seekChosenTime(int pane);
    void playChosenTime(int pane);
    void seekFile(int pane, int value);
    void downloadPiece();
    void groupEnded();
    void tellSeekTime();
    void openFile(const QString& path);
    void soundChanged(int pane);

private:
    struct OpenFile;

    QSharedPointer<VideoSource> makeSource(int pane, const CameraRecord& camera);
    std::shared_ptr<SegmentTrack> track(const QString& camera);
    PlayGroup* group(int pane);
    bool isFile(int pane) const { return m_files.contains(pane); }
    /// The panes that play with this one.
    QVector<int> companions(int pane) const;
    void play(int pane, bool run);
    void stop(int pane);
    void changeSpeed(int pane, int speed);
    void seekDay();
    void seekTo(qint64 ms);
    void markClip(int pane);
    void askForFile();
    void showToolbar();
    void showColors();
    void showPosition();
    void goToNewest();

    ClientArchive* m_archive;
    DayField* m_day;
    PaneClips* m_clips;
    PlayGroup m_group;
    QHash<QString, std::shared_ptr<SegmentTrack>> m_tracks;
    QHash<int, QSharedPointer<OpenFile>> m_files;
    QBasicTimer m_timer;
    QElapsedTimer m_sinceSeek;
    bool m_isSeeking = false;
    bool m_isPlaced = false; ///< the clock has been put to a moment
};
