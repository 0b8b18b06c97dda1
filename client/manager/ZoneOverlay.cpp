#include "manager/ZoneOverlay.h"

#include <QEvent>
#include <QPainter>

namespace {

const QColor Line(255, 200, 0);
const QColor Ground(255, 200, 0, 50);

} // namespace

ZoneOverlay::ZoneOverlay(QWidget* picture) : QWidget(picture->parentWidget()), m_picture(picture)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    hide();
    picture->installEventFilter(this);
}

void ZoneOverlay::setZones(const QVector<QRectF>& zones)
{
    m_zones = zones;
    setGeometry(m_picture->geometry());
    setVisible(!zones.isEmpty());
    raise();
    update();
}

bool ZoneOverlay::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_picture && (event->type() == QEvent::Resize || event->type() == QEvent::Move))
        setGeometry(m_picture->geometry());
    return QWidget::eventFilter(watched, event);
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
