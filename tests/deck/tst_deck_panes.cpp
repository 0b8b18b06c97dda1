#include "DeckProbe.h"
#include "support/DeckTestCase.h"
#include "support/Mouse.h"
#include "support/RunTests.h"
#include "support/SignalLog.h"

#include <QPushButton>

using namespace DeckProbe;

namespace {

/// Whether anything red, as the status text is, shows in the pane's picture.
bool ShowsText(CPaneDeck& deck, int index)
{
    const QImage image = static_cast<QWidget*>(deck.GetHWND(index))->grab().toImage();
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) == QColor(Qt::red))
                return true;
        }
    }
    return false;
}

} // namespace

class tst_deck_panes : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void signalsOfTheMetaObject();
    void slotsOfTheMetaObject();
    void unknownIndex_data();
    void unknownIndex();
    void handleIsTheLabel();
    void pressesActivate();
    void activatesUnknownPane();
    void resets();
    void checkStates_data();
    void checkStates();
    void toolBarButtons_data();
    void toolBarButtons();
    void toolBarSignalsCarryTheActivePane();
    void statusTexts();
    void speeds_data();
    void speeds();
    void alarmCloseStops();
    void titleBarButtons();
    void paneSlotsOfTheKinds();
};

void tst_deck_panes::signalsOfTheMetaObject()
{
    QStringList found;
    const QMetaObject& meta = CPaneDeck::staticMetaObject;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        if (meta.method(i).methodType() == QMetaMethod::Signal)
            found.append(meta.method(i).methodSignature());
    }
    const QStringList expected{"sig_wndNumberChanged(int)",
                               "sig_activeWnd(int)",
                               "sig_OnRightMouseClick(int)",
                               "sig_OnWndBtnClick(int,Btn_type_EX)",
                               "sig_btnStopClick(int,bool)",
                               "sig_btnCloseClick(int)",
                               "sig_OnDbWndClick(int)",
                               "sig_SliderMoved(int,int)",
                               "sig_SendPtzCommand(int,int,int)",
                               "sig_RectanglePoint(int,QPoint,QPoint)",
                               "sig_SelectRegion(int,QPoint,QPoint)",
                               "sig_DbClickWnd(int)",
                               "sig_VoiceChanged(int,int)",
                               "sig_DragEvent(QTreeWidgetItem*,int)",
                               "sig_TimerSliderdbClicked(int)",
                               "sig_TimerSliderReleased(int)",
                               "sig_ChangeViewType(int)",
                               "sig_ChangeWnd(int,int)",
                               "sig_btnDownload_click()",
                               "sig_sendMouseMsg(int,int,QPoint)",
                               "sig_Activechangebefor(int)",
                               "sig_OnStateChanged(Qt::WindowStates)",
                               "sig_SwitchVideo(int,int,int)",
                               "sig_ReplaySeek(int,int)"};
    QCOMPARE(found, expected);
}

void tst_deck_panes::slotsOfTheMetaObject()
{
    QStringList open;
    QStringList closed;
    const QMetaObject& meta = CPaneDeck::staticMetaObject;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        if (meta.method(i).methodType() != QMetaMethod::Slot)
            continue;
        (meta.method(i).access() == QMetaMethod::Public ? open : closed)
            .append(meta.method(i).methodSignature());
    }
    QCOMPARE(open, (QStringList{"slot_changePageNo(int)", "slot_changePageNo(int,int)"}));
    QCOMPARE(closed,
             (QStringList{"slot_setActiveWnd(int)", "slot_OnRightMouseClick(int)",
                          "slot_OnWndBtnClicked(int,Btn_type_EX)", "slot_btnStopClick(int,bool)",
                          "slot_btnCloseClick(int)", "slot_OnWndBtnClicked(Btn_type_EX)",
                          "slot_dbWndClick(int,int)", "slot_SliderMoved(int)", "slot_VoiceChanged(int)",
                          "slot_TimerSliderMoved()", "slot_TimerSliderDbClick()", "slot_MouseBtnRelease()",
                          "slot_wndfullScreen()"}));
}

void tst_deck_panes::unknownIndex_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("index");
    for (int kind :
         {int(WND_TYPE_MONITOR), int(WND_TYPE_ALARM), int(WND_TYPE_PLAYBACK), int(WND_TYPE_TOUR), 7}) {
        for (int index : {-1, 4, INT_MAX, INT_MIN})
            QTest::addRow("kind %d, index %d", kind, index) << kind << index;
    }
}

void tst_deck_panes::unknownIndex()
{
    QFETCH(int, kind);
    QFETCH(int, index);
    CPaneDeck deck(nullptr, _WND_TYPE(kind), 4);
    deck.SetShowWndNo(4);
    Mouse::PlaceCursor(&deck, QPoint(-50, -50));
    deck.resize(420, 470);
    deck.show();
    SignalLog log;
    log.WatchAll(&deck);
    int width = 7;
    int height = 8;
    deck.GetWindowRect(index, width, height);
    QCOMPARE(QSize(width, height), QSize(7, 8));
    QVERIFY(!deck.GetHWND(index));
    QVERIFY(!deck.mousMsg(index) && !deck.UpdateEnable(index) && !deck.btncheck(index, BTN_RECORD));
    QCOMPARE(deck.getScaseType(index), WND_SCASE_FILL);
    deck.setMousMsg(index, true);
    deck.setMousMsg(index, false);
    deck.ExchangeDisplay(index, 0);
    deck.showTitle(index);
    deck.hideTitle(index);
    deck.hideTit();
    deck.slot_wndBtnClick(BTN_SNAPSHOT);
    deck.slot_wndBtnClick(BTN_TITLE_STOP);
    deck.ResetWnd(index);
    deck.SetMessage(index, "text");
    deck.SetTitle(index, "title");
    deck.SetSpeedInfo(index, 1024);
    deck.SetFunctionParam(index, 1);
    deck.EnableRefresh(index, false);
    deck.SetBtnCheck(index, BTN_RECORD, true);
    deck.setBtnCheck(index, BTN_RECORD);
    deck.setScaseType(WND_SCASE_1_1, index);
    deck.OpenPlayBackSlider(index);
    deck.SetPlayBackSliderPos(index, 5, 5);
    deck.ClosePlayBackSlider(index);
    deck.ChangeFreeze(index, true);
    deck.setAlarm(index, "alarm");
    deck.setTour(index, 3);
    deck.SetWndBtnState(index, BTN_AUDIO, 1);
    deck.SetProgressValue(index, 1);
    deck.SetVoiceValue(index, 1);
    QMetaObject::invokeMethod(&deck, "slot_dbWndClick", Q_ARG(int, index), Q_ARG(int, 0));
    QCOMPARE(log.Take(), QStringList());
    QVERIFY(deck.findChild<QWidget*>("TitleWidget")->parentWidget()->isHidden());
    QCOMPARE(Mode(deck), int(WND_SHOW_SPLIT));
    deck.SetActiveWnd(index);
    deck.SetActiveWnd(-1);
    QCOMPARE(deck.GetSpeedInfo(), QString());
}

void tst_deck_panes::handleIsTheLabel()
{
    CPaneDeck deck(nullptr, WND_TYPE_ALARM, 3);
    auto* widget = static_cast<QWidget*>(deck.GetHWND(2));
    QCOMPARE(widget->metaObject()->className(), "QMyLabel");
    QVERIFY(Pane(deck, 2)->isAncestorOf(widget));
    SignalLog log;
    log.WatchAll(&deck);
    QMetaObject::invokeMethod(widget, "sig_sendClose");
    QCOMPARE(log.Take(), QStringList("sig_OnWndBtnClick(2,0)"));
}

void tst_deck_panes::pressesActivate()
{
    CPaneDeck deck(nullptr, WND_TYPE_MONITOR, 8);
    deck.SetShowWndNo(4);
    deck.OnNextPage();
    deck.resize(420, 470);
    deck.show();
    SignalLog log;
    log.WatchAll(&deck);
    Mouse::Click(static_cast<QWidget*>(deck.GetHWND(6)), QPoint(5, 5));
    QCOMPARE(log.Take(), (QStringList{"sig_Activechangebefor(0)", "sig_activeWnd(6)"}));
    Mouse::Click(static_cast<QWidget*>(deck.GetHWND(5)), QPoint(5, 5), Qt::RightButton);
    QCOMPARE(log.Take(),
             (QStringList{"sig_Activechangebefor(6)", "sig_activeWnd(5)", "sig_OnRightMouseClick(5)"}));
    Mouse::Click(static_cast<QWidget*>(deck.GetHWND(5)), QPoint(5, 5));
    QCOMPARE(log.Take(), QStringList("sig_Activechangebefor(5)"));
}

void tst_deck_panes::activatesUnknownPane()
{
    CPaneDeck deck(nullptr, WND_TYPE_PLAYBACK, 4);
    deck.SetShowWndNo(4);
    SignalLog log;
    log.WatchAll(&deck);
    deck.SetActiveWnd(99);
    QCOMPARE(log.Take(), (QStringList{"sig_Activechangebefor(0)", "sig_activeWnd(99)"}));
    QCOMPARE(deck.GetCurrentWnd(), 99);
    deck.ResetWnd(99);
    deck.SetShowWndNo(1);
    QCOMPARE(deck.activeWndNo(), 0);
}

void tst_deck_panes::resets()
{
    CPaneDeck deck(nullptr, WND_TYPE_PLAYBACK, 4);
    deck.SetShowWndNo(4);
    deck.resize(420, 470);
    deck.show();
    QCOMPARE(deck.GetSpeedInfo(), QString("1X"));
    deck.EnableRefresh(0, false);
    deck.SetTitle(0, "Gate");
    deck.SetMessage(0, "lost");
    deck.OpenPlayBackSlider(0);
    for (Btn_type_EX button : {BTN_RECORD, BTN_AUDIO, BTN_ZOOM})
        deck.SetBtnCheck(0, button, true);
    deck.showTitle(0);
    deck.ResetWnd(0);
    QVERIFY(deck.UpdateEnable(0));
    for (Btn_type_EX button : {BTN_RECORD, BTN_AUDIO, BTN_ZOOM})
        QVERIFY(!deck.btncheck(0, button));
    QCOMPARE(deck.GetSpeedInfo(), QString());
    QVERIFY(!ShowsText(deck, 0));
    QWidget* title = deck.findChild<QWidget*>("TitleWidget")->parentWidget();
    QVERIFY(title->isHidden());
    deck.showTitle(0);
    QCOMPARE(title->findChild<QLabel*>()->text(), QString());
    QVERIFY(!title->findChild<QPushButton*>("btninstant")->isChecked());
}

void tst_deck_panes::checkStates_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<bool>("kept");
    QTest::addColumn<QString>("shownBy");
    QTest::newRow("record") << int(BTN_RECORD) << true << "btnLocalRecord";
    QTest::newRow("audio") << int(BTN_AUDIO) << true << "btnAudio";
    QTest::newRow("zoom") << int(BTN_ZOOM) << true << "btnZoomIn";
    QTest::newRow("instant playback shows on the bar alone")
        << int(BTN_INSTANT_PLAYBACK) << false << "btninstant";
    QTest::newRow("play is nobody's") << int(BTN_PLAY) << false << QString();
    QTest::newRow("snapshot never shows as checked") << int(BTN_SNAPSHOT) << false << QString();
}

void tst_deck_panes::checkStates()
{
    QFETCH(int, button);
    QFETCH(bool, kept);
    QFETCH(QString, shownBy);
    CPaneDeck deck(nullptr, WND_TYPE_MONITOR, 4);
    deck.SetShowWndNo(4);
    deck.showTitle(1);
    const auto checked = [&deck] {
        QStringList names;
        for (const QPushButton* child :
             deck.findChild<QWidget*>("TitleWidget")->findChildren<QPushButton*>()) {
            if (child->isChecked())
                names.append(child->objectName());
        }
        return names.join(' ');
    };
    const auto type = Btn_type_EX(button);
    deck.SetBtnCheck(1, type, true);
    QCOMPARE(checked(), shownBy);
    QCOMPARE(deck.btncheck(1, type), kept);
    deck.setBtnCheck(1, type);
    QCOMPARE(deck.btncheck(1, type), false);
    QCOMPARE(checked(), kept ? QString() : shownBy);
    deck.SetWndBtnState(1, type, -1);
    QCOMPARE(deck.btncheck(1, type), button == BTN_RECORD || button == BTN_AUDIO);
    deck.SetBtnCheck(2, type, true);
    deck.showTitle(2);
    QCOMPARE(checked(), kept ? shownBy : QString());
}

void tst_deck_panes::toolBarButtons_data()
{
    QTest::addColumn<int>("active");
    QTest::addColumn<int>("button");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("pane of the page") << 5 << int(BTN_PLAY) << QStringList("sig_OnWndBtnClick(5,14)");
    QTest::newRow("pane of an earlier page")
        << 1 << int(BTN_SPLIT_4) << QStringList("sig_OnWndBtnClick(1,20)");
    QTest::newRow("pane of a later page") << 8 << int(BTN_PLAY) << QStringList();
    QTest::newRow("save view for a pane of a later page")
        << 8 << int(BTN_SAVE_VIEW) << QStringList("sig_OnWndBtnClick(8,10)");
    QTest::newRow("save view without a pane") << -1 << int(BTN_SAVE_VIEW) << QStringList();
    QTest::newRow("no pane") << -1 << int(BTN_PLAY) << QStringList();
    QTest::newRow("download needs no pane")
        << -1 << int(BTN_DOWNLOAD) << QStringList("sig_btnDownload_click()");
}

void tst_deck_panes::toolBarButtons()
{
    QFETCH(int, active);
    QFETCH(int, button);
    QFETCH(QStringList, expected);
    CPaneDeck deck(nullptr, WND_TYPE_PLAYBACK, 12);
    deck.SetShowWndNo(4);
    deck.OnNextPage();
    deck.SetActiveWnd(active);
    SignalLog log;
    log.WatchAll(&deck);
    QMetaObject::invokeMethod(&deck, "slot_OnWndBtnClicked", Q_ARG(Btn_type_EX, Btn_type_EX(button)));
    QCOMPARE(log.Take(), expected);
}

void tst_deck_panes::toolBarSignalsCarryTheActivePane()
{
    CPaneDeck deck(nullptr, WND_TYPE_PLAYBACK, 4);
    SignalLog log;
    log.WatchAll(&deck);
    QMetaObject::invokeMethod(&deck, "slot_SliderMoved", Q_ARG(int, 500));
    QMetaObject::invokeMethod(&deck, "slot_VoiceChanged", Q_ARG(int, 3));
    deck.SetShowWndNo(4);
    deck.SetActiveWnd(3);
    log.Take();
    QMetaObject::invokeMethod(&deck, "slot_TimerSliderMoved");
    QMetaObject::invokeMethod(&deck, "slot_TimerSliderDbClick");
    QMetaObject::invokeMethod(&deck, "slot_MouseBtnRelease");
    QCOMPARE(log.Take(), (QStringList{"sig_TimerSliderReleased(3)", "sig_TimerSliderdbClicked(3)"}));
}

void tst_deck_panes::statusTexts()
{
    CPaneDeck deck(nullptr, WND_TYPE_ALARM, 8);
    deck.resize(400, 300);
    deck.SetShowWndNo(4);
    deck.show();
    deck.SetMessage(0, "message");
    deck.setAlarm(1, "alarm");
    deck.setTour(2, 12);
    deck.SetTitle(3, "title");
    deck.setAlarm(7, "on the next page");
    for (int i = 0; i < 4; ++i)
        QCOMPARE(ShowsText(deck, i), i < 3);
    deck.clearText();
    deck.OnNextPage();
    for (int i = 0; i < 8; ++i)
        QVERIFY(!ShowsText(deck, i));
}

void tst_deck_panes::speeds_data()
{
    QTest::addColumn<int>("speed");
    QTest::addColumn<QString>("text");
    QTest::newRow("0") << 0 << "1X";
    QTest::newRow("128") << 128 << "1/8X";
    QTest::newRow("512") << 512 << "1/2X";
    QTest::newRow("1024") << 1024 << "1X";
    QTest::newRow("8192") << 8192 << "8X";
    QTest::newRow("between") << 300 << "";
    QTest::newRow("negative") << -1024 << "";
}

void tst_deck_panes::speeds()
{
    QFETCH(int, speed);
    QFETCH(QString, text);
    CPaneDeck playback(nullptr, WND_TYPE_PLAYBACK, 1);
    playback.SetActiveWnd(0);
    playback.SetSpeedInfo(0, 2048);
    playback.SetSpeedInfo(0, speed);
    QCOMPARE(playback.GetSpeedInfo(), text);
    CPaneDeck live(nullptr, WND_TYPE_MONITOR, 1);
    live.SetActiveWnd(0);
    live.SetSpeedInfo(0, speed);
    QCOMPARE(live.GetSpeedInfo(), QString());
}

void tst_deck_panes::alarmCloseStops()
{
    CPaneDeck deck(nullptr, WND_TYPE_ALARM, 4);
    deck.SetShowWndNo(4);
    deck.resize(420, 470);
    deck.show();
    Mouse::PlaceCursor(Pane(deck, 2), QPoint(9, 9));
    deck.showTitle(2);
    SignalLog log;
    log.WatchAll(&deck);
    auto* title = deck.findChild<QWidget*>("TitleWidget");
    for (const QPushButton* button : title->findChildren<QPushButton*>())
        QCOMPARE(button->isVisible(), button->objectName() == "btnclose");
    Mouse::Click(title->findChild<QPushButton*>("btnclose"), QPoint(3, 3));
    QCOMPARE(log.Take(), (QStringList{"sig_OnWndBtnClick(2,9)", "sig_Activechangebefor(0)",
                                      "sig_activeWnd(2)", "sig_OnWndBtnClick(2,0)"}));
}

void tst_deck_panes::titleBarButtons()
{
    CPaneDeck deck(nullptr, WND_TYPE_MONITOR, 4);
    deck.SetShowWndNo(4);
    deck.resize(420, 470);
    deck.show();
    deck.showTitle(3);
    SignalLog log;
    log.WatchAll(&deck);
    auto* title = deck.findChild<QWidget*>("TitleWidget");
    for (const char* name :
         {"btnLocalRecord", "btnsnapshot", "btnAudio", "btninstant", "btnZoomIn", "btnclose"})
        Mouse::Click(title->findChild<QPushButton*>(name), QPoint(3, 3));
    QCOMPARE(log.Take(),
             (QStringList{"sig_OnWndBtnClick(3,1)", "sig_OnWndBtnClick(3,3)", "sig_OnWndBtnClick(3,4)",
                          "sig_OnWndBtnClick(3,5)", "sig_OnWndBtnClick(3,6)", "sig_OnWndBtnClick(3,9)"}));
    QVERIFY(deck.btncheck(3, BTN_RECORD) && deck.btncheck(3, BTN_AUDIO) && deck.btncheck(3, BTN_ZOOM));
    deck.slot_wndBtnClick(BTN_REMOTE_CONTROL);
    deck.slot_wndBtnClick(BTN_TITLE_STOP);
    QCOMPARE(log.Take(), QStringList());
    QCOMPARE(CPaneDeck(nullptr, WND_TYPE_PLAYBACK, 1).findChild<QPushButton*>("btninstant")->isHidden(),
             true);
}

void tst_deck_panes::paneSlotsOfTheKinds()
{
    CPaneDeck playback(nullptr, WND_TYPE_PLAYBACK, 2);
    SignalLog log;
    log.WatchAll(&playback);
    QVERIFY(QMetaObject::invokeMethod(Pane(playback, 1), "slot_configClicked"));
    QCOMPARE(log.Take(),
             (QStringList{"sig_Activechangebefor(-1)", "sig_activeWnd(1)", "sig_OnWndBtnClick(1,17)"}));
    const int kinds[] = {WND_TYPE_MONITOR, WND_TYPE_ALARM, WND_TYPE_PLAYBACK, WND_TYPE_TOUR};
    const char* const classes[] = {"CMonitorWidget", "CAlarmWidget", "CPlaybackWidget", "CTourWidget"};
    for (int kind : kinds) {
        CPaneDeck deck(nullptr, _WND_TYPE(kind), 2);
        QCOMPARE(Pane(deck, 1)->metaObject()->className(), classes[kind]);
    }
}

int main(int argc, char** argv)
{
    return RunTests<tst_deck_panes>(argc, argv);
}

#include "tst_deck_panes.moc"
