#include "timeline/CTimerLine.h"

#include <QImage>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>

#include <cstring>

CTimerLine::CTimerLine(QWidget* parent, int nMode) : QFrame(parent), m_nMode(nMode)
{
    setStyleSheet("background:rgb(255, 255, 255,255);border: 5px solid blank;");
}

void CTimerLine::SetCount(int nCount)
{
    m_nCount = qMax(0, nCount);
    m_pColors.reset(m_nCount > 0 ? new unsigned int[m_nCount]() : nullptr);
    m_columns = StripColumns();
    // Every pixel is painted once there is a table, so what lies below needs no paint of its own.
    setAttribute(Qt::WA_OpaquePaintEvent, m_nCount > 0);
}

void CTimerLine::SetColors(const unsigned int* pColors)
{
    if (!pColors || m_nCount == 0)
        return;
    std::memcpy(m_pColors.get(), pColors, m_nCount * sizeof(unsigned int));
    m_columns = StripColumns();
    update();
}

void CTimerLine::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->buttons() & Qt::LeftButton)
        Q_EMIT sig_mouseDbClick(event->pos().x());
}

void CTimerLine::paintEvent(QPaintEvent* event)
{
    const QRect exposed = event->rect() & rect();
    if (m_nCount == 0 || exposed.isEmpty())
        return;
    if (m_columns.Width() != width())
        m_columns = StripColumns(m_pColors.get(), m_nCount, width());
    QImage image(exposed.size(), QImage::Format_RGB32);
    if (image.isNull())
        return;
    m_columns.Fill(exposed.left(), exposed.width(), reinterpret_cast<QRgb*>(image.scanLine(0)));
    for (int y = 1; y < exposed.height(); ++y)
        std::memcpy(image.scanLine(y), image.constScanLine(0), exposed.width() * sizeof(QRgb));
    QPainter painter(this);
    painter.setBackgroundMode(Qt::TransparentMode);
    painter.drawImage(exposed.topLeft(), image);
}
