#include "tabs/TourTab.h"

#include "cameras/CameraList.h"
#include "common/VisibleTimer.h"
#include "common/Words.h"
#include "panes/DeckStreams.h"

#include <CPaneDeck.h>

namespace {

constexpr int PaneCount = 16;
constexpr int FirstLayout = 4;
constexpr int ChannelsPerTour = 4;
constexpr int DwellMs = 5000;

} // namespace

TourTab::TourTab(const CameraList& cameras, CameraHub* hub, EventLog* log)
    : DeckTab(word("tour"), WND_TYPE_TOUR, PaneCount, hub, log), m_cameras(cameras), m_tours(PaneCount)
{
    setObjectName("tourTab");
    // Between two channels the pane shows the length of its tour.
    streams()->setWaitingText(QString());
    connect(new VisibleTimer(this, DwellMs), &VisibleTimer::timeout, this, &TourTab::stepAll);
}

void TourTab::firstShown()
{
    deck()->SetShowWndNo(FirstLayout);
    for (int i = 0; i < m_cameras.count() && i < FirstLayout * ChannelsPerTour; ++i)
        m_tours[i % FirstLayout].channels.append(&m_cameras.at(i));
    for (int pane = 0; pane < FirstLayout; ++pane)
        step(pane);
}

void TourTab::showCamera(const CameraRecord& camera, int pane)
{
    const int index = pane < 0 ? deck()->GetCurrentWnd() : pane;
    if (index < 0 || index >= m_tours.size())
        return;
    Tour& tour = m_tours[index];
    tour.channels.append(&camera);
    tour.next = tour.channels.size() - 1;
    step(index);
    tell(word("pane %1 tours through %2 channels").arg(index).arg(tour.channels.size()));
}

void TourTab::cameraGoes(const CameraRecord* camera)
{
    for (Tour& tour : m_tours) {
        tour.channels.removeAll(camera);
        tour.next = tour.channels.isEmpty() ? 0 : tour.next % tour.channels.size();
    }
    DeckTab::cameraGoes(camera);
}

/// A recording is of one camera: the tour waits for its end.
void TourTab::stepAll()
{
    for (int pane = 0; pane < m_tours.size(); ++pane) {
        if (m_tours[pane].channels.size() > 1 && !deck()->btncheck(pane, BTN_RECORD))
            step(pane);
    }
}

void TourTab::step(int pane)
{
    Tour& tour = m_tours[pane];
    if (tour.channels.isEmpty())
        return;
    const CameraRecord* camera = tour.channels[tour.next];
    tour.next = (tour.next + 1) % tour.channels.size();
    streams()->assign(pane, *camera);
    deck()->setTour(pane, tour.channels.size());
}
