#pragma once

#include "packets/FFmpeg.h"

#include <QSize>

#include <vector>

/// Brings a decoded picture down by halves, each pixel the mean of four, as long as it stays as large as what
/// is wanted: a small part of what a scaler for any size costs, which has little left to do then.
class PictureHalver
{
public:
    /// The picture itself, or one that lasts until the next call, which is not smaller than `size` either.
    /// Formats other than planar ones of 8 bits, and sizes that can't be halved evenly, are left as they are.
    const AVFrame& halve(const AVFrame& picture, QSize size);

private:
    const AVFrame* halfOf(const AVFrame& picture, size_t step);

    std::vector<AvFrame> m_halves; ///< of the picture, of its half and so on
};
