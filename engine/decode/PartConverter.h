#pragma once

#include "decode/FramePool.h"
#include "decode/PictureScaler.h"

#include <QRect>

/// Makes a frame of any size from a part of another one's picture, smoothly and from the pixels as they were
/// decoded.
class PartConverter
{
public:
    /// `part` counts in the picture's own pixels. Null for a part that doesn't lie in the picture, and where
    /// it can't be converted. The frame's times are those of the one it is made from.
    FramePtr convert(const Frame& frame, const QRect& part, QSize size);

private:
    FramePool m_pool;
    PictureScaler m_scaler;
};
