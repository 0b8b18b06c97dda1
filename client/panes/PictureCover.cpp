#include "panes/PictureCover.h"

#include <QEvent>

PictureCover::PictureCover(QWidget* picture) : QWidget(picture->parentWidget()), m_picture(picture)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    hide();
    picture->installEventFilter(this);
}

bool PictureCover::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_picture && (event->type() == QEvent::Resize || event->type() == QEvent::Move))
        place();
    return QWidget::eventFilter(watched, event);
}

void PictureCover::place()
{
    if (m_picture)
        setGeometry(m_picture->geometry());
}
