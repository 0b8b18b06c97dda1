#include "DeckScenes.h"

#include "Stage.h"

#include "deck/CPaneDeck.h"

#include <QPushButton>
#include <QSlider>

namespace {

/// A deck with a layout, and camera pictures in its first panes.
class PlayingDeck : public CPaneDeck
{
public:
    PlayingDeck(_WND_TYPE type, int panes, int playing) : CPaneDeck(nullptr, type, 16)
    {
        resize(1180, 720);
        Stage::Shot(this);
        SetShowWndNo(panes);
        for (int i = 0; i < playing; ++i)
            Play(i);
    }

    void Play(int pane)
    {
        const QImage& frame = m_listFrames[pane] = Stage::CameraPicture(pane);
        QMetaObject::invokeMethod(static_cast<QWidget*>(GetHWND(pane)), "slot_BufferChange",
                                  Q_ARG(ulong, reinterpret_cast<ulong>(frame.constBits())),
                                                                       Q_ARG(int, 640), Q_ARG(int, 360));
        SetTitle(pane, QString("Camera %1 · Harbour gate").arg(pane + 1));
    }

private:
    QImage m_listFrames[16];
};

} // namespace

QPixmap DeckScenes::Live()
{
    PlayingDeck deck(WND_TYPE_MONITOR, 6, 4);
    deck.SetBtnCheck(0, BTN_RECORD, true);
    deck.SetActiveWnd(0);
    deck.ChangeFreeze(1, true);
    deck.OpenPlayBackSlider(2);
    deck.SetPlayBackSliderPos(2, 620, 1700000000);
    deck.showTitle(0);
    return Stage::Shot(&deck);
}

QPixmap DeckScenes::Alarm()
{
    PlayingDeck deck(WND_TYPE_ALARM, 4, 2);
    deck.ChangeFreeze(0, true);
    deck.setAlarm(2, "Signal lost");
    deck.SetActiveWnd(0);
    deck.showTitle(0);
    return Stage::Shot(&deck);
}

QPixmap DeckScenes::Playback()
{
    PlayingDeck deck(WND_TYPE_PLAYBACK, 4, 3);
    deck.SetActiveWnd(0);
    QVector<unsigned int> day = Stage::Recordings();
    deck.SetTimerPeriod(day.data());
    Stage::Shot(&deck);
    short hour = 11;
    short minute = 48;
    short second = 0;
    deck.SetTimerSliderPose(hour, minute, second);
    deck.SetWndBtnState(0, BTN_PLAY, 1);
    deck.SetWndBtnState(0, BTN_AUDIO, 1);
    deck.SetVoiceValue(0, 6);
    return Stage::Shot(&deck);
}

QPixmap DeckScenes::PlaybackFile()
{
    PlayingDeck deck(WND_TYPE_PLAYBACK, 1, 1);
    deck.SetActiveWnd(0);
    deck.ChangePlaybackViewType(PLAYBACK_VIEW_FILE);
    deck.SetProgressValue(0, 350);
    deck.SetWndBtnState(0, BTN_RECORD, 1);
    return Stage::Shot(&deck);
}

QPixmap DeckScenes::Tour()
{
    PlayingDeck deck(WND_TYPE_TOUR, 9, 3);
    deck.SetActiveWnd(1);
    for (int pane = 3; pane < 6; ++pane)
        deck.setTour(pane, pane * 4);
    return Stage::Shot(&deck);
}

QPixmap DeckScenes::TitleBar()
{
    QVector<QPixmap> rows;
    for (bool checked : {false, true}) {
        PlayingDeck deck(WND_TYPE_MONITOR, 1, 1);
        deck.resize(480, 270);
        deck.SetActiveWnd(0);
        deck.showTitle(0);
        for (const char* name : {"btnLocalRecord", "btnAudio", "btninstant", "btnZoomIn"})
            deck.findChild<QPushButton*>(name)->setChecked(checked);
        deck.setTitleMousMsg(true, 0);
        Stage::Hover(deck.findChild<QPushButton*>("btnsnapshot"));
        rows.append(Stage::Shot(&deck));
    }
    return Stage::Column(rows, 10);
}

QPixmap DeckScenes::InstantPlayback()
{
    QVector<QPixmap> rows;
    for (bool paused : {false, true}) {
        PlayingDeck deck(WND_TYPE_MONITOR, 1, 1);
        deck.resize(480, 270);
        deck.OpenPlayBackSlider(0);
        deck.SetPlayBackSliderPos(0, 430, 1700000000);
        deck.findChild<QPushButton*>("btnStop")->setChecked(paused);
        rows.append(Stage::Shot(&deck));
    }
    return Stage::Column(rows, 10);
}
