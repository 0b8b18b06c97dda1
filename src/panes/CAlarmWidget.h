#pragma once

#include "panes/CVideoWidget.h"

/// A pane of an alarm deck. It gets the title bar also while idle, and can send a stop.
class CAlarmWidget : public CVideoWidget
{
    Q_OBJECT

public:
    CAlarmWidget(QWidget* parent, int nWndIndex);

    void SetActive(bool bActive) override;

public Q_SLOTS:
    /// Makes the pane active, then reports a click on BTN_STOP.
    void slot_onStopClick();

protected Q_SLOTS:
    void slot_setBtnCheck(Btn_type_EX btnType, bool bCheck) override;
    void slot_resetWnd() override;
    void slot_wndMesInfo(WndMessage_type type, int nParam1, QString strParam2) override;
};
