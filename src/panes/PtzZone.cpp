#include "panes/PtzZone.h"

#include "layouts/CSplitCatalog.h"

#include <QCursor>
#include <QGuiApplication>
#include <QPixmap>
#include <QPixmapCache>
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

/// The picture with the pixels of a screen of that ratio, from the finer one beside it if there is one.
QPixmap FinePicture(const QPixmap& picture, const QString& stem, qreal dRatio)
{
    const QString key = QString("%1 %2").arg(picture.cacheKey()).arg(dRatio);
    QPixmap fine;
    if (QPixmapCache::find(key, &fine))
        return fine;
    const QPixmap doubled(stem + "@2x.png");
    const QSize pixels = (QSizeF(picture.size()) * dRatio).toSize();
    fine = (doubled.isNull() ? picture : doubled)
               .scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    // X11's cursors have pixels and no ratio, and so has their hot spot.
    fine.setDevicePixelRatio(QGuiApplication::platformName() == "xcb" ? 1 : dRatio);
    QPixmapCache::insert(key, fine);
    return fine;
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
    const char* szName = PictureOfZone(nZone);
    const QString stem = CSplitCatalog::Instance()->resourceDir + "/VideoWidget/" + szName;
    QPixmap picture(szName ? stem + ".png" : QString());
    if (picture.isNull()) {
        widget.setCursor(QCursor());
        return;
    }
    if (widget.devicePixelRatioF() > 1.0)
        picture = FinePicture(picture, stem, widget.devicePixelRatioF());
    // Hovering comes here at every move, and a cursor is dear to make.
    if (widget.cursor().pixmap().cacheKey() != picture.cacheKey())
        widget.setCursor(QCursor(picture, -1, -1));
}
