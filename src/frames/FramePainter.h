#pragma once

class QImage;
class QPaintDevice;
class QPainter;
class QPoint;
class QSize;

/// Paints the RGB888 frame as PaintScaled() does with a painter fresh on the device, its (0, 0) at `origin`,
/// but by writing the pixels past the painter. Paints nothing and gives false where that could have another
/// result.
bool PaintFrame(QPaintDevice& device, const QPoint& origin, const QImage& frame, const QSize& size);

/// Scales the picture to the size without smoothing and draws it at (0, 0).
void PaintScaled(QPainter& painter, const QImage& picture, const QSize& size);
