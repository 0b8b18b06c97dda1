#include "DeckProbe.h"
#include "support/Mouse.h"
#include "support/Pixels.h"
#include "support/SignalLog.h"

#include <QLabel>
#include <QPushButton>

using namespace DeckProbe;

namespace {

/// Whether anything reddish, as the status text is, shows in the pane's picture.
bool ShowsText(CPaneDeck& deck, int index)
{
    const QImage image = Label(deck, index)->grab().toImage();
    const auto isRed = [&](int x, int y) { return qRed(image.pixel(x, y)) > qGreen(image.pixel(x, y)) + 60; };
    return CountPixels(image, isRed) > 0;
}

} // namespace

class tst_deck_panes : public DeckTest
{
    Q_OBJECT

private Q_SLOTS:
    void unknownIndex();
    void pressesActivate();
    void textsAndReset();
    void checkStates();
    void toolBarButtons();
    void speeds();
    void alarmCloseStops();

private:
    void DoWithUnknownIndex(int kind, int index);
};

void tst_deck_panes::unknownIndex()
{
    for (int kind : {WND_TYPE_MONITOR, WND_TYPE_ALARM, WND_TYPE_PLAYBACK, WND_TYPE_TOUR, _WND_TYPE(7)}) {
        // A deck of no known kind has no panes at all.
        for (int index : {-1, 4, INT_MAX, INT_MIN, kind == 7 ? 0 : -2})
            DoWithUnknownIndex(kind, index);
    }
}

void tst_deck_panes::DoWithUnknownIndex(int kind, int index)
{
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
    QCOMPARE(deck.GetCurrentWnd(), index);
    QCOMPARE(deck.GetSpeedInfo(), QString());
    deck.ResetWnd(index);
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
    auto* label = Label(deck, 6);
    QList<int> active;
    log.onSignal = [&](const QString&) { active.append(deck.GetCurrentWnd()); };
    Mouse::Click(label, QPoint(5, 5));
    QCOMPARE(active, (QList<int>{0, 6}));
    QCOMPARE(log.Take(), (QStringList{"sig_Activechangebefor(0)", "sig_activeWnd(6)"}));
    const auto rim = [&deck](int index) { return Pane(deck, index)->grab().toImage().pixelColor(0, 9); };
    deck.SetActiveWnd(5);
    QVERIFY(rim(5) == QColor(Qt::blue) && rim(6) != QColor(Qt::blue));
    deck.SetActiveWnd(6);
    log.Take();
    Mouse::Click(label, QPoint(5, 5), Qt::RightButton);
    QCOMPARE(log.Take(), (QStringList{"sig_Activechangebefor(6)", "sig_OnRightMouseClick(6)"}));
    QMetaObject::invokeMethod(label, "sig_sendClose");
    QCOMPARE(log.Take(), QStringList("sig_OnWndBtnClick(6,0)"));
}

void tst_deck_panes::textsAndReset()
{
    CPaneDeck deck(nullptr, WND_TYPE_MONITOR, 8);
    deck.resize(400, 300);
    deck.SetShowWndNo(4);
    deck.show();
    deck.SetMessage(0, "message");
    deck.setAlarm(1, "alarm");
    deck.setTour(2, 12);
    deck.SetTitle(3, "title");
    deck.setAlarm(7, "on the next page");
    for (int i = 0; i < 8; ++i)
        QCOMPARE(ShowsText(deck, i), i < 3 || i == 7);
    deck.EnableRefresh(0, false);
    deck.OpenPlayBackSlider(0);
    for (Btn_type_EX button : {BTN_RECORD, BTN_AUDIO, BTN_ZOOM})
        deck.SetBtnCheck(0, button, true);
    deck.ResetWnd(0);
    QVERIFY(deck.UpdateEnable(0) && !ShowsText(deck, 0));
    for (Btn_type_EX button : {BTN_RECORD, BTN_AUDIO, BTN_ZOOM})
        QVERIFY(!deck.btncheck(0, button));
    deck.ResetWnd(3);
    deck.showTitle(3);
    QCOMPARE(deck.findChild<QWidget*>("TitleWidget")->findChild<QLabel*>()->text(), QString());
    deck.setAlarm(0, "alarm");
    deck.clearText();
    for (int i = 0; i < 8; ++i)
        QVERIFY(!ShowsText(deck, i));
}

void tst_deck_panes::speeds()
{
    CPaneDeck playback(nullptr, WND_TYPE_PLAYBACK, 1);
    CPaneDeck live(nullptr, WND_TYPE_MONITOR, 1);
    playback.SetActiveWnd(0);
    live.SetActiveWnd(0);
    QCOMPARE(playback.GetSpeedInfo(), QString("1X"));
    const QMap<int, QString> texts{{0, "1X"},    {128, "1/8X"}, {256, "1/4X"}, {512, "1/2X"}, {1024, "1X"},
                                   {2048, "2X"}, {4096, "4X"},  {8192, "8X"},  {300, ""},     {-1024, ""}};
    for (auto it = texts.begin(); it != texts.end(); ++it) {
        playback.SetSpeedInfo(0, it.key());
        live.SetSpeedInfo(0, it.key());
        QCOMPARE(playback.GetSpeedInfo() + live.GetSpeedInfo(), it.value());
    }
    playback.SetSpeedInfo(0, 512);
    playback.ResetWnd(0);
    QCOMPARE(playback.GetSpeedInfo(), QString());
}

void tst_deck_panes::checkStates()
{
    // Instant playback shows on the bar alone, play is nobody's, and the snapshot never shows as checked.
    const std::tuple<Btn_type_EX, bool, QString> rows[] = {{BTN_RECORD, true, "btnLocalRecord"},
                                                           {BTN_AUDIO, true, "btnAudio"},
                                                           {BTN_ZOOM, true, "btnZoomIn"},
                                                           {BTN_INSTANT_PLAYBACK, false, "btninstant"},
                                                           {BTN_PLAY, false, ""},
                                                           {BTN_SNAPSHOT, false, ""}};
    for (const auto& [type, kept, shownBy] : rows) {
        CPaneDeck deck(nullptr, WND_TYPE_MONITOR, 4);
        deck.SetShowWndNo(4);
        deck.showTitle(1);
        const auto checked = [&deck] {
            QString names;
            for (const auto* child : deck.findChild<QWidget*>("TitleWidget")->findChildren<QPushButton*>())
                names += child->isChecked() ? child->objectName() : QString();
            return names;
        };
        deck.SetBtnCheck(1, type, true);
        QCOMPARE(checked(), shownBy);
        QCOMPARE(deck.btncheck(1, type), kept);
        deck.setBtnCheck(1, type);
        QCOMPARE(deck.btncheck(1, type), false);
        QCOMPARE(checked(), kept ? QString() : shownBy);
        deck.SetWndBtnState(1, type, -1);
        QCOMPARE(deck.btncheck(1, type), type == BTN_RECORD || type == BTN_AUDIO);
        QCOMPARE(checked(), type == BTN_ZOOM ? QString() : shownBy);
        deck.SetBtnCheck(1, type, false);
        deck.SetBtnCheck(2, type, true);
        QCOMPARE(checked(), QString());
        deck.showTitle(2);
        QCOMPARE(checked(), kept ? shownBy : QString());
    }
}

void tst_deck_panes::toolBarButtons()
{
    // The deck shows panes 4 to 7; what is saved or downloaded needs no pane of an earlier page or none at
    // all.
    const std::tuple<int, Btn_type_EX, const char*> rows[] = {{5, BTN_PLAY, "sig_OnWndBtnClick(5,14)"},
                                                              {1, BTN_SPLIT_4, "sig_OnWndBtnClick(1,20)"},
                                                              {8, BTN_SAVE_VIEW, "sig_OnWndBtnClick(8,10)"},
                                                              {-1, BTN_DOWNLOAD, "sig_btnDownload_click()"},
                                                              {5, BTN_DOWNLOAD, "sig_btnDownload_click()"},
                                                              {8, BTN_PLAY, ""},
                                                              {-1, BTN_SAVE_VIEW, ""},
                                                              {-1, BTN_PLAY, ""}};
    CPaneDeck deck(nullptr, WND_TYPE_PLAYBACK, 12);
    deck.SetShowWndNo(4);
    deck.OnNextPage();
    SignalLog log;
    log.WatchAll(&deck);
    for (const auto& [active, button, expected] : rows) {
        deck.SetActiveWnd(active);
        log.Take();
        QMetaObject::invokeMethod(&deck, "slot_OnWndBtnClicked", Q_ARG(Btn_type_EX, button));
        QCOMPARE(log.Take().join(' '), QString(expected));
    }
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
    CPaneDeck playback(nullptr, WND_TYPE_PLAYBACK, 1);
    for (const auto* button : playback.findChild<QWidget*>("TitleWidget")->findChildren<QPushButton*>()) {
        const QStringList shown = {"btnsnapshot", "btnZoomIn", "btnclose"};
        QCOMPARE(button->isHidden(), !shown.contains(button->objectName()));
    }
    Mouse::Click(title->findChild<QPushButton*>("btnclose"), QPoint(3, 3));
    QCOMPARE(log.Take(), (QStringList{"sig_OnWndBtnClick(2,9)", "sig_Activechangebefor(0)",
                                      "sig_activeWnd(2)", "sig_OnWndBtnClick(2,0)"}));
}

QTEST_MAIN(tst_deck_panes)

#include "tst_deck_panes.moc"
