#include "manager/ZoneOverlay.h"

#include <QPainter>

namespace {

const QColor Line(255, 200, 0);
const QColor Ground(255, 200, 0, 50);

} // namespace

ZoneOverlay::ZoneOverlay(QWidget* picture) : PictureCover(picture) {}

void ZoneOverlay::setZones(const QVector<QRectF>& zones)
{
    m_zones = zones;
    place();
    setVisible(!zones.isEmpty());
    raise();
    update();
}

void ZoneOverlay::paintEvent(QPaintEvent* event)
{
    Q_UNUSED(event)
    QPainter painter(this);
    painter.setPen(QPen(Line, 2));
    painter.setBrush(Ground);
    for (const QRectF& zone : qAsConst(m_zones))
        painter.drawRect(
            QRectF(zone.x() * width(), zone.y() * height(), zone.width() * width(), zone.height() * height())
                .adjusted(1, 1, -1, -1));
}
