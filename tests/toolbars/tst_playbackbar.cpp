#include "deck/CPaneDeck.h"
#include "support/DeckTestCase.h"
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
    ExpectedWarning warning{"Specified color without alpha value but alpha given"};
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

class tst_playbackbar : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void reportsItsButtons();
    void freezeTurnsItsTextFirst();
    void typeButtonSwitchesTheView();
    void setsButtonStates();
    void enables();
    void disablingStartsAnew();
    void heldFileSliderDropsProgress();
    void letsTheFileSliderGo();
    void audioSliderReportsAtTheRelease();
    void tellsWhatAButtonDoes();
    void tellsTheSpeedOfTheMoment();
    void livesWithoutADeck();
    void mayDieInItsSignals();
    void sliderMayBeDeletedLater();
};

void tst_playbackbar::reportsItsButtons()
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

void tst_playbackbar::freezeTurnsItsTextFirst()
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

void tst_playbackbar::typeButtonSwitchesTheView()
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

void tst_playbackbar::setsButtonStates()
{
    struct
    {
        const char* name;
        Btn_type_EX type;
        const char* button;
        QList<int> states;
        bool checked, enabled;
    } const rows[] = {
        {"record on", BTN_RECORD, "m_saveBtn", {1}, true, true},
        {"record on by any number", BTN_RECORD, "m_saveBtn", {-7}, true, true},
        {"record off", BTN_RECORD, "m_saveBtn", {1, 0}, false, true},
        {"record disabled keeps its check", BTN_RECORD, "m_saveBtn", {1, -1}, true, false},
        {"a check doesn't enable it", BTN_RECORD, "m_saveBtn", {-1, 1}, true, false},
        {"audio on, no such state", BTN_AUDIO, "m_audioBtn", {1, -1, 2}, true, true},
        {"audio off", BTN_AUDIO, "m_audioBtn", {1, 0}, false, true},
        {"play on", BTN_PLAY, "m_playBtn", {1}, true, true},
        {"play, no such state", BTN_PLAY, "m_playBtn", {2, -1}, false, true},
        {"another button", BTN_OPEN, "m_openBtn", {1, -1}, false, true},
    };
    for (const auto& row : rows) {
        Scene scene;
        for (int state : row.states)
            scene.bar->SetWndBtnState(row.type, state);
        QVERIFY2(scene.Button(row.button)->isChecked() == row.checked, row.name);
        QVERIFY2(scene.Button(row.button)->isEnabled() == row.enabled, row.name);
        QCOMPARE(scene.log.Take(), QStringList());
    }
}

void tst_playbackbar::enables()
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

void tst_playbackbar::disablingStartsAnew()
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

void tst_playbackbar::heldFileSliderDropsProgress()
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

void tst_playbackbar::letsTheFileSliderGo()
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

void tst_playbackbar::audioSliderReportsAtTheRelease()
{
    Scene scene;
    QSlider* slider = scene.AudioSlider();
    Hold(slider, QPoint(99, 4));
    QCOMPARE(scene.log.Take(), QStringList());
    Mouse::Release(slider, QPoint(99, 4));
    QCOMPARE(scene.log.Take(), QStringList("voiceChanged(10)"));
    QCOMPARE(slider->toolTip(), QString("10"));
    for (int value : {7, 7, 99, -5})
        scene.bar->SetVoiceValue(value);
    QCOMPARE(scene.log.Take(), QStringList({"voiceChanged(7)", "voiceChanged(10)", "voiceChanged(1)"}));
    scene.log.onSignal = [&](const QString&) { scene.bar->SetVoiceValue(3); };
    scene.bar->SetVoiceValue(8);
    QCOMPARE(slider->toolTip(), QString("3"));
}

void tst_playbackbar::tellsWhatAButtonDoes()
{
    const std::pair<const char*, const char*> texts[] = {
        {"m_stopBtn", "PaneDeck.Stop"},      {"m_saveBtn", "PaneDeck.Record"},
        {"m_clipBtn", "PaneDeck.Time Clip"}, {"m_openBtn", "PaneDeck.Open"},
        {"m_playBtn", "PaneDeck.Play"},      {"m_screenshotBtn", "PaneDeck.Snap"}};
    Scene scene;
    for (const auto& [name, text] : texts) {
        Mouse::Enter(scene.Button(name));
        QCOMPARE(QToolTip::text(), QString(text));
    }
    Mouse::Leave(scene.Button("m_playBtn"));
    QTRY_VERIFY(!QToolTip::isVisible());
    scene.bar->SetWndBtnState(BTN_PLAY, 1);
    Mouse::Enter(scene.Button("m_playBtn"));
    QCOMPARE(QToolTip::text(), QString("PaneDeck.Pause"));
    QToolTip::hideText();
}

void tst_playbackbar::tellsTheSpeedOfTheMoment()
{
    Scene scene;
    scene.deck->SetActiveWnd(1);
    for (int speed : {2048, 512}) {
        scene.deck->SetSpeedInfo(1, speed);
        const QString info = scene.deck->GetSpeedInfo();
        QVERIFY(!info.isEmpty());
        Mouse::Enter(scene.Button("m_quickBtn"));
        QCOMPARE(QToolTip::text(), "PaneDeck.Quick" + info);
        scene.deck->SetSpeedInfo(1, 1024);
        QCOMPARE(QToolTip::text(), "PaneDeck.Quick" + info);
        Mouse::Enter(scene.Button("m_slowBtn"));
        QCOMPARE(QToolTip::text(), "PaneDeck.Slow" + scene.deck->GetSpeedInfo());
    }
    QToolTip::hideText();
}

void tst_playbackbar::livesWithoutADeck()
{
    Installation installation(0);
    const ExpectedWarning warning("Specified color without alpha value but alpha given");
    const ExpectedWarning noPicture("Could not create pixmap from");
    CPlaybackToolBar bar(nullptr);
    QCOMPARE(bar.styleSheet(), QString());
    Mouse::Enter(bar.findChild<QAbstractButton*>("m_quickBtn"));
    QCOMPARE(QToolTip::text(), QString("PaneDeck.Quick"));
    QToolTip::hideText();
    bar.SetTimerPeriod(nullptr);
    bar.OnWndBtnClicked();
}

/// The deaths that the deck's own signals don't cause.
void tst_playbackbar::mayDieInItsSignals()
{
    const std::pair<const char*, void (*)(Scene&)> causes[] = {
        {"voiceChanged", [](Scene& s) { Mouse::Wheel(s.AudioSlider(), QPoint(4, 4), 120); }},
        {"voiceChanged",
         [](Scene& s) {
             s.deck->SetActiveWnd(0);
             Hold(s.AudioSlider(), QPoint(90, 4));
             s.deck->ResetWnd(0);
         }},
        {"playposeChanged",
         [](Scene& s) {
             Hold(s.FileSlider(), QPoint(404, 4));
             s.deck->SetToolBtnEnable(false, true);
         }},
    };
    for (const auto& [dying, cause] : causes) {
        Scene scene;
        const bool file = QByteArray(dying) == "playposeChanged";
        scene.bar->ChangePlaybackViewType(file ? PLAYBACK_VIEW_FILE : PLAYBACK_VIEW_TIMER);
        scene.bar->grab();
        scene.log.onSignal = [&scene, signal = dying](const QString& entry) {
            if (entry.startsWith(signal))
                scene.deck.reset();
        };
        cause(scene);
        QVERIFY2(!scene.deck, dying);
    }
}

void tst_playbackbar::sliderMayBeDeletedLater()
{
    Scene scene;
    scene.AudioSlider()->deleteLater();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!scene.AudioSlider());
}

QTEST_MAIN(tst_playbackbar)

#include "tst_playbackbar.moc"
