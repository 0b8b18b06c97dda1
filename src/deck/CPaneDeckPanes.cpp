#include "deck/CPaneDeck.h"

#include "deck/DeckMore.h"
#include "panes/CTourWidget.h"

#include <QPointer>

void CPaneDeck::SetFrame(int nWndIndex, const QImage& frame, QRect source)
{
    SetFrame(nWndIndex, frame, source, QSize());
}

void CPaneDeck::SetFrame(int nWndIndex, const QImage& frame, QRect source, QSize videoSize)
{
    if (CVideoWidget* pane = GetVideoWidget(nWndIndex))
        pane->SetFrame(frame, source, videoSize);
}

void CPaneDeck::PostFrame(int nWndIndex, QImage frame, QRect source)
{
    PostFrame(nWndIndex, std::move(frame), source, QSize());
}

void CPaneDeck::PostFrame(int nWndIndex, QImage frame, QRect source, QSize videoSize)
{
    if (nWndIndex >= 0 && nWndIndex < m_nWndCount)
        m_pMore->mailbox.Post(nWndIndex, std::move(frame), source, videoSize);
}

void CPaneDeck::ResetWnd(int nWndIndex)
{
    const QPointer<CPaneDeck> alive(this);
    if (nWndIndex == m_nActiveWnd)
        SetToolBtnEnable(false, false);
    if (!alive)
        return;
    if (CVideoWidget* pane = GetVideoWidget(nWndIndex))
        pane->ResetWnd();
}

void CPaneDeck::SetMessage(int nWndIndex, QString strText)
{
    if (CVideoWidget* pane = GetVideoWidget(nWndIndex))
        pane->SendMesInfo(WNDMSG_TEXT, 0, strText);
}

void CPaneDeck::SetTitle(int nWndIndex, QString strTitle)
{
    if (CVideoWidget* pane = GetVideoWidget(nWndIndex))
        pane->SendMesInfo(WNDMSG_TITLE, 0, strTitle);
}

void CPaneDeck::SetSpeedInfo(int nWndIndex, int nSpeed)
{
    if (CVideoWidget* pane = GetVideoWidget(nWndIndex))
        pane->SendMesInfo(WNDMSG_SPEED, nSpeed, "");
}

void CPaneDeck::SetFunctionParam(int nWndIndex, int nParam)
{
    CVideoWidget* pane = GetVideoWidget(nWndIndex);
    if (!pane)
        return;
    pane->SetFunctionParam(nParam);
    m_mapDrag[nWndIndex] = nParam == 0;
}

bool CPaneDeck::UpdateEnable(int nWndIndex)
{
    CVideoWidget* pane = GetVideoWidget(nWndIndex);
    return pane && pane->UpdateEnable();
}

void CPaneDeck::EnableRefresh(int nWndIndex, bool bEnable)
{
    if (CVideoWidget* pane = GetVideoWidget(nWndIndex))
        pane->EnableRefresh(bEnable);
}

bool CPaneDeck::btncheck(int nWndIndex, Btn_type_EX btnType)
{
    CVideoWidget* pane = GetVideoWidget(nWndIndex);
    return pane && pane->btncheck(btnType);
}

void CPaneDeck::SetBtnCheck(int nWndIndex, Btn_type_EX btnType, bool bCheck)
{
    if (CVideoWidget* pane = GetVideoWidget(nWndIndex))
        pane->SetBtnCheck(btnType, bCheck);
}

void CPaneDeck::setBtnCheck(int nWndIndex, Btn_type_EX btnType)
{
    if (CVideoWidget* pane = GetVideoWidget(nWndIndex))
        pane->setBtnCheck(btnType);
}

void CPaneDeck::setScaseType(WndScase eScale, int nWndIndex)
{
    if (CVideoWidget* pane = GetVideoWidget(nWndIndex))
        pane->setScaseType(eScale);
}

WndScase CPaneDeck::getScaseType(int nWndIndex)
{
    CVideoWidget* pane = GetVideoWidget(nWndIndex);
    return pane ? pane->getScaseType() : WND_SCASE_FILL;
}

void CPaneDeck::ExchangeDisplay(int nSrcWnd, int nDisWnd)
{
    CVideoWidget* source = GetVideoWidget(nSrcWnd);
    CVideoWidget* target = GetVideoWidget(nDisWnd);
    if (!source || !target)
        return;
    const WndScase sourceScale = source->getScaseType();
    const WndScase targetScale = target->getScaseType();
    QSize sourceSize;
    QSize targetSize;
    source->GetVideoSize(sourceSize.rwidth(), sourceSize.rheight());
    target->GetVideoSize(targetSize.rwidth(), targetSize.rheight());
    source->setScaseType(targetScale);
    source->SetVideoSize(targetSize.width(), targetSize.height());
    target->setScaseType(sourceScale);
    target->SetVideoSize(sourceSize.width(), sourceSize.height());
}

void CPaneDeck::OpenPlayBackSlider(int nWndIndex)
{
    if (CVideoWidget* pane = GetVideoWidget(nWndIndex))
        pane->OpenPlayBackSlider();
}

void CPaneDeck::ClosePlayBackSlider(int nWndIndex)
{
    if (CVideoWidget* pane = GetVideoWidget(nWndIndex))
        pane->ClosePlayBackSlider();
}

void CPaneDeck::SetPlayBackSliderPos(int nWndIndex, int nPos, long lTime)
{
    if (CVideoWidget* pane = GetVideoWidget(nWndIndex))
        pane->SetPlayBackSliderPos(nPos, lTime);
}

void CPaneDeck::ChangeFreeze(int nWndIndex, bool bFreeze)
{
    if (CVideoWidget* pane = GetVideoWidget(nWndIndex))
        pane->ChangeFreeze(bFreeze);
}

void CPaneDeck::setAlarm(int nWndIndex, QString strText)
{
    if (CVideoWidget* pane = GetVideoWidget(nWndIndex))
        pane->setText(strText);
}

void CPaneDeck::setTour(int nWndIndex, int nCount)
{
    if (CVideoWidget* pane = GetVideoWidget(nWndIndex))
        pane->setText(TourText(nCount));
}

void CPaneDeck::clearText()
{
    for (CVideoWidget* pane : qAsConst(m_listWnd))
        pane->setText("");
}

void CPaneDeck::SetWndRecord(int nWndIndex, bool bCheck)
{
    SetBtnCheck(nWndIndex, BTN_RECORD, bCheck);
}

void CPaneDeck::SetWndAudio(int nWndIndex, bool bCheck)
{
    SetBtnCheck(nWndIndex, BTN_AUDIO, bCheck);
}

void CPaneDeck::SetWndPlay(int nWndIndex, bool bCheck)
{
    SetBtnCheck(nWndIndex, BTN_PLAY, bCheck);
}

void CPaneDeck::slot_OnRightMouseClick(int nWndIndex)
{
    Q_EMIT sig_OnRightMouseClick(nWndIndex);
}

void CPaneDeck::slot_OnWndBtnClicked(int nWndIndex, Btn_type_EX btnType)
{
    Q_EMIT sig_OnWndBtnClick(nWndIndex, btnType);
}

void CPaneDeck::slot_btnStopClick(int nWndIndex, bool bPause)
{
    Q_EMIT sig_btnStopClick(nWndIndex, bPause);
}

void CPaneDeck::slot_btnCloseClick(int nWndIndex)
{
    Q_EMIT sig_btnCloseClick(nWndIndex);
}
