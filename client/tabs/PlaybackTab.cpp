#include "tabs/PlaybackTab.h"

#include "archive/DayColors.h"
#include "archive/SegmentReader.h"
#include "cameras/CameraList.h"
#include "cameras/ClientArchive.h"
#include "common/UserFiles.h"
#include "common/Words.h"
#include "panes/DeckStreams.h"
#include "panes/PaneClips.h"
#include "panes/PaneSound.h"
#include "tabs/DayField.h"

#include <CPaneDeck.h>

#include <QFileDialog>
#include <QLabel>
#include <QTimerEvent>
#include <QVBoxLayout>

namespace {

constexpr int PaneCount = 64;
constexpr int FirstLayout = 4;
constexpr int FirstCameras = 16;
constexpr int TickMs = 200;
constexpr int LastProgress = 1000;

int layoutOf(Btn_type_EX button)
{
    switch (button) {
    case BTN_SPLIT_1:
        return 1;
    case BTN_SPLIT_4:
        return 4;
    case BTN_SPLIT_6:
        return 6;
    case BTN_SPLIT_8:
        return 8;
    case BTN_SPLIT_9:
        return 9;
    default:
        return 0;
    }
}

} // namespace

/// A file in a pane, with a clock of its own that begins at 0.
struct PlaybackTab::OpenFile
{
    CameraRecord record;
    std::shared_ptr<SegmentTrack> track;
    qint64 lengthMs = 0;
    PlayGroup group;
};

PlaybackTab::PlaybackTab(CameraHub* hub, EventLog* log, ClientArchive* archive)
    : DeckTab("playback", WND_TYPE_PLAYBACK, PaneCount, hub, log), m_archive(archive), m_day(new DayField),
      m_clips(new PaneClips(this))
{
    auto* row = new QHBoxLayout;
    row->setContentsMargins(6, 3, 6, 3);
    row->addWidget(new QLabel(word("Day")));
    row->addWidget(m_day);
    row->addStretch(1);
    static_cast<QVBoxLayout*>(layout())->insertLayout(0, row);
    streams()->setWaitingText(word("No recording at this time"));
    streams()->setSourceMaker(
        [this](int pane, const CameraRecord& camera) { return makeSource(pane, camera); });
    connect(m_day, &DayField::dateChanged, this, &PlaybackTab::goToDay);
    connect(m_archive, &ClientArchive::changed, this, &PlaybackTab::archiveChanged);
    connect(&m_group, &PlayGroup::ended, this, &PlaybackTab::groupEnded);
    connect(m_clips, &PaneClips::told, this, &PlaybackTab::tell);
    connect(sound(), &PaneSound::changed, this, &PlaybackTab::soundChanged);
    connect(deck(), &CPaneDeck::sig_activeWnd, this, &PlaybackTab::showPane);
    connect(deck(), &CPaneDeck::sig_TimerSliderReleased, this, &PlaybackTab::seekChosenTime);
    connect(deck(), &CPaneDeck::sig_TimerSliderdbClicked, this, &PlaybackTab::playChosenTime);
    connect(deck(), &CPaneDeck::sig_SliderMoved, this, &PlaybackTab::seekFile);
    connect(deck(), &CPaneDeck::sig_btnDownload_click, this, &PlaybackTab::downloadPiece);
}

PlaybackTab::~PlaybackTab()
{
    // Sources go before the clocks and records that they play by.
    for (int pane = 0; pane < PaneCount; ++pane)
        streams()->clear(pane);
}

void PlaybackTab::firstShown()
{
    deck()->SetShowWndNo(FirstLayout);
    const QVector<const CameraRecord*> cameras = m_archive->cameras();
    for (int i = 0; i < qMin(FirstCameras, cameras.size()); ++i)
        showCamera(*cameras[i], i);
    sound()->showVolume();
    goToNewest();
}

void PlaybackTab::showEvent(QShowEvent* event)
{
    m_timer.start(TickMs, this);
    DeckTab::showEvent(event);
}

void PlaybackTab::hideEvent(QHideEvent* event)
{
    m_timer.stop();
    DeckTab::hideEvent(event);
}

void PlaybackTab::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == m_timer.timerId())
        showPosition();
}

void PlaybackTab::showCamera(const CameraRecord& camera, int pane)
{
    const int index = pane < 0 ? deck()->GetCurrentWnd() : pane;
    streams()->clear(index);
    m_files.remove(index);
    m_clips->forget(index);
    streams()->assign(index, camera);
    deck()->SetSpeedInfo(index, m_group.clock().speed());
    deck()->SetWndBtnState(index, BTN_PLAY, m_group.clock().isRunning());
    if (index == deck()->GetCurrentWnd())
        showPane(index);
}

QSharedPointer<VideoSource> PlaybackTab::makeSource(int pane, const CameraRecord& camera)
{
    const auto file = m_files.value(pane);
    PlayGroup* company = group(pane);
    ArchivePlayer* player = company->add(file ? file->track : track(camera.name));
    const QSharedPointer<VideoSource> source(player, &QObject::deleteLater);
    connect(player, &VideoSource::frameReady, this, &PlaybackTab::tellSeekTime);
    player->start();
    player->seek(company->clock().position());
    return source;
}

std::shared_ptr<SegmentTrack> PlaybackTab::track(const QString& camera)
{
    std::shared_ptr<SegmentTrack>& track = m_tracks[camera];
    if (!track)
        track = std::make_shared<SegmentTrack>(m_archive->pieces(camera));
    return track;
}

PlayGroup* PlaybackTab::group(int pane)
{
    const auto file = m_files.value(pane);
    return file ? &file->group : &m_group;
}

QVector<int> PlaybackTab::companions(int pane) const
{
    QVector<int> panes;
    for (int i = 0; i < PaneCount; ++i) {
        if (i == pane || (!isFile(pane) && !isFile(i) && streams()->cameraAt(i)))
            panes.append(i);
    }
    return panes;
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
    if (!streams()->cameraAt(pane))
        return;
    const PlaybackClock& clock = group(pane)->clock();
    if (button == BTN_PLAY)
        play(pane, !clock.isRunning());
    else if (button == BTN_STOP)
        stop(pane);
    else if (button == BTN_QUICK)
        changeSpeed(pane, clock.speed() * 2);
    else if (button == BTN_SLOW)
        changeSpeed(pane, clock.speed() / 2);
    else if (button == BTN_TIME_CLIP || button == BTN_RECORD)
        markClip(pane);
}

void PlaybackTab::closePane(int pane)
{
    DeckTab::closePane(pane);
    m_files.remove(pane);
    m_clips->forget(pane);
    showPane(deck()->GetCurrentWnd());
}

void PlaybackTab::play(int pane, bool run)
{
    group(pane)->play(run);
    for (int companion : companions(pane))
        deck()->SetWndBtnState(companion, BTN_PLAY, run);
}

void PlaybackTab::stop(int pane)
{
    play(pane, false);
    changeSpeed(pane, PlaybackClock::NormalSpeed);
    if (isFile(pane))
        group(pane)->seek(0);
    else
        seekDay();
    showPosition();
}

void PlaybackTab::changeSpeed(int pane, int speed)
{
    group(pane)->setSpeed(speed);
    for (int companion : companions(pane))
        deck()->SetSpeedInfo(companion, group(pane)->clock().speed());
    tell(QString("pane %1 speed %2").arg(pane).arg(deck()->GetSpeedInfo()));
}

void PlaybackTab::seekTo(qint64 ms)
{
    m_isPlaced = true;
    m_isSeeking = true;
    m_sinceSeek.start();
    m_group.seek(ms);
}

/// To the first recording of the day, of the active pane's camera, or else to the day's start.
void PlaybackTab::seekDay()
{
    const QTimeZone zone = QTimeZone::systemTimeZone();
    const qint64 start = dayStart(m_day->date(), zone);
    const CameraRecord* camera = streams()->cameraAt(deck()->GetCurrentWnd());
    qint64 moment = start;
    if (camera && !track(camera->name)->at(start))
        moment = track(camera->name)->nextStart(start).value_or(start);
    seekTo(moment < dayStart(m_day->date().addDays(1), zone) ? moment : start);
}

void PlaybackTab::goToNewest()
{
    const CameraRecord* camera = streams()->cameraAt(deck()->GetCurrentWnd());
    const QVector<TrackPiece> pieces = camera ? track(camera->name)->pieces() : QVector<TrackPiece>();
    if (m_isPlaced || pieces.isEmpty())
        return;
    const QDate day = QDateTime::fromMSecsSinceEpoch(pieces.last().startMs).date();
    m_day->setDate(day);
    seekDay();
}

void PlaybackTab::archiveChanged(const QString& camera)
{
    for (auto it = m_tracks.begin(); it != m_tracks.end(); ++it) {
        if (camera.isEmpty() || it.key() == camera)
            it.value()->setPieces(m_archive->pieces(it.key()));
    }
    // What is on screen may be gone.
    if (camera.isEmpty() && m_isPlaced)
        m_group.seek(m_group.clock().position());
    const CameraRecord* active = streams()->cameraAt(deck()->GetCurrentWnd());
    if (!active || (!camera.isEmpty() && active->name != camera))
        return;
    goToNewest();
    showColors();
}

void PlaybackTab::showPane(int pane)
{
    deck()->ChangePlaybackViewType(isFile(pane) ? PLAYBACK_VIEW_FILE : PLAYBACK_VIEW_TIMER);
    showToolbar();
    showColors();
    showPosition();
}

void PlaybackTab::showToolbar()
{
    const int pane = deck()->GetCurrentWnd();
    const bool isUsed = streams()->cameraAt(pane);
    deck()->SetToolBtnEnable(isUsed, sound()->hasSound(pane));
    deck()->SetWndBtnState(pane, BTN_AUDIO, sound()->isHeard(pane));
    if (!isUsed)
        return;
    deck()->SetWndBtnState(pane, BTN_PLAY, group(pane)->clock().isRunning());
    deck()->SetWndBtnState(pane, BTN_RECORD, m_clips->isMarked(pane));
}

void PlaybackTab::showColors()
{
    const int pane = deck()->GetCurrentWnd();
    const CameraRecord* camera = streams()->cameraAt(pane);
    if (!camera || isFile(pane) || !m_archive->isOpen())
        return;
    const QTimeZone zone = QTimeZone::systemTimeZone();
    const QDate day = m_day->date();
    const qint64 from = dayStart(day, zone);
    const qint64 to = dayStart(day.addDays(1), zone);
    const ArchiveIndex& index = m_archive->recordings().index();
    DayTable table =
        dayColors(day, zone, index.segments(camera->name, from, to), index.spans(camera->name, from, to));
    deck()->SetTimerPeriod(table.data());
}

void PlaybackTab::showPosition()
{
    const int pane = deck()->GetCurrentWnd();
    if (!streams()->cameraAt(pane))
        return;
    const qint64 position = group(pane)->clock().position();
    if (const auto file = m_files.value(pane)) {
        const qint64 value = position * LastProgress / qMax<qint64>(1, file->lengthMs);
        deck()->SetProgressValue(pane, int(qBound<qint64>(0, value, LastProgress)));
        return;
    }
    if (!m_isPlaced)
        return;
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(position);
    if (time.date() != m_day->date()) {
        const QSignalBlocker blocker(m_day);
        m_day->setDate(time.date());
        showColors();
    }
    short hour = short(time.time().hour());
    short minute = short(time.time().minute());
    short second = short(time.time().second());
    deck()->SetTimerSliderPose(hour, minute, second);
}

void PlaybackTab::goToDay(const QDate& day)
{
    tell("day " + day.toString(Qt::ISODate));
    showColors();
    seekDay();
    showPosition();
}

void PlaybackTab::seekChosenTime(int)
{
    short hour = 0, minute = 0, second = 0, endHour = 0, endMinute = 0, endSecond = 0;
    deck()->GetSelectedTime(hour, minute, second, endHour, endMinute, endSecond);
    const int secondOfDay = hour * 3600 + minute * 60 + second;
    const qint64 moment = momentOf(m_day->date(), secondOfDay, QTimeZone::systemTimeZone());
    tell("seeks " + PaneClips::clockText(moment));
    seekTo(moment);
}

void PlaybackTab::playChosenTime(int pane)
{
    seekChosenTime(pane);
    if (streams()->cameraAt(pane) && !isFile(pane))
        play(pane, true);
}

void PlaybackTab::seekFile(int pane, int value)
{
    if (const auto file = m_files.value(pane))
        file->group.seek(qMin(file->lengthMs * value / LastProgress, file->lengthMs - 1));
}

void PlaybackTab::soundChanged(int pane)
{
    if (pane == deck()->GetCurrentWnd())
        showToolbar();
}

void PlaybackTab::tellSeekTime()
{
    const auto* player = static_cast<const VideoSource*>(sender());
    if (!m_isSeeking || player != streams()->sourceAt(deck()->GetCurrentWnd()) || !player->frame())
        return;
    m_isSeeking = false;
    tell(QString("shows %1 %2 ms after the seek")
             .arg(PaneClips::clockText(player->frame()->wallMs))
             .arg(m_sinceSeek.elapsed()));
}

void PlaybackTab::groupEnded()
{
    const auto* ended = static_cast<PlayGroup*>(sender());
    for (int pane = 0; pane < PaneCount; ++pane) {
        if (streams()->cameraAt(pane) && group(pane) == ended)
            deck()->SetWndBtnState(pane, BTN_PLAY, 0);
    }
    tell(word("the recording has ended"));
}

void PlaybackTab::markClip(int pane)
{
    const qint64 now = group(pane)->clock().position();
    const auto file = m_files.value(pane);
    const QString camera = streams()->cameraAt(pane)->name;
    const bool isMarked = m_clips->mark(pane, now, (file ? file->track : track(camera))->pieces(), camera);
    deck()->SetWndBtnState(pane, BTN_RECORD, isMarked);
}

void PlaybackTab::downloadPiece()
{
    const int pane = deck()->GetCurrentWnd();
    const CameraRecord* camera = streams()->cameraAt(pane);
    if (!camera || isFile(pane))
        return;
    const auto piece = track(camera->name)->at(m_group.clock().position());
    if (!piece) {
        tell(word("No recording at this time"));
        return;
    }
    m_clips->download(*piece, camera->name);
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
    const qint64 length = SegmentReader::duration(path);
    if (pane < 0 || length <= 0) {
        tell("no video in " + path);
        return;
    }
    const auto file = QSharedPointer<OpenFile>::create();
    file->record.name = QFileInfo(path).fileName();
    file->track = std::make_shared<SegmentTrack>(QVector<TrackPiece>{{path, 0, length}});
    file->lengthMs = length;
    connect(&file->group, &PlayGroup::ended, this, &PlaybackTab::groupEnded);
    streams()->clear(pane);
    m_clips->forget(pane);
    m_files.insert(pane, file);
    streams()->assign(pane, file->record);
    deck()->SetSpeedInfo(pane, PlaybackClock::NormalSpeed);
    showPane(pane);
    play(pane, true);
    tell("opened: " + path);
}
