#pragma once

#include "panes/CVideoWidget.h"

/// A pane of a live deck.
class CMonitorWidget : public CVideoWidget
{
    Q_OBJECT

public:
    CMonitorWidget(QWidget* parent, int nWndIndex);

    void SetActive(bool bActive) override;

public Q_SLOTS:
    void slot_resetWnd() override;
};
