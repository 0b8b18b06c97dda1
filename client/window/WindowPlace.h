#pragma once

#include <QRect>

/// Where a window lies that wants to be at `wanted` but has to lie on a screen with that room: no larger than
/// it, and within it with all its frame.
inline QRect fitted(const QRect& wanted, const QRect& room)
{
    constexpr int Border = 4;
    constexpr int Title = 32;
    const QRect inside = room.adjusted(Border, Title, -Border, -Border);
    QRect place(wanted.topLeft(), wanted.size().boundedTo(inside.size()));
    place.moveLeft(qBound(inside.left(), place.left(), inside.right() + 1 - place.width()));
    place.moveTop(qBound(inside.top(), place.top(), inside.bottom() + 1 - place.height()));
    return place;
}
