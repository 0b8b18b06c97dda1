#include "DeckProbe.h"
#include "support/Installation.h"
#include "support/Mouse.h"
#include "support/SignalLog.h"

#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QRandomGenerator>
#include <QSlider>
#include <QSpinBox>
#include <QTimer>
#include <QToolButton>

using namespace DeckProbe;

namespace {

using Action = std::function<void(CPaneDeck&)>;

struct Trigger
{
    QString name;
    QString signal;
    Action action;
    _WND_TYPE kind = WND_TYPE_MONITOR;
};

void ClickTitle(CPaneDeck& deck, const char* name)
{
    deck.showTitle(0);
    Mouse::Click(deck.findChild<QWidget*>("TitleWidget")->findChild<QPushButton*>(name), QPoint(3, 3));
}

QWidget* PlaybackBarPart(CPaneDeck& deck, const char* name)
{
    deck.OpenPlayBackSlider(0);
    return Pane(deck, 0)->findChild<QWidget*>(name);
}

void Drag(QWidget* widget, int distance)
{
    const int middle = widget->height() / 2;
    Mouse::Drag(widget, QPoint(4, middle), {QPoint(distance / 2, middle), QPoint(distance, middle)});
}

void DragSlider(CPaneDeck& deck)
{
    QWidget* slider = PlaybackBarPart(deck, "SdrTime");
    QCoreApplication::processEvents();
    Drag(slider, 20);
}

void DragPane(CPaneDeck& deck)
{
    const QPoint from(20, 20);
    QWidget* label = Label(deck, 0);
    Mouse::PlaceCursor(label, from);
    Mouse::Press(label, from);
    Mouse::PlaceCursor(Label(deck, 3), from);
    Mouse::Release(label, label->mapFrom(&deck, Label(deck, 3)->mapTo(&deck, from)));
}

Action ToolBarButton(const char* name)
{
    return [name](CPaneDeck& deck) { ClickToolBar(deck, name); };
}

void PickLayout(CPaneDeck& deck)
{
    ClickToolBar(deck, "btmMoreFrame");
    Mouse::Click(ToolBar(deck)->findChild<QAbstractButton*>("btnC4"), QPoint(9, 9));
}

void TriggerFrameMenu(CPaneDeck& deck)
{
    QMenu* menu = ToolBar(deck)->findChild<QToolButton*>("btmMoreFrame")->menu();
    menu->popup(QPoint(0, 0));
    Mouse::Click(menu, menu->actionGeometry(menu->actions().first()).center());
}

/// Gives the first custom layout's grid another size, and leaves.
void EditLayout(CPaneDeck& deck)
{
    const ExpectedWarning sheet("Unknown color name '#transparent'");
    QTimer::singleShot(0, qApp, [] {
        QWidget* dialog = QApplication::activeModalWidget();
        QTest::keyClick(dialog->findChild<QSpinBox*>(), Qt::Key_Up);
        dialog->close();
    });
    deck.EditLayouts();
}

QSlider* FileSlider(CPaneDeck& deck)
{
    deck.ChangePlaybackViewType(PLAYBACK_VIEW_FILE);
    ToolBar(deck)->grab();
    return ToolBar(deck)->findChild<QWidget*>("m_fileTypeWidget")->findChild<QSlider*>();
}

/// Drags a slider's handle without letting go.
void Hold(QSlider* slider)
{
    Mouse::Press(slider, QPoint(4, slider->height() / 2));
    Mouse::Move(slider, QPoint(90, slider->height() / 2), Qt::LeftButton);
}

QWidget* ScalePart(CPaneDeck& deck, const char* className)
{
    for (QWidget* widget : ToolBar(deck)->findChildren<QWidget*>()) {
        if (widget->inherits(className))
            return widget;
    }
    return nullptr;
}

void PressRight(CPaneDeck& deck)
{
    Mouse::Click(Label(deck, 2), QPoint(5, 5), Qt::RightButton);
}

QVector<Trigger> Triggers()
{
    const Action rectangle = [](CPaneDeck& deck) {
        deck.SetFunctionParam(0, 2);
        Mouse::Drag(Label(deck, 0), QPoint(5, 5), {QPoint(30, 30)});
    };
    const Action ptz = [](CPaneDeck& deck) {
        deck.SetFunctionParam(0, 1);
        Mouse::Click(Label(deck, 0), QPoint(5, 5));
    };
    const Action raw = [](CPaneDeck& deck) {
        deck.setMousMsg(0, true);
        Mouse::Click(Label(deck, 0), QPoint(5, 5));
    };
    const Action voice = [](CPaneDeck& deck) {
        Drag(ToolBar(deck)->findChild<QSlider*>("m_audioSlider"), 60);
    };
    const Action scale = [](CPaneDeck& deck) { Drag(ScalePart(deck, "CShapeWidget"), 90); };
    const Action scaleTwice = [](CPaneDeck& deck) {
        Mouse::DoubleClick(ScalePart(deck, "CTimerLine"), QPoint(50, 5));
    };
    return {
        {"layout", "sig_wndNumberChanged", [](CPaneDeck& deck) { deck.SetShowWndNo(9); }},
        {"layout by reference", "sig_wndNumberChanged",
         [](CPaneDeck& deck) { deck.slot_changePageNo(0, 3); }},
        {"custom layout", "sig_wndNumberChanged", [](CPaneDeck& deck) { deck.slot_changePageNo(1, 3); }},
        {"layout that moves the active pane", "sig_activeWnd", [](CPaneDeck& deck) { deck.SetShowWndNo(1); }},
        {"left press", "sig_activeWnd", [](CPaneDeck& deck) { Mouse::Click(Label(deck, 2), QPoint(5, 5)); }},
        {"right press, first signal", "sig_Activechangebefor", PressRight},
        {"right press, second signal", "sig_activeWnd", PressRight},
        {"right press, third signal", "sig_OnRightMouseClick", PressRight},
        {"title bar", "sig_OnWndBtnClick", [](CPaneDeck& deck) { ClickTitle(deck, "btnsnapshot"); }},
        {"title bar's close", "sig_OnWndBtnClick", [](CPaneDeck& deck) { ClickTitle(deck, "btnclose"); },
         WND_TYPE_ALARM},
        {"alarm pane activated", "sig_activeWnd", [](CPaneDeck& deck) { ClickTitle(deck, "btnclose"); },
         WND_TYPE_ALARM},
        {"toolbar button", "sig_OnWndBtnClick", ToolBarButton("btnSaveView")},
        {"split button", "sig_activeWnd", ToolBarButton("btnSignalFrame")},
        {"page button", "sig_SwitchVideo", ToolBarButton("btnNext")},
        {"full screen button", "sig_OnStateChanged", ToolBarButton("btnPVplayer")},
        {"picked layout", "sig_wndNumberChanged", PickLayout},
        {"frame menu", "sig_wndNumberChanged", TriggerFrameMenu, WND_TYPE_TOUR},
        {"play button", "sig_OnWndBtnClick", ToolBarButton("m_playBtn"), WND_TYPE_PLAYBACK},
        {"audio button", "sig_OnWndBtnClick", ToolBarButton("m_audioBtn"), WND_TYPE_PLAYBACK},
        {"config", "sig_Activechangebefor",
         [](CPaneDeck& deck) { QMetaObject::invokeMethod(Pane(deck, 0), "slot_configClicked"); },
         WND_TYPE_PLAYBACK},
        {"pause", "sig_btnStopClick",
         [](CPaneDeck& deck) { Mouse::Click(PlaybackBarPart(deck, "btnStop"), QPoint(9, 9)); }},
        {"close", "sig_btnCloseClick",
         [](CPaneDeck& deck) { Mouse::Click(PlaybackBarPart(deck, "btnclose"), QPoint(9, 9)); }},
        {"seek", "sig_ReplaySeek", DragSlider},
        {"file slider", "sig_SliderMoved", [](CPaneDeck& deck) { Drag(FileSlider(deck), 90); },
         WND_TYPE_PLAYBACK},
        {"voice", "sig_VoiceChanged", voice, WND_TYPE_PLAYBACK},
        {"voice by wheel", "sig_VoiceChanged",
         [](CPaneDeck& deck) {
             Mouse::Wheel(ToolBar(deck)->findChild<QSlider*>("m_audioSlider"), QPoint(4, 4), 120);
         },
         WND_TYPE_PLAYBACK},
        {"voice held while its pane is reset", "sig_VoiceChanged",
         [](CPaneDeck& deck) {
             Hold(ToolBar(deck)->findChild<QSlider*>("m_audioSlider"));
             deck.ResetWnd(1);
         },
         WND_TYPE_PLAYBACK},
        {"file slider held while disabled", "sig_SliderMoved",
         [](CPaneDeck& deck) {
             Hold(FileSlider(deck));
             deck.SetToolBtnEnable(false, true);
         },
         WND_TYPE_PLAYBACK},
        {"voice set by the application", "sig_VoiceChanged",
         [](CPaneDeck& deck) { deck.SetVoiceValue(1, 5); }, WND_TYPE_PLAYBACK},
        {"scale released", "sig_TimerSliderReleased", scale, WND_TYPE_PLAYBACK},
        {"scale double click", "sig_TimerSliderdbClicked", scaleTwice, WND_TYPE_PLAYBACK},
        {"scale dragged", "sig_TimeDragged", scale, WND_TYPE_PLAYBACK},
        {"pointer on the scale", "sig_TimePointed",
         [](CPaneDeck& deck) { Mouse::Move(ScalePart(deck, "CTimerSlider"), QPoint(9, 5)); },
         WND_TYPE_PLAYBACK},
        {"pointer off the scale", "sig_TimePointed",
         [](CPaneDeck& deck) { Mouse::Leave(ScalePart(deck, "CTimerSlider")); }, WND_TYPE_PLAYBACK},
        {"scale zoomed", "sig_DayRectChanged",
         [](CPaneDeck& deck) {
             deck.SetDayRect(-50, 2000);
             QCoreApplication::processEvents();
         },
         WND_TYPE_PLAYBACK},
        {"download", "sig_btnDownload_click", ToolBarButton("m_downloadBtn"), WND_TYPE_PLAYBACK},
        {"PTZ", "sig_SendPtzCommand", ptz},
        {"rectangle", "sig_SelectRegion", rectangle},
        {"rectangle ends", "sig_RectanglePoint", rectangle},
        {"raw mouse", "sig_sendMouseMsg", raw},
        {"double click", "sig_DbClickWnd",
         [](CPaneDeck& deck) { Mouse::DoubleClick(Label(deck, 1), QPoint(5, 5)); }},
        {"drop", "sig_DragEvent",
         [](CPaneDeck& deck) {
             QMetaObject::invokeMethod(Label(deck, 0), "sig_DragEvent", Q_ARG(QTreeWidgetItem*, nullptr));
         }},
        {"exchange", "sig_ChangeWnd", DragPane},
        {"full screen", "sig_OnStateChanged", [](CPaneDeck& deck) { deck.ChangeFull(true); }},
        {"full screen shown", "sig_FullScreenChanged",
         [](CPaneDeck& deck) {
             deck.ChangeFull(true);
             QCoreApplication::processEvents();
         }},
        {"layout edited", "sig_LayoutEdited", EditLayout},
        {"mouse messages", "sig_OnStateChanged", [](CPaneDeck& deck) { deck.setMousMsg(0, true); }},
        {"escape", "sig_OnStateChanged", [](CPaneDeck& deck) { QTest::keyClick(&deck, Qt::Key_Escape); }},
        {"window state", "sig_OnStateChanged",
         [](CPaneDeck& deck) { deck.setWindowState(Qt::WindowMaximized); }},
        {"page step", "sig_SwitchVideo", [](CPaneDeck& deck) { deck.OnNextPage(); }},
        {"page step back", "sig_SwitchVideo", [](CPaneDeck& deck) { deck.OnPreviePage(); }},
    };
}

} // namespace

class tst_deck_survival : public DeckTest
{
    Q_OBJECT

private Q_SLOTS:
    void everySignalIsTriggered();
    void receiverDeletesTheDeck_data();
    void receiverDeletesTheDeck();
    void maximizedDeckDiesOnTheWayBack();
    void receiverClosesTheBarWhileSeeking();
    void randomWalk();
};

void tst_deck_survival::everySignalIsTriggered()
{
    QSet<QString> missing;
    const QMetaObject& meta = CPaneDeck::staticMetaObject;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        if (meta.method(i).methodType() == QMetaMethod::Signal)
            missing.insert(meta.method(i).name());
    }
    for (const Trigger& trigger : Triggers())
        missing.remove(trigger.signal);
    QCOMPARE(missing, (QSet<QString>{"sig_OnDbWndClick", "sig_ChangeViewType"}));
}

void tst_deck_survival::receiverDeletesTheDeck_data()
{
    QTest::addColumn<int>("trigger");
    const QVector<Trigger> triggers = Triggers();
    for (int i = 0; i < triggers.size(); ++i)
        QTest::newRow(qPrintable(triggers.at(i).name)) << i;
}

void tst_deck_survival::receiverDeletesTheDeck()
{
    QFETCH(int, trigger);
    const Trigger row = Triggers().at(trigger);
    const Installation installation; // an edited layout is written
    QWidget window;
    window.resize(420, 470);
    const QPointer<CPaneDeck> deck(new CPaneDeck(&window, row.kind, 36));
    deck->resize(420, 470);
    deck->SetShowWndNo(4);
    deck->OnNextPage();
    deck->OnPreviePage();
    deck->OnNextPage();
    deck->OnPreviePage();
    deck->SetActiveWnd(row.signal == "sig_OnRightMouseClick" ? 2 : 1);
    if (row.name == "page step back")
        deck->OnNextPage();
    window.show();
    Mouse::PlaceCursor(&window, QPoint(90, 90));
    SignalLog log;
    log.WatchAll(deck);
    log.onSignal = [&deck, &row](const QString& entry) {
        if (entry.startsWith(row.signal + "("))
            delete deck.data();
    };
    row.action(*deck);
    QVERIFY2(!deck, "the signal didn't fire");
    QVERIFY(log.Entries().last().startsWith(row.signal + "("));
}

void tst_deck_survival::maximizedDeckDiesOnTheWayBack()
{
    const QPointer<CPaneDeck> deck(new CPaneDeck(nullptr, WND_TYPE_ALARM, 4));
    deck->SetShowWndNo(4);
    deck->showMaximized();
    SignalLog log;
    log.Watch(deck, SIGNAL(sig_OnStateChanged(Qt::WindowStates)));
    log.onSignal = [&deck](const QString&) { delete deck.data(); };
    deck->showTitle(1);
    Mouse::Click(deck->findChild<QWidget*>("TitleWidget")->findChild<QPushButton*>("btnclose"), QPoint(3, 3));
    QVERIFY(!deck);
}

void tst_deck_survival::receiverClosesTheBarWhileSeeking()
{
    CPaneDeck deck(nullptr, WND_TYPE_MONITOR, 4);
    deck.resize(420, 470);
    deck.SetShowWndNo(4);
    deck.show();
    SignalLog log;
    log.Watch(&deck, SIGNAL(sig_ReplaySeek(int,int)));
    log.onSignal = [&deck](const QString&) { deck.ClosePlayBackSlider(0); };
    DragSlider(deck);
    QCOMPARE(log.Take().size(), 1);
    QCOMPARE(Label(deck, 0)->height(), Label(deck, 1)->height() - 24);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!Pane(deck, 0)->findChild<QSlider*>());
    QTRY_COMPARE(Label(deck, 0)->height(), Label(deck, 1)->height());
}

void tst_deck_survival::randomWalk()
{
    const ExpectedWarning tinyPanes("Negative sizes");
    QRandomGenerator random(20240711);
    CPaneDeck deck(nullptr, WND_TYPE_MONITOR, 40);
    deck.resize(420, 470);
    deck.show();
    const auto visiblePane = [&random](CPaneDeck& d) {
        const QStringList shown = Shown(d).split(' ', Qt::SkipEmptyParts);
        return shown.isEmpty() ? -1 : shown.at(random.bounded(shown.size())).toInt();
    };
    const QVector<int> counts{1, 4, 6, 9, 16, 32, 64, 7, -1};
    const QVector<Action> steps{
        [&](CPaneDeck& d) { d.SetShowWndNo(counts.at(random.bounded(counts.size()))); },
        [&](CPaneDeck& d) { d.slot_changePageNo(random.bounded(2), random.bounded(-1, 11)); },
        [&](CPaneDeck& d) { d.OnNextPage(); },
        [&](CPaneDeck& d) { d.OnPreviePage(); },
        [&](CPaneDeck& d) { d.SetActiveWnd(random.bounded(-1, 42)); },
        [&](CPaneDeck& d) { d.setMousMsg(visiblePane(d), random.bounded(2)); },
        [&](CPaneDeck& d) { d.ChangeFull(random.bounded(2)); },
        [&](CPaneDeck& d) { d.OpenPlayBackSlider(random.bounded(40)); },
        [&](CPaneDeck& d) { d.ResetWnd(random.bounded(40)); },
        [&](CPaneDeck& d) {
            QMetaObject::invokeMethod(&d, "slot_dbWndClick", Q_ARG(int, visiblePane(d)), Q_ARG(int, 0));
        },
        [&](CPaneDeck& d) { d.resize(random.bounded(1, 900), random.bounded(1, 700)); },
    };
    int depth = 0;
    SignalLog log;
    log.WatchAll(&deck);
    log.onSignal = [&](const QString&) {
        if (depth == 2 || random.bounded(3) != 0)
            return;
        ++depth;
        steps.at(random.bounded(steps.size()))(deck);
        --depth;
    };
    deck.SetShowWndNo(4);
    for (int i = 0; i < 2000; ++i) {
        steps.at(random.bounded(steps.size()))(deck);
        const QStringList shown = Shown(deck).split(' ', Qt::SkipEmptyParts);
        const QByteArray story = log.Take().join(' ').toUtf8() + " shows " + shown.join(' ').toUtf8();
        if (Mode(deck) == WND_SHOW_ENLARGED) {
            QVERIFY2(shown.size() <= 1, story);
            continue;
        }
        QVERIFY2(!shown.isEmpty() && (Mode(deck) == WND_SHOW_SPLIT || shown.size() == 1), story);
        const int first = shown.first().toInt();
        QVERIFY2(first % shown.size() == 0 && shown.join(' ') == Run(first, first + shown.size() - 1), story);
    }
}

QTEST_MAIN(tst_deck_survival)

#include "tst_deck_survival.moc"
