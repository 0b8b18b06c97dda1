#include "tabs/AlarmTab.h"

#include "cameras/CameraHub.h"
#include "cameras/CameraList.h"
#include "cameras/ClientArchive.h"
#include "common/Words.h"
#include "panes/DeckStreams.h"
#include "source/VideoSource.h"

#include <CPaneDeck.h>

#include <QTime>

#include <algorithm>

namespace {

constexpr int PaneCount = 16;
constexpr int FirstLayout = 4;
constexpr int WatchedCameras = 8;

} // namespace

AlarmTab::AlarmTab(const CameraList& cameras, CameraHub* hub, EventLog* log, ClientArchive* archive)
    : DeckTab(word("alarm"), WND_TYPE_ALARM, PaneCount, hub, log), m_cameras(cameras), m_hub(hub),
      m_archive(archive), m_board(PaneCount)
{
    setObjectName("alarmTab");
}

AlarmTab::~AlarmTab()
{
    for (const Watched& watched : m_watched)
        watched.source->setMotionDetection(false);
}

void AlarmTab::firstShown()
{
    deck()->SetShowWndNo(FirstLayout);
    for (int i = 0; i < qMin(WatchedCameras, m_cameras.count()); ++i)
        watch(m_cameras.at(i));
}

void AlarmTab::watch(const CameraRecord& camera)
{
    const QSharedPointer<VideoSource> source = m_hub->acquire(camera, StreamKind::Small);
    if (!source)
        return;
    connect(source.data(), &VideoSource::motionChanged, this, &AlarmTab::motionChanged);
    source->setMotionDetection(true);
    m_watched.append({&camera, source});
}

void AlarmTab::unwatch(const CameraRecord* camera)
{
    for (int i = m_watched.size() - 1; i >= 0; --i) {
        if (m_watched.at(i).camera == camera)
            m_watched.takeAt(i).source->disconnect(this);
    }
}

void AlarmTab::cameraChanged(const CameraRecord* camera, const CameraRecord& before)
{
    const auto isIt = [camera](const Watched& watched) { return watched.camera == camera; };
    const bool isWatched = std::any_of(m_watched.begin(), m_watched.end(), isIt);
    if (isWatched && !isSameStream(*camera, before)) {
        unwatch(camera);
        watch(*camera);
    }
    DeckTab::cameraChanged(camera, before);
}

void AlarmTab::cameraGoes(const CameraRecord* camera)
{
    unwatch(camera);
    DeckTab::cameraGoes(camera);
}

void AlarmTab::showCamera(const CameraRecord& camera, int pane)
{
    const int index = pane < 0 ? deck()->GetCurrentWnd() : pane;
    closePane(index);
    m_board.bringUp(index, camera.name);
    DeckTab::showCamera(camera, index);
}

void AlarmTab::buttonClicked(int pane, Btn_type_EX button)
{
    // The title bar's only button reports close as well, just before stop.
    if (button == BTN_STOP)
        closePane(pane);
    else if (button != BTN_CLOSE_VIDEO)
        DeckTab::buttonClicked(pane, button);
}

void AlarmTab::closePane(int pane)
{
    if (!m_board.isUp(pane))
        return;
    m_board.takeDown(pane);
    if (const CameraRecord* camera = streams()->cameraAt(pane))
        m_archive->setAlarm(camera->name, false);
    deck()->ChangeFreeze(pane, false);
    DeckTab::closePane(pane);
    tell(word("pane %1 taken down").arg(pane));
}

void AlarmTab::motionChanged(bool motion)
{
    for (const Watched& watched : m_watched) {
        if (watched.source.data() != sender())
            continue;
        if (motion)
            raise(*watched.camera);
        else
            m_archive->setAlarm(watched.camera->name, false);
    }
}

void AlarmTab::raise(const CameraRecord& camera)
{
    const int pane = m_board.paneFor(camera.name);
    if (pane < 0)
        return;
    showCamera(camera, pane);
    const QString time = QTime::currentTime().toString("HH:mm:ss");
    const QString text = word("%1, motion %2").arg(camera.name, time);
    deck()->SetTitle(pane, text);
    deck()->setAlarm(pane, text);
    deck()->ChangeFreeze(pane, true);
    m_archive->setAlarm(camera.name, true);
    tell(word("camera %1 brought up in pane %2").arg(camera.name, QString::number(pane)));
}
