#include "DeckProbe.h"
#include "support/Mouse.h"
#include "support/SignalLog.h"

#include <QLabel>
#include <QLayout>
#include <QSlider>
#include <QToolButton>

using namespace DeckProbe;

class tst_deck_toolbars : public DeckTest
{
    Q_OBJECT

private Q_SLOTS:
    void liveToolBar();
    void liveToolBarMarksTheCount();
    void tourToolBarIsReduced();
    void liveToolBarTakesWidgets();
    void playbackToolBarReports();
    void playbackToolBarShowsTheActivePane();
    void playbackOperationsNeedTheirToolBar();
};

void tst_deck_toolbars::liveToolBar()
{
    CPaneDeck deck(nullptr, WND_TYPE_MONITOR, 8);
    deck.resize(800, 500);
    deck.show();
    QCOMPARE(ToolBar(deck)->geometry(), QRect(0, 450, 800, 50));
    SignalLog log;
    log.WatchAll(&deck);
    ClickToolBar(deck, "btnFourFrame");
    QCOMPARE(log.Take(), (QStringList{"sig_Activechangebefor(-1)", "sig_activeWnd(0)",
                                      "sig_wndNumberChanged(4)", "sig_wndNumberChanged(4)"}));
    for (const char* button :
         {"btnNineFrame", "btnNext", "btnNext", "btnPrive", "btnSaveView", "btnPVplayer"})
        ClickToolBar(deck, button);
    QCOMPARE(log.Take(),
             (QStringList{"sig_wndNumberChanged(9)", "sig_SwitchVideo(1,4,8)", "sig_SwitchVideo(0,4,7)",
                          "sig_OnWndBtnClick(0,10)", "sig_OnStateChanged(4)"}));
    QVERIFY(ToolBar(deck)->isHidden());
    QCOMPARE(Shown(deck), Run(0, 3));
    deck.ChangeFull(false);
    deck.resize(800, 500);
    QVERIFY(ToolBar(deck)->isVisible());
}

void tst_deck_toolbars::liveToolBarMarksTheCount()
{
    CPaneDeck live(nullptr, WND_TYPE_MONITOR, 8);
    CPaneDeck tour(nullptr, WND_TYPE_TOUR, 8);
    const auto marked = [](CPaneDeck& deck) {
        return ToolBar(deck)->findChild<QToolButton*>("btnFourFrame")->isChecked();
    };
    live.SetShowWndNo(4);
    tour.SetShowWndNo(4);
    QVERIFY(marked(live) && !marked(tour));
    live.SetShowWndNo(65);
    QVERIFY2(!marked(live), "a refused number has cleared the mark all the same");
    QCOMPARE(Shown(live), Run(0, 3));
}

void tst_deck_toolbars::tourToolBarIsReduced()
{
    CPaneDeck deck(nullptr, WND_TYPE_TOUR, 8);
    deck.resize(800, 500);
    deck.show();
    for (const char* button : {"btnSaveView", "btnPrive", "btnNext", "btnPVplayer"})
        QVERIFY(ToolBar(deck)->findChild<QToolButton*>(button)->isHidden());
    SignalLog log;
    log.Watch(&deck, SIGNAL(sig_wndNumberChanged(int)));
    ClickToolBar(deck, "btnSixFrame");
    QMetaObject::invokeMethod(ToolBar(deck), "sig_btnWndSwidch", Q_ARG(int,1), Q_ARG(int,3));
    QCOMPARE(log.Take().join(' '),
             QString("sig_wndNumberChanged(6) sig_wndNumberChanged(6) sig_wndNumberChanged(8)"));
}

void tst_deck_toolbars::liveToolBarTakesWidgets()
{
    CPaneDeck live(nullptr, WND_TYPE_MONITOR, 1);
    QLabel added;
    QLabel inserted;
    live.addWidget(&added);
    live.insertWidget(0, &inserted);
    QCOMPARE(added.parentWidget(), ToolBar(live));
    QCOMPARE(ToolBar(live)->layout()->indexOf(&inserted), 0);
    QLabel refused;
    for (_WND_TYPE kind : {WND_TYPE_ALARM, WND_TYPE_PLAYBACK, _WND_TYPE(9)}) {
        CPaneDeck deck(nullptr, kind, 1);
        deck.addWidget(&refused);
        deck.insertWidget(0, &refused);
        QVERIFY(!refused.parentWidget());
    }
}

void tst_deck_toolbars::playbackToolBarReports()
{
    CPaneDeck deck(nullptr, WND_TYPE_PLAYBACK, 8);
    deck.resize(900, 500);
    deck.show();
    QCOMPARE(ToolBar(deck)->geometry(), QRect(0, 411, 900, 90));
    QCOMPARE(deck.findChild<QWidget*>("m_disPlayRect")->geometry(), QRect(0, 0, 900, 410));
    SignalLog log;
    log.WatchAll(&deck);
    for (const char* button : {"m_downloadBtn", "m_playBtn", "m_btn4"})
        ClickToolBar(deck, button);
    QMetaObject::invokeMethod(ToolBar(deck), "playposeChanged", Q_ARG(int,500));
    QCOMPARE(log.Take(), (QStringList{"sig_btnDownload_click()", "sig_SliderMoved(-1,500)"}));
    deck.SetShowWndNo(4);
    deck.SetActiveWnd(3);
    log.Take();
    for (const char* button : {"m_playBtn", "m_btn4", "m_clipBtn", "btnPVplayer"})
        ClickToolBar(deck, button);
    for (const char* signal : {"sig_TimerSliderMoved", "sig_TimerSliderDbClicked"})
        QMetaObject::invokeMethod(ToolBar(deck), signal);
    QCOMPARE(log.Take(), (QStringList{"sig_OnWndBtnClick(3,14)", "sig_OnWndBtnClick(3,20)",
                                      "sig_OnWndBtnClick(3,28)", "sig_OnStateChanged(4)",
                                      "sig_TimerSliderReleased(3)", "sig_TimerSliderdbClicked(3)"}));
    QCOMPARE(Shown(deck), Run(0, 3));
    QVERIFY(ToolBar(deck)->isHidden());
}

void tst_deck_toolbars::playbackToolBarShowsTheActivePane()
{
    CPaneDeck deck(nullptr, WND_TYPE_PLAYBACK, 4);
    deck.SetShowWndNo(4);
    deck.SetActiveWnd(1);
    auto* save = ToolBar(deck)->findChild<QAbstractButton*>("m_saveBtn");
    auto* file = ToolBar(deck)->findChild<QWidget*>("m_fileTypeWidget")->findChild<QSlider*>();
    auto* voice = ToolBar(deck)->findChild<QSlider*>("m_audioSlider");
    SignalLog log;
    log.WatchAll(&deck);
    deck.SetProgressValue(0, 600);
    deck.SetVoiceValue(0, 6);
    deck.SetWndBtnState(0, BTN_RECORD, 1);
    QVERIFY(file->value() == 0 && voice->value() == 1 && !save->isChecked());
    QVERIFY(deck.btncheck(0, BTN_RECORD));
    deck.SetProgressValue(1, 600);
    deck.SetVoiceValue(1, 6);
    deck.SetWndBtnState(1, BTN_RECORD, 1);
    QVERIFY(file->value() == 600 && voice->value() == 6 && save->isChecked());
    QCOMPARE(log.Take(), QStringList("sig_VoiceChanged(1,6)"));
    deck.ResetWnd(0);
    QVERIFY(file->isEnabled());
    deck.ResetWnd(1);
    QVERIFY(!file->isEnabled() && file->value() == 0 && !save->isChecked());
    QVERIFY(!deck.btncheck(1, BTN_RECORD));
    deck.SetActiveWnd(-1);
    deck.SetWndBtnState(-1, BTN_PLAY, 1);
    QVERIFY(ToolBar(deck)->findChild<QAbstractButton*>("m_playBtn")->isChecked());
}

void tst_deck_toolbars::playbackOperationsNeedTheirToolBar()
{
    QVector<unsigned int> colors(86400, 0x00ff00);
    for (_WND_TYPE kind : {WND_TYPE_PLAYBACK, WND_TYPE_MONITOR, WND_TYPE_ALARM}) {
        CPaneDeck deck(nullptr, kind, 1);
        short time[6] = {13, 14, 15, 1, 2, 3};
        deck.SetTimerSliderPose(time[0], time[1], time[2]);
        time[0] = 9;
        deck.GetSelectedTime(time[0], time[1], time[2], time[3], time[4], time[5]);
        const bool playback = kind == WND_TYPE_PLAYBACK;
        QCOMPARE(QVector<int>(time, time + 6),
                 playback ? QVector<int>({13, 14, 15, 23, 59, 59}) : QVector<int>({9, 14, 15, 1, 2, 3}));
        deck.SetTimerPeriod(colors.data());
        deck.SetTimerPeriod(nullptr);
        deck.SetToolBtnEnable(false, false);
        deck.ChangePlaybackViewType(PLAYBACK_VIEW_FILE);
        deck.ChangePlaybackViewType(PlaybackViewType(7));
        deck.SetActiveWnd(0);
        deck.SetProgressValue(0, INT_MIN);
        deck.SetVoiceValue(0, INT_MAX);
    }
}

QTEST_MAIN(tst_deck_toolbars)

#include "tst_deck_toolbars.moc"
