#include "panes/CTimePlayBackWidget.h"

#include "text/LangText.h"

#include <QDateTime>
#include <QPushButton>
#include <QSlider>

CTimePlayBackWidget::CTimePlayBackWidget(QWidget* parent) : QWidget(parent)
{
    ui.setupUi(this);
    ui.btnStop->setAccessibleName(LangText("PaneDeck.Pause"));
    ui.SdrTime->setAccessibleName(LangText("Time"));
    ui.btnclose->setAccessibleName(LangText("Close"));
    connect(ui.SdrTime, SIGNAL(sliderPressed()), SLOT(slot_sliderPressed()));
    connect(ui.SdrTime, SIGNAL(sliderReleased()), SLOT(slot_sliderReleased()));
    connect(ui.btnStop, SIGNAL(clicked()), SLOT(slot_btnStopClick()));
    connect(ui.btnclose, SIGNAL(clicked()), SIGNAL(sig_btnCloseClick()));
}

void CTimePlayBackWidget::SetSliderPos(int nValue, long lTime)
{
    if (m_nSliderDown != 0)
        return;
    ui.SdrTime->setValue(nValue);
    ui.SdrTime->setToolTip(QDateTime::fromSecsSinceEpoch(lTime).toString("yyyy.MM.dd hh:mm:ss"));
}

void CTimePlayBackWidget::slot_sliderPressed()
{
    m_nSliderDown = 1;
}

void CTimePlayBackWidget::slot_sliderReleased()
{
    m_nSliderDown = 0;
    Q_EMIT sig_ReplaySeek(ui.SdrTime->value());
}

void CTimePlayBackWidget::slot_btnStopClick()
{
    Q_EMIT sig_btnStopClick(ui.btnStop->isChecked());
}
