#include "playback/PlaybackTab.h"

#include "cameras/CameraList.h"
#include "cameras/ClientArchive.h"
#include "common/UserFiles.h"
#include "common/VisibleTimer.h"
#include "common/Words.h"
#include "panes/DeckStreams.h"
#include "panes/PaneSound.h"
#include "panes/SeekReport.h"
#include "playback/DayField.h"
#include "playback/DayOverview.h"
#include "playback/DayScale.h"
#include "playback/PlaybackBar.h"
#include "playback/PlaybackNavigator.h"
#include "playback/PlaybackOutput.h"
#include "tabs/TroubleLabel.h"

#include <CPaneDeck.h>

#include <QApplication>
#include <QCalendarWidget>
#include <QFileDialog>
#include <QMenu>
#include <QTabBar>
#include <QTimer>
#include <QVBoxLayout>

namespace {

constexpr int PaneCount = 64;
constexpr int FirstLayout = 4;
constexpr int FirstCameras = 16;
constexpr int TickMs = 200;

/// How many panes a button of the toolbar asks for; 0 for all other buttons.
int layoutOf(Btn_type_EX button)
{
    constexpr int Counts[] = {1, 4, 6, 8, 9};
    return button >= BTN_SPLIT_1 && button <= BTN_SPLIT_9 ? Counts[button - BTN_SPLIT_1] : 0;
}

} // namespace

PlaybackTab::PlaybackTab(CameraHub* hub, EventLog* log, ClientArchive* archive)
    : DeckTab(word("playback"), WND_TYPE_PLAYBACK, PaneCount, hub, log), m_archive(archive),
      m_scale(new DayScale(deck(), archive, this)), m_seekReport(new SeekReport(deck(), streams(), this)),
      m_tracks(deck(), streams(), archive),
      m_output(new PlaybackOutput(deck(), streams(), &m_tracks, archive, this)),
      m_navigator(new PlaybackNavigator(deck(), streams(), &m_tracks, m_scale, archive, this)),
      m_playbackKeys(new PlaybackKeys(deck())),
      m_overview(
          new DayOverview({deck(), streams(), &m_tracks, m_scale, m_navigator, m_output, archive}, this)),
      m_bar(new PlaybackBar(m_scale->field(), new TroubleLabel(archive)))
{
    setObjectName("playbackTab");
    layOut();
    streams()->setWaitingText(word("No recording at this time"));
    listen();
}

PlaybackTab::~PlaybackTab()
{
    m_tracks.clearAll();
}

void PlaybackTab::layOut()
{
    auto* column = static_cast<QVBoxLayout*>(layout());
    column->removeWidget(deck());
    column->addLayout(m_overview->layOut(m_bar), 1);
    column->addWidget(m_bar);
}

void PlaybackTab::listen()
{
    connect(m_archive, &ClientArchive::changed, this, &PlaybackTab::archiveChanged);
    connect(m_scale, &DayScale::dayChanged, this, &PlaybackTab::goToDay);
    // The calendar gives the focus back to its field when it closes.
    for (const auto chosen : {&QCalendarWidget::activated, &QCalendarWidget::clicked}) {
        connect(m_scale->field()->calendarWidget(), chosen, this,
                [this] { QTimer::singleShot(0, deck(), qOverload<>(&QWidget::setFocus)); });
    }
    connect(&m_tracks, &PaneTracks::ended, this, &PlaybackTab::awaitMore);
    connect(m_output, &PlaybackOutput::told, this, &PlaybackTab::tell);
    connect(m_output, &PlaybackOutput::saved, this, &PlaybackTab::showSaved);
    connect(sound(), &PaneSound::changed, this, &PlaybackTab::soundChanged);
    connect(m_seekReport, &SeekReport::told, this, &PlaybackTab::tell);
    connect(m_navigator, &PlaybackNavigator::sought, this, [this] { m_isAwaited = false; });
    connect(m_navigator, &PlaybackNavigator::sought, m_seekReport, &SeekReport::begin);
    connect(m_navigator, &PlaybackNavigator::sought, this, &PlaybackTab::showPosition, Qt::QueuedConnection);
    connect(m_navigator, &PlaybackNavigator::told, this, &PlaybackTab::tell);
    connect(m_bar, &PlaybackBar::exportAsked, m_output, &PlaybackOutput::askForExport);
    connect(m_navigator, &PlaybackNavigator::exportAsked, m_output, &PlaybackOutput::askForExport);
    connect(&m_tracks, &PaneTracks::begun, this, [this] { tell(word("the recording begins here")); });
    connect(m_bar, &PlaybackBar::turnAsked, m_navigator, &PlaybackNavigator::turnRound);
    connect(m_bar, &PlaybackBar::markAsked, m_navigator, &PlaybackNavigator::goToMark);
    connect(m_playbackKeys, &PlaybackKeys::pressed, m_navigator, &PlaybackNavigator::obey);
    connect(new VisibleTimer(this, TickMs), &VisibleTimer::timeout, this, &PlaybackTab::showPosition);
    connect(deck(), &CPaneDeck::sig_activeWnd, this, &PlaybackTab::showPane);
    connect(deck(), &CPaneDeck::sig_TimerSliderReleased, m_navigator, &PlaybackNavigator::seekChosenTime);
    connect(deck(), &CPaneDeck::sig_TimerSliderdbClicked, m_navigator, &PlaybackNavigator::playChosenTime);
    connect(deck(), &CPaneDeck::sig_SliderMoved, &m_tracks, &PaneTracks::seekFile);
    connect(deck(), &CPaneDeck::sig_btnDownload_click, m_output, &PlaybackOutput::download);
}

void PlaybackTab::fillPaneMenu(QMenu* menu, int pane)
{
    m_playbackKeys->fillMenu(menu);
    menu->addSeparator();
    DeckTab::fillPaneMenu(menu, pane);
}

/// The keys mean something at once; but who walks along the tabs by keys goes on.
void PlaybackTab::showEvent(QShowEvent* event)
{
    DeckTab::showEvent(event);
    if (!qobject_cast<QTabBar*>(QApplication::focusWidget()))
        deck()->setFocus();
}

void PlaybackTab::firstShown()
{
    deck()->SetShowWndNo(FirstLayout);
    const QVector<const CameraRecord*> cameras = m_archive->cameras();
    for (int i = 0; i < qMin(FirstCameras, cameras.size()); ++i)
        showCamera(*cameras[i], i);
    sound()->showVolume();
    goToNewest();
    m_hasPanes = true;
    goToWanted();
}

void PlaybackTab::showCamera(const CameraRecord& camera, int pane)
{
    const int index = pane < 0 ? deck()->GetCurrentWnd() : pane;
    m_output->forget(index);
    m_tracks.assignCamera(index, camera);
    if (index == deck()->GetCurrentWnd())
        showPane(index);
}

/// Tracks go by the camera's name; its address means nothing to recordings.
void PlaybackTab::cameraChanged(const CameraRecord* camera, const CameraRecord& before)
{
    if (camera->name == before.name)
        return;
    for (int pane : panesOf(camera)) {
        if (!m_tracks.isFile(pane))
            showCamera(*camera, pane);
    }
}

void PlaybackTab::buttonClicked(int pane, Btn_type_EX button)
{
    if (const int count = layoutOf(button)) {
        deck()->SetShowWndNo(count);
        return;
    }
    if (button == BTN_OPEN) {
        askForFile();
        return;
    }
    // What the base records and replays is live.
    if (button == BTN_SNAPSHOT || button == BTN_ZOOM || button == BTN_AUDIO || button == BTN_CLOSE_VIDEO)
        DeckTab::buttonClicked(pane, button);
    else if (streams()->cameraAt(pane))
        playButtonClicked(pane, button);
}

void PlaybackTab::playButtonClicked(int pane, Btn_type_EX button)
{
    const PlaybackClock& clock = m_tracks.clockAt(pane);
    if (button == BTN_PLAY)
        m_tracks.play(pane, !clock.isRunning());
    else if (button == BTN_STOP)
        m_navigator->stop(pane);
    else if (button == BTN_QUICK)
        m_navigator->changeSpeed(pane, clock.speed() * 2);
    else if (button == BTN_SLOW)
        m_navigator->changeSpeed(pane, clock.speed() / 2);
    else if (button == BTN_TIME_CLIP || button == BTN_RECORD)
        m_output->markClip(pane);
}

void PlaybackTab::closePane(int pane)
{
    DeckTab::closePane(pane);
    m_tracks.clear(pane);
    m_output->forget(pane);
    showPane(deck()->GetCurrentWnd());
}

void PlaybackTab::goToNewest()
{
    const int pane = deck()->GetCurrentWnd();
    const CameraRecord* camera = m_tracks.isFile(pane) ? nullptr : streams()->cameraAt(pane);
    const auto newest = camera && !m_tracks.isPlaced() ? m_archive->newestMs(camera->name) : std::nullopt;
    if (!newest)
        return;
    m_scale->setDay(QDateTime::fromMSecsSinceEpoch(*newest).date());
    m_navigator->seekDay();
}

void PlaybackTab::archiveChanged(const QString& camera)
{
    const CameraRecord* active = streams()->cameraAt(deck()->GetCurrentWnd());
    if (!active || (!camera.isEmpty() && active->name != camera))
        return;
    goToNewest();
    if (m_isAwaited)
        playWanted();
    showColors();
}

void PlaybackTab::goToDay(const QDate& day)
{
    tell(word("day %1").arg(day.toString(Qt::ISODate)));
    m_navigator->seekDay();
    showPosition();
}

void PlaybackTab::askForFile()
{
    auto* dialog =
        new QFileDialog(this, word("Open a recording"), UserFiles::directory(UserFiles::Kind::Recording));
    dialog->setObjectName("OpenRecording");
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::ExistingFile);
    connect(dialog, &QFileDialog::fileSelected, this, &PlaybackTab::openFile);
    dialog->open();
}

void PlaybackTab::openFile(const QString& path)
{
    const int pane = deck()->GetCurrentWnd();
    if (!m_tracks.assignFile(pane, path)) {
        tell(word("no video in %1").arg(path));
        return;
    }
    m_output->forget(pane);
    showPane(pane);
    m_tracks.play(pane, true);
    tell(word("opened: %1").arg(path));
}

void PlaybackTab::showPane(int pane)
{
    deck()->ChangePlaybackViewType(m_tracks.isFile(pane) ? PLAYBACK_VIEW_FILE : PLAYBACK_VIEW_TIMER);
    showToolbar();
    showColors();
    showPosition();
}

void PlaybackTab::soundChanged(int pane)
{
    if (pane == deck()->GetCurrentWnd())
        showToolbar();
}

void PlaybackTab::showToolbar()
{
    const int pane = deck()->GetCurrentWnd();
    const bool isUsed = streams()->cameraAt(pane);
    deck()->SetToolBtnEnable(isUsed, sound()->hasSound(pane));
    deck()->SetWndBtnState(pane, BTN_AUDIO, sound()->isHeard(pane));
    if (!isUsed)
        return;
    deck()->SetWndBtnState(pane, BTN_PLAY, m_tracks.clockAt(pane).isRunning());
    deck()->SetWndBtnState(pane, BTN_RECORD, m_output->isMarked(pane));
}

void PlaybackTab::showColors()
{
    const int pane = deck()->GetCurrentWnd();
    const CameraRecord* camera = m_tracks.isFile(pane) ? nullptr : streams()->cameraAt(pane);
    m_scale->showCamera(camera ? camera->name : QString());
}

void PlaybackTab::showPosition()
{
    const int pane = deck()->GetCurrentWnd();
    const qint64 now = m_tracks.clockAt(pane).position();
    m_bar->showSpeed(deck()->GetSpeedInfo(), m_tracks.clockAt(pane).isBackward());
    if (m_tracks.isFile(pane)) {
        deck()->SetProgressValue(pane, m_tracks.fileProgress(pane));
        m_bar->showFile(now, m_tracks.fileLength(pane));
    } else if (streams()->cameraAt(pane) && m_tracks.isPlaced()) {
        m_scale->showMoment(now);
        m_bar->showMoment(now);
        cutAhead();
    } else {
        m_bar->showNothing();
    }
    m_overview->showMoment(m_tracks.isPlaced() ? m_tracks.recordedMoment() : -1);
}
