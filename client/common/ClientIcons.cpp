#include "common/ClientIcons.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPalette>

namespace {

template <class Draw> QIcon makeIcon(Draw draw)
{
    QIcon icon;
    for (int scale : {1, 2}) {
        QPixmap pixmap(16 * scale, 16 * scale);
        pixmap.setDevicePixelRatio(scale);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(QGuiApplication::palette().color(QPalette::WindowText), 1.25, Qt::SolidLine,
                            Qt::RoundCap, Qt::RoundJoin));
        draw(painter);
        // A style would tint what is chosen in its own colour.
        for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Selected})
            icon.addPixmap(pixmap, mode);
    }
    return icon;
}

} // namespace

QIcon ClientIcons::camera()
{
    return makeIcon([](QPainter& painter) {
        painter.drawRoundedRect(QRectF(1.5, 4.5, 9, 7), 1.5, 1.5);
        painter.drawPolygon(QPolygonF({{10.5, 7}, {14.5, 4.8}, {14.5, 11.2}, {10.5, 9}}));
    });
}

QIcon ClientIcons::site()
{
    return makeIcon([](QPainter& painter) {
        painter.drawPolyline(QPolygonF({{2.5, 7.5}, {8, 2.5}, {13.5, 7.5}}));
        painter.drawPolyline(QPolygonF({{4, 6.5}, {4, 13.5}, {12, 13.5}, {12, 6.5}}));
        painter.drawPolyline(QPolygonF({{7, 13.5}, {7, 9.5}, {9, 9.5}, {9, 13.5}}));
    });
}
