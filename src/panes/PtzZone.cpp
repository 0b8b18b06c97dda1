#include "panes/PtzZone.h"

#include "layouts/CSplitCatalog.h"

#include <QCursor>
#include <QPixmap>
#include <QWidget>

#include <cmath>

namespace {

// Points on a sector's edge fall to their side by these very values, so pi stays as short as it is.
const double s_dTan22 = std::tan(3.1415926 / 8);
const double s_dTan67 = std::tan(3 * 3.1415926 / 8);

enum AngleClass
{
    AngleHorizontal,
    AngleDiagonal,
    AngleVertical
};

constexpr int Zones[2][2][3] = {
    {{PTZ_ZONE_LEFT, PTZ_ZONE_LEFT_UP, PTZ_ZONE_UP}, {PTZ_ZONE_LEFT, PTZ_ZONE_LEFT_DOWN, PTZ_ZONE_DOWN}},
    {{PTZ_ZONE_RIGHT, PTZ_ZONE_RIGHT_UP, PTZ_ZONE_UP}, {PTZ_ZONE_RIGHT, PTZ_ZONE_RIGHT_DOWN, PTZ_ZONE_DOWN}},
};

AngleClass AngleClassOf(double dWidth, double dHeight)
{
    if (s_dTan22 * dWidth > dHeight)
        return AngleHorizontal;
    return dHeight > s_dTan67 * dWidth ? AngleVertical : AngleDiagonal;
}

int DirectionOf(qint64 dx, qint64 dy)
{
    if (dx == 0 && dy != 0)
        return dy > 0 ? PTZ_ZONE_DOWN : PTZ_ZONE_UP;
    if (dy == 0)
        return dx > 0 ? PTZ_ZONE_RIGHT : PTZ_ZONE_LEFT;
    return Zones[dx > 0][dy > 0][AngleClassOf(qAbs(dx), qAbs(dy))];
}

constexpr const char* Pictures[] = {"ptzcenter", "ptzup",       "ptzdown",    "ptzleft",     "ptzright",
                                    "ptzleftup", "ptzleftdown", "ptzrightup", "ptzrightdown"};

const char* PictureOfZone(int nZone)
{
    if (nZone == PTZ_ZONE_PANE_DRAG)
        return "window_Drag";
    return nZone >= PTZ_ZONE_CENTER && nZone <= PTZ_ZONE_RIGHT_DOWN ? Pictures[nZone] : nullptr;
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

void SetZoneCursor(QWidget& widget, int nZone)
{
    if (nZone == PTZ_ZONE_PANE_DRAG_OVER) {
        widget.setCursor(Qt::PointingHandCursor);
        return;
    }
    QPixmap picture;
    if (const char* szName = PictureOfZone(nZone))
        picture.load(QString("%1/VideoWidget/%2.png").arg(CSplitCatalog::Instance()->resourceDir, szName));
    if (picture.isNull()) {
        widget.setCursor(QCursor());
        return;
    }
    // Hovering comes here at every move, and a cursor is dear to make.
    if (widget.cursor().pixmap().cacheKey() != picture.cacheKey())
        widget.setCursor(QCursor(picture, -1, -1));
}
