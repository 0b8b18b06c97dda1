#include "DeckProbe.h"
#include "deck/PageGeometry.h"
#include "layouts/CSplitCatalog.h"
#include "support/DeckTestCase.h"
#include "support/Installation.h"
#include "support/RunTests.h"
#include "support/SignalLog.h"

using namespace DeckProbe;

Q_DECLARE_METATYPE(_WND_TYPE)

class tst_deck_layouts : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void selectsByCount_data();
    void selectsByCount();
    void refuses_data();
    void refuses();
    void activePaneStaysOnTheFirstPage();
    void selectsByReference();
    void steps();
    void stepsByButton();
    void placesPanes_data();
    void placesPanes();
    void displayRectangleFollowsTheKind_data();
    void displayRectangleFollowsTheKind();
    void resizeBeforeTheFirstLayoutShowsNothing();
    void survivesAnEditedLayout();
    void placeRectangleOfHostileLayout();
    void styles();
};

void tst_deck_layouts::selectsByCount_data()
{
    QTest::addColumn<int>("request");
    QTest::addColumn<int>("panes");
    for (int count : {1, 4, 6, 8, 9, 16, 25, 36, 49, 64})
        QTest::addRow("%d", count) << count << count;
    QTest::newRow("32 stands for 36") << 32 << 36;
}

void tst_deck_layouts::selectsByCount()
{
    QFETCH(int, request);
    QFETCH(int, panes);
    CPaneDeck deck;
    SignalLog log;
    log.WatchAll(&deck);
    deck.SetShowWndNo(request);
    QCOMPARE(log.Take(), (QStringList{"sig_Activechangebefor(-1)", "sig_activeWnd(0)",
                                      QString("sig_wndNumberChanged(%1)").arg(panes)}));
    QCOMPARE(Shown(deck), Run(0, panes - 1));
    QCOMPARE(Mode(deck), int(panes == 1 ? WND_SHOW_SINGLE : WND_SHOW_SPLIT));
    deck.SetShowWndNo(request);
    QCOMPARE(log.Take(), QStringList(QString("sig_wndNumberChanged(%1)").arg(panes)));
}

void tst_deck_layouts::refuses_data()
{
    QTest::addColumn<int>("panes");
    QTest::addColumn<int>("request");
    QTest::newRow("more than 64") << 64 << 65;
    QTest::newRow("more than the deck has") << 8 << 9;
    QTest::newRow("32 on a deck that can't show 36") << 35 << 32;
    QTest::newRow("no panes") << 64 << 0;
    QTest::newRow("less than none") << 64 << -4;
    QTest::newRow("no such layout") << 64 << 5;
    QTest::newRow("a deck without panes") << 0 << 1;
}

void tst_deck_layouts::refuses()
{
    QFETCH(int, panes);
    QFETCH(int, request);
    CPaneDeck deck(nullptr, WND_TYPE_ALARM, panes);
    deck.SetShowWndNo(4);
    deck.OnNextPage();
    const QString shown = Shown(deck);
    SignalLog log;
    log.WatchAll(&deck);
    deck.SetShowWndNo(request);
    QCOMPARE(log.Take(), QStringList());
    QCOMPARE(Shown(deck), shown);
}

void tst_deck_layouts::activePaneStaysOnTheFirstPage()
{
    CPaneDeck deck;
    deck.SetShowWndNo(16);
    deck.SetActiveWnd(5);
    SignalLog log;
    log.WatchAll(&deck);
    deck.SetShowWndNo(9);
    QCOMPARE(log.Take(), QStringList("sig_wndNumberChanged(9)"));
    deck.SetShowWndNo(4);
    QCOMPARE(log.Take(),
             (QStringList{"sig_Activechangebefor(5)", "sig_activeWnd(0)", "sig_wndNumberChanged(4)"}));
    deck.SetActiveWnd(33);
    log.Take();
    deck.SetShowWndNo(32);
    QCOMPARE(deck.GetCurrentWnd(), 0);
    deck.SetActiveWnd(0);
    QCOMPARE(log.Take().last(), QString("sig_Activechangebefor(0)"));
}

void tst_deck_layouts::selectsByReference()
{
    CPaneDeck deck(nullptr, WND_TYPE_MONITOR, 12);
    deck.SetShowWndNo(4);
    CSplitCatalog* catalog = CSplitCatalog::Instance();
    catalog->customLayouts[3] =
        SplitLayout{1, 5, 5, {{0, 0, 1, 1}, {0, 1, 1, 2}, {0, 2, 1, 3}, {0, 3, 1, 4}, {0, 4, 1, 5}}};
    SignalLog log;
    log.WatchAll(&deck);
    deck.slot_changePageNo(0, 1);
    QCOMPARE(log.Take(), (QStringList{"sig_wndNumberChanged(4)", "sig_wndNumberChanged(4)"}));
    deck.OnNextPage();
    deck.SetActiveWnd(5);
    log.Take();
    deck.slot_changePageNo(1, 3);
    QCOMPARE(log.Take(),
             (QStringList{"sig_Activechangebefor(5)", "sig_activeWnd(0)", "sig_wndNumberChanged(5)"}));
    QCOMPARE(Shown(deck), Run(0, 4));
    deck.OnNextPage();
    QCOMPARE(Shown(deck), Run(5, 9));
    deck.OnNextPage();
    QCOMPARE(Shown(deck), Run(5, 9));
    log.Take();
    deck.slot_changePageNo(1, -1);
    deck.slot_changePageNo(0, 10);
    deck.slot_changePageNo(1, 5);
    catalog->customLayouts[4].count = 0;
    deck.slot_changePageNo(1, 4);
    QCOMPARE(log.Take(), QStringList());
    QCOMPARE(Shown(deck), Run(5, 9));
    deck.slot_changePageNo(0, 5);
    QCOMPARE(log.Take(), QStringList("sig_wndNumberChanged(16)"));
    QCOMPARE(Shown(deck), Run(5, 9));
}

void tst_deck_layouts::steps()
{
    CPaneDeck deck;
    SignalLog log;
    log.Watch(&deck, SIGNAL(sig_SwitchVideo(int,int,int)));
    deck.OnNextPage();
    deck.OnPreviePage();
    deck.SetShowWndNo(6);
    deck.SetActiveWnd(2);
    log.onSignal = [&deck](const QString&) { QCOMPARE(Shown(deck), QString()); };
    for (int i = 0; i < 12; ++i)
        deck.OnNextPage();
    QCOMPARE(log.Entries().size(), 9);
    QCOMPARE(log.Take().last(), QString("sig_SwitchVideo(9,6,0)"));
    QCOMPARE(Shown(deck), Run(54, 59));
    QCOMPARE(deck.activeWndNo(), 2);
    deck.OnPreviePage();
    QCOMPARE(log.Take(), QStringList("sig_SwitchVideo(8,6,0)"));
    QCOMPARE(Shown(deck), Run(48, 53));
    deck.SetShowWndNo(1);
    QCOMPARE(Shown(deck), QString("0"));
    deck.OnNextPage();
    QCOMPARE(Shown(deck), QString("1"));
    QCOMPARE(Mode(deck), int(WND_SHOW_SINGLE));
}

void tst_deck_layouts::stepsByButton()
{
    CPaneDeck deck;
    deck.SetShowWndNo(16);
    SignalLog log;
    log.WatchAll(&deck);
    for (Btn_type_EX button : {BTN_NEXT_PAGE, BTN_NEXT_PAGE, BTN_PREV_PAGE})
        QMetaObject::invokeMethod(&deck, "slot_OnWndBtnClicked", Q_ARG(Btn_type_EX, button));
    deck.OnNextPage();
    QCOMPARE(log.Take(), (QStringList{"sig_SwitchVideo(1,16,8)", "sig_SwitchVideo(2,16,8)",
                                      "sig_SwitchVideo(1,16,7)", "sig_SwitchVideo(2,16,7)"}));
}

void tst_deck_layouts::placesPanes_data()
{
    QTest::addColumn<int>("panes");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("index");
    QTest::addColumn<QRect>("rect");
    const auto rect = [](int left, int top, int right, int bottom) {
        return QRect(QPoint(left, top), QPoint(right, bottom));
    };
    QTest::newRow("half pixels are cut off") << 4 << QSize(801, 601) << 2 << rect(1, 301, 399, 600);
    QTest::newRow("first") << 4 << QSize(801, 601) << 0 << rect(1, 1, 399, 299);
    QTest::newRow("thirds") << 9 << QSize(100, 100) << 4 << rect(34, 34, 65, 65);
    QTest::newRow("large cell") << 6 << QSize(600, 300) << 0 << rect(1, 1, 399, 199);
    QTest::newRow("single fills the display") << 1 << QSize(320, 240) << 0 << rect(0, 0, 319, 239);
}

void tst_deck_layouts::placesPanes()
{
    QFETCH(int, panes);
    QFETCH(QSize, size);
    QFETCH(int, index);
    QFETCH(QRect, rect);
    CPaneDeck deck(nullptr, WND_TYPE_ALARM, 64);
    deck.resize(10, 10);
    deck.show();
    deck.SetShowWndNo(panes);
    deck.resize(size);
    QCOMPARE(Pane(deck, index)->geometry(), rect);
    int width = -1;
    int height = -1;
    deck.GetWindowRect(64, width, height);
    QCOMPARE(QSize(width, height), QSize(-1, -1));
    deck.GetWindowRect(index, width, height);
    QCOMPARE(QSize(width, height), rect.size());
}

void tst_deck_layouts::displayRectangleFollowsTheKind_data()
{
    QTest::addColumn<_WND_TYPE>("kind");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QRect>("display");
    QTest::newRow("live") << WND_TYPE_MONITOR << QSize(640, 480) << QRect(0, 0, 640, 430);
    QTest::newRow("tour") << WND_TYPE_TOUR << QSize(640, 480) << QRect(0, 0, 640, 430);
    QTest::newRow("alarm") << WND_TYPE_ALARM << QSize(640, 480) << QRect(0, 0, 640, 480);
    QTest::newRow("no such kind") << _WND_TYPE(9) << QSize(640, 480) << QRect(0, 0, 640, 480);
    QTest::newRow("lower than its toolbar") << WND_TYPE_MONITOR << QSize(640, 30) << QRect(0, 0, 640, -20);
}

void tst_deck_layouts::displayRectangleFollowsTheKind()
{
    QFETCH(_WND_TYPE, kind);
    QFETCH(QSize, size);
    QFETCH(QRect, display);
    const ExpectedWarning negative("Negative sizes");
    CPaneDeck deck(nullptr, kind);
    deck.SetShowWndNo(4);
    deck.resize(size);
    deck.show();
    const QRect found = deck.findChild<QWidget*>("m_disPlayRect")->geometry();
    QCOMPARE(found.topLeft(), display.topLeft());
    QCOMPARE(found.size(), display.size().expandedTo(QSize(0, 0)));
}

void tst_deck_layouts::resizeBeforeTheFirstLayoutShowsNothing()
{
    CPaneDeck deck;
    deck.show();
    deck.resize(700, 500);
    QCOMPARE(Shown(deck), QString());
    QCOMPARE(deck.findChild<QWidget*>("m_disPlayRect")->geometry(), QRect(0, 0, 700, 450));
}

void tst_deck_layouts::survivesAnEditedLayout()
{
    const ExpectedWarning negative("Negative sizes");
    CPaneDeck deck(nullptr, WND_TYPE_ALARM, 16);
    deck.show();
    deck.slot_changePageNo(1, 4);
    CSplitCatalog::Instance()->customLayouts[4] = SplitLayout{1, 1, 1, {{0, 0, 1, 1}}};
    deck.resize(300, 200);
    QCOMPARE(Pane(deck, 0)->geometry(), QRect(1, 1, 300, 200).adjusted(0, 0, -1, -1));
    QVERIFY(Pane(deck, 8)->geometry().isEmpty());
    CSplitCatalog::Instance()->customLayouts[4] = SplitLayout();
    deck.resize(310, 200);
    deck.slot_changePageNo(1, 3);
    QCOMPARE(Shown(deck), Run(0, 7));
}

void tst_deck_layouts::placeRectangleOfHostileLayout()
{
    const SplitLayout layout{1, 1, 2, {{0, 0, INT_MAX, INT_MAX}, {5, 5, INT_MIN, -1}}};
    const QSize display(4000, 3000);
    QVERIFY(PlaceRect(layout, 0, display).right() > display.width());
    QVERIFY(PlaceRect(layout, 1, display).isEmpty());
    QVERIFY(PlaceRect(layout, 2, display).isEmpty());
    QVERIFY(PlaceRect(layout, -1, display).isEmpty());
}

void tst_deck_layouts::styles()
{
    const auto sheetOf = [] { return CPaneDeck(nullptr, WND_TYPE_ALARM, 1).styleSheet(); };
    QCOMPARE(sheetOf(), QString("QFrame{background-color:#5c6576;}"));
    Installation installation(1);
    installation.Write("ResourcesBlank/Qss/liveviewsheet.qss", "#a{image:url(.*?/a.png);}");
    QCOMPARE(sheetOf(),
             "#a{image:url(" + installation.Resources() + "/a.png);}QFrame{background-color:#191c20;}");
}

int main(int argc, char** argv)
{
    return RunTests<tst_deck_layouts>(argc, argv);
}

#include "tst_deck_layouts.moc"
