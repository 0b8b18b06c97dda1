#pragma once

#include "decode/FramePool.h"
#include "decode/PictureHalver.h"
#include "decode/PictureScaler.h"

/// Turns decoded pictures of any pixel format into frames.
class FrameConverter
{
public:
    FrameConverter() = default;
    FrameConverter(const FrameConverter&) = delete;
    FrameConverter& operator=(const FrameConverter&) = delete;

    /// A frame of the picture's own size, or else of `size`, smoothed on the way and with a reference to the
    /// picture. Null if it can't be converted. Sets the frame's serial and leaves its times alone.
    std::shared_ptr<Frame> convert(const AVFrame& picture, QSize size = {});
    /// The size of a picture that fits into another and keeps its shape; both sides are even, and not 0.
    static QSize fitted(const AVFrame& picture, QSize most);
    /// The frame in its picture's own size; the frame itself if it is that, null if it can't be converted.
    static FramePtr full(const FramePtr& frame);

private:
    const AVFrame& resized(const AVFrame& picture, QSize size);
    bool paint(const AVFrame& picture, Frame& frame);

    FramePool m_pool;
    PictureHalver m_halver;
    PictureScaler m_resizer; ///< from what the halver leaves to the size that is wanted
    PictureScaler m_painter; ///< to a frame
    AvFrame m_resized;
    quint64 m_serial = 0;
};
