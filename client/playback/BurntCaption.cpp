#include "playback/BurntCaption.h"

#include <QDateTime>
#include <QPainter>

namespace {

/// Readable on a small part, and no hindrance on a large one.
constexpr int LeastPixels = 11;
constexpr int MostPixels = 28;
constexpr int LinesInTile = 18;
const QColor Ground(0, 0, 0, 170);

} // namespace

void paintBurntCaption(QImage& picture, const QRect& tile, const QString& name, qint64 ms)
{
    QPainter painter(&picture);
    QFont font = painter.font();
    font.setPixelSize(qBound(LeastPixels, tile.height() / LinesInTile, MostPixels));
    painter.setFont(font);
    const QFontMetrics metrics(font);
    const int margin = metrics.height() / 4;
    const QString time = QDateTime::fromMSecsSinceEpoch(ms).toString("yyyy-MM-dd HH:mm:ss");
    const int room = tile.width() - metrics.horizontalAdvance(time) - 5 * margin;
    const QString shown = metrics.elidedText(name.simplified(), Qt::ElideRight, qMax(0, room));
    const QString text = time + "  " + shown;
    QRect ground(0, 0, metrics.horizontalAdvance(text) + 2 * margin, metrics.height() + margin);
    ground.moveBottomLeft(tile.bottomLeft());
    painter.fillRect(ground & tile, Ground);
    painter.setPen(Qt::white);
    painter.drawText(ground.adjusted(margin, 0, 0, 0), Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                     text);
}
