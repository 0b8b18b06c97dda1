#pragma once

#include "panes/Ui_CTimePlayBackWidget.h"

#include <QWidget>

/// The bar below a live pane's picture while the pane plays back the recent past. It shows the position that
/// it is given and reports what the user does; it knows no stream.
class CTimePlayBackWidget : public QWidget
{
    Q_OBJECT

public:
    explicit CTimePlayBackWidget(QWidget* parent);

    /// Shows a position of 0 to 1000 and, as the slider's tool tip, its time in seconds since 1970.
    /// Dropped while the user holds the slider.
    void SetSliderPos(int nValue, long lTime);

Q_SIGNALS:
    /// The pause button was clicked; true when it is now pressed in.
    void sig_btnStopClick(bool bPause);
    void sig_btnCloseClick();

    /// The slider was released at 0 to 1000.
    void sig_ReplaySeek(int nValue);

public Q_SLOTS:
    void slot_sliderPressed();
    void slot_sliderReleased();
    void slot_btnStopClick();

private:
    Ui_CTimePlayBackWidget ui;
    int m_nSliderDown = 0;
};
