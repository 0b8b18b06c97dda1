#include "playback/PlaybackIcons.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPalette>

namespace {

constexpr int Side = 16;

template <class Draw> QIcon makeIcon(Draw draw)
{
    QIcon icon;
    for (const int scale : {1, 2}) {
        QPixmap pixmap(Side * scale, Side * scale);
        pixmap.setDevicePixelRatio(scale);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(QGuiApplication::palette().color(QPalette::WindowText), 1.5, Qt::SolidLine,
                            Qt::RoundCap, Qt::RoundJoin));
        draw(painter);
        icon.addPixmap(pixmap);
    }
    return icon;
}

} // namespace

QIcon PlaybackIcons::mark(bool next)
{
    return makeIcon([next](QPainter& painter) {
        if (!next) {
            painter.translate(Side, 0);
            painter.scale(-1, 1);
        }
        painter.drawPolyline(QPolygonF({{4, 3.5}, {8.5, 8}, {4, 12.5}}));
        painter.drawLine(QPointF(11.5, 3.5), QPointF(11.5, 12.5));
    });
}
