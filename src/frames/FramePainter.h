#pragma once

#include <QtGlobal>

class QImage;
class QPaintDevice;
class QPainter;
class QPoint;
class QRect;
class QRectF;
class QSize;

/// The rectangle with each edge rounded by itself, which QRectF::toRect() does not in every Qt.
QRect RoundedEdges(const QRectF& rect);

/// The pixels of a device with that ratio which a rectangle of its coordinates takes. Each edge lies on the
/// boundary of pixels next to it, of two as near on the one farther on, which is how QtWidgets rounds what a
/// widget may paint. So neighbours share an edge, with neither a seam nor a pixel of both between them, and
/// rectangles of one size may differ by a pixel from place to place.
QRect DevicePixels(const QRect& rect, qreal dRatio);

/// Paints the frame, RGB888 or RGB32 with every pixel on a 32-bit boundary, as PaintScaled() does with a
/// painter fresh on the device, its (0, 0) at `origin`, but by writing the pixels past the painter. Paints
/// nothing and gives false where that could have another result.
bool PaintFrame(QPaintDevice& device, const QPoint& origin, const QImage& frame, const QSize& size);

/// Scales the picture without smoothing to the pixels of the device that a rectangle of the size at (0, 0)
/// takes, and draws it there. A painter that turns or scales what it draws gets as many pixels as the
/// rectangle would take without that.
void PaintScaled(QPainter& painter, const QImage& picture, const QSize& size);
