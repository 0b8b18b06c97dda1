#include "panes/PaneMap.h"

#include <QPainter>

namespace {

constexpr int Share = 5; ///< of the picture's width
constexpr int SmallestPicture = 160;
constexpr int MostWidth = 180;
const QColor Ground(16, 20, 24);
const QColor Veil(0, 0, 0, 130);
const QColor Frame(240, 240, 240);

} // namespace

PaneMap::PaneMap(QWidget* picture) : PictureCover(picture)
{
    setObjectName("PaneMap");
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void PaneMap::show(const ZoomView& view, const QImage& whole)
{
    m_view = view;
    m_whole = whole;
    place();
    update();
}

void PaneMap::place()
{
    if (!picture())
        return;
    const QRect room = picture()->geometry();
    const bool hasRoom = room.width() >= SmallestPicture && room.height() >= SmallestPicture / 2;
    setVisible(hasRoom && !m_view.isWhole());
    const int width = qMin(room.width() / Share, MostWidth);
    QRect map(0, 0, width, qMax(1, width * room.height() / qMax(1, room.width())));
    if (layoutDirection() == Qt::RightToLeft)
        map.moveBottomLeft(room.bottomLeft());
    else
        map.moveBottomRight(room.bottomRight());
    setGeometry(map);
}

void PaneMap::paintEvent(QPaintEvent* event)
{
    Q_UNUSED(event)
    QPainter painter(this);
    painter.fillRect(rect(), Ground);
    const QRect inside = rect().adjusted(1, 1, -1, -1);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    if (!m_whole.isNull())
        painter.drawImage(inside, m_whole);
    const QRectF part = m_view.part();
    const QRectF shown(inside.x() + part.x() * inside.width(), inside.y() + part.y() * inside.height(),
                       part.width() * inside.width(), part.height() * inside.height());
    painter.setClipRegion(QRegion(inside) - shown.toAlignedRect());
    painter.fillRect(inside, Veil);
    painter.setClipping(false);
    painter.setPen(Frame);
    painter.drawRect(shown.toAlignedRect().adjusted(0, 0, -1, -1));
}
