#pragma once

#include "decode/FramePool.h"

#include <array>

struct AVFrame;
struct SwsContext;

/// Turns decoded pictures of any pixel format into frames.
class FrameConverter
{
public:
    FrameConverter() = default;
    ~FrameConverter();
    FrameConverter(const FrameConverter&) = delete;
    FrameConverter& operator=(const FrameConverter&) = delete;

    /// A frame of the picture's own size, or else of `size`, smoothed on the way and with a reference to the
    /// picture. Null if it can't be converted. Sets the frame's serial and leaves its times alone.
    std::shared_ptr<Frame> convert(const AVFrame& picture, QSize size = {});
    /// The frame in its picture's own size; the frame itself if it is that, null if it can't be converted.
    static FramePtr full(const FramePtr& frame);

private:
    bool prepare(const AVFrame& picture, QSize size);

    FramePool m_pool;
    SwsContext* m_scaler = nullptr;
    std::array<int, 7> m_input{}; ///< what the scaler is set up for
    quint64 m_serial = 0;
};
