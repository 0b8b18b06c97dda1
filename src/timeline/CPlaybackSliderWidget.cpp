#include "timeline/CPlaybackSliderWidget.h"

#include "common/FormParts.h"
#include "timeline/CTimerSlider.h"
#include "timeline/ScaleWatch.h"

#include <cstring>

using namespace FormParts;

namespace {

// Every byte of an entry of an empty table, which shows as grey (128, 128, 128).
constexpr int EmptyByte = 0x80;

} // namespace

void Ui_CPlaybackSliderWidget::setupUi(QFrame* pFrame)
{
    pFrame->setObjectName("CPlaybackSliderWidget");
    pFrame->resize(827, 50);
    pFrame->setMaximumSize(QWIDGETSIZE_MAX, 184);
    pFrame->setWindowTitle(CPlaybackSliderWidget::tr("Form"));
    verticalLayout_2 = NewLayout<QVBoxLayout>(pFrame, "verticalLayout_2", 0);
    m_widget = AddWidget<QWidget>(verticalLayout_2, pFrame, "m_widget");
    // Time runs from left to right in every language.
    m_widget->setLayoutDirection(Qt::LeftToRight);
    verticalLayout = NewLayout<QVBoxLayout>(m_widget, "verticalLayout", 0);
    m_dayWidget = AddWidget<CTimerSlider>(verticalLayout, m_widget, "m_dayWidget");
    m_dayWidget->setMinimumSize(0, 50);
    m_dayWidget->setMaximumSize(QWIDGETSIZE_MAX, 50);
}

CPlaybackSliderWidget::CPlaybackSliderWidget(QWidget* parent)
    : QFrame(parent), m_pDayColors(new unsigned int[DaySeconds])
{
    ui.setupUi(this);
    ui.m_dayWidget->InitRange(DaySeconds, 0);
    ClearTimerPeriod();
    connect(ui.m_dayWidget, SIGNAL(sig_SliderMoved(int)), this, SLOT(slot_SliderMoved(int)));
    connect(ui.m_dayWidget, SIGNAL(sig_SliderReleased(int)), this, SLOT(slot_SliderReleased(int)));
    connect(ui.m_dayWidget, SIGNAL(sig_MouseDbCLick(int)), this, SLOT(slot_MouseDbClicked(int)));
    // Last, so that whoever is told of a drag finds the time that it is at.
    m_pWatch = new ScaleWatch(ui.m_dayWidget);
    m_pWatch->Follow(ui.m_widget);
    for (QWidget* part : ui.m_dayWidget->findChildren<QWidget*>())
        m_pWatch->Follow(part);
}

void CPlaybackSliderWidget::SetTimerPeriod(const unsigned int* pColors)
{
    if (!pColors)
        return;
    std::memmove(m_pDayColors.get(), pColors, DaySeconds * sizeof(unsigned int));
    ui.m_dayWidget->SetColors(m_pDayColors.get());
}

void CPlaybackSliderWidget::ClearTimerPeriod()
{
    std::memset(m_pDayColors.get(), EmptyByte, DaySeconds * sizeof(unsigned int));
    ui.m_dayWidget->SetColors(m_pDayColors.get());
}

void CPlaybackSliderWidget::UpdateTime(CTimerSlider* pSender, int nNum)
{
    if (pSender != ui.m_dayWidget)
        return;
    // A thumb of odd width that stands at the right end gives a value above the total as well.
    const int second = qMin(nNum, DaySeconds - 1);
    m_nHour = short(second / 3600);
    m_nMinute = short(second % 3600 / 60);
    m_nSecond = short(second % 60);
    ui.m_dayWidget->slot_SetCurNum(nNum);
}

void CPlaybackSliderWidget::SetTimerSliderPose(short nHour, short nMinute, short nSecond)
{
    const int second = nHour * 3600 + nMinute * 60 + nSecond;
    if (second > DaySeconds || ui.m_dayWidget->IsThumbPressed())
        return;
    UpdateTime(ui.m_dayWidget, second);
    ui.m_dayWidget->SetCurValue(second);
}

void CPlaybackSliderWidget::GetSelectedTime(short& nHour, short& nMinute, short& nSecond, short& nEndHour,
                                            short& nEndMinute, short& nEndSecond) const
{
    nHour = m_nHour;
    nMinute = m_nMinute;
    nSecond = m_nSecond;
    nEndHour = 23;
    nEndMinute = 59;
    nEndSecond = 59;
}

void CPlaybackSliderWidget::slot_SliderMoved(int nNum)
{
    UpdateTime(qobject_cast<CTimerSlider*>(sender()), nNum);
}

void CPlaybackSliderWidget::slot_SliderReleased(int nNum)
{
    UpdateTime(qobject_cast<CTimerSlider*>(sender()), nNum);
    Q_EMIT sig_SliderMoved();
}

void CPlaybackSliderWidget::slot_MouseDbClicked(int)
{
    Q_EMIT sig_SliderDbClicked();
}
