#include "panes/FramePainter.h"

#include "panes/FramePlan.h"

#include <QPaintEngine>
#include <QPainter>
#include <QtMath>

namespace {

bool MovesByWholePixels(const QTransform& transform)
{
    return transform.type() <= QTransform::TxTranslate && transform.dx() == qFloor(transform.dx()) &&
           transform.dy() == qFloor(transform.dy());
}

bool CopiesOpaquePixels(const QPainter& painter)
{
    return painter.opacity() == 1.0 && painter.compositionMode() == QPainter::CompositionMode_SourceOver &&
           !painter.hasClipping() && MovesByWholePixels(painter.deviceTransform());
}

/// The image that the painter's engine writes to, if its pixels can be written past the engine.
QImage* TargetImage(const QPaintEngine& engine)
{
    constexpr int ENGINE_LIMIT = 32767;
    if (engine.type() != QPaintEngine::Raster)
        return nullptr;
    QImage* pImage = dynamic_cast<QImage*>(engine.paintDevice());
    if (!pImage || !pImage->isDetached() || pImage->width() > ENGINE_LIMIT || pImage->height() > ENGINE_LIMIT)
        return nullptr;
    const QImage::Format format = pImage->format();
    return format == QImage::Format_RGB32 || format == QImage::Format_ARGB32_Premultiplied ? pImage : nullptr;
}

} // namespace

bool PaintFrame(QPainter& painter, const QImage& frame, const QSize& size)
{
    const QPaintEngine* pEngine = painter.paintEngine();
    QImage* pImage = pEngine ? TargetImage(*pEngine) : nullptr;
    if (!pImage || !CopiesOpaquePixels(painter))
        return false;
    const FramePlan* pPlan = FramePlan::For(frame.size(), size);
    if (!pPlan)
        return false;
    const QTransform& transform = painter.deviceTransform();
    const QPoint origin(qFloor(transform.dx()), qFloor(transform.dy()));
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
