#include "decode/FramePool.h"

#include "packets/PictureLimit.h"

#include <mutex>

namespace {

constexpr int KeptBuffers = 3;
constexpr size_t OverrunBytes = 64;

} // namespace

struct FramePool::Store
{
    std::mutex mutex;
    std::vector<std::unique_ptr<Frame>> free;

    void giveBack(std::unique_ptr<Frame> frame)
    {
        frame->picture.reset();
        frame->pictureSize = QSize();
        const std::lock_guard lock(mutex);
        if (free.size() < KeptBuffers)
            free.push_back(std::move(frame));
    }

    std::unique_ptr<Frame> takeAny()
    {
        const std::lock_guard lock(mutex);
        if (free.empty())
            return std::make_unique<Frame>();
        std::unique_ptr<Frame> frame = std::move(free.back());
        free.pop_back();
        return frame;
    }
};

FramePool::FramePool() : m_store(std::make_shared<Store>()) {}

std::shared_ptr<Frame> FramePool::take(int width, int height)
{
    if (width <= 0 || height <= 0 || !PictureLimit::allows(width, height))
        return nullptr;
    std::unique_ptr<Frame> frame = m_store->takeAny();
    if (frame->size() != QSize(width, height)) {
        frame->width = width;
        frame->height = height;
        frame->serial = 0;
        frame->buffer.resize(size_t(Frame::rowBytes(width)) * size_t(height) + OverrunBytes);
    }
    return {frame.release(),
            [store = m_store](Frame* used) { store->giveBack(std::unique_ptr<Frame>(used)); }};
}
