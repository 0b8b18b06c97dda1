#pragma once

#include "decode/Frame.h"

/// Recycles the buffers of one source. Frames may outlive the pool and may be released on any thread.
class FramePool
{
public:
    FramePool();

    /// A frame of the given size; its pixels are those of the frame that used the buffer before, which the
    /// serial tells. A size that no buffer can hold gives null.
    std::shared_ptr<Frame> take(int width, int height);

private:
    struct Store;
    std::shared_ptr<Store> m_store;
};
