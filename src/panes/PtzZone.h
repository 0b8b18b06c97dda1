#pragma once

#include <QPoint>
#include <QSize>

class QWidget;

/// The zones of a surface. Those from 0 to 8 are also the numbers of the direction commands, 9 and 10 those
/// of the wheel.
enum PtzZone
{
    PTZ_ZONE_OUTSIDE = -1,
    PTZ_ZONE_CENTER = 0,
    PTZ_ZONE_UP = 1,
    PTZ_ZONE_DOWN = 2,
    PTZ_ZONE_LEFT = 3,
    PTZ_ZONE_RIGHT = 4,
    PTZ_ZONE_LEFT_UP = 5,
    PTZ_ZONE_LEFT_DOWN = 6,
    PTZ_ZONE_RIGHT_UP = 7,
    PTZ_ZONE_RIGHT_DOWN = 8,
    PTZ_ZONE_WHEEL_FORWARD = 9,
    PTZ_ZONE_WHEEL_BACKWARD = 10,
    PTZ_ZONE_PANE_DRAG = 11,
    PTZ_ZONE_PANE_DRAG_OVER = 12
};

/// The zone, 0 to 8, of a point of a label whose half sizes are `half`; `center` holds the half sizes of the
/// centre zone, whose edges belong to it. A point on the edge between two sectors is diagonal.
int ZoneOfPoint(const QPoint& pt, const QSize& half, const QSize& center);

/// Gives a widget the cursor of a PtzZone: a picture of the installation, the pointing hand, or the arrow for
/// every number without a picture and for a picture that can't be read.
void SetZoneCursor(QWidget& widget, int nZone);
