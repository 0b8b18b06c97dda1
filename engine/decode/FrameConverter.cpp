#include "decode/FrameConverter.h"

#include "decode/PlanarPicture.h"

std::shared_ptr<Frame> FrameConverter::convert(const AVFrame& picture, QSize size)
{
    const QSize own(picture.width, picture.height);
    const QSize target = size.isEmpty() ? own : size;
    std::shared_ptr<Frame> frame = m_pool.take(target.width(), target.height());
    if (!frame || !paint(resized(m_halver.halve(picture, target), target), *frame))
        return nullptr;
    frame->serial = ++m_serial;
    if (target == own)
        return frame;
    frame->pictureSize = own;
    frame->picture.reset(av_frame_clone(&picture), [](AVFrame* held) { av_frame_free(&held); });
    return frame;
}

/// The size apart from the colours takes a third of the time of both at once.
const AVFrame& FrameConverter::resized(const AVFrame& picture, QSize size)
{
    const auto format = AVPixelFormat(picture.format);
    const bool isDone = picture.width == size.width() && picture.height == size.height();
    if (isDone || !PlanarPicture::isPlanar(format) || !PlanarPicture::prepare(m_resized, size, picture))
        return picture;
    const bool isResized = m_resizer.scale(picture, size, format, m_resized->data, m_resized->linesize);
    return isResized ? *m_resized : picture;
}

bool FrameConverter::paint(const AVFrame& picture, Frame& frame)
{
    uchar* rows[] = {frame.row(0), nullptr, nullptr, nullptr};
    const int strides[] = {frame.rowBytes(), 0, 0, 0};
    return m_painter.scale(picture, frame.size(), AV_PIX_FMT_RGB24, rows, strides);
}

QSize FrameConverter::fitted(const AVFrame& picture, QSize most)
{
    const QSize size = QSize(picture.width, picture.height).scaled(most, Qt::KeepAspectRatio);
    return {qMax(2, size.width() & ~1), qMax(2, size.height() & ~1)};
}

FramePtr FrameConverter::full(const FramePtr& frame)
{
    if (!frame || !frame->picture)
        return frame;
    const std::shared_ptr<Frame> whole = FrameConverter().convert(*frame->picture);
    if (whole) {
        whole->pts = frame->pts;
        whole->wallMs = frame->wallMs;
    }
    return whole;
}
