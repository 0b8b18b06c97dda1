#include "panes/PaneMap.h"

#include <QEvent>
#include <QPainter>

namespace {

constexpr int Share = 5; ///< of the picture's width
constexpr int SmallestPicture = 160;
constexpr int MostWidth = 180;
const QColor Ground(16, 20, 24);
const QColor Veil(0, 0, 0, 130);
const QColor Frame(240, 240, 240);

} // namespace

PaneMap::PaneMap(QWidget* picture) : QWidget(picture->parentWidget()), m_picture(picture)
{
    setObjectName("PaneMap");
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::NoFocus);
    hide();
    picture->installEventFilter(this);
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
    if (!m_picture)
        return;
    const QRect picture = m_picture->geometry();
    const bool hasRoom = picture.width() >= SmallestPicture && picture.height() >= SmallestPicture / 2;
    setVisible(hasRoom && !m_view.isWhole());
    const int width = qMin(picture.width() / Share, MostWidth);
    QRect map(0, 0, width, qMax(1, width * picture.height() / qMax(1, picture.width())));
    if (layoutDirection() == Qt::RightToLeft)
        map.moveBottomLeft(picture.bottomLeft());
    else
        map.moveBottomRight(picture.bottomRight());
    setGeometry(map);
}

bool PaneMap::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_picture && (event->type() == QEvent::Resize || event->type() == QEvent::Move))
        place();
    return QWidget::eventFilter(watched, event);
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
