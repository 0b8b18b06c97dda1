#include "panes/CVideoWidget.h"

#include "deck/CPaneDeck.h"
#include "panes/QMyLabel.h"
#include "panes/QSubWidget.h"

#include <QPointer>

void CVideoWidget::MakeConnections()
{
    const QSubWidget* surface = m_pSubWidget;
    const QObject* deck = parent();
    connect(surface, SIGNAL(action(QSubWidget*)), SLOT(slot_onMousePress(QSubWidget*)));
    connect(surface, SIGNAL(sig_sendPtzCommand(int,int)), SLOT(slot_sendPtzCommand(int,int)));
    connect(surface, SIGNAL(sig_rightBtnClick()), SLOT(slot_OnMouseRightClick()));
    connect(surface, SIGNAL(sig_RectanglePoint(int,QPoint,QPoint)), deck,
                            SIGNAL(sig_RectanglePoint(int,QPoint,QPoint)));
    connect(surface, SIGNAL(sig_selectRegion(int,QPoint,QPoint)), deck,
                            SIGNAL(sig_SelectRegion(int,QPoint,QPoint)));
    connect(surface, SIGNAL(sig_sendMouseMsg(int,int,QPoint)), deck,
                            SIGNAL(sig_sendMouseMsg(int,int,QPoint)));
    connect(this, SIGNAL(sig_activWnd(int)), deck, SLOT(slot_setActiveWnd(int)));
    connect(this, SIGNAL(sig_OnBtnClick(int,Btn_type_EX)), deck, SLOT(slot_OnWndBtnClicked(int,Btn_type_EX)));
    connect(this, SIGNAL(sig_dbWndclick(int,int)), deck, SLOT(slot_dbWndClick(int,int)));
    connect(this, SIGNAL(sig_setBtnCheck(Btn_type_EX,bool)), SLOT(slot_setBtnCheck(Btn_type_EX,bool)));
    connect(this, SIGNAL(sig_resetWnd()), SLOT(slot_resetWnd()));
    connect(this, SIGNAL(sig_wndMesInfo(WndMessage_type,int,QString)),
                         SLOT(slot_wndMesInfo(WndMessage_type,int,QString)));
    connect(this, SIGNAL(sig_sendPtzCommand(int,int,int)), deck, SIGNAL(sig_SendPtzCommand(int,int,int)));
    connect(this, SIGNAL(sig_OnMouseRightBtnClick(int)), deck, SLOT(slot_OnRightMouseClick(int)));
    connect(this, SIGNAL(sig_RectanglePoint(int,QPoint,QPoint)), deck,
                         SIGNAL(sig_RectanglePoint(int,QPoint,QPoint)));
    connect(this, SIGNAL(sig_DragEvent(QTreeWidgetItem*,int)), deck,
                         SIGNAL(sig_DragEvent(QTreeWidgetItem*,int)));
    connect(surface->GetLabel(), SIGNAL(sig_sendClose()), SLOT(slot_SendClose()));
    connect(this, SIGNAL(sig_hideTit()), SLOT(slot_hideTit()));
    connect(this, SIGNAL(sig_btnStopClick(int,bool)), deck, SIGNAL(sig_btnStopClick(int,bool)));
    connect(this, SIGNAL(sig_btnCloseClick(int)), deck, SIGNAL(sig_btnCloseClick(int)));
    connect(this, SIGNAL(sig_ReplaySeek(int,int)), deck, SIGNAL(sig_ReplaySeek(int,int)));
}

void CVideoWidget::slot_wndBtnClick(Btn_type_EX btnType)
{
    if (btnType == BTN_REMOTE_CONTROL) {
        btnRemoteControlClick();
        return;
    }
    const QPointer<CVideoWidget> alive(this);
    setBtnCheck(btnType);
    if (btnType == BTN_CLOSE_VIDEO)
        btnRemoteControlClick();
    if (alive)
        Q_EMIT sig_OnBtnClick(m_nWndIndex, btnType);
}

void CVideoWidget::slot_onMousePress(QSubWidget* pWidget)
{
    Q_EMIT sig_activWnd(pWidget->GetWndIndex());
}

void CVideoWidget::slot_OnMouseRightClick()
{
    const QPointer<CVideoWidget> alive(this);
    Q_EMIT sig_activWnd(m_nWndIndex);
    if (alive)
        Q_EMIT sig_OnMouseRightBtnClick(m_nWndIndex);
}

void CVideoWidget::slot_dbVideoWidget(int, int nParam)
{
    Q_EMIT sig_dbWndclick(m_nWndIndex, nParam);
}

void CVideoWidget::slot_sendPtzCommand(int nCommand, int nType)
{
    Q_EMIT sig_sendPtzCommand(m_nWndIndex, nCommand, nType);
}

void CVideoWidget::slot_RectanglePoint(QPoint ptStart, QPoint ptCur)
{
    Q_EMIT sig_RectanglePoint(m_nWndIndex, ptStart, ptCur);
}

void CVideoWidget::slot_SendClose()
{
    Q_EMIT sig_OnBtnClick(m_nWndIndex, BTN_STOP);
}

void CVideoWidget::btnRemoteControlClick()
{
    if (CPaneDeck* deck = Deck())
        deck->setMousMsg(m_nWndIndex, false);
}

void CVideoWidget::ClickAsActive(Btn_type_EX btnType)
{
    const QPointer<CVideoWidget> alive(this);
    Q_EMIT sig_activWnd(m_nWndIndex);
    if (alive)
        Q_EMIT sig_OnBtnClick(m_nWndIndex, btnType);
}

void CVideoWidget::slot_hideTit()
{
    CPaneDeck* deck = Deck();
    if (deck && deck->m_nTitleWnd == m_nWndIndex)
        deck->hideTitle(m_nWndIndex);
}

void CVideoWidget::slot_btnStopClick(bool bPause)
{
    Q_EMIT sig_btnStopClick(m_nWndIndex, bPause);
}

void CVideoWidget::slot_btnCloseClick()
{
    Q_EMIT sig_btnCloseClick(m_nWndIndex);
}

void CVideoWidget::slot_ReplaySeek(int nValue)
{
    Q_EMIT sig_ReplaySeek(m_nWndIndex, nValue);
}
