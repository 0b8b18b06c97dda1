#include "panes/PtzCursor.h"

#include "layouts/CSplitCatalog.h"
#include "panes/PtzZone.h"

#include <QCursor>
#include <QPixmap>
#include <QWidget>

namespace {

constexpr const char* s_pictures[] = {"ptzcenter", "ptzup",       "ptzdown",    "ptzleft",     "ptzright",
                                      "ptzleftup", "ptzleftdown", "ptzrightup", "ptzrightdown"};

const char* PictureOfZone(int nZone)
{
    if (nZone == PTZ_ZONE_PANE_DRAG)
        return "window_Drag";
    return nZone >= PTZ_ZONE_CENTER && nZone <= PTZ_ZONE_RIGHT_DOWN ? s_pictures[nZone] : nullptr;
}

} // namespace

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
