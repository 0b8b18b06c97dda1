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
    if (!pImage || !pImage->isDetached())
        return nullptr;
    if (pImage->width() > ENGINE_LIMIT || pImage->height() > ENGINE_LIMIT)
        return nullptr;
    const QImage::Format format = pImage->format();
    return format == QImage::Format_RGB32 || format == QImage::Format_ARGB32_Premultiplied ? pImage : nullptr;
}

/// What of the painter's device the rectangle takes, in the device's pixels.
QRect PixelsOf(const QPainter& painter, const QSize& size)
{
    return RoundedEdges(painter.deviceTransform().mapRect(QRectF(QPointF(), size)));
}

/// Draws where nothing scales any more, as the picture has the device's pixels already.
void DrawPixels(QPainter& painter, const QPoint& place, const QImage& pixels)
{
    const QTransform transform = painter.worldTransform();
    const QTransform toPixels = QTransform::fromTranslate(place.x(), place.y());
    painter.setWorldTransform(toPixels * painter.deviceTransform().inverted() * transform);
    painter.drawImage(0, 0, pixels);
    painter.setWorldTransform(transform);
}

} // namespace

QRect RoundedEdges(const QRectF& rect)
{
    return QRect(QPoint(qRound(rect.left()), qRound(rect.top())),
                 QPoint(qRound(rect.right()) - 1, qRound(rect.bottom()) - 1));
}

QRect DevicePixels(const QRect& rect, qreal dRatio)
{
    return RoundedEdges(QTransform::fromScale(dRatio, dRatio).mapRect(QRectF(rect)));
}

bool PaintFrame(QPaintDevice& device, const QPoint& origin, const QImage& frame, const QSize& size)
{
    QImage* pImage = WritableImage(device);
    const QPaintEngine* pEngine = pImage ? pImage->paintEngine() : nullptr;
    if (!pEngine || pEngine->type() != QPaintEngine::Raster)
        return false;
    const QRect place = DevicePixels(QRect(origin, size), pImage->devicePixelRatioF());
    const FramePlan* pPlan = FramePlan::For(frame.size(), place.size(), frame.depth() / 8);
    if (!pPlan)
        return false;
    const QRect visible = place & pImage->rect();
    const QRegion clip = pEngine->systemClip();
    if (clip.isEmpty())
        pPlan->Paint(frame, *pImage, place.topLeft(), visible);
    for (const QRect& rect : clip)
        pPlan->Paint(frame, *pImage, place.topLeft(), rect & visible);
    return true;
}

void PaintScaled(QPainter& painter, const QImage& picture, const QSize& size)
{
    const auto scaled = [&picture](const QSize& pixels) {
        return picture.scaled(pixels, Qt::IgnoreAspectRatio, Qt::FastTransformation);
    };
    const qreal dRatio = painter.paintEngine()->paintDevice()->devicePixelRatioF();
    const QTransform toDevice = painter.deviceTransform();
    if (dRatio == 1.0) {
        painter.drawImage(0, 0, scaled(size));
    } else if (toDevice.type() <= QTransform::TxScale && qFuzzyCompare(toDevice.m11(), dRatio) &&
               qFuzzyCompare(toDevice.m22(), dRatio)) {
        const QRect pixels = PixelsOf(painter, size);
        DrawPixels(painter, pixels.topLeft(), scaled(pixels.size()));
    } else {
        painter.drawImage(QRect(QPoint(), size), scaled(DevicePixels(QRect(QPoint(), size), dRatio).size()));
    }
}
