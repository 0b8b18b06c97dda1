#include "support/Mouse.h"

#include <QApplication>
#include <QCursor>
#include <QMouseEvent>
#include <QPointer>
#include <QWheelEvent>
#include <QtTest>

namespace {

void Send(QWidget* widget, QEvent::Type type, const QPoint& pos, Qt::MouseButton button,
          Qt::MouseButtons buttons)
{
    QMouseEvent event(type, pos, widget->mapTo(widget->window(), pos), widget->mapToGlobal(pos), button,
                      buttons, Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
}

} // namespace

void Mouse::Press(QWidget* widget, const QPoint& pos, Qt::MouseButton button)
{
    Send(widget, QEvent::MouseButtonPress, pos, button, button);
}

void Mouse::Move(QWidget* widget, const QPoint& pos, Qt::MouseButtons buttons)
{
    Send(widget, QEvent::MouseMove, pos, Qt::NoButton, buttons);
}

void Mouse::Release(QWidget* widget, const QPoint& pos, Qt::MouseButton button)
{
    Send(widget, QEvent::MouseButtonRelease, pos, button, Qt::NoButton);
}

void Mouse::Click(QWidget* widget, const QPoint& pos, Qt::MouseButton button)
{
    const QPointer<QWidget> guard(widget);
    Press(widget, pos, button);
    if (guard)
        Release(widget, pos, button);
}

void Mouse::DoubleClick(QWidget* widget, const QPoint& pos, Qt::MouseButton button)
{
    const QPointer<QWidget> guard(widget);
    Click(widget, pos, button);
    if (guard)
        Send(widget, QEvent::MouseButtonDblClick, pos, button, button);
    if (guard)
        Release(widget, pos, button);
}

void Mouse::Drag(QWidget* widget, const QPoint& from, const QList<QPoint>& path, Qt::MouseButton button)
{
    const QPointer<QWidget> guard(widget);
    Press(widget, from, button);
    for (const QPoint& pos : path) {
        if (guard)
            Move(widget, pos, button);
    }
    if (guard)
        Release(widget, path.isEmpty() ? from : path.last(), button);
}

void Mouse::Wheel(QWidget* widget, const QPoint& pos, int delta)
{
    QWheelEvent event(pos, widget->mapToGlobal(pos), QPoint(), QPoint(0, delta), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    // Only a wheel event from the window system goes on to the parent when it is ignored.
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(widget, &event);
}

void Mouse::Enter(QWidget* widget)
{
    QEvent event(QEvent::Enter);
    QApplication::sendEvent(widget, &event);
}

void Mouse::Leave(QWidget* widget)
{
    QEvent event(QEvent::Leave);
    QApplication::sendEvent(widget, &event);
}

void Mouse::PlaceCursor(QWidget* widget, const QPoint& pos)
{
    QCursor::setPos(widget->mapToGlobal(pos));
}
