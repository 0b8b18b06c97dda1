#include "tabs/TourTab.h"

#include "cameras/CameraList.h"
#include "panes/DeckStreams.h"

#include <CPaneDeck.h>

#include <QTimerEvent>

namespace {

constexpr int PaneCount = 16;
constexpr int FirstLayout = 4;
constexpr int ChannelsPerTour = 4;
constexpr int DwellMs = 5000;

} // namespace

TourTab::TourTab(const CameraList& cameras, CameraHub* hub, EventLog* log)
    : DeckTab("tour", WND_TYPE_TOUR, PaneCount, hub, log), m_cameras(cameras), m_vecTours(PaneCount)
{
    // Between two channels the pane shows the length of its tour.
    Streams()->SetWaitingText(QString());
}

void TourTab::FirstShown()
{
    Deck()->SetShowWndNo(FirstLayout);
    for (int i = 0; i < m_cameras.Count() && i < FirstLayout * ChannelsPerTour; ++i)
        m_vecTours[i % FirstLayout].channels.append(&m_cameras.At(i));
    for (int pane = 0; pane < FirstLayout; ++pane)
        Step(pane);
}

void TourTab::ShowCamera(const CameraRecord& camera, int pane)
{
    const int index = pane < 0 ? Deck()->GetCurrentWnd() : pane;
    if (index < 0 || index >= m_vecTours.size())
        return;
    Tour& tour = m_vecTours[index];
    tour.channels.append(&camera);
    tour.next = tour.channels.size() - 1;
    Step(index);
    Log(QString("pane %1 tours through %2 channels").arg(index).arg(tour.channels.size()));
}

void TourTab::showEvent(QShowEvent* event)
{
    m_timer.start(DwellMs, this);
    DeckTab::showEvent(event);
}

void TourTab::hideEvent(QHideEvent* event)
{
    m_timer.stop();
    DeckTab::hideEvent(event);
}

void TourTab::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_timer.timerId())
        return;
    for (int pane = 0; pane < m_vecTours.size(); ++pane) {
        // A recording is of one camera: the tour waits for its end.
        if (m_vecTours[pane].channels.size() > 1 && !Deck()->btncheck(pane, BTN_RECORD))
            Step(pane);
    }
}

void TourTab::Step(int pane)
{
    Tour& tour = m_vecTours[pane];
    if (tour.channels.isEmpty())
        return;
    const CameraRecord* camera = tour.channels[tour.next];
    tour.next = (tour.next + 1) % tour.channels.size();
    Streams()->Assign(pane, *camera);
    Deck()->setTour(pane, tour.channels.size());
}
