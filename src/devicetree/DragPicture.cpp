#include "devicetree/DragPicture.h"

#include <QGuiApplication>
#include <QPainter>
#include <QTreeWidgetItem>

QPixmap DragPicture(const QTreeWidgetItem& item)
{
    const QRect icon(0, 0, 16, 16);
    const QRect text(16, 0, 100, 16);
    const qreal dRatio = qApp->devicePixelRatio();
    QPixmap picture(QSize(116, 16) * dRatio);
    picture.setDevicePixelRatio(dRatio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setFont(QFont(QStringLiteral("微软雅黑"), 10));
    painter.setPen(QColor(255, 255, 255, 255));
    painter.drawText(text, Qt::AlignLeft | Qt::AlignVCenter, item.text(0));
    painter.drawPixmap(icon, item.icon(0).pixmap(icon.size(), QIcon::Normal, QIcon::Off));
    return picture;
}
