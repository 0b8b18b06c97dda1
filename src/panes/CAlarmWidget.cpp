#include "panes/CAlarmWidget.h"

CAlarmWidget::CAlarmWidget(QWidget* parent, int nWndIndex) : CVideoWidget(parent, nWndIndex) {}

void CAlarmWidget::SetActive(bool bActive)
{
    CVideoWidget::SetActive(bActive);
}

void CAlarmWidget::slot_onStopClick()
{
    ClickAsActive(BTN_STOP);
}

void CAlarmWidget::slot_setBtnCheck(Btn_type_EX btnType, bool bCheck)
{
    CVideoWidget::slot_setBtnCheck(btnType, bCheck);
}

void CAlarmWidget::slot_resetWnd()
{
    CVideoWidget::slot_resetWnd();
}

void CAlarmWidget::slot_wndMesInfo(WndMessage_type type, int nParam1, QString strParam2)
{
    CVideoWidget::slot_wndMesInfo(type, nParam1, strParam2);
}
