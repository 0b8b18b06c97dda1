#include "panes/AlarmMark.h"

#include "layouts/CSplitCatalog.h"

#include <QBitmap>
#include <QLabel>
#include <QPixmap>
#include <QRegion>

namespace {

constexpr int MARK_SIZE = 74;

/// The outline of a picture. Every pane of a deck asks for that of the same one, and it is dear to find.
QRegion OutlineOf(const QPixmap& picture)
{
    static qint64 s_llPicture = 0;
    static QRegion s_outline;
    if (picture.cacheKey() != s_llPicture) {
        s_llPicture = picture.cacheKey();
        s_outline = QRegion(picture.createHeuristicMask(true));
    }
    return s_outline;
}

} // namespace

void SetAlarmPicture(QLabel& label)
{
    const QPixmap picture(CSplitCatalog::Instance()->resourceDir + "/VideoWidget/ALARM.png");
    label.setMask(OutlineOf(picture));
    label.setPixmap(picture);
}

QRect PlaceOfAlarmMark(int nSurfaceWidth)
{
    return QRect(nSurfaceWidth - MARK_SIZE, 0, MARK_SIZE, MARK_SIZE);
}
