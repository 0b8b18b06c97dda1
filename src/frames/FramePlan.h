#pragma once

#include "frames/FrameRow.h"

#include <QImage>

/// Which pixel of an RGB888 or RGB32 frame each pixel of the frame scaled to another size shows. It shows
/// what QImage::scaled() with Qt::FastTransformation would of RGB888, without making that image; of 32-bit
/// pixels Qt takes others at some sizes.
class FramePlan
{
public:
    /// The plan for the two sizes, of a frame of 3 or 4 bytes a pixel, kept for all frames that need it; good
    /// until the next call. Null for sizes that Qt scales in a way that no plan follows.
    static const FramePlan* For(const QSize& source, const QSize& target, int nPixelBytes);

    FramePlan(const QSize& source, const QSize& target, int nPixelBytes);

    /// Paints the part of the scaled frame that falls on `part`, a rectangle within both the image and the
    /// scaled frame, whose top left corner is at `origin`. The image is of a format with opaque QRgb pixels.
    void Paint(const QImage& frame, QImage& image, const QPoint& origin, const QRect& part) const;

    /// What the plan occupies, in bytes.
    int Bytes() const;

private:
    FrameRow m_row;
    QVector<int> m_vecSourceRows;
};
