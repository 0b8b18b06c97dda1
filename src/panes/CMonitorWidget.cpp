#include "panes/CMonitorWidget.h"

CMonitorWidget::CMonitorWidget(QWidget* parent, int nWndIndex) : CVideoWidget(parent, nWndIndex) {}

void CMonitorWidget::SetActive(bool bActive)
{
    CVideoWidget::SetActive(bActive);
}

void CMonitorWidget::slot_resetWnd()
{
    CVideoWidget::slot_resetWnd();
}
