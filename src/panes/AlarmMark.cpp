#include "panes/AlarmMark.h"

#include "layouts/CSplitCatalog.h"

#include <QBitmap>
#include <QIcon>
#include <QLabel>
#include <QPixmap>
#include <QRegion>

namespace {

constexpr int MARK_SIZE = 74;

struct AlarmPicture
{
    qint64 llKey = 0;
    QSize size;
    QRegion outline;
    QIcon icon;
};

/// Every pane of a deck asks for the same picture, and its outline is as dear to find as its icon is to read.
const AlarmPicture& SharedPicture(const QString& path)
{
    static AlarmPicture s_picture;
    const QPixmap picture(path);
    if (picture.cacheKey() != s_picture.llKey) {
        const QRegion outline(picture.createHeuristicMask(true));
        s_picture = {picture.cacheKey(), picture.size(), outline, QIcon(path)};
    }
    return s_picture;
}

} // namespace

void SetAlarmPicture(QLabel& label)
{
    const QString path = CSplitCatalog::Instance()->resourceDir + "/VideoWidget/ALARM.png";
    const AlarmPicture& picture = SharedPicture(path);
    label.setMask(picture.outline);
    // The icon takes the picture for twice the pixels where the screen has them.
    label.setPixmap(picture.icon.pixmap(picture.size));
    // Within its outline the picture lets nothing through. A frame label in use paints by itself only under
    // widgets that say so.
    label.setAttribute(Qt::WA_OpaquePaintEvent, !picture.outline.isEmpty());
}

QRect PlaceOfAlarmMark(int nSurfaceWidth)
{
    return QRect(nSurfaceWidth - MARK_SIZE, 0, MARK_SIZE, MARK_SIZE);
}
