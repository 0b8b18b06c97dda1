#include "tabs/TourTab.h"

#include "cameras/CameraList.h"
#include "common/VisibleTimer.h"
#include "common/Words.h"
#include "panes/DeckStreams.h"
#include "tabs/TourDialog.h"
#include "views/ViewList.h"

#include <CPaneDeck.h>

#include <QPushButton>

#include <algorithm>

namespace {

constexpr int PaneCount = DeckView::MostPanes;

} // namespace

TourTab::TourTab(const CameraList& cameras, CameraHub* hub, EventLog* log, const ViewList* views)
    : DeckTab(word("tour"), WND_TYPE_TOUR, PaneCount, hub, log), m_cameras(cameras), m_views(views),
      m_timer(new VisibleTimer(this, TourPlan().seconds * 1000)), m_tours(PaneCount)
{
    setObjectName("tourTab");
    // Between two channels the pane shows the length of its tour.
    streams()->setWaitingText(QString());
    connect(deck(), &CPaneDeck::sig_wndNumberChanged, deck(), &CPaneDeck::ShowLayoutMark);
    connect(m_timer, &VisibleTimer::timeout, this, &TourTab::stepAll);
    auto* button = new QPushButton(word("&Tour ..."));
    button->setObjectName("TourButton");
    deck()->addWidget(button);
    connect(button, &QPushButton::clicked, this, &TourTab::askForPlan);
}

void TourTab::firstShown()
{
    begin(TourPlan::load());
}

void TourTab::askForPlan()
{
    auto* dialog = new TourDialog(m_plan, m_cameras, *m_views, this);
    connect(dialog, &QDialog::accepted, this, [this, dialog] {
        dialog->plan().save();
        begin(dialog->plan());
    });
    dialog->open();
}

void TourTab::begin(const TourPlan& plan)
{
    m_plan = plan;
    m_nextView = 0;
    m_tours = QVector<Tour>(PaneCount);
    for (int pane = 0; pane < PaneCount; ++pane)
        closePane(pane);
    m_timer->setInterval(plan.seconds * 1000);
    if (plan.showsViews)
        stepView();
    else
        dealOut();
}

void TourTab::dealOut()
{
    deck()->SetShowWndNo(m_plan.panes);
    int count = 0;
    for (int i = 0; i < m_cameras.count(); ++i) {
        const CameraRecord& camera = m_cameras.at(i);
        if (m_plan.cameras.isEmpty() || m_plan.cameras.contains(camera.about.id))
            m_tours[count++ % m_plan.panes].channels.append(&camera);
    }
    for (int pane = 0; pane < m_plan.panes; ++pane)
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

/// What the operator looks at, and a recording, which is of one camera: the tour waits for their end.
bool TourTab::isHeld(int pane) const
{
    const bool isPointedAt = m_plan.pauses && deck()->PaneWidget(pane)->underMouse();
    return isPointedAt || deck()->btncheck(pane, BTN_RECORD);
}

void TourTab::stepAll()
{
    if (m_plan.showsViews) {
        stepView();
        return;
    }
    for (int pane = 0; pane < m_tours.size(); ++pane) {
        if (m_tours[pane].channels.size() > 1 && !isHeld(pane))
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

/// Views that are gone are passed over.
void TourTab::stepView()
{
    for (int pane = 0; pane < PaneCount; ++pane) {
        if (isHeld(pane))
            return;
    }
    for (int i = 0; i < m_plan.views.size(); ++i) {
        const QString& name = m_plan.views[m_nextView++ % m_plan.views.size()];
        if (const DeckView* view = m_views->find(name)) {
            showView(*view);
            return;
        }
    }
}

void TourTab::showView(const DeckView& view)
{
    deck()->slot_changePageNo(view.isCustom ? 1 : 0, view.layout);
    for (int page = 0; page < view.page; ++page)
        deck()->OnNextPage();
    for (int pane = 0; pane < PaneCount; ++pane) {
        const PaneView wanted = view.panes.value(pane);
        const CameraRecord* camera = m_cameras.byId(wanted.camera);
        if (!camera)
            closePane(pane);
        else if (streams()->cameraAt(pane) != camera)
            streams()->assign(pane, *camera);
        deck()->setScaseType(WndScase(wanted.scale), pane);
    }
}
