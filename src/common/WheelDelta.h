#pragma once

#include <QWheelEvent>
#include <QtMath>

/// The one-dimensional delta of a wheel event, in eighths of a degree: that of the axis turned further,
/// the vertical one if both are equal. A notch of a common wheel is 120, forward is positive.
inline int WheelDelta(const QWheelEvent& event)
{
    const QPoint delta = event.angleDelta();
    return qAbs(qint64(delta.x())) > qAbs(qint64(delta.y())) ? delta.x() : delta.y();
}
