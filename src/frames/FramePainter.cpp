#include "frames/FramePainter.h"

#include "frames/FramePlan.h"

#include <QPaintEngine>
#include <QPainter>

namespace {

/// The device as a picture whose pixels can be written past its paint engine.
QImage* WritableImage(QPaintDevice& device)
{
    constexpr int ENGINE_LIMIT = 32767;
    QImage* pImage = dynamic_cast<QImage*>(&device);
    if (!pImage || !pImage->isDetached() || pImage->devicePixelRatioF() != 1.0)
        return nullptr;
    if (pImage->width() > ENGINE_LIMIT || pImage->height() > ENGINE_LIMIT)
        return nullptr;
    const QImage::Format format = pImage->format();
    return format == QImage::Format_RGB32 || format == QImage::Format_ARGB32_Premultiplied ? pImage : nullptr;
}

} // namespace

bool PaintFrame(QPaintDevice& device, const QPoint& origin, const QImage& frame, const QSize& size)
{
    QImage* pImage = WritableImage(device);
    const QPaintEngine* pEngine = pImage ? pImage->paintEngine() : nullptr;
    if (!pEngine || pEngine->type() != QPaintEngine::Raster)
        return false;
    const FramePlan* pPlan = FramePlan::For(frame.size(), size);
    if (!pPlan)
        return false;
    const QRect visible = QRect(origin, size) & pImage->rect();
    const QRegion clip = pEngine->systemClip();
    if (clip.isEmpty())
        pPlan->Paint(frame, *pImage, origin, visible);
    for (const QRect& rect : clip)
        pPlan->Paint(frame, *pImage, origin, rect & visible);
    return true;
}

void PaintScaled(QPainter& painter, const QImage& picture, const QSize& size)
{
    painter.drawImage(0, 0, picture.scaled(size, Qt::IgnoreAspectRatio, Qt::FastTransformation));
}
