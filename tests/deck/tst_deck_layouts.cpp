#include "DeckProbe.h"
#include "deck/PageGeometry.h"
#include "layouts/CSplitCatalog.h"
#include "support/Installation.h"
#include "support/SignalLog.h"

using namespace DeckProbe;

class tst_deck_layouts : public DeckTest
{
    Q_OBJECT

private Q_SLOTS:
    void selectsByCount();
    void activePaneStaysOnTheFirstPage();
    void resizeWhileFourFollowOne();
    void selectsByReference();
    void steps();
    void placesPanes();
    void displayRectangle();
    void survivesHostileLayouts();
    void styles();
};

void tst_deck_layouts::selectsByCount()
{
    // 32 stands for 36. More than 64 or than the deck has, none, and what there is no layout for is refused.
    QVector<std::tuple<int, int, int>> rows{{64, 32, 36}, {64, 65, 0},      {8, 9, 0},  {35, 32, 0},
                                            {64, 0, 0},   {64, INT_MIN, 0}, {64, 5, 0}, {-1, 1, 0}};
    for (int count : {1, 4, 6, 8, 9, 16, 25, 36, 49, 64})
        rows.append({64, count, count});
    for (const auto& [panes, request, onPage] : qAsConst(rows)) {
        CPaneDeck deck(nullptr, WND_TYPE_ALARM, panes);
        deck.SetShowWndNo(4);
        deck.OnNextPage();
        deck.SetActiveWnd(-1);
        const QString before = Shown(deck);
        SignalLog log;
        log.WatchAll(&deck);
        deck.SetShowWndNo(request);
        const QString selected = "sig_Activechangebefor(-1) sig_activeWnd(0) sig_wndNumberChanged(%1)";
        QCOMPARE(log.Take().join(' '), onPage ? selected.arg(onPage) : QString());
        QCOMPARE(Shown(deck), onPage ? Run(0, onPage - 1) : before);
        QCOMPARE(Mode(deck), int(onPage == 1 ? WND_SHOW_SINGLE : WND_SHOW_SPLIT));
    }
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
    deck.SetShowWndNo(32);
    QCOMPARE(deck.GetCurrentWnd(), 0);
}

void tst_deck_layouts::resizeWhileFourFollowOne()
{
    CPaneDeck deck(nullptr, WND_TYPE_ALARM, 8);
    deck.resize(400, 300);
    deck.SetShowWndNo(1);
    deck.SetActiveWnd(7);
    SignalLog log;
    log.Watch(&deck, SIGNAL(sig_activeWnd(int)));
    QString meanwhile;
    log.onSignal = [&](const QString&) {
        deck.resize(500, 400);
        QResizeEvent event(deck.size(), QSize(400, 300));
        QCoreApplication::sendEvent(&deck, &event);
        meanwhile = Shown(deck);
    };
    deck.SetShowWndNo(4);
    QCOMPARE(meanwhile, QString("0"));
    QCOMPARE(Shown(deck), Run(0, 3));
}

void tst_deck_layouts::selectsByReference()
{
    CPaneDeck deck(nullptr, WND_TYPE_MONITOR, 12);
    deck.SetShowWndNo(4);
    CSplitCatalog* catalog = CSplitCatalog::Instance();
    catalog->customLayouts[3] =
        SplitLayout{1, 5, 5, {{0, 0, 1, 1}, {0, 1, 1, 2}, {0, 2, 1, 3}, {0, 3, 1, 4}, {0, 4, 1, 5}}};
    catalog->customLayouts[4].count = 0;
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
    deck.OnNextPage();
    QCOMPARE(Shown(deck), Run(5, 9));
    log.Take();
    for (int no : {INT_MIN, -1, 4, 5, 10, INT_MAX})
        deck.slot_changePageNo(1, no);
    QCOMPARE(log.Take(), QStringList());
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
    QCOMPARE(Shown(deck), Run(48, 53));
    deck.SetShowWndNo(1);
    deck.OnNextPage();
    QCOMPARE(Shown(deck), QString("1"));
    QCOMPARE(Mode(deck), int(WND_SHOW_SINGLE));
}

void tst_deck_layouts::placesPanes()
{
    // Half pixels that are cut off, thirds, a large cell, and a single pane that fills the display.
    const std::tuple<int, QSize, int, QPoint, QPoint> rows[] = {{4, {801, 601}, 2, {1, 301}, {399, 600}},
                                                                {4, {801, 601}, 3, {401, 301}, {800, 600}},
                                                                {9, {100, 100}, 4, {34, 34}, {65, 65}},
                                                                {6, {600, 300}, 0, {1, 1}, {399, 199}},
                                                                {1, {320, 240}, 0, {0, 0}, {319, 239}}};
    for (const auto& [panes, size, index, topLeft, bottomRight] : rows) {
        CPaneDeck deck(nullptr, WND_TYPE_ALARM, 64);
        deck.resize(400, 400);
        deck.show();
        deck.SetShowWndNo(panes);
        deck.resize(size);
        QCOMPARE(Pane(deck, index)->geometry(), QRect(topLeft, bottomRight));
        QSize found;
        deck.GetWindowRect(index, found.rwidth(), found.rheight());
        QCOMPARE(found, QRect(topLeft, bottomRight).size());
    }
}

void tst_deck_layouts::displayRectangle()
{
    const ExpectedWarning tinyPanes("Negative sizes");
    const std::tuple<int, int, int> rows[] = {{WND_TYPE_MONITOR, 480, 430},
                                              {WND_TYPE_TOUR, 480, 430},
                                              {WND_TYPE_ALARM, 480, 480},
                                              {9, 480, 480},
                                              {WND_TYPE_MONITOR, 30, 0}};
    for (const auto& [kind, height, display] : rows) {
        CPaneDeck deck(nullptr, _WND_TYPE(kind));
        deck.resize(640, height);
        deck.show();
        QCOMPARE(deck.findChild<QWidget*>("m_disPlayRect")->geometry(), QRect(0, 0, 640, display));
        QCOMPARE(Shown(deck), QString());
        deck.SetShowWndNo(4);
        QCOMPARE(Shown(deck), kind == 9 ? QString() : Run(0, 3));
    }
}

void tst_deck_layouts::survivesHostileLayouts()
{
    const ExpectedWarning tinyPanes("Negative sizes");
    CPaneDeck deck(nullptr, WND_TYPE_ALARM, 16);
    deck.show();
    deck.slot_changePageNo(1, 4);
    SplitLayout& inForce = CSplitCatalog::Instance()->customLayouts[4];
    inForce = SplitLayout{1, 1, 9, {{0, 0, 1, 1}, {0, 0, INT_MAX, INT_MAX}, {5, 5, INT_MIN, -1}}};
    deck.resize(300, 200);
    QCOMPARE(Pane(deck, 0)->geometry(), QRect(QPoint(1, 1), QPoint(299, 199)));
    QVERIFY(Pane(deck, 2)->geometry().isEmpty());
    QVERIFY2(Pane(deck, 8)->geometry().isEmpty(), "no cell");
    inForce = SplitLayout();
    deck.resize(310, 200);
    deck.slot_changePageNo(1, 3);
    QCOMPARE(Shown(deck), Run(0, 7));
    QVERIFY(PlaceRect(inForce, -1, QSize(9, 9)).isEmpty());
}

void tst_deck_layouts::styles()
{
    const auto sheet = [] { return CPaneDeck(nullptr, WND_TYPE_ALARM, 1).styleSheet(); };
    CSplitCatalog::Release();
    QCOMPARE(sheet(), QString("QFrame{background-color:#5c6576;}"));
    Installation installation(1);
    installation.Write("ResourcesBlank/Qss/liveviewsheet.qss", "#a{image:url(.*?/a.png);}");
    QCOMPARE(sheet(),
             "#a{image:url(" + installation.Resources() + "/a.png);}QFrame{background-color:#191c20;}");
}

QTEST_MAIN(tst_deck_layouts)

#include "tst_deck_layouts.moc"
