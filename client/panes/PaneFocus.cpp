#include "panes/PaneFocus.h"

#include <QEvent>
#include <QPainter>

namespace {

constexpr int Width = 5;
const QColor Dark(0, 0, 0);
const QColor Bright(255, 210, 60);

} // namespace

PaneFocus::PaneFocus()
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    setObjectName("PaneFocus");
}

void PaneFocus::showOn(QWidget* picture)
{
    if (m_place)
        m_place->removeEventFilter(this);
    m_place = picture ? picture->parentWidget() : nullptr;
    if (!m_place) {
        hide();
        return;
    }
    m_place->installEventFilter(this);
    if (parentWidget() != m_place)
        setParent(m_place);
    setGeometry(m_place->rect());
    show();
    raise();
}

bool PaneFocus::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_place && event->type() == QEvent::Resize)
        setGeometry(m_place->rect());
    return QWidget::eventFilter(watched, event);
}

/// Cut to the ring, so that a frame below repaints no more than that of it.
void PaneFocus::resizeEvent(QResizeEvent*)
{
    setMask(QRegion(rect()) - QRegion(rect().adjusted(Width, Width, -Width, -Width)));
}

void PaneFocus::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), Dark);
    painter.setPen(QPen(Bright, Width - 2));
    painter.setBrush(Qt::NoBrush);
    const int inset = Width / 2;
    painter.drawRect(rect().adjusted(inset, inset, -inset - 1, -inset - 1));
}
