#include "layouts/CSplitCatalog.h"
#include "layouts/CSplitCustomDialog.h"
#include "support/DeckTestCase.h"
#include "support/Installation.h"
#include "support/Mouse.h"
#include "support/SignalLog.h"
#include "toolbars/CMonitorToolBar.h"

#include <QActionGroup>
#include <QLayout>
#include <QMenu>
#include <QTimer>
#include <QToolButton>

namespace {

const QStringList Row = {"btnSaveView",   "btnSignalFrame", "btnFourFrame",    "btnSixFrame",
                         "btnEightFrame", "btnNineFrame",   "btnSixteenFrame", "btmMoreFrame",
                         "btnPrive",      "btnNext",        "btnPVplayer"};

QToolButton* Button(const QObject& bar, const QString& name)
{
    return bar.findChild<QToolButton*>(name, Qt::FindDirectChildrenOnly);
}

QStringList CheckedButtons(const QObject& bar)
{
    QStringList names;
    for (const QString& name : Row) {
        if (Button(bar, name)->isChecked())
            names.append(name);
    }
    return names;
}

int CheckedAction(const QObject& bar)
{
    const QAction* action = bar.findChild<QActionGroup*>()->checkedAction();
    return action ? action->data().toInt() : 0;
}

/// Picks the action with that text from the menu that the press of `button` pops up.
void PickFromMenu(QToolButton* button, const QString& text)
{
    QTimer::singleShot(0, qApp, [text] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        QVERIFY(menu);
        for (QAction* action : menu->actions()) {
            if (action->text() == text)
                Mouse::Click(menu, menu->actionGeometry(action).center());
        }
    });
    Mouse::Press(button, QPoint(3, 3));
}

} // namespace

class tst_livebar : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void rowHasItsOrder();
    void pagesRunToTheRight();
    void clickSends();
    void marksPaneCount();
    void clickMarksByItself();
    void moreOpensPicker();
    void moreWithMenu();
    void takesWidgets();
};

void tst_livebar::rowHasItsOrder()
{
    CMonitorToolBar bar(nullptr);
    bar.resize(900, 50);
    bar.show();
    QStringList tips;
    int right = -1;
    for (int i = 0; i < Row.size(); ++i) {
        const QToolButton* button = Button(bar, Row.at(i));
        QVERIFY2(button->x() > right, qPrintable(Row.at(i)));
        right = button->geometry().right();
        tips.append(button->toolTip().section('.', 1));
        QCOMPARE(button->isCheckable(), i >= 1 && i <= 7);
    }
    QCOMPARE(tips.join('|'), QString("Save View|||||||Coustom Split|Prive page|Next page|full Screen"));
    QCOMPARE(Button(bar, "btnSaveView")->x(), 15);
    QCOMPARE(right, 900 - 25 - 1);
    QVERIFY(bar.hasMouseTracking());
    QVERIFY(bar.styleSheet().endsWith("QFrame{background-color: transparent;}"));
    QList<int> counts;
    for (const QAction* action : bar.findChild<QActionGroup*>()->actions())
        counts.append(action->isCheckable() ? action->data().toInt() : -1);
    QCOMPARE(counts, (QList<int>{1, 4, 6, 8, 9, 16, 25, 36, 64}));
}

void tst_livebar::pagesRunToTheRight()
{
    for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        QFrame parent;
        parent.setLayoutDirection(direction);
        CMonitorToolBar bar(&parent);
        bar.resize(800, 50);
        bar.layout()->activate();
        const bool mirrored = direction == Qt::RightToLeft;
        QCOMPARE(Button(bar, "btnSaveView")->x() > Button(bar, "btnPVplayer")->x(), mirrored);
        QVERIFY(Button(bar, "btnPrive")->x() < Button(bar, "btnNext")->x());
    }
}

void tst_livebar::clickSends()
{
    const QStringList expected = {
        "wndBtnClicked(10)", "changePageNum(1)", "changePageNum(4)",  "changePageNum(6)",
        "changePageNum(8)",  "changePageNum(9)", "changePageNum(16)", "",
        "wndBtnClicked(7)",  "wndBtnClicked(8)", "wndfullScreen()"};
    CMonitorToolBar bar(nullptr);
    bar.show();
    SignalLog log;
    log.WatchAll(&bar);
    for (int i = 0; i < Row.size(); ++i) {
        for (int click = 0; click < 2 && i != 7; ++click) {
            Mouse::Click(Button(bar, Row.at(i)), QPoint(3, 3));
            QCOMPARE(log.Take().join(' '), expected.at(i));
        }
    }
    QMetaObject::invokeMethod(&bar, "OnWndBtnClicked");
    bar.onFrameButtonClick(nullptr);
    QCOMPARE(log.Take(), QStringList());
}

void tst_livebar::marksPaneCount()
{
    const std::tuple<int, const char*, int> steps[] = {{3, "", 0},
                                                       {4, "btnFourFrame", 4},
                                                       {4, "btnFourFrame", 4},
                                                       {9, "btnNineFrame", 9},
                                                       {3, "", 9},
                                                       {9, "btnNineFrame", 9},
                                                       {25, "btmMoreFrame", 25},
                                                       {49, "btmMoreFrame", 25},
                                                       {64, "btmMoreFrame", 64},
                                                       {16, "btnSixteenFrame", 16},
                                                       {49, "btmMoreFrame", 16},
                                                       {1, "btnSignalFrame", 1},
                                                       {0, "", 1},
                                                       {65, "", 1},
                                                       {6, "btnSixFrame", 6},
                                                       {8, "btnEightFrame", 8},
                                                       {36, "btmMoreFrame", 36},
                                                       {-1, "", 36}};
    CMonitorToolBar bar(nullptr);
    SignalLog log;
    log.WatchAll(&bar);
    for (const auto& [count, button, action] : steps) {
        bar.SetShowWndNo(count);
        QCOMPARE(CheckedButtons(bar).join(' '), QString(button));
        QCOMPARE(CheckedAction(bar), action);
    }
    QCOMPARE(log.Take(), QStringList());
}

void tst_livebar::clickMarksByItself()
{
    CMonitorToolBar bar(nullptr);
    bar.show();
    bar.SetShowWndNo(9);
    Mouse::Click(Button(bar, "btnFourFrame"), QPoint(3, 3));
    QCOMPARE(CheckedButtons(bar), QStringList("btnFourFrame"));
    bar.SetShowWndNo(3);
    QCOMPARE(CheckedButtons(bar), QStringList("btnFourFrame"));
    bar.SetShowWndNo(4);
    bar.SetShowWndNo(3);
    QCOMPARE(CheckedButtons(bar), QStringList());
}

void tst_livebar::moreOpensPicker()
{
    CMonitorToolBar bar(nullptr);
    bar.resize(900, 50);
    bar.move(300, 400);
    bar.show();
    auto* picker = bar.findChild<CSplitCustomDialog*>();
    SignalLog log;
    log.WatchAll(&bar);
    QToolButton* more = Button(bar, "btmMoreFrame");
    for (int count : {4, 25}) {
        bar.SetShowWndNo(count);
        const QStringList marked = CheckedButtons(bar);
        Mouse::Click(more, QPoint(3, 3));
        QVERIFY(picker->isVisible());
        QCOMPARE(picker->pos(), bar.mapToGlobal(more->pos()) - QPoint(150, 250));
        QCOMPARE(CheckedButtons(bar), marked);
        QCOMPARE(log.Take(), QStringList());
        Mouse::Click(picker->findChild<QToolButton*>("btnC3"), QPoint(5, 5));
        QCOMPARE(log.Take(), QStringList("sig_btnWndSwidch(1,2)"));
    }
}

void tst_livebar::moreWithMenu()
{
    CMonitorToolBar bar(nullptr);
    bar.UseFrameMenu();
    bar.show();
    SignalLog log;
    log.WatchAll(&bar);
    QToolButton* more = Button(bar, "btmMoreFrame");
    PickFromMenu(more, "36");
    Mouse::Release(more, QPoint(3, 3));
    QCOMPARE(log.Take(), QStringList("changePageNum(36)"));
    QVERIFY(!bar.findChild<CSplitCustomDialog*>()->isVisible());
    QCOMPARE(CheckedAction(bar), 36);
}

void tst_livebar::takesWidgets()
{
    CMonitorToolBar bar(nullptr);
    bar.resize(900, 50);
    QList<QWidget*> widgets;
    for (int i = 0; i < 4; ++i) {
        widgets.append(new QWidget);
        widgets.last()->setFixedSize(10, 10);
    }
    bar.addWidget(widgets.at(0));
    bar.addWidget(widgets.at(1));
    bar.insertWidget(1000, widgets.at(2));
    bar.insertWidget(-5, widgets.at(3));
    bar.insertWidget(0, nullptr);
    bar.insertWidget(0, &bar);
    bar.show();
    QVERIFY(Button(bar, "btnSaveView")->x() < widgets.at(1)->x());
    QVERIFY(widgets.at(1)->x() < widgets.at(0)->x());
    QVERIFY(widgets.at(0)->x() < 450);
    QVERIFY(Button(bar, "btnPVplayer")->x() < widgets.at(2)->x());
    QVERIFY(widgets.at(2)->x() < widgets.at(3)->x());
}

QTEST_MAIN(tst_livebar)

#include "tst_livebar.moc"
