#pragma once

#include "decode/FramePool.h"

#include <array>

struct AVFrame;
struct SwsContext;

/// Turns decoded pictures of any pixel format into frames, at their own size.
class FrameConverter
{
public:
    FrameConverter() = default;
    ~FrameConverter();
    FrameConverter(const FrameConverter&) = delete;
    FrameConverter& operator=(const FrameConverter&) = delete;

    /// Null if the picture can't be converted. Sets the frame's serial and leaves its times alone.
    std::shared_ptr<Frame> convert(const AVFrame& picture);

private:
    bool prepare(const AVFrame& picture);

    FramePool m_pool;
    SwsContext* m_scaler = nullptr;
    std::array<int, 5> m_input{}; ///< what the scaler is set up for
    quint64 m_serial = 0;
};
