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

int LayoutOf(Btn_type_EX button)
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
    : DeckTab("playback", WND_TYPE_PLAYBACK, PaneCount, hub, log), m_pArchive(archive), m_pDay(new DayField),
      m_pClips(new PaneClips(this))
{
    auto* row = new QHBoxLayout;
    row->setContentsMargins(6, 3, 6, 3);
    row->addWidget(new QLabel(Word("Day")));
    row->addWidget(m_pDay);
    row->addStretch(1);
    static_cast<QVBoxLayout*>(layout())->insertLayout(0, row);
    Streams()->SetWaitingText(Word("No recording at this time"));
    Streams()->SetSourceMaker(
        [this](int pane, const CameraRecord& camera, QString*) { return MakeSource(pane, camera); });
    connect(m_pDay, SIGNAL(dateChanged(QDate)), SLOT(slot_day(QDate)));
    connect(m_pArchive, SIGNAL(changed(QString)), SLOT(slot_archiveChanged(QString)));
    connect(&m_group, SIGNAL(ended()), SLOT(slot_ended()));
    connect(m_pClips, SIGNAL(told(QString)), SLOT(Log(QString)));
    connect(Sound(), SIGNAL(changed(int)), SLOT(slot_sound(int)));
    connect(Deck(), SIGNAL(sig_activeWnd(int)), SLOT(slot_active(int)));
    connect(Deck(), SIGNAL(sig_TimerSliderReleased(int)), SLOT(slot_timeChosen(int)));
    connect(Deck(), SIGNAL(sig_TimerSliderdbClicked(int)), SLOT(slot_timeDoubleClicked(int)));
    connect(Deck(), SIGNAL(sig_SliderMoved(int,int)), SLOT(slot_fileMoved(int,int)));
    connect(Deck(), SIGNAL(sig_btnDownload_click()), SLOT(slot_download()));
}

PlaybackTab::~PlaybackTab()
{
    // Sources go before the clocks and records that they play by.
    for (int pane = 0; pane < PaneCount; ++pane)
        Streams()->Clear(pane);
}

void PlaybackTab::FirstShown()
{
    Deck()->SetShowWndNo(FirstLayout);
    const QVector<const CameraRecord*> cameras = m_pArchive->Cameras();
    for (int i = 0; i < qMin(FirstCameras, cameras.size()); ++i)
        ShowCamera(*cameras[i], i);
    Sound()->ShowVolume();
    GoToNewest();
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
        ShowPosition();
}

void PlaybackTab::ShowCamera(const CameraRecord& camera, int pane)
{
    const int index = pane < 0 ? Deck()->GetCurrentWnd() : pane;
    Streams()->Clear(index);
    m_hashFiles.remove(index);
    m_pClips->Forget(index);
    Streams()->Assign(index, camera);
    Deck()->SetSpeedInfo(index, m_group.clock().speed());
    Deck()->SetWndBtnState(index, BTN_PLAY, m_group.clock().isRunning());
    if (index == Deck()->GetCurrentWnd())
        slot_active(index);
}

QSharedPointer<VideoSource> PlaybackTab::MakeSource(int pane, const CameraRecord& camera)
{
    const auto file = m_hashFiles.value(pane);
    const auto address = SourceAddress::synthetic(1, camera.name);
    PlayGroup* group = Group(pane);
    ArchivePlayer* player = group->add(address, file ? file->track : Track(camera.name));
    const QSharedPointer<VideoSource> source(player, &QObject::deleteLater);
    connect(player, SIGNAL(frameReady()), SLOT(slot_frame()));
    player->start();
    player->seek(group->clock().position());
    return source;
}

std::shared_ptr<SegmentTrack> PlaybackTab::Track(const QString& camera)
{
    std::shared_ptr<SegmentTrack>& track = m_hashTracks[camera];
    if (!track)
        track = std::make_shared<SegmentTrack>(m_pArchive->Pieces(camera));
    return track;
}

PlayGroup* PlaybackTab::Group(int pane)
{
    const auto file = m_hashFiles.value(pane);
    return file ? &file->group : &m_group;
}

QVector<int> PlaybackTab::Companions(int pane) const
{
    QVector<int> panes;
    for (int i = 0; i < PaneCount; ++i) {
        if (i == pane || (!IsFile(pane) && !IsFile(i) && Streams()->CameraAt(i)))
            panes.append(i);
    }
    return panes;
}

void PlaybackTab::ButtonClicked(int pane, Btn_type_EX button)
{
    if (const int count = LayoutOf(button)) {
        Deck()->SetShowWndNo(count);
        return;
    }
    if (button == BTN_OPEN) {
        AskForFile();
        return;
    }
    // What the base records and replays is live.
    if (button == BTN_SNAPSHOT || button == BTN_ZOOM || button == BTN_AUDIO || button == BTN_CLOSE_VIDEO)
        DeckTab::ButtonClicked(pane, button);
    if (!Streams()->CameraAt(pane))
        return;
    const PlaybackClock& clock = Group(pane)->clock();
    if (button == BTN_PLAY)
        Play(pane, !clock.isRunning());
    else if (button == BTN_STOP)
        Stop(pane);
    else if (button == BTN_QUICK)
        ChangeSpeed(pane, clock.speed() * 2);
    else if (button == BTN_SLOW)
        ChangeSpeed(pane, clock.speed() / 2);
    else if (button == BTN_TIME_CLIP || button == BTN_RECORD)
        MarkClip(pane);
}

void PlaybackTab::ClosePane(int pane)
{
    DeckTab::ClosePane(pane);
    m_hashFiles.remove(pane);
    m_pClips->Forget(pane);
    slot_active(Deck()->GetCurrentWnd());
}

void PlaybackTab::Play(int pane, bool run)
{
    Group(pane)->play(run);
    for (int companion : Companions(pane))
        Deck()->SetWndBtnState(companion, BTN_PLAY, run);
}

void PlaybackTab::Stop(int pane)
{
    Play(pane, false);
    ChangeSpeed(pane, PlaybackClock::NormalSpeed);
    if (IsFile(pane))
        Group(pane)->seek(0);
    else
        SeekDay();
    ShowPosition();
}

void PlaybackTab::ChangeSpeed(int pane, int speed)
{
    Group(pane)->setSpeed(speed);
    for (int companion : Companions(pane))
        Deck()->SetSpeedInfo(companion, Group(pane)->clock().speed());
    Log(QString("pane %1 speed %2").arg(pane).arg(Deck()->GetSpeedInfo()));
}

void PlaybackTab::SeekTo(qint64 ms)
{
    m_bPlaced = true;
    m_bSeeking = true;
    m_sinceSeek.start();
    m_group.seek(ms);
}

/// To the first recording of the day, of the active pane's camera, or else to the day's start.
void PlaybackTab::SeekDay()
{
    const QTimeZone zone = QTimeZone::systemTimeZone();
    const qint64 start = DayStart(m_pDay->date(), zone);
    const CameraRecord* camera = Streams()->CameraAt(Deck()->GetCurrentWnd());
    qint64 moment = start;
    if (camera && !Track(camera->name)->at(start))
        moment = Track(camera->name)->nextStart(start).value_or(start);
    SeekTo(moment < DayStart(m_pDay->date().addDays(1), zone) ? moment : start);
}

void PlaybackTab::GoToNewest()
{
    const CameraRecord* camera = Streams()->CameraAt(Deck()->GetCurrentWnd());
    const QVector<TrackPiece> pieces = camera ? Track(camera->name)->pieces() : QVector<TrackPiece>();
    if (m_bPlaced || pieces.isEmpty())
        return;
    const QDate day = QDateTime::fromMSecsSinceEpoch(pieces.last().startMs).date();
    m_pDay->setDate(day);
    SeekDay();
}

void PlaybackTab::slot_archiveChanged(const QString& camera)
{
    for (auto it = m_hashTracks.begin(); it != m_hashTracks.end(); ++it) {
        if (camera.isEmpty() || it.key() == camera)
            it.value()->setPieces(m_pArchive->Pieces(it.key()));
    }
    // What is on screen may be gone.
    if (camera.isEmpty() && m_bPlaced)
        m_group.seek(m_group.clock().position());
    const CameraRecord* active = Streams()->CameraAt(Deck()->GetCurrentWnd());
    if (!active || (!camera.isEmpty() && active->name != camera))
        return;
    GoToNewest();
    ShowColors();
}

void PlaybackTab::slot_active(int pane)
{
    Deck()->ChangePlaybackViewType(IsFile(pane) ? PLAYBACK_VIEW_FILE : PLAYBACK_VIEW_TIMER);
    ShowToolbar();
    ShowColors();
    ShowPosition();
}

void PlaybackTab::ShowToolbar()
{
    const int pane = Deck()->GetCurrentWnd();
    const bool isUsed = Streams()->CameraAt(pane);
    Deck()->SetToolBtnEnable(isUsed, Sound()->HasSound(pane));
    Deck()->SetWndBtnState(pane, BTN_AUDIO, Sound()->IsHeard(pane));
    if (!isUsed)
        return;
    Deck()->SetWndBtnState(pane, BTN_PLAY, Group(pane)->clock().isRunning());
    Deck()->SetWndBtnState(pane, BTN_RECORD, m_pClips->IsMarked(pane));
}

void PlaybackTab::ShowColors()
{
    const int pane = Deck()->GetCurrentWnd();
    const CameraRecord* camera = Streams()->CameraAt(pane);
    if (!camera || IsFile(pane) || !m_pArchive->IsOpen())
        return;
    const QTimeZone zone = QTimeZone::systemTimeZone();
    const QDate day = m_pDay->date();
    const qint64 from = DayStart(day, zone);
    const qint64 to = DayStart(day.addDays(1), zone);
    const ArchiveIndex& index = m_pArchive->Recordings().Index();
    DayTable table =
        DayColors(day, zone, index.Segments(camera->name, from, to), index.Spans(camera->name, from, to));
    Deck()->SetTimerPeriod(table.data());
}

void PlaybackTab::ShowPosition()
{
    const int pane = Deck()->GetCurrentWnd();
    if (!Streams()->CameraAt(pane))
        return;
    const qint64 position = Group(pane)->clock().position();
    if (const auto file = m_hashFiles.value(pane)) {
        const qint64 value = position * LastProgress / qMax<qint64>(1, file->lengthMs);
        Deck()->SetProgressValue(pane, int(qBound<qint64>(0, value, LastProgress)));
        return;
    }
    if (!m_bPlaced)
        return;
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(position);
    if (time.date() != m_pDay->date()) {
        const QSignalBlocker blocker(m_pDay);
        m_pDay->setDate(time.date());
        ShowColors();
    }
    short hour = short(time.time().hour());
    short minute = short(time.time().minute());
    short second = short(time.time().second());
    Deck()->SetTimerSliderPose(hour, minute, second);
}

void PlaybackTab::slot_day(const QDate& day)
{
    Log("day " + day.toString(Qt::ISODate));
    ShowColors();
    SeekDay();
    ShowPosition();
}

void PlaybackTab::slot_timeChosen(int)
{
    short hour = 0, minute = 0, second = 0, endHour = 0, endMinute = 0, endSecond = 0;
    Deck()->GetSelectedTime(hour, minute, second, endHour, endMinute, endSecond);
    const int secondOfDay = hour * 3600 + minute * 60 + second;
    const qint64 moment = MomentOf(m_pDay->date(), secondOfDay, QTimeZone::systemTimeZone());
    Log("seeks " + PaneClips::ClockText(moment));
    SeekTo(moment);
}

void PlaybackTab::slot_timeDoubleClicked(int pane)
{
    slot_timeChosen(pane);
    if (Streams()->CameraAt(pane) && !IsFile(pane))
        Play(pane, true);
}

void PlaybackTab::slot_fileMoved(int pane, int value)
{
    if (const auto file = m_hashFiles.value(pane))
        file->group.seek(qMin(file->lengthMs * value / LastProgress, file->lengthMs - 1));
}

void PlaybackTab::slot_sound(int pane)
{
    if (pane == Deck()->GetCurrentWnd())
        ShowToolbar();
}

void PlaybackTab::slot_frame()
{
    const auto* player = static_cast<const VideoSource*>(sender());
    if (!m_bSeeking || player != Streams()->SourceAt(Deck()->GetCurrentWnd()) || !player->frame())
        return;
    m_bSeeking = false;
    Log(QString("shows %1 %2 ms after the seek")
            .arg(PaneClips::ClockText(player->frame()->wallMs))
            .arg(m_sinceSeek.elapsed()));
}

void PlaybackTab::slot_ended()
{
    auto* group = static_cast<PlayGroup*>(sender());
    for (int pane = 0; pane < PaneCount; ++pane) {
        if (Streams()->CameraAt(pane) && Group(pane) == group)
            Deck()->SetWndBtnState(pane, BTN_PLAY, 0);
    }
    Log(Word("the recording has ended"));
}

void PlaybackTab::MarkClip(int pane)
{
    const qint64 now = Group(pane)->clock().position();
    const auto file = m_hashFiles.value(pane);
    const QString camera = Streams()->CameraAt(pane)->name;
    const bool isMarked = m_pClips->Mark(pane, now, (file ? file->track : Track(camera))->pieces(), camera);
    Deck()->SetWndBtnState(pane, BTN_RECORD, isMarked);
}

void PlaybackTab::slot_download()
{
    const int pane = Deck()->GetCurrentWnd();
    const CameraRecord* camera = Streams()->CameraAt(pane);
    if (!camera || IsFile(pane))
        return;
    const auto piece = Track(camera->name)->at(m_group.clock().position());
    if (!piece) {
        Log(Word("No recording at this time"));
        return;
    }
    m_pClips->Download(*piece, camera->name);
}

void PlaybackTab::AskForFile()
{
    auto* dialog =
        new QFileDialog(this, Word("Open a recording"), UserFiles::Directory(UserFiles::Kind::Recording));
    dialog->setObjectName("OpenRecording");
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::ExistingFile);
    connect(dialog, SIGNAL(fileSelected(QString)), SLOT(slot_fileChosen(QString)));
    dialog->open();
}

void PlaybackTab::slot_fileChosen(const QString& path)
{
    const int pane = Deck()->GetCurrentWnd();
    const qint64 length = SegmentReader::duration(path);
    if (pane < 0 || length <= 0) {
        Log("no video in " + path);
        return;
    }
    const auto file = QSharedPointer<OpenFile>::create();
    file->record.name = QFileInfo(path).fileName();
    file->track = std::make_shared<SegmentTrack>(QVector<TrackPiece>{{path, 0, length}});
    file->lengthMs = length;
    connect(&file->group, SIGNAL(ended()), SLOT(slot_ended()));
    Streams()->Clear(pane);
    m_pClips->Forget(pane);
    m_hashFiles.insert(pane, file);
    Streams()->Assign(pane, file->record);
    Deck()->SetSpeedInfo(pane, PlaybackClock::NormalSpeed);
    slot_active(pane);
    Play(pane, true);
    Log("opened: " + path);
}
