#include "synthetic/Caption.h"

#include "decode/Frame.h"

#include <QDateTime>
#include <QPainter>

#include <cstring>

namespace {

constexpr int TextHeight = 28;
constexpr int LineHeight = 3;
constexpr int Margin = 6;
constexpr int MostWidth = 680;
const QColor Ground(16, 20, 24);
const QColor Ink(240, 240, 240);
const uchar LineColour[] = {255, 176, 32};

} // namespace

QRect Caption::update(qint64 wallMs)
{
    const qint64 second = wallMs / 1000;
    if (second != m_second)
        write(second);
    return m_strip.rect();
}

void Caption::draw(Frame& frame, qint64 wallMs) const
{
    const int width = qMin(m_strip.width(), frame.width);
    const int height = qMin(m_strip.height(), frame.height);
    for (int y = 0; y < height; ++y)
        std::memcpy(frame.row(y), m_strip.constScanLine(y), size_t(width) * 3);
    const int grown = int(wallMs % 1000) * width / 1000;
    for (int y = height - LineHeight; y >= 0 && y < height; ++y) {
        for (int x = 0; x < grown; ++x)
            std::memcpy(frame.row(y) + x * 3, LineColour, 3);
    }
}

void Caption::write(qint64 second)
{
    m_second = second;
    const QString time = QDateTime::fromSecsSinceEpoch(second).toString("yyyy-MM-dd hh:mm:ss");
    QFont font("DejaVu Sans");
    font.setPixelSize(20);
    const QFontMetrics metrics(font);
    const int timeWidth = metrics.horizontalAdvance(time);
    const QString name = metrics.elidedText(m_name, Qt::ElideRight, MostWidth - timeWidth - 4 * Margin);
    const int width = metrics.horizontalAdvance(name) + timeWidth + 4 * Margin;
    if (m_strip.width() != width)
        m_strip = QImage(width, TextHeight + LineHeight, QImage::Format_RGB888);
    m_strip.fill(Ground);
    QPainter painter(&m_strip);
    painter.setFont(font);
    painter.setPen(Ink);
    const QRect text(Margin, 0, width - 2 * Margin, TextHeight);
    painter.drawText(text, Qt::AlignVCenter | Qt::AlignLeft, name);
    painter.drawText(text, Qt::AlignVCenter | Qt::AlignRight, time);
}
