#include "tabs/AlarmTab.h"

#include "alarms/AlarmCenter.h"
#include "alarms/AlarmPanel.h"
#include "cameras/CameraHub.h"
#include "cameras/CameraList.h"
#include "cameras/ClientArchive.h"
#include "common/Words.h"
#include "panes/DeckStreams.h"

#include <CPaneDeck.h>

#include <QDateTime>
#include <QLayout>

namespace {

constexpr int PaneCount = 16;
constexpr int FirstLayout = 4;

} // namespace

AlarmTab::AlarmTab(CameraHub* hub, EventLog* log, ClientArchive* archive, AlarmCenter* alarms)
    : DeckTab(word("alarm"), WND_TYPE_ALARM, PaneCount, hub, log), m_cameras(hub->cameras()),
      m_archive(archive), m_alarms(alarms), m_board(PaneCount)
{
    setObjectName("alarmTab");
    auto* panel = new AlarmPanel(alarms->book());
    layout()->addWidget(panel);
    connect(panel, &AlarmPanel::playAsked, this, &AlarmTab::playAsked);
}

void AlarmTab::firstShown()
{
    deck()->SetShowWndNo(FirstLayout);
    QVector<Alarm> waiting;
    for (const Alarm& alarm : m_alarms->book()->alarms()) {
        if (!alarm.isSeen && waiting.size() < FirstLayout)
            waiting.prepend(alarm);
    }
    for (const Alarm& alarm : waiting) {
        const QDateTime time = QDateTime::fromMSecsSinceEpoch(alarm.startMs);
        if (const CameraRecord* camera = m_cameras.byId(alarm.cameraId))
            bringUp(*camera, time.toString("HH:mm:ss"));
    }
    connect(m_alarms, &AlarmCenter::raised, this, &AlarmTab::raise);
}

void AlarmTab::showCamera(const CameraRecord& camera, int pane)
{
    const int index = pane < 0 ? deck()->GetCurrentWnd() : pane;
    takeDown(index);
    m_board.bringUp(index, camera.about.id);
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
    const CameraRecord* camera = streams()->cameraAt(pane);
    if (camera && m_board.isUp(pane)) {
        m_archive->setAlarm(camera->name, false);
        m_alarms->book()->setSeenOf(camera->about.id);
    }
    takeDown(pane);
}

void AlarmTab::takeDown(int pane)
{
    if (!m_board.isUp(pane))
        return;
    m_board.takeDown(pane);
    deck()->ChangeFreeze(pane, false);
    DeckTab::closePane(pane);
    tell(word("pane %1 taken down").arg(pane));
}

void AlarmTab::raise(const CameraRecord* camera)
{
    bringUp(*camera, QTime::currentTime().toString("HH:mm:ss"));
}

void AlarmTab::bringUp(const CameraRecord& camera, const QString& time)
{
    const int pane = m_board.paneFor(camera.about.id);
    if (pane < 0)
        return;
    showCamera(camera, pane);
    const QString text = word("%1, motion %2").arg(camera.name, time);
    deck()->SetTitle(pane, text);
    deck()->setAlarm(pane, text);
    deck()->ChangeFreeze(pane, true);
    tell(word("camera %1 brought up in pane %2").arg(camera.name, QString::number(pane)));
}
