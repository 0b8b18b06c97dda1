#include "decode/PartConverter.h"

#include <cstddef>

namespace {

/// The picture as it was decoded, without a copy of its pixels.
AvFrame pictureOf(const Frame& frame)
{
    if (frame.picture)
        return AvFrame(av_frame_clone(frame.picture.get()));
    AvFrame view(av_frame_alloc());
    if (!view)
        return view;
    view->format = AV_PIX_FMT_RGB24;
    view->width = frame.width;
    view->height = frame.height;
    view->data[0] = const_cast<uchar*>(frame.pixels());
    view->linesize[0] = frame.rowBytes();
    return view;
}

bool crop(AVFrame& picture, const QRect& part)
{
    const QRect whole(0, 0, picture.width, picture.height);
    if (part.isEmpty() || !whole.contains(part))
        return false;
    picture.crop_left = size_t(part.left());
    picture.crop_top = size_t(part.top());
    picture.crop_right = size_t(whole.right() - part.right());
    picture.crop_bottom = size_t(whole.bottom() - part.bottom());
    return av_frame_apply_cropping(&picture, AV_FRAME_CROP_UNALIGNED) >= 0;
}

} // namespace

FramePtr PartConverter::convert(const Frame& frame, const QRect& part, QSize size)
{
    const AvFrame picture = pictureOf(frame);
    if (!picture || size.isEmpty() || !crop(*picture, part))
        return nullptr;
    const std::shared_ptr<Frame> made = m_pool.take(size.width(), size.height());
    if (!made)
        return nullptr;
    uchar* rows[] = {made->row(0), nullptr, nullptr, nullptr};
    const int strides[] = {made->rowBytes(), 0, 0, 0};
    if (!m_scaler.scale(*picture, size, AV_PIX_FMT_RGB24, rows, strides))
        return nullptr;
    made->pts = frame.pts;
    made->wallMs = frame.wallMs;
    made->serial = frame.serial;
    return made;
}
