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

QIcon PlaybackIcons::backwards()
{
    return makeIcon([](QPainter& painter) {
        painter.drawPolygon(QPolygonF({{12.5, 3}, {4.5, 8}, {12.5, 13}}));
    });
}

QIcon PlaybackIcons::strips()
{
    return makeIcon([](QPainter& painter) {
        for (const qreal y : {4.0, 8.0, 12.0})
            painter.drawLine(QPointF(2.5, y), QPointF(13.5, y));
        painter.drawLine(QPointF(9, 2), QPointF(9, 14));
    });
}

QIcon PlaybackIcons::list()
{
    return makeIcon([](QPainter& painter) {
        for (const qreal y : {2.5, 9.0}) {
            painter.drawRect(QRectF(2, y, 5, 4));
            painter.drawLine(QPointF(10, y + 2), QPointF(14, y + 2));
        }
    });
}
