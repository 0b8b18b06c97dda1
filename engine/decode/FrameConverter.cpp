#include "decode/FrameConverter.h"

#include "packets/FFmpeg.h"

namespace {

constexpr int NeutralGain = 1 << 16;

QSize sizeOf(const AVFrame& picture)
{
    return {picture.width, picture.height};
}

/// Towards a smaller size every pixel counts, in proportion to what it covers.
int filterFor(QSize from, QSize to)
{
    if (from == to)
        return SWS_FAST_BILINEAR;
    return to.width() <= from.width() && to.height() <= from.height() ? SWS_AREA : SWS_BILINEAR;
}

/// The stream tells its colours, or else the pixel format does.
void setColours(SwsContext* scaler, const AVFrame& picture)
{
    int* before = nullptr;
    int* target = nullptr;
    int isFull = 0;
    int isTargetFull = 0;
    int tune = 0;
    if (sws_getColorspaceDetails(scaler, &before, &isFull, &target, &isTargetFull, &tune, &tune, &tune) < 0)
        return;
    if (picture.color_range != AVCOL_RANGE_UNSPECIFIED)
        isFull = picture.color_range == AVCOL_RANGE_JPEG;
    sws_setColorspaceDetails(scaler, sws_getCoefficients(picture.colorspace), isFull, target, isTargetFull, 0,
                             NeutralGain, NeutralGain);
}

} // namespace

FrameConverter::~FrameConverter()
{
    sws_freeContext(m_scaler);
}

bool FrameConverter::prepare(const AVFrame& picture, QSize size)
{
    const std::array input{
        picture.width, picture.height, picture.format, int(picture.colorspace), int(picture.color_range),
        size.width(),  size.height()};
    if (m_scaler && input == m_input)
        return true;
    sws_freeContext(m_scaler);
    m_scaler = sws_getContext(picture.width, picture.height, AVPixelFormat(picture.format), size.width(),
                              size.height(), AV_PIX_FMT_RGB24, filterFor(sizeOf(picture), size), nullptr,
                              nullptr, nullptr);
    m_input = input;
    if (m_scaler)
        setColours(m_scaler, picture);
    return m_scaler;
}

std::shared_ptr<Frame> FrameConverter::convert(const AVFrame& picture, QSize size)
{
    const QSize own = sizeOf(picture);
    const QSize target = size.isEmpty() ? own : size;
    std::shared_ptr<Frame> frame = m_pool.take(target.width(), target.height());
    if (!frame || !prepare(picture, target))
        return nullptr;
    uchar* rows[] = {frame->row(0), nullptr, nullptr, nullptr};
    const int strides[] = {frame->rowBytes(), 0, 0, 0};
    if (sws_scale(m_scaler, picture.data, picture.linesize, 0, picture.height, rows, strides) !=
        target.height())
        return nullptr;
    frame->serial = ++m_serial;
    if (target == own)
        return frame;
    frame->pictureSize = own;
    frame->picture.reset(av_frame_clone(&picture), [](AVFrame* held) { av_frame_free(&held); });
    return frame;
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
