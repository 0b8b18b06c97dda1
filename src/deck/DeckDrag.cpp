#include "deck/DeckDrag.h"

#include "deck/CPaneDeck.h"
#include "panes/CVideoWidget.h"
#include "panes/PtzZone.h"

#include <QEvent>
#include <QPointer>

void DeckDrag::Follow(CPaneDeck* deck, QEvent* event)
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

int DeckDrag::PaneUnderCursor(CPaneDeck* deck, QEvent* event)
{
    const int place = deck->PointAtTheWind(event);
    return place < 0 ? -1 : place + deck->m_nPage * deck->m_nPageWnds;
}

void DeckDrag::Arm(CPaneDeck* deck, int index)
{
    deck->m_bDragging = index >= 0 && deck->m_mapDrag[index] != 0;
    if (index >= 0)
        deck->m_nDragWnd = index;
}

void DeckDrag::Drop(CPaneDeck* deck, int index)
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

void DeckDrag::SetCursorZone(CPaneDeck* deck, int index, int zone)
{
    if (CVideoWidget* pane = deck->GetVideoWidget(index))
        pane->SetCursorZone(zone);
}
