#pragma once

#include "panes/CVideoWidget.h"

/// A pane of a playback deck. It keeps the playback speed as a text.
class CPlaybackWidget : public CVideoWidget
{
    Q_OBJECT

public:
    CPlaybackWidget(QWidget* parent, int nWndIndex);

    void SetActive(bool bActive) override;

Q_SIGNALS:
    /// Never fires.
    void sig_sliderMoved(int nValue);

public Q_SLOTS:
    /// Makes the pane active, then reports a click on BTN_CONFIG.
    void slot_configClicked();

protected Q_SLOTS:
    void slot_resetWnd() override;
    void slot_wndMesInfo(WndMessage_type type, int nParam1, QString strParam2) override;

protected:
    void resizeEvent(QResizeEvent* event) override;
};
