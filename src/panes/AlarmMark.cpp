#include "panes/AlarmMark.h"

#include "layouts/CSplitCatalog.h"

#include <QBitmap>
#include <QIcon>
#include <QLabel>
#include <QPixmap>
#include <QRegion>

namespace {

constexpr int MarkSize = 74;

struct AlarmPicture
{
    qint64 llKey = 0;
    QSize size;
    QRegion outline;
    QIcon icon;
};

int s_nHolds = 0;
bool s_bLookedAt = false;

/// Every pane of a deck asks for the same picture, and its outline is as dear to find as its icon is to read.
/// Even to see whether the file is still the same takes longer than all else about a mark.
const AlarmPicture& SharedPicture(const QString& path)
{
    static AlarmPicture s_picture;
    if (s_nHolds > 0 && s_bLookedAt)
        return s_picture;
    s_bLookedAt = true;
    const QPixmap picture(path);
    if (picture.cacheKey() != s_picture.llKey) {
        const QRegion outline(picture.createHeuristicMask(true));
        s_picture = {picture.cacheKey(), picture.size(), outline, QIcon(path)};
    }
    return s_picture;
}

} // namespace

AlarmPictureHold::AlarmPictureHold()
{
    if (s_nHolds++ == 0)
        s_bLookedAt = false;
}

AlarmPictureHold::~AlarmPictureHold()
{
    --s_nHolds;
}

void SetAlarmPicture(QLabel& label)
{
    const QString path = CSplitCatalog::Instance()->resourceDir + "/VideoWidget/ALARM.png";
    const AlarmPicture& picture = SharedPicture(path);
    label.setMask(picture.outline);
    // The icon takes the picture for twice the pixels where the screen has them.
    label.setPixmap(picture.icon.pixmap(picture.size));
    // A picture without alpha lets nothing through within its outline.
    const bool bOpaque = !label.pixmap(Qt::ReturnByValue).hasAlphaChannel() && !picture.outline.isEmpty();
    label.setAttribute(Qt::WA_OpaquePaintEvent, bOpaque);
}

QRect PlaceOfAlarmMark(int nSurfaceWidth)
{
    return QRect(nSurfaceWidth - MarkSize, 0, MarkSize, MarkSize);
}
