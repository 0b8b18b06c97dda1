#include "deck/CPaneDeck.h"

#include "deck/DeckPages.h"
#include "deck/PageGeometry.h"
#include "layouts/BuiltInLayouts.h"
#include "layouts/CSegmentationDialog.h"
#include "layouts/CSplitCatalog.h"
#include "panes/CVideoWidget.h"
#include "toolbars/CMonitorToolBar.h"

#include <QCursor>
#include <QPointer>

namespace {

void ShowAt(CVideoWidget* pane, const QRect& rect)
{
    if (!pane)
        return;
    pane->setGeometry(rect);
    pane->setVisible(true);
}

} // namespace

void CPaneDeck::GetShowMode(__WND_SHOW_MODE& eMode)
{
    eMode = __WND_SHOW_MODE(m_eShowMode);
}

void CPaneDeck::GetLayout(int& nType, int& nNo)
{
    nType = m_nLayout[0] == 0 ? 0 : 1;
    nNo = m_nLayout[1];
}

void CPaneDeck::ShowLayoutMark()
{
    if (!m_pMonitorBar || m_nPageWnds == 0)
        return;
    if (m_nLayout[0] == 0)
        m_pMonitorBar->SetShowWndNo(CSplitCatalog::Instance()->Layout(0, m_nLayout[1]).count);
    else
        m_pMonitorBar->MarkCustom();
}

void CPaneDeck::EditLayouts()
{
    QSize& thumbnails = CSplitCatalog::Instance()->thumbnailSize;
    if (!thumbnails.isValid())
        thumbnails = QSize(30, 30);
    CSegmentationDialog dialog(nullptr);
    connect(&dialog, SIGNAL(sig_LayoutEdited(int,bool)), this, SIGNAL(sig_LayoutEdited(int,bool)));
    dialog.exec();
}

int CPaneDeck::GetTotalPages()
{
    return PageCount(m_nWndCount, m_nPageWnds);
}

void CPaneDeck::SetShowWndNo(int nNum)
{
    if (m_eType == WND_TYPE_MONITOR)
        m_pMonitorBar->SetShowWndNo(nNum);
    slot_changePageNo(nNum);
}

void CPaneDeck::slot_changePageNo(int nNum)
{
    const int panes = nNum == 32 ? 36 : nNum;
    const int layout = BuiltInLayoutIndex(panes);
    if (layout >= 0 && panes <= m_nWndCount)
        DeckPages::SelectLayout(this, 0, layout, panes, nNum);
}

void CPaneDeck::slot_changePageNo(int type, int no)
{
    if (no < 0 || no >= CSplitCatalog::LayoutCount)
        return;
    const int panes = CSplitCatalog::Instance()->Layout(type, no).count;
    if (type == 0) {
        const QPointer<CPaneDeck> alive(this);
        Q_EMIT sig_wndNumberChanged(panes);
        if (alive)
            slot_changePageNo(panes);
    } else if (panes > 0 && panes <= m_nWndCount) {
        DeckPages::SelectLayout(this, type, no, panes, panes);
    }
}

void CPaneDeck::OnNextPage()
{
    if (m_nPage + 1 < GetTotalPages())
        DeckPages::GoToPage(this, m_nPage + 1);
}

void CPaneDeck::OnPreviePage()
{
    if (m_nPage > 0)
        DeckPages::GoToPage(this, m_nPage - 1);
}

void CPaneDeck::slot_dbWndClick(int nWndIndex, int nParam)
{
    CVideoWidget* pane = GetVideoWidget(nWndIndex);
    if (!pane || pane->mousMsg() || m_eType == WND_TYPE_TOUR)
        return;
    if (nParam != 1 && m_eShowMode == WND_SHOW_SPLIT)
        DeckPages::Enlarge(this, pane);
    else if (nParam != 1 && m_eShowMode == WND_SHOW_ENLARGED)
        DeckPages::Split(this);
    Q_EMIT sig_DbClickWnd(nWndIndex);
}

void CPaneDeck::updatePages()
{
    const QRect display = m_disPlayRect->geometry();
    if (m_eShowMode == WND_SHOW_SINGLE)
        return ShowAt(m_listWnd.value(m_nPage), display);
    const QList<CVideoWidget*> page = DeckPages::Page(*this);
    for (int place = 0; place < page.size(); ++place) {
        CVideoWidget* pane = page.at(place);
        QRect rect = display;
        if (m_eShowMode == WND_SHOW_SPLIT)
            CalcPageRect(rect, place, display);
        if (m_eShowMode == WND_SHOW_SPLIT || pane->GetWndIndex() == m_nActiveWnd)
            ShowAt(pane, rect);
        else
            pane->setVisible(false);
    }
}

void CPaneDeck::CalcPageRect(QRect& rcOut, int nIndex, QRect rcDisplay)
{
    const SplitLayout& layout = CSplitCatalog::Instance()->Layout(m_nLayout[0], m_nLayout[1]);
    rcOut = PlaceRect(layout, nIndex, rcDisplay.size());
}

int CPaneDeck::PointAtTheWind(QEvent*)
{
    if (m_eShowMode != WND_SHOW_SPLIT)
        return -1;
    // The panes of page 0 stand for the places of every page: the pages before the last one shown keep
    // theirs.
    const QPoint origin = mapToGlobal(m_disPlayRect->geometry().topLeft());
    QList<QRect> places;
    for (const CVideoWidget* pane : m_listWnd.mid(0, m_nPageWnds))
        places.append(pane->geometry().translated(origin));
    return PlaceUnder(places, QCursor::pos());
}
