#include "deck/CPaneDeck.h"

#include "panes/CAlarmWidget.h"
#include "panes/CVideoTitleWidget.h"

namespace {

constexpr int TitleHeight = 20;

} // namespace

void CPaneDeck::showTitle(int nWndIndex)
{
    const CVideoWidget* pane = GetVideoWidget(nWndIndex);
    if (!pane)
        return;
    m_nTitleWnd = nWndIndex;
    m_pTitle->SetText(pane->m_strFullTitle);
    m_pTitle->ShowRemoteControl(pane->mousMsg());
    m_pTitle->SetBtnChecked(BTN_ZOOM, pane->m_bZoom);
    m_pTitle->SetBtnChecked(BTN_RECORD, pane->m_bRecord);
    m_pTitle->SetBtnChecked(BTN_AUDIO, pane->m_bAudio);
    m_pTitle->SetBtnChecked(BTN_INSTANT_PLAYBACK, pane->m_bInstant);
    const QRect rect = pane->geometry();
    m_pTitle->setMinimumWidth(rect.width() - 2);
    m_pTitle->setGeometry(rect.x() + 1, rect.y() + 1, rect.width() - 2, TitleHeight);
    setTitleShow(true);
}

void CPaneDeck::setTitleShow(bool bShow)
{
    m_pTitle->setVisible(bShow);
    if (bShow)
        m_pTitle->raise();
    m_pTitle->update();
}

void CPaneDeck::hideTitle(int nWndIndex)
{
    if (nWndIndex != m_nTitleWnd)
        return;
    m_nTitleWnd = -1;
    setTitleShow(false);
}

void CPaneDeck::hideTit()
{
    if (CVideoWidget* pane = GetVideoWidget(m_nTitleWnd))
        pane->HideTitleIfOutside();
}

void CPaneDeck::setText(QString strText, int nWndIndex)
{
    if (nWndIndex == m_nTitleWnd)
        m_pTitle->SetText(strText);
}

void CPaneDeck::setChecked(Btn_type_EX btnType, bool bCheck, int nWndIndex)
{
    if (nWndIndex == m_nTitleWnd)
        m_pTitle->SetBtnChecked(btnType, bCheck);
}

void CPaneDeck::setTitleMousMsg(bool bMouseMsg, int nWndIndex)
{
    if (nWndIndex == m_nTitleWnd)
        m_pTitle->ShowRemoteControl(bMouseMsg);
}

void CPaneDeck::slot_wndBtnClick(Btn_type_EX btnType)
{
    CVideoWidget* pane = GetVideoWidget(m_nTitleWnd);
    if (!pane)
        return;
    if (btnType != BTN_TITLE_STOP)
        pane->slot_wndBtnClick(btnType);
    else if (auto* alarm = qobject_cast<CAlarmWidget*>(pane))
        alarm->slot_onStopClick();
}
