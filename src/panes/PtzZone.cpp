#include "panes/PtzZone.h"

#include <QtGlobal>

#include <cmath>

namespace {

// Points on a sector's edge fall to their side by these very values, so pi stays as short as it is.
const double s_dTan22 = std::tan(3.1415926 / 8);
const double s_dTan67 = std::tan(3 * 3.1415926 / 8);

enum AngleClass
{
    ANGLE_HORIZONTAL,
    ANGLE_DIAGONAL,
    ANGLE_VERTICAL
};

constexpr int s_zones[2][2][3] = {
    {{PTZ_ZONE_LEFT, PTZ_ZONE_LEFT_UP, PTZ_ZONE_UP}, {PTZ_ZONE_LEFT, PTZ_ZONE_LEFT_DOWN, PTZ_ZONE_DOWN}},
    {{PTZ_ZONE_RIGHT, PTZ_ZONE_RIGHT_UP, PTZ_ZONE_UP}, {PTZ_ZONE_RIGHT, PTZ_ZONE_RIGHT_DOWN, PTZ_ZONE_DOWN}},
};

AngleClass AngleClassOf(double dWidth, double dHeight)
{
    if (s_dTan22 * dWidth > dHeight)
        return ANGLE_HORIZONTAL;
    return dHeight > s_dTan67 * dWidth ? ANGLE_VERTICAL : ANGLE_DIAGONAL;
}

int DirectionOf(qint64 dx, qint64 dy)
{
    if (dx == 0 && dy != 0)
        return dy > 0 ? PTZ_ZONE_DOWN : PTZ_ZONE_UP;
    if (dy == 0)
        return dx > 0 ? PTZ_ZONE_RIGHT : PTZ_ZONE_LEFT;
    return s_zones[dx > 0][dy > 0][AngleClassOf(qAbs(dx), qAbs(dy))];
}

} // namespace

int ZoneOfPoint(const QPoint& pt, const QSize& half, const QSize& center)
{
    const qint64 dx = qint64(pt.x()) - half.width();
    const qint64 dy = qint64(pt.y()) - half.height();
    if (qAbs(dx) <= center.width() && qAbs(dy) <= center.height())
        return PTZ_ZONE_CENTER;
    return DirectionOf(dx, dy);
}
