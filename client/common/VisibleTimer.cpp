#include "common/VisibleTimer.h"

#include <QEvent>
#include <QWidget>

VisibleTimer::VisibleTimer(QWidget* widget, int intervalMs) : QTimer(widget)
{
    setInterval(intervalMs);
    widget->installEventFilter(this);
}

bool VisibleTimer::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Show)
        start();
    else if (event->type() == QEvent::Hide)
        stop();
    return QTimer::eventFilter(watched, event);
}
