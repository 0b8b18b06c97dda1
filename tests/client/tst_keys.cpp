#include "panes/PaneKeys.h"
#include "support/DeckTestCase.h"
#include "support/RunTests.h"

#include <CPaneDeck.h>

#include <QMenu>

using Scope = PaneKeys::Scope;

namespace {

constexpr int PaneCount = 16;

/// A deck of nine panes with its keys, and the orders that came out of it, such as "1+ 1-".
struct Stage
{
    explicit Stage(Scope scope = Scope::Whole) : keys(&deck, PaneCount, scope, nullptr)
    {
        deck.resize(900, 640);
        deck.SetShowWndNo(9);
        deck.show();
        QObject::connect(&keys, &PaneKeys::ptz, [this](int, int command, int type) {
            orders.append(QString::number(command) + (type == 0 ? "+" : "-"));
        });
    }

    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyPress(&deck, Qt::Key(key), modifiers);
    }

    void click(int key) { QTest::keyClick(&deck, Qt::Key(key)); }

    QString told() { return std::exchange(orders, {}).join(' '); }

    QWidget* ring() { return deck.findChild<QWidget*>("PaneFocus"); }

    CPaneDeck deck{nullptr, WND_TYPE_MONITOR, PaneCount};
    /// Longer there than the keys, which let go of what is held when they go.
    QStringList orders;
    PaneKeys keys;
};

} // namespace

/// A deck worked by keys alone.
class tst_keys : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void arrowsGoByPlace();
    void focusShowsOnlyForKeys();
    void returnEnlarges();
    void buttonsGoTheTitleBarsWay();
    void heldKeysTurn();
    void menuTurnsForAMoment();
    void lossOfFocusStopsFirst_data();
    void lossOfFocusStopsFirst();
    void transportKeysAreLeft();
    void receiverMayEndIt();
};

void tst_keys::arrowsGoByPlace()
{
    Stage stage;
    QString way;
    for (int key : {Qt::Key_Right, Qt::Key_Right, Qt::Key_Right, Qt::Key_Down, Qt::Key_Left, Qt::Key_Down,
                    Qt::Key_Down, Qt::Key_Up, Qt::Key_Left, Qt::Key_Left}) {
        stage.click(key);
        way += QString::number(stage.deck.GetCurrentWnd());
    }
    QCOMPARE(way, QString("1225477433"));
    // The active pane lies on another page.
    stage.deck.SetActiveWnd(12);
    stage.click(Qt::Key_Up);
    QCOMPARE(stage.deck.GetCurrentWnd(), 0);
    stage.deck.SetActiveWnd(-1);
    stage.click(Qt::Key_Down);
    QCOMPARE(stage.deck.GetCurrentWnd(), 0);
    // In a layout with one large pane each way leads somewhere and back.
    stage.deck.SetShowWndNo(6);
    stage.click(Qt::Key_Right);
    QVERIFY(stage.deck.GetCurrentWnd() > 0);
    stage.click(Qt::Key_Left);
    QCOMPARE(stage.deck.GetCurrentWnd(), 0);
}

void tst_keys::focusShowsOnlyForKeys()
{
    Stage stage;
    QVERIFY(!stage.ring());
    stage.click(Qt::Key_Right);
    QVERIFY(stage.ring()->isVisible());
    QCOMPARE(stage.ring()->parentWidget(), stage.deck.PaneWidget(1)->parentWidget());
    QCOMPARE(stage.ring()->geometry(), stage.ring()->parentWidget()->rect());
    QTest::mouseClick(stage.deck.PaneWidget(4), Qt::LeftButton);
    QVERIFY(!stage.ring()->isVisible());
}

void tst_keys::returnEnlarges()
{
    Stage stage;
    __WND_SHOW_MODE mode = WND_SHOW_SPLIT;
    stage.click(Qt::Key_Down);
    for (auto wanted : {WND_SHOW_ENLARGED, WND_SHOW_SPLIT}) {
        stage.click(Qt::Key_Return);
        stage.deck.GetShowMode(mode);
        QCOMPARE(mode, wanted);
        QCOMPARE(stage.deck.GetCurrentWnd(), 3);
    }
}

void tst_keys::buttonsGoTheTitleBarsWay()
{
    Stage stage;
    QSignalSpy closes(&stage.keys, &PaneKeys::closeAsked);
    QStringList clicks;
    connect(&stage.deck, &CPaneDeck::sig_OnWndBtnClick, this,
            [&](int pane, Btn_type_EX button) { clicks.append(QString("%1:%2").arg(pane).arg(button)); });
    stage.deck.SetActiveWnd(2);
    for (int key : {Qt::Key_S, Qt::Key_R, Qt::Key_A, Qt::Key_Z, Qt::Key_Space, Qt::Key_Delete})
        stage.click(key);
    QCOMPARE(clicks.join(' '), QString("2:3 2:1 2:4 2:6 2:5"));
    QVERIFY(stage.deck.btncheck(2, BTN_RECORD));
    QCOMPARE(closes.count(), 1);
    // With a modifier a key is somebody else's.
    QTest::keyClick(&stage.deck, Qt::Key_S, Qt::ControlModifier);
    // A key that is held acts once.
    QKeyEvent repeated(QEvent::KeyPress, Qt::Key_R, Qt::NoModifier, "r", true);
    QApplication::sendEvent(&stage.deck, &repeated);
    QCOMPARE(clicks.size(), 5);
}

void tst_keys::heldKeysTurn()
{
    Stage stage;
    stage.press(Qt::Key_Up, Qt::ControlModifier);
    stage.press(Qt::Key_Left, Qt::ControlModifier);
    QCOMPARE(stage.told(), QString("1+ 1- 5+"));
    // Some displays tell a repetition by two events like any other ones.
    for (const bool isTold : {true, false}) {
        for (const QEvent::Type type : {QEvent::KeyRelease, QEvent::KeyPress}) {
            QKeyEvent event(type, Qt::Key_Left, Qt::ControlModifier, QString(), isTold);
            QApplication::sendEvent(&stage.deck, &event);
        }
        QCOMPARE(stage.told(), QString());
    }
    QTest::keyRelease(&stage.deck, Qt::Key_Up);
    QTRY_COMPARE(stage.orders.join(' '), QString("5- 3+"));
    QTest::keyRelease(&stage.deck, Qt::Key_Control);
    QTRY_COMPARE(stage.orders.join(' '), QString("5- 3+ 3-"));
    stage.orders.clear();
    stage.press(Qt::Key_Plus, Qt::ShiftModifier);
    QTest::keyRelease(&stage.deck, Qt::Key_Equal);
    // Another key is none that repeats.
    stage.press(Qt::Key_Minus);
    QCOMPARE(stage.told(), QString("9+ 9- 10+"));
}

void tst_keys::menuTurnsForAMoment()
{
    Stage stage;
    QMenu menu;
    stage.keys.fillMenu(&menu);
    auto* turns = menu.findChild<QMenu*>();
    QCOMPARE(turns->actions().size(), 6);
    turns->actions()[2]->trigger();
    QCOMPARE(stage.told(), QString("3+"));
    turns->actions()[4]->trigger();
    QCOMPARE(stage.told(), QString("3- 9+"));
    // A key takes over, and is held as long as it is.
    stage.press(Qt::Key_Up, Qt::ControlModifier);
    QCOMPARE(stage.told(), QString("9- 1+"));
    QTest::keyRelease(&stage.deck, Qt::Key_Up, Qt::ControlModifier);
    turns->actions()[5]->trigger();
    QTRY_COMPARE(stage.orders.join(' '), QString("1- 10+ 10-"));
}

void tst_keys::lossOfFocusStopsFirst_data()
{
    QTest::addColumn<int>("loss");
    for (auto loss : {QEvent::FocusOut, QEvent::WindowDeactivate, QEvent::Hide, QEvent::None})
        QTest::addRow("%d", int(loss)) << int(loss);
}

void tst_keys::lossOfFocusStopsFirst()
{
    QFETCH(int, loss);
    Stage stage;
    stage.press(Qt::Key_Down, Qt::ControlModifier);
    QEvent event{QEvent::Type(loss)};
    QFocusEvent focus(QEvent::FocusOut);
    if (loss == QEvent::None)
        stage.deck.SetActiveWnd(5);
    else
        QApplication::sendEvent(&stage.deck, loss == QEvent::FocusOut ? &focus : &event);
    QCOMPARE(stage.told(), QString("2+ 2-"));
    QTest::keyRelease(&stage.deck, Qt::Key_Down, Qt::ControlModifier);
    QCOMPARE(stage.told(), QString());
}

void tst_keys::transportKeysAreLeft()
{
    Stage stage(Scope::ButTransport);
    for (int key : {Qt::Key_Right, Qt::Key_Down, Qt::Key_Space, Qt::Key_Home, Qt::Key_N, Qt::Key_Plus})
        stage.click(key);
    stage.press(Qt::Key_Left, Qt::ControlModifier);
    QCOMPARE(stage.deck.GetCurrentWnd(), 0);
    QCOMPARE(stage.told(), QString());
}

void tst_keys::receiverMayEndIt()
{
    auto* deck = new CPaneDeck(nullptr, WND_TYPE_MONITOR, 4);
    QPointer<PaneKeys> keys = new PaneKeys(deck, 4, Scope::Whole, deck);
    deck->SetShowWndNo(4);
    connect(deck, &CPaneDeck::sig_OnWndBtnClick, this, [&] { delete keys; });
    QTest::keyClick(deck, Qt::Key_S);
    QVERIFY(!keys);
    delete deck;
}

int main(int argc, char** argv)
{
    return RunTests<tst_keys>(argc, argv);
}

#include "tst_keys.moc"
