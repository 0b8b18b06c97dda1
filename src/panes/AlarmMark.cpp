#include "panes/AlarmMark.h"

#include "layouts/CSplitCatalog.h"

#include <QBitmap>
#include <QIcon>
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
    const QString path = CSplitCatalog::Instance()->resourceDir + "/VideoWidget/ALARM.png";
    const QPixmap picture(path);
    label.setMask(OutlineOf(picture));
    // The icon takes the picture for twice the pixels where the screen has them.
    label.setPixmap(QIcon(path).pixmap(picture.size()));
}

QRect PlaceOfAlarmMark(int nSurfaceWidth)
{
    return QRect(nSurfaceWidth - MARK_SIZE, 0, MARK_SIZE, MARK_SIZE);
}
