#include "tabs/AlarmTab.h"

#include "cameras/CameraHub.h"
#include "cameras/CameraList.h"
#include "cameras/ClientArchive.h"
#include "common/Words.h"
#include "panes/DeckStreams.h"
#include "source/VideoSource.h"

#include <CPaneDeck.h>

#include <QTime>

namespace {

constexpr int PaneCount = 16;
constexpr int FirstLayout = 4;
constexpr int WatchedCameras = 8;

} // namespace

AlarmTab::AlarmTab(const CameraList& cameras, CameraHub* hub, EventLog* log, ClientArchive* archive)
    : DeckTab("alarm", WND_TYPE_ALARM, PaneCount, hub, log), m_cameras(cameras), m_pHub(hub),
      m_pArchive(archive), m_board(PaneCount)
{
}

AlarmTab::~AlarmTab()
{
    for (const Watched& watched : m_vecWatched)
        watched.source->setMotionDetection(false);
}

void AlarmTab::FirstShown()
{
    Deck()->SetShowWndNo(FirstLayout);
    for (int i = 0; i < qMin(WatchedCameras, m_cameras.Count()); ++i)
        Watch(m_cameras.At(i));
}

void AlarmTab::Watch(const CameraRecord& camera)
{
    QString error;
    const QSharedPointer<VideoSource> source = m_pHub->Acquire(camera, &error);
    if (!source) {
        Log(error);
        return;
    }
    connect(source.data(), SIGNAL(motionChanged(bool)), SLOT(slot_motion(bool)));
    source->setMotionDetection(true);
    m_vecWatched.append({&camera, source});
}

void AlarmTab::ShowCamera(const CameraRecord& camera, int pane)
{
    const int index = pane < 0 ? Deck()->GetCurrentWnd() : pane;
    ClosePane(index);
    m_board.BringUp(index, camera.name);
    DeckTab::ShowCamera(camera, index);
}

void AlarmTab::ButtonClicked(int pane, Btn_type_EX button)
{
    // The title bar's only button reports close as well, just before stop.
    if (button == BTN_STOP)
        ClosePane(pane);
    else if (button != BTN_CLOSE_VIDEO)
        DeckTab::ButtonClicked(pane, button);
}

void AlarmTab::ClosePane(int pane)
{
    if (!m_board.IsUp(pane))
        return;
    m_board.TakeDown(pane);
    if (const CameraRecord* camera = Streams()->CameraAt(pane))
        m_pArchive->SetAlarm(camera->name, false);
    Deck()->ChangeFreeze(pane, false);
    DeckTab::ClosePane(pane);
    Log(QString("pane %1 taken down").arg(pane));
}

void AlarmTab::slot_motion(bool motion)
{
    for (const Watched& watched : m_vecWatched) {
        if (watched.source.data() != sender())
            continue;
        if (motion)
            Raise(*watched.camera);
        else
            m_pArchive->SetAlarm(watched.camera->name, false);
    }
}

void AlarmTab::Raise(const CameraRecord& camera)
{
    const int pane = m_board.PaneFor(camera.name);
    if (pane < 0)
        return;
    ShowCamera(camera, pane);
    const QString time = QTime::currentTime().toString("HH:mm:ss");
    const QString text = Word("%1, motion %2").arg(camera.name, time);
    Deck()->SetTitle(pane, text);
    Deck()->setAlarm(pane, text);
    Deck()->ChangeFreeze(pane, true);
    m_pArchive->SetAlarm(camera.name, true);
    Log(QString("camera %1 brought up in pane %2").arg(camera.name).arg(pane));
}
