#include "timeline/CLinSliderWidget.h"

#include "common/CSeekSlider.h"
#include "text/LangText.h"

#include <QPainter>
#include <QPointer>

namespace {

constexpr int Margin = 16;

} // namespace

CLinSliderWidget::CLinSliderWidget(QWidget* parent) : QWidget(parent), m_pSlider(new CSeekSlider(this))
{
    // The ruler is black: a dark skin gives it a light ground by its sheet.
    setAttribute(Qt::WA_StyledBackground);
    m_pSlider->setOrientation(Qt::Horizontal);
    m_pSlider->setAccessibleName(LangText("Position"));
    // The ruler's numbers grow to the right in every language, and so must the handle's way.
    m_pSlider->setLayoutDirection(Qt::LeftToRight);
    connect(m_pSlider, SIGNAL(sliderReleased()), this, SIGNAL(sliderReleased()));
    connect(m_pSlider, SIGNAL(sliderPressed()), this, SIGNAL(sliderPressed()));
}

void CLinSliderWidget::SetRange(int nMin, int nMax)
{
    m_nMin = nMin;
    m_nMax = nMax;
    m_pSlider->setRange(nMin, nMax);
}

void CLinSliderWidget::SetValue(int nValue)
{
    m_pSlider->setValue(nValue);
}

int CLinSliderWidget::Value() const
{
    return m_pSlider->value();
}

void CLinSliderWidget::SetSliderEnabled(bool bEnable)
{
    const QPointer<CLinSliderWidget> alive(this);
    m_pSlider->setEnabled(bEnable);
    if (alive)
        setEnabled(bEnable);
}

void CLinSliderWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setPen(Qt::black);
    const int y = height() / 2 - 10;
    const int step = (width() - 2 * Margin) / m_nTicks;
    const qint64 valueStep = (qint64(m_nMax) - m_nMin) / m_nTicks;
    for (int i = 0; i <= m_nTicks; ++i) {
        const int x = Margin + i * step;
        const bool end = i == 0 || i == m_nTicks;
        painter.drawLine(x, y - (end ? 10 : 5), x, y);
        if (end)
            painter.drawText(QRect(x - 18, y - 20, 35, 20), Qt::AlignCenter, tr("%1").arg(i * valueStep));
    }
    const int right = Margin + m_nTicks * step;
    painter.drawLine(Margin, y, right, y);
    m_pSlider->setGeometry(Margin, y, qMax(0, right - Margin), m_pSlider->height());
}
