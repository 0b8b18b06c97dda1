#pragma once

#include "packets/FFmpeg.h"

#include <QSize>

#include <array>

/// Brings pictures to another size or pixel format, smoothly; what it is set up for is kept for the next one.
class PictureScaler
{
public:
    /// Writes `picture` in that size and format. False if that can't be done.
    bool scale(const AVFrame& picture, QSize size, AVPixelFormat format, uint8_t* const rows[],
               const int strides[]);

private:
    bool prepare(const AVFrame& picture, QSize size, AVPixelFormat format);

    AvScaler m_scaler;
    std::array<int, 8> m_input{}; ///< what it is set up for
};
