#include "timeline/CTimerLine.h"

#include "frames/FramePainter.h"

#include <QImage>
#include <QMouseEvent>
#include <QPaintEngine>
#include <QPaintEvent>
#include <QPainter>

#include <cstring>

namespace {

// From the painter's coordinates to the device's pixels. A painter that turns or scales what it draws, or a
// device with one pixel to a coordinate, draws a column per coordinate.
QTransform ToPixels(const QPainter& painter)
{
    const qreal dRatio = painter.paintEngine()->paintDevice()->devicePixelRatioF();
    const QTransform toDevice = painter.deviceTransform();
    const bool bPlain = toDevice.type() <= QTransform::TxScale && qFuzzyCompare(toDevice.m11(), dRatio) &&
                        qFuzzyCompare(toDevice.m22(), dRatio);
    return dRatio != 1.0 && bPlain ? toDevice : QTransform();
}

} // namespace

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
    if (m_nCount == 0)
        return;
    QPainter painter(this);
    const QTransform toPixels = ToPixels(painter);
    const QRect strip = RoundedEdges(toPixels.mapRect(QRectF(rect())));
    const QRect exposed = RoundedEdges(toPixels.mapRect(QRectF(event->rect() & rect())));
    if (exposed.isEmpty())
        return;
    if (m_columns.Width() != strip.width())
        m_columns = StripColumns(m_pColors.get(), m_nCount, strip.width());
    QImage image(exposed.size(), QImage::Format_RGB32);
    if (image.isNull())
        return;
    m_columns.Fill(exposed.left() - strip.left(), exposed.width(),
                   reinterpret_cast<QRgb*>(image.scanLine(0)));
    for (int y = 1; y < exposed.height(); ++y)
        std::memcpy(image.scanLine(y), image.constScanLine(0), exposed.width() * sizeof(QRgb));
    painter.setBackgroundMode(Qt::TransparentMode);
    painter.setWorldTransform(toPixels.inverted(), true);
    painter.drawImage(exposed.topLeft(), image);
}
