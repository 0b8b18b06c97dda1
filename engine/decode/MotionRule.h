#pragma once

#include <QRectF>
#include <QVector>

/// What counts as motion in a camera's pictures.
struct MotionRule
{
    int sensitivity = 50;  ///< 1 to 100: the greater, the less has to move
    QVector<QRectF> zones; ///< where it counts, in parts of the picture, 0 to 1; none for all of it
};

inline bool operator==(const MotionRule& one, const MotionRule& other)
{
    return one.sensitivity == other.sensitivity && one.zones == other.zones;
}
