#include "tabs/LiveTab.h"

#include "cameras/CameraList.h"
#include "common/Words.h"
#include "panes/DeckStreams.h"
#include "panes/InstantPlayback.h"
#include "panes/PaneSound.h"
#include "panes/PaneZoom.h"

#include <CPaneDeck.h>

namespace {

constexpr int PaneCount = DeckView::MostPanes;
constexpr int FirstLayout = 9;

} // namespace

LiveTab::LiveTab(const CameraList& cameras, CameraHub* hub, EventLog* log)
    : DeckTab(word("live"), WND_TYPE_MONITOR, PaneCount, hub, log), m_cameras(cameras),
      m_instant(new InstantPlayback(deck(), streams(), this))
{
    setObjectName("liveTab");
    connect(m_instant, &InstantPlayback::told, this, &LiveTab::tell);
    connect(&cameras, &CameraList::added, this, &LiveTab::takeNewCamera);
    connect(deck(), &CPaneDeck::sig_ChangeWnd, this, &LiveTab::exchangePanes);
    connect(deck(), &CPaneDeck::sig_wndNumberChanged, this, [this] { keepPage(0); });
    connect(deck(), &CPaneDeck::sig_wndNumberChanged, deck(), &CPaneDeck::ShowLayoutMark);
    connect(deck(), &CPaneDeck::sig_SwitchVideo, this, &LiveTab::keepPage);
}

void LiveTab::firstShown()
{
    if (m_firstView) {
        showView(*m_firstView);
        return;
    }
    deck()->SetShowWndNo(FirstLayout);
    for (int pane = 0; m_takesNew && pane < qMin(PaneCount, m_cameras.count()); ++pane)
        showCamera(m_cameras.at(pane), pane);
}

DeckView LiveTab::view() const
{
    DeckView view;
    int type = 0;
    deck()->GetLayout(type, view.layout);
    view.name = m_viewName;
    view.isCustom = type != 0;
    view.page = m_page;
    for (int pane = 0; pane < PaneCount; ++pane) {
        PaneView one = m_gone.value(pane);
        if (const CameraRecord* camera = streams()->cameraAt(pane))
            one = {camera->about.id, camera->name, deck()->getScaseType(pane), zoom()->view(pane)};
        view.panes.append(one);
    }
    return view;
}

void LiveTab::showView(const DeckView& view)
{
    m_viewName = view.name;
    selectLayout(view);
    for (int pane = 0; pane < PaneCount; ++pane)
        showPane(pane, view.panes.value(pane));
}

void LiveTab::selectLayout(const DeckView& view)
{
    if (view.isCustom)
        deck()->slot_changePageNo(1, view.layout);
    else
        deck()->SetShowWndNo(DeckView::NormalLayouts[view.layout]);
    int type = 0;
    int layout = 0;
    deck()->GetLayout(type, layout);
    // A custom layout may be of more panes than there are.
    if ((type != 0) != view.isCustom || layout != view.layout)
        deck()->SetShowWndNo(FirstLayout);
    for (int page = 0; page < view.page; ++page)
        deck()->OnNextPage();
}

void LiveTab::showPane(int pane, const PaneView& wanted)
{
    const CameraRecord* camera = m_cameras.byId(wanted.camera);
    // It may have been removed and added again.
    if (!camera && !wanted.camera.isEmpty())
        camera = m_cameras.find(wanted.name);
    if (camera && streams()->cameraAt(pane) != camera)
        showCamera(*camera, pane);
    else if (!camera)
        closePane(pane);
    deck()->setScaseType(WndScase(wanted.scale), pane);
    zoom()->setView(pane, wanted.zoom);
    if (camera || wanted.camera.isEmpty())
        return;
    m_gone.insert(pane, wanted);
    deck()->SetMessage(pane, word("%1 is gone").arg(wanted.name));
}

void LiveTab::showCamera(const CameraRecord& camera, int pane)
{
    const int index = pane < 0 ? deck()->GetCurrentWnd() : pane;
    m_gone.remove(index);
    DeckTab::showCamera(camera, index);
}

void LiveTab::closePane(int pane)
{
    if (m_gone.remove(pane) > 0)
        deck()->SetMessage(pane, QString());
    DeckTab::closePane(pane);
}

void LiveTab::takeNewCamera(const CameraRecord* camera)
{
    bool isAwaited = false;
    for (int pane = 0; pane < PaneCount; ++pane) {
        if (m_gone.value(pane).camera != camera->about.id)
            continue;
        isAwaited = true;
        showPane(pane, m_gone.value(pane));
    }
    if (isAwaited)
        return;
    for (int pane = 0; m_takesNew && pane < PaneCount; ++pane) {
        if (streams()->cameraAt(pane) || m_gone.contains(pane))
            continue;
        showCamera(*camera, pane);
        return;
    }
}

void LiveTab::buttonClicked(int pane, Btn_type_EX button)
{
    if (button == BTN_SAVE_VIEW)
        Q_EMIT saveAsked();
    else if (button == BTN_INSTANT_PLAYBACK)
        replay(pane);
    else
        DeckTab::buttonClicked(pane, button);
}

/// What is live is not heard over an older picture.
void LiveTab::replay(int pane)
{
    sound()->hush(pane);
    m_instant->toggle(pane);
}

void LiveTab::exchangePanes(int source, int target)
{
    deck()->ExchangeDisplay(source, target);
    streams()->swap(source, target);
    tell(word("panes %1 and %2 exchanged").arg(source).arg(target));
}

void LiveTab::keepPage(int page)
{
    m_page = page;
}
