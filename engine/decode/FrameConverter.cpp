#include "decode/FrameConverter.h"

#include "packets/FFmpeg.h"

namespace {

constexpr int NeutralGain = 1 << 16;

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

bool FrameConverter::prepare(const AVFrame& picture)
{
    const std::array input{picture.width, picture.height, picture.format, int(picture.colorspace),
                           int(picture.color_range)};
    if (m_scaler && input == m_input)
        return true;
    sws_freeContext(m_scaler);
    m_scaler = sws_getContext(picture.width, picture.height, AVPixelFormat(picture.format), picture.width,
                              picture.height, AV_PIX_FMT_RGB24, SWS_FAST_BILINEAR, nullptr, nullptr, nullptr);
    m_input = input;
    if (m_scaler)
        setColours(m_scaler, picture);
    return m_scaler;
}

std::shared_ptr<Frame> FrameConverter::convert(const AVFrame& picture)
{
    std::shared_ptr<Frame> frame = m_pool.take(picture.width, picture.height);
    if (!frame || !prepare(picture))
        return nullptr;
    uchar* rows[] = {frame->row(0), nullptr, nullptr, nullptr};
    const int strides[] = {frame->rowBytes(), 0, 0, 0};
    if (sws_scale(m_scaler, picture.data, picture.linesize, 0, picture.height, rows, strides) !=
        picture.height)
        return nullptr;
    frame->serial = ++m_serial;
    return frame;
}
