#include "cameras/CaptionStrip.h"

#include "synthetic/Caption.h"

#include <QPainter>

namespace {

constexpr int TextHeight = 28;
constexpr int Margin = 6;
constexpr int MostWidth = 680;
const QColor Ground(16, 20, 24);
const QColor Ink(240, 240, 240);

} // namespace

QImage captionStrip(const QString& name, const QString& time)
{
    QFont font("DejaVu Sans");
    font.setPixelSize(20);
    const QFontMetrics metrics(font);
    const int timeWidth = metrics.horizontalAdvance(time);
    const QString shown = metrics.elidedText(name, Qt::ElideRight, MostWidth - timeWidth - 4 * Margin);
    const int width = metrics.horizontalAdvance(shown) + timeWidth + 4 * Margin;
    QImage strip(width, TextHeight + Caption::LineHeight, QImage::Format_RGB888);
    strip.fill(Ground);
    QPainter painter(&strip);
    painter.setFont(font);
    painter.setPen(Ink);
    const QRect text(Margin, 0, width - 2 * Margin, TextHeight);
    painter.drawText(text, Qt::AlignVCenter | Qt::AlignLeft, shown);
    painter.drawText(text, Qt::AlignVCenter | Qt::AlignRight, time);
    return strip;
}
