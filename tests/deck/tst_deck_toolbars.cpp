#include "DeckProbe.h"
#include "support/DeckTestCase.h"
#include "support/Mouse.h"
#include "support/RunTests.h"
#include "support/SignalLog.h"

#include <QToolButton>

using namespace DeckProbe;

namespace {

QWidget* ToolBar(CPaneDeck& deck)
{
    for (QWidget* child : deck.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (child->inherits("CMonitorToolBar") || child->inherits("CPlaybackToolBar"))
            return child;
    }
    return nullptr;
}

void Click(CPaneDeck& deck, const char* button)
{
    auto* found = ToolBar(deck)->findChild<QAbstractButton*>(button);
    QVERIFY2(found, button);
    Mouse::Click(found, found->rect().center());
}

} // namespace

class tst_deck_toolbars : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void liveToolBarSelectsLayouts();
    void liveToolBarPagesAndReports();
    void liveToolBarMarksTheCount();
    void pickedLayoutArrives();
    void tourToolBarIsReduced();
    void liveToolBarTakesWidgets();
    void liveToolBarLiesAtTheBottom();
};

void tst_deck_toolbars::liveToolBarSelectsLayouts()
{
    CPaneDeck deck(nullptr, WND_TYPE_MONITOR, 8);
    deck.resize(800, 500);
    deck.show();
    SignalLog log;
    log.WatchAll(&deck);
    Click(deck, "btnFourFrame");
    QCOMPARE(log.Take(), (QStringList{"sig_Activechangebefor(-1)", "sig_activeWnd(0)",
                                      "sig_wndNumberChanged(4)", "sig_wndNumberChanged(4)"}));
    Click(deck, "btnNineFrame");
    QCOMPARE(log.Take(), QStringList("sig_wndNumberChanged(9)"));
    QCOMPARE(Shown(deck), Run(0, 3));
}

void tst_deck_toolbars::liveToolBarPagesAndReports()
{
    CPaneDeck deck(nullptr, WND_TYPE_MONITOR, 8);
    deck.resize(800, 500);
    deck.SetShowWndNo(4);
    deck.show();
    SignalLog log;
    log.WatchAll(&deck);
    for (const char* button : {"btnNext", "btnNext", "btnPrive", "btnSaveView", "btnPVplayer"})
        Click(deck, button);
    QCOMPARE(log.Take(), (QStringList{"sig_SwitchVideo(1,4,8)", "sig_SwitchVideo(0,4,7)",
                                      "sig_OnWndBtnClick(0,10)", "sig_OnStateChanged(4)"}));
    QVERIFY(ToolBar(deck)->isHidden());
    deck.ChangeFull(false);
    deck.resize(800, 500);
    QVERIFY(ToolBar(deck)->isVisible());
}

void tst_deck_toolbars::liveToolBarMarksTheCount()
{
    CPaneDeck deck(nullptr, WND_TYPE_MONITOR, 8);
    auto* four = ToolBar(deck)->findChild<QToolButton*>("btnFourFrame");
    deck.SetShowWndNo(4);
    QVERIFY(four->isChecked());
    deck.SetShowWndNo(65);
    QVERIFY2(!four->isChecked(), "a refused number has cleared the mark all the same");
    QCOMPARE(Shown(deck), Run(0, 3));
    CPaneDeck tour(nullptr, WND_TYPE_TOUR, 8);
    tour.SetShowWndNo(4);
    QVERIFY(!ToolBar(tour)->findChild<QToolButton*>("btnFourFrame")->isChecked());
}

void tst_deck_toolbars::pickedLayoutArrives()
{
    for (_WND_TYPE kind : {WND_TYPE_MONITOR, WND_TYPE_TOUR}) {
        CPaneDeck deck(nullptr, kind, 16);
        QMetaObject::invokeMethod(ToolBar(deck), "sig_btnWndSwidch", Q_ARG(int,1), Q_ARG(int,3));
        QCOMPARE(Shown(deck), Run(0, 7));
    }
}

void tst_deck_toolbars::tourToolBarIsReduced()
{
    CPaneDeck deck(nullptr, WND_TYPE_TOUR, 8);
    deck.resize(800, 500);
    deck.show();
    for (const char* button : {"btnSaveView", "btnPrive", "btnNext", "btnPVplayer"})
        QVERIFY(ToolBar(deck)->findChild<QToolButton*>(button)->isHidden());
    SignalLog log;
    log.WatchAll(&deck);
    Click(deck, "btnSixFrame");
    QCOMPARE(log.Take().filter("Number"),
             (QStringList{"sig_wndNumberChanged(6)", "sig_wndNumberChanged(6)"}));
    QVERIFY(!ToolBar(deck)->findChild<QToolButton*>("btmMoreFrame")->menu()->isEmpty());
}

void tst_deck_toolbars::liveToolBarTakesWidgets()
{
    CPaneDeck deck(nullptr, WND_TYPE_MONITOR, 1);
    QLabel added;
    QLabel inserted;
    deck.addWidget(&added);
    deck.insertWidget(0, &inserted);
    QCOMPARE(added.parentWidget(), ToolBar(deck));
    QCOMPARE(ToolBar(deck)->layout()->indexOf(&inserted), 0);
    QLabel refused;
    for (_WND_TYPE kind : {WND_TYPE_ALARM, WND_TYPE_PLAYBACK, _WND_TYPE(9)}) {
        CPaneDeck other(nullptr, kind, 1);
        other.addWidget(&refused);
        other.insertWidget(0, &refused);
        QVERIFY(!refused.parentWidget());
    }
}

void tst_deck_toolbars::liveToolBarLiesAtTheBottom()
{
    CPaneDeck deck;
    deck.resize(800, 500);
    deck.show();
    QCOMPARE(ToolBar(deck)->geometry(), QRect(0, 450, 800, 50));
    QVERIFY(!ToolBar(*std::make_unique<CPaneDeck>(nullptr, WND_TYPE_ALARM, 1)));
}

int main(int argc, char** argv)
{
    return RunTests<tst_deck_toolbars>(argc, argv);
}

#include "tst_deck_toolbars.moc"
