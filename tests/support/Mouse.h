#pragma once

#include <QPoint>
#include <QWidget>

/// Mouse events sent to a widget as Qt would deliver them. Points are in the widget's coordinates.
/// A widget that dies in one of them ends the rest of that call.
namespace Mouse {

void Press(QWidget* widget, const QPoint& pos, Qt::MouseButton button = Qt::LeftButton);
void Move(QWidget* widget, const QPoint& pos, Qt::MouseButtons buttons = Qt::NoButton);
void Release(QWidget* widget, const QPoint& pos, Qt::MouseButton button = Qt::LeftButton);
void Click(QWidget* widget, const QPoint& pos, Qt::MouseButton button = Qt::LeftButton);

/// What Qt delivers for a double click: press, release, double click, release.
void DoubleClick(QWidget* widget, const QPoint& pos, Qt::MouseButton button = Qt::LeftButton);

/// Press, a move to each of the points with the button held, release at the last one.
void Drag(QWidget* widget, const QPoint& from, const QList<QPoint>& path,
          Qt::MouseButton button = Qt::LeftButton);

/// A turn of the vertical wheel, in eighths of a degree.
void Wheel(QWidget* widget, const QPoint& pos, int delta);

void Enter(QWidget* widget);
void Leave(QWidget* widget);

/// Puts the cursor where QCursor::pos() finds it.
void PlaceCursor(QWidget* widget, const QPoint& pos);

} // namespace Mouse
