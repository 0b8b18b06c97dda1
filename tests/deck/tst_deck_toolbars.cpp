#include "DeckProbe.h"
#include "layouts/CSplitCustomDialog.h"
#include "support/Mouse.h"
#include "support/SignalLog.h"

#include <QActionGroup>
#include <QLabel>
#include <QLayout>
#include <QMenu>
#include <QTimer>
#include <QToolButton>

using namespace DeckProbe;

namespace {

const QStringList Row = {"btnSaveView",   "btnSignalFrame", "btnFourFrame",    "btnSixFrame",
                         "btnEightFrame", "btnNineFrame",   "btnSixteenFrame", "btmMoreFrame",
                         "btnPrive",      "btnNext",        "btnPVplayer"};

QToolButton* Button(CPaneDeck& deck, const QString& name)
{
    return ToolBar(deck)->findChild<QToolButton*>(name, Qt::FindDirectChildrenOnly);
}

/// The buttons that show as checked and the count of the checked action.
QString Marked(CPaneDeck& deck)
{
    QString marked;
    for (const QString& name : Row)
        marked += Button(deck, name)->isChecked() ? name + " " : QString();
    const QAction* action = ToolBar(deck)->findChild<QActionGroup*>()->checkedAction();
    return marked + QString::number(action ? action->data().toInt() : 0);
}

/// Clicks the action with that text in the menu that the press of the button below pops up.
void PickFromMenu(CPaneDeck& deck, const QString& text)
{
    QTimer::singleShot(0, qApp, [text] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        QVERIFY(menu);
        for (QAction* action : menu->actions()) {
            if (action->text() == text)
                Mouse::Click(menu, menu->actionGeometry(action).center());
        }
    });
    ClickToolBar(deck, "btmMoreFrame");
}

} // namespace

class tst_deck_toolbars : public DeckTest
{
    Q_OBJECT

private Q_SLOTS:
    void row();
    void clicks();
    void marksTheCount();
    void marksTheLayoutShown();
    void moreOpensThePicker();
    void tourToolBarIsReduced();
    void takesWidgets();
};

void tst_deck_toolbars::row()
{
    for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        QWidget window;
        window.setLayoutDirection(direction);
        CPaneDeck deck(&window, WND_TYPE_MONITOR, 1);
        deck.resize(900, 500);
        window.show();
        QStringList tips;
        QMap<int, QString> byPlace;
        for (const QString& name : Row) {
            tips.append(Button(deck, name)->toolTip().section('.', 1));
            byPlace.insert(Button(deck, name)->x(), name);
        }
        QCOMPARE(tips.join('|'), QString("Save View|||||||Coustom Split|Prive page|Next page|full Screen"));
        QStringList expected = Row;
        if (direction == Qt::RightToLeft) {
            // Pages follow each other to the right all the same.
            expected.swapItemsAt(8, 9);
            std::reverse(expected.begin(), expected.end());
        }
        QCOMPARE(byPlace.values(), expected);
    }
}

void tst_deck_toolbars::clicks()
{
    CPaneDeck deck(nullptr, WND_TYPE_MONITOR, 8);
    deck.resize(800, 500);
    deck.show();
    QCOMPARE(ToolBar(deck)->geometry(), QRect(0, 450, 800, 50));
    SignalLog log;
    log.WatchAll(&deck);
    // Numbers that the deck has no panes for are told all the same.
    const std::pair<const char*, const char*> rows[] = {
        {"btnSixFrame", "sig_Activechangebefor(-1) sig_activeWnd(0) sig_wndNumberChanged(6) "
                        "sig_wndNumberChanged(6)"},
        {"btnEightFrame", "sig_wndNumberChanged(8) sig_wndNumberChanged(8)"},
        {"btnSignalFrame", "sig_wndNumberChanged(1) sig_wndNumberChanged(1)"},
        {"btnNineFrame", "sig_wndNumberChanged(9)"},
        {"btnSixteenFrame", "sig_wndNumberChanged(16)"},
        {"btnFourFrame", "sig_wndNumberChanged(4) sig_wndNumberChanged(4)"},
        {"btnNext", "sig_SwitchVideo(1,4,8)"},
        {"btnPrive", "sig_SwitchVideo(0,4,7)"},
        {"btnSaveView", "sig_OnWndBtnClick(0,10)"},
        {"btnPVplayer", "sig_OnStateChanged(4)"}};
    for (const auto& [button, signals_] : rows) {
        ClickToolBar(deck, button);
        QCOMPARE(log.Take().join(' '), QString(signals_));
    }
    QVERIFY(ToolBar(deck)->isHidden());
    QCOMPARE(Shown(deck), Run(0, 3));
    deck.ChangeFull(false);
    deck.resize(800, 500);
    QVERIFY(ToolBar(deck)->isVisible());
}

void tst_deck_toolbars::marksTheCount()
{
    // What there is no button for clears the mark, though the deck refuses it.
    const std::pair<int, const char*> rows[] = {{4, "btnFourFrame 4"},
                                                {4, "btnFourFrame 4"},
                                                {3, "4"},
                                                {25, "btmMoreFrame 25"},
                                                {49, "btmMoreFrame 25"},
                                                {16, "btnSixteenFrame 16"},
                                                {49, "btmMoreFrame 16"},
                                                {65, "16"}};
    CPaneDeck deck;
    CPaneDeck tour(nullptr, WND_TYPE_TOUR, 8);
    for (const auto& [count, marked] : rows) {
        deck.SetShowWndNo(count);
        tour.SetShowWndNo(count);
        QCOMPARE(Marked(deck), QString(marked));
        QCOMPARE(Marked(tour), QString("0"));
    }
    deck.SetShowWndNo(9);
    ClickToolBar(deck, "btnFourFrame");
    QCOMPARE(Marked(deck), QString("btnFourFrame 4"));
    deck.SetShowWndNo(3);
    QCOMPARE(Marked(deck), QString("btnFourFrame 4"));
}

void tst_deck_toolbars::marksTheLayoutShown()
{
    CPaneDeck deck;
    deck.ShowLayoutMark();
    QCOMPARE(Marked(deck), QString("0"));
    connect(&deck, &CPaneDeck::sig_wndNumberChanged, &deck, &CPaneDeck::ShowLayoutMark);
    deck.SetShowWndNo(9);
    deck.slot_changePageNo(1, 2);
    QCOMPARE(Marked(deck), QString("btmMoreFrame 0"));
    ClickToolBar(deck, "btnNineFrame");
    QCOMPARE(Marked(deck), QString("btnNineFrame 9"));
    deck.slot_changePageNo(0, 1);
    QCOMPARE(Marked(deck), QString("btnFourFrame 4"));
    deck.SetShowWndNo(65);
    deck.ShowLayoutMark();
    QCOMPARE(Marked(deck), QString("btnFourFrame 4"));
    CPaneDeck tour(nullptr, WND_TYPE_TOUR, 8);
    tour.SetShowWndNo(6);
    tour.ShowLayoutMark();
    QCOMPARE(Marked(tour), QString("btnSixFrame 6"));
    CPaneDeck playback(nullptr, WND_TYPE_PLAYBACK, 4);
    playback.SetShowWndNo(4);
    playback.ShowLayoutMark();
}

void tst_deck_toolbars::moreOpensThePicker()
{
    CPaneDeck deck(nullptr, WND_TYPE_MONITOR, 36);
    deck.resize(900, 400);
    deck.move(300, 400);
    deck.show();
    auto* picker = deck.findChild<CSplitCustomDialog*>();
    for (int count : {4, 25}) {
        deck.SetShowWndNo(count);
        const QString marked = Marked(deck);
        SignalLog log;
        log.WatchAll(&deck);
        ClickToolBar(deck, "btmMoreFrame");
        QVERIFY(picker->isVisible());
        QCOMPARE(picker->pos(), Button(deck, "btmMoreFrame")->mapToGlobal(QPoint(-150, -250)));
        QCOMPARE(Marked(deck), marked);
        QCOMPARE(log.Take(), QStringList());
        Mouse::Click(picker->findChild<QToolButton*>("btnC3"), QPoint(5, 5));
        QCOMPARE(log.Take(), QStringList("sig_wndNumberChanged(6)"));
    }
}

void tst_deck_toolbars::tourToolBarIsReduced()
{
    CPaneDeck deck(nullptr, WND_TYPE_TOUR, 36);
    deck.resize(800, 500);
    deck.show();
    for (const char* button : {"btnSaveView", "btnPrive", "btnNext", "btnPVplayer"})
        QVERIFY(Button(deck, button)->isHidden());
    SignalLog log;
    log.Watch(&deck, SIGNAL(sig_wndNumberChanged(int)));
    ClickToolBar(deck, "btnSixFrame");
    PickFromMenu(deck, "36");
    QCOMPARE(log.Take().join(' '), QString("sig_wndNumberChanged(6) sig_wndNumberChanged(6) "
                                           "sig_wndNumberChanged(36) sig_wndNumberChanged(36)"));
    QVERIFY(!deck.findChild<CSplitCustomDialog*>()->isVisible());
    QCOMPARE(Marked(deck), QString("36"));
}

void tst_deck_toolbars::takesWidgets()
{
    CPaneDeck live(nullptr, WND_TYPE_MONITOR, 1);
    QLabel widgets[4];
    live.addWidget(&widgets[0]);
    live.addWidget(&widgets[1]);
    live.insertWidget(1000, &widgets[2]);
    live.insertWidget(-5, &widgets[3]);
    live.insertWidget(0, nullptr);
    live.insertWidget(0, ToolBar(live));
    live.insertWidget(0, &live);
    const QLayout* layout = ToolBar(live)->layout();
    const int last = layout->count() - 1;
    const int places[] = {2, 1, last - 1, last};
    for (int i = 0; i < 4; ++i)
        QCOMPARE(layout->indexOf(&widgets[i]), places[i]);
    QLabel refused;
    for (_WND_TYPE kind : {WND_TYPE_ALARM, WND_TYPE_PLAYBACK, _WND_TYPE(9)}) {
        CPaneDeck deck(nullptr, kind, 1);
        deck.addWidget(&refused);
        deck.insertWidget(0, &refused);
        QVERIFY(!refused.parentWidget());
    }
}

QTEST_MAIN(tst_deck_toolbars)

#include "tst_deck_toolbars.moc"
