#pragma once

#include <QDropEvent>
#include <QMouseEvent>

// What Qt 5 and Qt 6 spell differently.

#if QT_VERSION_MAJOR >= 6
using EnterEvent = QEnterEvent;
#else
using EnterEvent = QEvent;
#endif

inline QPoint GlobalPosOf(const QMouseEvent& event)
{
#if QT_VERSION_MAJOR >= 6
    return event.globalPosition().toPoint();
#else
    return event.globalPos();
#endif
}

inline QPoint PosOf(const QDropEvent& event)
{
#if QT_VERSION_MAJOR >= 6
    return event.position().toPoint();
#else
    return event.pos();
#endif
}
