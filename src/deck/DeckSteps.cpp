#include "deck/DeckSteps.h"

#include "deck/CPaneDeck.h"
#include "panes/CVideoWidget.h"
#include "panes/PtzZone.h"

#include <QEvent>
#include <QPointer>

QList<CVideoWidget*> DeckSteps::Page(const CPaneDeck& deck)
{
    const int panes = deck.m_nPageWnds;
    return panes > 0 ? deck.m_listWnd.mid(deck.m_nPage * panes, panes) : QList<CVideoWidget*>();
}

void DeckSteps::HidePage(const CPaneDeck& deck)
{
    for (CVideoWidget* pane : Page(deck))
        pane->setVisible(false);
}

void DeckSteps::SelectLayout(CPaneDeck* deck, int type, int no, int panes, int activeBelow)
{
    HidePage(*deck);
    deck->m_nPage = 0;
    deck->m_nLayout[0] = type;
    deck->m_nLayout[1] = no;
    deck->m_nPageWnds = panes;
    const QPointer<CPaneDeck> alive(deck);
    if (deck->m_nActiveWnd == -1 || deck->m_nActiveWnd >= activeBelow)
        deck->slot_setActiveWnd(0);
    if (!alive)
        return;
    // A receiver may have selected another layout meanwhile, so the page's size is read anew.
    deck->m_eShowMode = deck->m_nPageWnds == 1 ? WND_SHOW_SINGLE : WND_SHOW_SPLIT;
    Q_EMIT deck->sig_wndNumberChanged(deck->m_nPageWnds);
    if (alive)
        deck->updatePages();
}

void DeckSteps::GoToPage(CPaneDeck* deck, int page)
{
    HidePage(*deck);
    deck->m_nPage = page;
    if (deck->m_nPageWnds != 1)
        deck->m_eShowMode = WND_SHOW_SPLIT;
    const QPointer<CPaneDeck> alive(deck);
    Q_EMIT deck->sig_SwitchVideo(page, deck->m_nPageWnds, deck->m_nPageType);
    if (alive)
        deck->updatePages();
}

void DeckSteps::Enlarge(CPaneDeck* deck, CVideoWidget* pane)
{
    HidePage(*deck);
    pane->setGeometry(deck->m_disPlayRect->geometry());
    pane->setVisible(true);
    deck->m_eShowMode = WND_SHOW_ENLARGED;
}

void DeckSteps::Split(CPaneDeck* deck)
{
    deck->m_eShowMode = WND_SHOW_SPLIT;
    deck->updatePages();
}

void DeckSteps::EnterFullScreen(CPaneDeck* deck, const QRect& screen)
{
    deck->m_nFullScreen = 1;
    const QPointer<CPaneDeck> alive(deck);
    Q_EMIT deck->sig_OnStateChanged(Qt::WindowFullScreen);
    if (!alive)
        return;
    deck->setWindowFlags(Qt::Window | Qt::FramelessWindowHint);
    deck->setGeometry(screen);
    deck->show();
}

void DeckSteps::LeaveFullScreen(CPaneDeck* deck)
{
    deck->m_nFullScreen = 0;
    deck->setWindowFlags(Qt::SubWindow);
    const QPointer<CPaneDeck> alive(deck);
    Q_EMIT deck->sig_OnStateChanged(Qt::WindowNoState);
    if (!alive)
        return;
    if (CVideoWidget* pane = deck->GetVideoWidget(deck->m_nMouseWnd)) {
        Split(deck);
        deck->m_nMouseWnd = -1;
        pane->setMousMsg(false);
    }
    deck->show();
}

void DeckSteps::FollowDrag(CPaneDeck* deck, QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        Arm(deck, PaneUnderCursor(deck, event));
        break;
    case QEvent::MouseMove:
        if (deck->m_bDragging)
            SetCursorZone(deck, deck->m_nDragWnd, PTZ_ZONE_PANE_DRAG);
        break;
    case QEvent::MouseButtonRelease:
        if (deck->m_bDragging)
            Drop(deck, PaneUnderCursor(deck, event));
        break;
    default:
        break;
    }
}

int DeckSteps::PaneUnderCursor(CPaneDeck* deck, QEvent* event)
{
    const int place = deck->PointAtTheWind(event);
    return place < 0 ? -1 : place + deck->m_nPage * deck->m_nPageWnds;
}

void DeckSteps::Arm(CPaneDeck* deck, int index)
{
    deck->m_bDragging = index >= 0 && deck->m_mapDrag[index] != 0;
    if (index >= 0)
        deck->m_nDragWnd = index;
}

void DeckSteps::Drop(CPaneDeck* deck, int index)
{
    const int source = deck->m_nDragWnd;
    // Cleared first: a receiver may run a dialog, and the mouse moves over panes meanwhile.
    deck->m_bDragging = false;
    if (index < 0 || index == source) {
        SetCursorZone(deck, source, PTZ_ZONE_PANE_DRAG_OVER);
        return;
    }
    const QPointer<CPaneDeck> alive(deck);
    Q_EMIT deck->sig_ChangeWnd(source, index);
    if (alive)
        SetCursorZone(deck, index, PTZ_ZONE_PANE_DRAG_OVER);
}

void DeckSteps::SetCursorZone(CPaneDeck* deck, int index, int zone)
{
    if (CVideoWidget* pane = deck->GetVideoWidget(index))
        pane->SetCursorZone(zone);
}
