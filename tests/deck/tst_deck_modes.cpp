#include "DeckProbe.h"
#include "support/Mouse.h"
#include "support/SignalLog.h"

#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

using namespace DeckProbe;

namespace {

/// A shown window with a deck in its layout.
class Host : public QWidget
{
public:
    explicit Host(_WND_TYPE kind = WND_TYPE_MONITOR, int panes = 8, int onPage = 4)
        : deck(new CPaneDeck(this, kind, panes))
    {
        auto* layout = new QVBoxLayout(this);
        layout->addWidget(deck);
        resize(420, 470);
        deck->SetShowWndNo(onPage);
        show();
        layout->activate();
        log.WatchAll(deck);
    }

    QWidget* Label(int index) const { return DeckProbe::Label(*deck, index); }
    QWidget* Title() const { return deck->findChild<QWidget*>("TitleWidget")->parentWidget(); }
    QString TitleText() const { return Title()->findChild<QLabel*>()->text(); }

    /// The deck's show mode and whether it is a window of its own.
    QString State() const { return QString(deck->isWindow() ? "window %1" : "inside %1").arg(Mode(*deck)); }

    /// Moves the cursor over the pane and lets it know, as the window system would.
    void MoveOver(int index)
    {
        Mouse::PlaceCursor(Label(index), Label(index)->rect().center());
        Mouse::Enter(Pane(*deck, index));
    }

    CPaneDeck* deck;
    SignalLog log;
};

} // namespace

class tst_deck_modes : public DeckTest
{
    Q_OBJECT

private Q_SLOTS:
    void doubleClickEnlarges();
    void doubleClickWithoutEnlarging();
    void mouseMessageMode();
    void mouseMessagesElsewhere();
    void fullScreen();
    void exchangesByDrag();
    void exchangesDisplay();
    void titleFollowsTheMouse();
    void titleIsForPanesInUse();
    void titleFollowsAResize();
};

void tst_deck_modes::doubleClickEnlarges()
{
    Host host(WND_TYPE_PLAYBACK);
    Mouse::DoubleClick(host.Label(2), QPoint(9, 9));
    QCOMPARE(host.log.Take().filter("DbClick"), QStringList("sig_DbClickWnd(2)"));
    QCOMPARE(Shown(*host.deck) + " " + host.State(), QString("2 inside 2"));
    const QWidget* display = host.deck->findChild<QWidget*>("m_disPlayRect");
    QCOMPARE(Pane(*host.deck, 2)->geometry(), display->geometry());
    host.resize(500, 500);
    QTRY_COMPARE(Pane(*host.deck, 2)->pos(), QPoint(1, 1));
    Mouse::DoubleClick(host.Label(2), QPoint(9, 9));
    QCOMPARE(Shown(*host.deck), Run(0, 3));
    QVERIFY(Pane(*host.deck, 2)->width() < host.deck->width() / 2);
    Mouse::DoubleClick(host.Label(1), QPoint(9, 9));
    host.deck->OnNextPage();
    QCOMPARE(Shown(*host.deck) + " " + host.State(), Run(4, 7) + " inside 0");
}

void tst_deck_modes::doubleClickWithoutEnlarging()
{
    Host rectangle;
    rectangle.deck->SetFunctionParam(1, 2);
    Host single(WND_TYPE_MONITOR, 8, 1);
    Host tour(WND_TYPE_TOUR);
    Host messages;
    messages.deck->setMousMsg(0, true);
    for (Host* host : {&rectangle, &single, &tour, &messages}) {
        const QString before = Shown(*host->deck) + host->State();
        const int pane = host == &rectangle ? 1 : 0;
        host->log.Take();
        Mouse::DoubleClick(host->Label(pane), QPoint(9, 9));
        QCOMPARE(Shown(*host->deck) + host->State(), before);
        const bool reports = host == &rectangle || host == &single;
        QCOMPARE(host->log.Take().contains(QString("sig_DbClickWnd(%1)").arg(pane)), reports);
    }
}

void tst_deck_modes::mouseMessageMode()
{
    const std::pair<void (*)(Host&), const char*> waysBack[] = {
        {[](Host& host) { host.deck->setMousMsg(0, false); }, ""},
        {[](Host& host) { QTest::keyClick(host.deck, Qt::Key_Escape); }, "sig_OnStateChanged(0)"},
        {[](Host& host) { host.Title()->findChild<QPushButton*>("btnRemoteControl")->click(); }, ""},
        {[](Host& host) { host.Title()->findChild<QPushButton*>("btnclose")->click(); },
         "sig_OnWndBtnClick(0,9)"}};
    for (const auto& [goBack, signalsBack] : waysBack) {
        Host host;
        QSignalSpy full(host.deck, &CPaneDeck::sig_FullScreenChanged);
        host.deck->setMousMsg(0, true);
        QCOMPARE(host.log.Take(), QStringList("sig_OnStateChanged(4)"));
        QVERIFY(host.deck->mousMsg(0));
        QCOMPARE(host.State(), QString("window 2"));
        QCOMPARE(Pane(*host.deck, 0)->geometry(), host.deck->rect());
        host.deck->ChangeFull(true); // it is already, so the new signal stays silent
        QCOMPARE(host.log.Take(), QStringList("sig_OnStateChanged(4)"));
        host.deck->showTitle(0);
        auto* button = host.deck->findChild<QPushButton*>("btnRemoteControl");
        QVERIFY(button->isVisible());
        goBack(host);
        QCOMPARE(host.log.Take().join(' '), QString(signalsBack));
        QTRY_COMPARE(full.count(), 2);
        QVERIFY(full[0] == QVariantList({true}) && full[1] == QVariantList({false}) && !host.deck->IsFull());
        QVERIFY(!host.deck->mousMsg(0) && button->isHidden() && host.deck->isVisible());
        QCOMPARE(Shown(*host.deck) + " " + host.State(), Run(0, 3) + " inside 0");
    }
}

void tst_deck_modes::mouseMessagesElsewhere()
{
    Host host;
    host.deck->setMousMsg(6, true);
    QVERIFY2(Shown(*host.deck) == "0 6", "the resize to the screen shows the active pane of the page too");
    host.deck->setMousMsg(6, false);
    QVERIFY(Shown(*host.deck).startsWith(Run(0, 3)));

    Host single(WND_TYPE_MONITOR, 8, 1);
    single.deck->setMousMsg(0, false);
    QCOMPARE(single.State(), QString("inside 0"));
    QCOMPARE(Pane(*single.deck, 0)->x(), 1);
}

void tst_deck_modes::fullScreen()
{
    Host host;
    const QRect before = host.deck->geometry();
    host.deck->ChangeFull(true);
    QCOMPARE(host.deck->geometry(), QGuiApplication::primaryScreen()->geometry());
    QVERIFY(host.deck->windowFlags() & Qt::FramelessWindowHint);
    QCOMPARE(host.deck->findChild<QWidget*>("m_disPlayRect")->geometry(), host.deck->rect());
    QTest::keyClick(host.deck, Qt::Key_A);
    QVERIFY(host.deck->isWindow());
    for (const char* when : {"from full screen", "from the layout"}) {
        QTest::keyClick(host.deck, Qt::Key_Escape);
        QVERIFY2(host.log.Take().last() == "sig_OnStateChanged(0)", when);
        QCOMPARE(host.deck->windowType(), Qt::SubWindow);
        QTRY_COMPARE(host.deck->geometry(), before);
        QVERIFY(host.deck->isVisible());
        QCOMPARE(Shown(*host.deck), Run(0, 3));
    }
}

void tst_deck_modes::exchangesByDrag()
{
    // With either button; not on the same pane, outside all panes, or from a pane with a function.
    const std::tuple<int, int, Qt::MouseButton, int, const char*> rows[] = {
        {4, 7, Qt::LeftButton, 0, "sig_ChangeWnd(4,7)"},
        {4, 7, Qt::RightButton, 0, "sig_ChangeWnd(4,7)"},
        {5, 5, Qt::LeftButton, 0, ""},
        {4, -1, Qt::LeftButton, 0, ""},
        {4, 7, Qt::LeftButton, 1, ""},
        {4, 7, Qt::LeftButton, -1, ""}};
    for (const auto& [source, target, button, function, expected] : rows) {
        Host host;
        host.deck->OnNextPage();
        host.deck->SetFunctionParam(source, function);
        const QPoint from(20, 20);
        QWidget* label = host.Label(source);
        const QPoint to = target < 0 ? QPoint(-500, -500) : host.Label(target)->mapTo(host.deck, from);
        const QPoint end = label->mapFrom(host.deck, to);
        Mouse::PlaceCursor(label, from);
        Mouse::Press(label, from, button);
        Mouse::PlaceCursor(label, end);
        Mouse::Move(label, end, button);
        Mouse::Release(label, end, button);
        QCOMPARE(host.log.Take().filter("sig_ChangeWnd").join(' '), QString(expected));
        Mouse::Release(label, end, button);
        QCOMPARE(host.log.Take().filter("sig_ChangeWnd"), QStringList());
        // An enlarged pane lies over the others.
        Mouse::DoubleClick(label, from);
        Mouse::PlaceCursor(label, from);
        Mouse::Press(label, from, button);
        Mouse::PlaceCursor(host.deck, to);
        Mouse::Release(label, end, button);
        QCOMPARE(host.log.Take().filter("sig_ChangeWnd"), QStringList());
    }
}

void tst_deck_modes::exchangesDisplay()
{
    Host host;
    host.deck->setScaseType(WND_SCASE_4_3, 0);
    host.deck->setScaseType(WND_SCASE_9_64, 7);
    Pane(*host.deck, 0)->SetVideoSize(704, 576);
    host.deck->ExchangeDisplay(0, 8);
    QCOMPARE(host.deck->getScaseType(0), WND_SCASE_4_3);
    host.deck->ExchangeDisplay(0, 7);
    QCOMPARE(host.deck->getScaseType(0), WND_SCASE_9_64);
    QCOMPARE(host.deck->getScaseType(7), WND_SCASE_4_3);
    QSize size;
    Pane(*host.deck, 7)->GetVideoSize(size.rwidth(), size.rheight());
    QCOMPARE(size, QSize(704, 576));
}

void tst_deck_modes::titleFollowsTheMouse()
{
    Host host;
    host.deck->EnableRefresh(1, false);
    host.deck->EnableRefresh(2, false);
    host.deck->SetTitle(1, "Gate");
    host.MoveOver(1);
    const QRect pane = Pane(*host.deck, 1)->geometry();
    QVERIFY(host.Title()->isVisible());
    QCOMPARE(host.Title()->geometry(), QRect(pane.x() + 1, pane.y() + 1, pane.width() - 2, 20));
    host.deck->SetTitle(1, "Yard");
    host.deck->SetTitle(2, "Roof");
    QCOMPARE(host.TitleText(), QString("Yard"));
    Mouse::Leave(Pane(*host.deck, 1));
    Mouse::Leave(host.Title());
    QVERIFY2(host.Title()->isVisible(), "the cursor is still over the pane");
    host.MoveOver(2);
    QCOMPARE(host.TitleText(), QString("Roof"));
    host.deck->hideTitle(1);
    QVERIFY(host.Title()->isVisible());
    Mouse::PlaceCursor(&host, QPoint(-50, -50));
    Mouse::Leave(host.Title());
    QVERIFY(host.Title()->isHidden());
    QCOMPARE(host.log.Take(), QStringList());
}

void tst_deck_modes::titleIsForPanesInUse()
{
    const std::tuple<_WND_TYPE, bool, bool> rows[] = {{WND_TYPE_MONITOR, false, false},
                                                      {WND_TYPE_MONITOR, true, true},
                                                      {WND_TYPE_ALARM, false, true},
                                                      {WND_TYPE_TOUR, true, false}};
    for (const auto& [kind, inUse, expected] : rows) {
        Host host(kind);
        host.deck->EnableRefresh(0, !inUse);
        host.MoveOver(0);
        QCOMPARE(host.Title()->isVisible(), expected);
        host.deck->ResetWnd(0);
        QVERIFY(host.Title()->isHidden());
    }
}

void tst_deck_modes::titleFollowsAResize()
{
    Host host(WND_TYPE_ALARM);
    host.deck->SetTitle(0, "Gate");
    host.MoveOver(0);
    host.resize(600, 600);
    QTRY_COMPARE(host.Title()->width(), Pane(*host.deck, 0)->width() - 2);
    host.deck->ChangeFull(false);
    Mouse::Enter(Pane(*host.deck, 0));
    QVERIFY2(host.Title()->isHidden(), "the bar still serves the pane and comes back with its next resize");
    host.resize(500, 500);
    QTRY_VERIFY(host.Title()->isVisible());
    Mouse::PlaceCursor(host.deck, QPoint(9, 9));
    host.grab();
    QVERIFY2(host.TitleText() == "Gate", "a hidden pane resized by the grab has taken the bar");
}

QTEST_MAIN(tst_deck_modes)

#include "tst_deck_modes.moc"
