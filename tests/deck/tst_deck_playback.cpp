#include "DeckProbe.h"
#include "support/Installation.h"
#include "support/Mouse.h"
#include "support/SignalLog.h"
#include "timeline/CLinSliderWidget.h"
#include "timeline/CPlaybackSliderWidget.h"
#include "timeline/CShapeWidget.h"
#include "timeline/CTimerLine.h"
#include "timeline/ThumbPicture.h"
#include "toolbars/CPlaybackToolBar.h"

#include <QMenu>
#include <QPushButton>
#include <QSlider>
#include <QToolButton>
#include <QToolTip>

using namespace DeckProbe;

namespace {

struct Scene
{
    Scene()
    {
        WriteThumb(installation, 20);
        installation.Write("Resources/buttons/PicSetting.Conf",
                           "[PaneDeck_Switch_bar]\nNormal=s.png\nHover=s.png\nClick=s.png\nDisable=s.png\n");
        installation.WritePicture("Resources/buttons/s.png", 27, 27, Qt::blue);
        deck.reset(new CPaneDeck(nullptr, WND_TYPE_PLAYBACK, 4));
        deck->resize(850, 400);
        bar = deck->findChild<CPlaybackToolBar*>();
        deck->show();
        bar->grab();
        log.WatchAll(bar);
    }

    QAbstractButton* Button(const QString& name) const { return bar->findChild<QAbstractButton*>(name); }
    template <class T> T* Part() const { return bar->findChild<T*>(); }
    QSlider* FileSlider() const { return Part<CLinSliderWidget>()->findChild<QSlider*>(); }
    QSlider* AudioSlider() const { return bar->findChild<QSlider*>("m_audioSlider"); }

    QString Time() const
    {
        short part[6];
        bar->GetSelectedTime(part[0], part[1], part[2], part[3], part[4], part[5]);
        return QString("%1:%2:%3").arg(part[0]).arg(part[1]).arg(part[2]);
    }

    QStringList Enabled(const QStringList& names) const
    {
        QStringList enabled;
        for (const QString& name : names) {
            if (bar->findChild<QWidget*>(name)->isEnabled())
                enabled.append(name);
        }
        return enabled;
    }

    Installation installation;
    QScopedPointer<CPaneDeck> deck;
    CPlaybackToolBar* bar;
    SignalLog log;
    short zero = 0;
};

// The handle of a slider at its left end.
QPoint Grip(const QSlider* slider)
{
    return QPoint(4, slider->height() / 2);
}

// Drags a slider's handle without letting go.
void Hold(QSlider* slider, const QPoint& pos)
{
    Mouse::Press(slider, Grip(slider));
    Mouse::Move(slider, pos, Qt::LeftButton);
}

const QStringList PlayingControls = {"m_playBtn", "m_stopBtn", "m_quickBtn",      "m_slowBtn",
                                     "m_saveBtn", "m_clipBtn", "m_screenshotBtn", "m_fileTypeWidget"};
const QStringList AudioControls = {"m_audioBtn", "m_audioSlider"};
const QStringList OtherControls = {"m_openBtn", "m_downloadBtn", "m_timerTypeWidget",
                                   "m_btn1",    "m_btn4",        "m_btn6",
                                   "m_btn8",    "m_btn9",        "btnPVplayer"};

} // namespace

class tst_deck_playback : public DeckTest
{
    Q_OBJECT

private Q_SLOTS:
    void reportsItsButtons();
    void freezeTurnsItsTextFirst();
    void typeButtonSwitchesTheView();
    void reportsThroughTheDeck();
    void showsTheActivePane();
    void operationsNeedTheirToolBar();
    void setsButtonStates();
    void enables();
    void disablingStartsAnew();
    void heldFileSliderDropsProgress();
    void letsTheFileSliderGo();
    void audioSliderReportsAtTheRelease();
    void tellsWhatAButtonDoes();
    void sliderMayBeDeletedLater();
    void tellsWhereItsScaleLies();
    void tellsThePointerOnItsScale();
};

void tst_deck_playback::tellsWhereItsScaleLies()
{
    const Scene scene;
    CPaneDeck& deck = *scene.deck;
    QWidget* scale = deck.findChild<QWidget*>("m_dayWidget");
    const QRect whole = deck.TimeScaleRect();
    QCOMPARE(whole, QRect(scale->mapTo(&deck, QPoint()), scale->size()));
    QCOMPARE(deck.DayRect(), whole);
    QCoreApplication::processEvents();
    QSignalSpy changed(&deck, &CPaneDeck::sig_DayRectChanged);
    Mouse::Wheel(scale, QPoint(whole.width() / 2, 5), 120);
    QCOMPARE(deck.DayRect().width(), 2 * whole.width());
    QTRY_COMPARE(changed.count(), 1);
    QCOMPARE(deck.TimeScaleRect(), whole);
    const QRect wanted(whole.left() - 100, whole.top(), 3 * whole.width() + 1, whole.height());
    deck.SetDayRect(wanted.left(), wanted.width());
    QCOMPARE(deck.DayRect(), wanted);
    deck.SetDayRect(INT_MIN, INT_MAX);
    QCOMPARE(deck.DayRect().width(), 200 * whole.width());
    QCOMPARE(deck.DayRect().right(), whole.right());
    deck.SetDayRect(whole.left() + 50, -1);
    QCOMPARE(deck.DayRect(), whole);
    QTRY_COMPARE(changed.count(), 2);
    QVERIFY(deck.IsToolBtnEnabled(BTN_PLAY) && !deck.IsToolBtnChecked(BTN_PLAY));
    deck.ChangePlaybackViewType(PLAYBACK_VIEW_FILE);
    QVERIFY(deck.DayRect().isNull() && deck.GetPlaybackViewType() == PLAYBACK_VIEW_FILE);
    QTRY_COMPARE(changed.count(), 3);
}

void tst_deck_playback::tellsThePointerOnItsScale()
{
    const Scene scene;
    CPaneDeck& deck = *scene.deck;
    QWidget* scale = deck.findChild<QWidget*>("m_dayWidget");
    QSignalSpy pointed(&deck, &CPaneDeck::sig_TimePointed);
    QSignalSpy dragged(&deck, &CPaneDeck::sig_TimeDragged);
    Mouse::Move(scale, QPoint(scale->width() / 4, 5));
    QCOMPARE(pointed.takeLast().first().toInt(), scale->width() / 4 * 86400 / scale->width());
    Mouse::Leave(scale);
    QCOMPARE(pointed.takeLast().first().toInt(), -1);
    connect(&deck, &CPaneDeck::sig_TimeDragged, this, [&](int second) {
        QCOMPARE(deck.SelectedTime(), QTime(0, 0).addSecs(second)); // told by now
    });
    Mouse::Drag(scene.Part<CShapeWidget>(), QPoint(5, 5), {QPoint(100, 5), QPoint(5000, 5)});
    QCOMPARE(dragged.takeLast().first().toInt(), 86399);
    QCOMPARE(dragged.count(), 1);
    Mouse::DoubleClick(scene.Part<CTimerLine>(), QPoint(100, 5));
    QCOMPARE(dragged.count(), 1);
    deck.SetDayRect(-200, 3 * scale->width());
    const QRect day = deck.DayRect();
    Mouse::Press(scale, QPoint(300, 5));
    Mouse::Move(scale, QPoint(350, 5)); // no button: its release got lost
    QCOMPARE(deck.DayRect(), day);
    Mouse::Move(scale, QPoint(350, 5), Qt::LeftButton);
    QCOMPARE(deck.DayRect(), day.translated(50, 0));
}

void tst_deck_playback::reportsItsButtons()
{
    const QStringList checkable = {"m_saveBtn", "m_audioBtn", "m_playBtn"};
    const std::pair<const char*, int> buttons[] = {
        {"m_stopBtn", 0},  {"m_saveBtn", 1},      {"m_screenshotBtn", 3}, {"m_audioBtn", 4},
        {"m_openBtn", 13}, {"m_playBtn", 14},     {"m_quickBtn", 15},     {"m_slowBtn", 16},
        {"m_btn1", 19},    {"m_btn4", 20},        {"m_btn6", 21},         {"m_btn8", 22},
        {"m_btn9", 23},    {"m_downloadBtn", 24}, {"m_clipBtn", 28},      {"btnPVplayer", -1}};
    Scene scene;
    for (const auto& [name, type] : buttons) {
        auto* button = scene.Button(name);
        for (bool first : {true, false}) {
            bool checked = false;
            scene.log.onSignal = [&](const QString&) { checked = button->isChecked(); };
            Mouse::Click(button, QPoint(4, 4));
            QCOMPARE(scene.log.Take().join(' '),
                     type < 0 ? "wndfullScreen()" : QString("wndBtnClicked(%1)").arg(type));
            QCOMPARE(checked, first && checkable.contains(name));
            QCOMPARE(button->isCheckable(), checkable.contains(name));
        }
    }
}

void tst_deck_playback::freezeTurnsItsTextFirst()
{
    Scene scene;
    auto* button = scene.Button("m_btnFreezePlay");
    QCOMPARE(button->text(), QString("PushButton"));
    QStringList texts;
    scene.log.onSignal = [&](const QString&) { texts.append(button->text()); };
    for (int i = 0; i < 3; ++i)
        button->click();
    QCOMPARE(scene.log.Take(), QStringList({"wndBtnClicked(25)", "wndBtnClicked(26)", "wndBtnClicked(25)"}));
    QCOMPARE(texts, QStringList({"PlayBack.FreezeStop", "PlayBack.FreezePlay", "PlayBack.FreezeStop"}));
}

void tst_deck_playback::typeButtonSwitchesTheView()
{
    Scene scene;
    const auto timerShown = [&] {
        const bool timer = scene.Part<CPlaybackSliderWidget>()->isVisible();
        return timer == scene.Part<CLinSliderWidget>()->isVisible() ? -1 : int(timer);
    };
    QCOMPARE(timerShown(), 1);
    QVERIFY(!scene.Button("m_typeBtn")->isVisible() && !scene.Button("m_btnFreezePlay")->isVisible());
    QList<int> shown;
    scene.log.onSignal = [&](const QString&) { shown.append(timerShown()); };
    scene.Button("m_typeBtn")->click();
    scene.Button("m_typeBtn")->click();
    scene.bar->ChangePlaybackViewType(PlaybackViewType(7));
    QCOMPARE(timerShown(), 0);
    scene.Button("m_typeBtn")->click();
    QCOMPARE(scene.log.Take(), QStringList({"wndBtnClicked(18)", "wndBtnClicked(18)", "wndBtnClicked(18)"}));
    QCOMPARE(shown, (QList<int>{0, 1, 0}));
}

void tst_deck_playback::reportsThroughTheDeck()
{
    CPaneDeck deck(nullptr, WND_TYPE_PLAYBACK, 8);
    deck.resize(900, 500);
    deck.show();
    QCOMPARE(ToolBar(deck)->geometry(), QRect(0, 411, 900, 90));
    QCOMPARE(deck.findChild<QWidget*>("m_disPlayRect")->geometry(), QRect(0, 0, 900, 410));
    SignalLog log;
    log.WatchAll(&deck);
    for (const char* button : {"m_downloadBtn", "m_playBtn", "m_btn4"})
        ClickToolBar(deck, button);
    QMetaObject::invokeMethod(ToolBar(deck), "playposeChanged", Q_ARG(int,500));
    QCOMPARE(log.Take(), (QStringList{"sig_btnDownload_click()", "sig_SliderMoved(-1,500)"}));
    deck.SetShowWndNo(4);
    deck.SetActiveWnd(3);
    log.Take();
    for (const char* button : {"m_playBtn", "m_btn4", "btnPVplayer"})
        ClickToolBar(deck, button);
    for (const char* signal : {"sig_TimerSliderMoved", "sig_TimerSliderDbClicked"})
        QMetaObject::invokeMethod(ToolBar(deck), signal);
    QCOMPARE(log.Take(),
             (QStringList{"sig_OnWndBtnClick(3,14)", "sig_OnWndBtnClick(3,20)", "sig_OnStateChanged(4)",
                          "sig_TimerSliderReleased(3)", "sig_TimerSliderdbClicked(3)"}));
    QCOMPARE(Shown(deck), Run(0, 3));
    QVERIFY(ToolBar(deck)->isHidden());
}

void tst_deck_playback::showsTheActivePane()
{
    CPaneDeck deck(nullptr, WND_TYPE_PLAYBACK, 4);
    deck.SetShowWndNo(4);
    deck.SetActiveWnd(1);
    auto* save = ToolBar(deck)->findChild<QAbstractButton*>("m_saveBtn");
    auto* file = ToolBar(deck)->findChild<QWidget*>("m_fileTypeWidget")->findChild<QSlider*>();
    auto* voice = ToolBar(deck)->findChild<QSlider*>("m_audioSlider");
    SignalLog log;
    log.WatchAll(&deck);
    deck.SetProgressValue(0, 600);
    deck.SetVoiceValue(0, 6);
    deck.SetWndBtnState(0, BTN_RECORD, 1);
    QVERIFY(file->value() == 0 && voice->value() == 1 && !save->isChecked());
    QVERIFY(deck.btncheck(0, BTN_RECORD));
    deck.SetProgressValue(1, 600);
    deck.SetVoiceValue(1, 6);
    deck.SetWndBtnState(1, BTN_RECORD, 1);
    QVERIFY(file->value() == 600 && voice->value() == 6 && save->isChecked());
    QCOMPARE(log.Take(), QStringList("sig_VoiceChanged(1,6)"));
    deck.ResetWnd(0);
    QVERIFY(file->isEnabled());
    deck.ResetWnd(1);
    QVERIFY(!file->isEnabled() && file->value() == 0 && !save->isChecked());
    QVERIFY(!deck.btncheck(1, BTN_RECORD));
    deck.SetActiveWnd(-1);
    deck.SetWndBtnState(-1, BTN_PLAY, 1);
    QVERIFY(ToolBar(deck)->findChild<QAbstractButton*>("m_playBtn")->isChecked());
}

void tst_deck_playback::operationsNeedTheirToolBar()
{
    QVector<unsigned int> colors(86400, 0x00ff00);
    for (_WND_TYPE kind : {WND_TYPE_PLAYBACK, WND_TYPE_MONITOR, WND_TYPE_ALARM}) {
        CPaneDeck deck(nullptr, kind, 1);
        short time[6] = {13, 14, 15, 1, 2, 3};
        deck.SetTimerSliderPose(time[0], time[1], time[2]);
        time[0] = 9;
        deck.GetSelectedTime(time[0], time[1], time[2], time[3], time[4], time[5]);
        const bool playback = kind == WND_TYPE_PLAYBACK;
        QCOMPARE(QVector<int>(time, time + 6),
                 playback ? QVector<int>({13, 14, 15, 23, 59, 59}) : QVector<int>({9, 14, 15, 1, 2, 3}));
        deck.SetTimerPeriod(colors.data());
        deck.SetTimerPeriod(nullptr);
        deck.SetToolBtnEnable(false, false);
        deck.ChangePlaybackViewType(PLAYBACK_VIEW_FILE);
        deck.ChangePlaybackViewType(PlaybackViewType(7));
        deck.SetActiveWnd(0);
        deck.SetProgressValue(0, INT_MIN);
        deck.SetVoiceValue(0, INT_MAX);
    }
}

void tst_deck_playback::setsButtonStates()
{
    // The record button alone can be disabled, by -1, which keeps its check; the others take 0 and 1 alone.
    const std::tuple<Btn_type_EX, const char*, QList<int>, bool, bool> rows[] = {
        {BTN_RECORD, "m_saveBtn", {-7}, true, true},       {BTN_RECORD, "m_saveBtn", {1, 0}, false, true},
        {BTN_RECORD, "m_saveBtn", {1, -1}, true, false},   {BTN_RECORD, "m_saveBtn", {-1, 1}, true, false},
        {BTN_AUDIO, "m_audioBtn", {1, -1, 2}, true, true}, {BTN_PLAY, "m_playBtn", {2, -1}, false, true},
        {BTN_OPEN, "m_openBtn", {1, -1}, false, true}};
    for (const auto& [type, button, states, checked, enabled] : rows) {
        Scene scene;
        for (int state : states)
            scene.bar->SetWndBtnState(type, state);
        QCOMPARE(scene.Button(button)->isChecked(), checked);
        QCOMPARE(scene.Button(button)->isEnabled(), enabled);
        QCOMPARE(scene.log.Take(), QStringList());
    }
}

void tst_deck_playback::enables()
{
    for (bool enable : {true, false}) {
        for (bool audio : {true, false}) {
            Scene scene;
            for (const char* name : {"m_saveBtn", "m_playBtn", "m_audioBtn"})
                scene.Button(name)->setChecked(true);
            scene.bar->SetToolBtnEnable(enable, audio);
            QCOMPARE(scene.Enabled(PlayingControls), enable ? PlayingControls : QStringList());
            QCOMPARE(scene.Enabled(AudioControls), audio ? AudioControls : QStringList());
            QCOMPARE(scene.Enabled(OtherControls), OtherControls);
            QCOMPARE(scene.Button("m_saveBtn")->isChecked(), enable);
            QCOMPARE(scene.Button("m_playBtn")->isChecked(), enable);
            QCOMPARE(scene.Button("m_audioBtn")->isChecked(), audio);
            QCOMPARE(scene.log.Take(), QStringList());
        }
    }
}

void tst_deck_playback::disablingStartsAnew()
{
    for (bool held : {false, true}) {
        Scene scene;
        scene.bar->SetTimerPeriod(QVector<unsigned int>(86400, 0xff123456u).constData());
        short hour = 7;
        scene.bar->SetTimerSliderPose(hour, scene.zero, scene.zero);
        scene.bar->SetProgressValue(300);
        scene.bar->SetToolBtnEnable(true, true);
        QCOMPARE(scene.Time(), QString("7:0:0"));
        QCOMPARE(scene.FileSlider()->value(), 300);
        QCOMPARE(scene.Part<CTimerLine>()->grab().toImage().pixel(400, 6), 0xff123456u);
        if (held)
            Mouse::Press(scene.Part<CShapeWidget>(), QPoint(10, 7));
        scene.bar->SetToolBtnEnable(false, true);
        QCOMPARE(scene.Time(), QString(held ? "7:0:0" : "0:0:0"));
        QCOMPARE(scene.FileSlider()->value(), 0);
        QCOMPARE(scene.Part<CTimerLine>()->grab().toImage().pixel(400, 6), qRgb(128, 128, 128));
    }
}

void tst_deck_playback::heldFileSliderDropsProgress()
{
    Scene scene;
    scene.bar->ChangePlaybackViewType(PLAYBACK_VIEW_FILE);
    scene.bar->grab();
    QSlider* slider = scene.FileSlider();
    Mouse::Press(slider, Grip(slider));
    scene.bar->SetProgressValue(500);
    QCOMPARE(slider->value(), 0);
    int taken = -1;
    scene.log.onSignal = [&](const QString&) {
        scene.bar->SetProgressValue(40);
        taken = slider->value();
    };
    Mouse::Move(slider, QPoint(slider->width() - 1, 4), Qt::LeftButton);
    Mouse::Release(slider, QPoint(slider->width() - 1, 4));
    QCOMPARE(scene.log.Take(), QStringList("playposeChanged(1000)"));
    QCOMPARE(taken, 40);
}

void tst_deck_playback::letsTheFileSliderGo()
{
    for (int way : {0, 1, 2}) {
        Scene scene;
        scene.bar->ChangePlaybackViewType(PLAYBACK_VIEW_FILE);
        scene.bar->grab();
        Hold(scene.FileSlider(), QPoint(404, 4));
        const int held = scene.FileSlider()->sliderPosition();
        scene.log.onSignal = [&](const QString&) { scene.deck.reset(); };
        QEvent blocked(QEvent::WindowBlocked);
        QMenu menu;
        if (way == 1)
            scene.deck->hide();
        else if (way == 2)
            menu.show();
        else
            QCoreApplication::sendEvent(scene.deck.data(), &blocked);
        QTRY_VERIFY(!scene.deck);
        QCOMPARE(scene.log.Take(), QStringList(QString("playposeChanged(%1)").arg(held)));
    }
}

void tst_deck_playback::audioSliderReportsAtTheRelease()
{
    Scene scene;
    QSlider* slider = scene.AudioSlider();
    scene.log.Watch(slider, SIGNAL(sliderReleased()));
    Hold(slider, QPoint(99, 4));
    QCOMPARE(scene.log.Take(), QStringList());
    Mouse::Release(slider, QPoint(99, 4));
    QCOMPARE(scene.log.Take(), QStringList({"sliderReleased()", "voiceChanged(10)"}));
    QCOMPARE(slider->toolTip(), QString("10"));
    for (int value : {7, 7, 99, -5})
        scene.bar->SetVoiceValue(value);
    QCOMPARE(scene.log.Take(), QStringList({"voiceChanged(7)", "voiceChanged(10)", "voiceChanged(1)"}));
    scene.log.onSignal = [&](const QString&) { scene.bar->SetVoiceValue(3); };
    scene.bar->SetVoiceValue(8);
    QCOMPARE(slider->toolTip(), QString("3"));
}

void tst_deck_playback::tellsWhatAButtonDoes()
{
    Scene scene;
    const auto tip = [&](const char* name) {
        Mouse::Enter(scene.Button(name));
        return QToolTip::text();
    };
    for (const QString& row :
         QString("stop Stop|save Record|clip Time Clip|open Open|play Play|screenshot Snap").split('|')) {
        const QString name = "m_" + row.section(' ', 0, 0) + "Btn";
        QCOMPARE(tip(qPrintable(name)), "PaneDeck." + row.section(' ', 1));
    }
    Mouse::Leave(scene.Button("m_playBtn"));
    QTRY_VERIFY(!QToolTip::isVisible());
    scene.bar->SetWndBtnState(BTN_PLAY, 1);
    QCOMPARE(tip("m_playBtn"), QString("PaneDeck.Pause"));
    scene.deck->SetActiveWnd(1);
    scene.deck->SetSpeedInfo(1, 2048);
    QCOMPARE(tip("m_quickBtn"), QString("PaneDeck.Quick2X"));
    scene.deck->SetSpeedInfo(1, 512);
    QCOMPARE(QToolTip::text(), QString("PaneDeck.Quick2X"));
    QCOMPARE(tip("m_slowBtn"), QString("PaneDeck.Slow1/2X"));
    QToolTip::hideText();
}

void tst_deck_playback::sliderMayBeDeletedLater()
{
    Scene scene;
    scene.AudioSlider()->deleteLater();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!scene.AudioSlider());
}

QTEST_MAIN(tst_deck_playback)

#include "tst_deck_playback.moc"
