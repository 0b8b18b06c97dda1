#pragma once

class QImage;
class QPainter;
class QSize;

/// Paints the RGB888 frame, scaled to the size without smoothing, at (0, 0), by writing its pixels where the
/// painter would. Paints nothing and gives false unless that has the very result of QPainter::drawImage().
bool PaintFrame(QPainter& painter, const QImage& frame, const QSize& size);

/// Scales the picture to the size without smoothing and draws it at (0, 0).
void PaintScaled(QPainter& painter, const QImage& picture, const QSize& size);
