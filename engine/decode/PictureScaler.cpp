#include "decode/PictureScaler.h"

#include "decode/PictureColours.h"

namespace {

constexpr int NeutralGain = 1 << 16;

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
    const AVColorRange range = PictureColours::range(picture);
    if (range != AVCOL_RANGE_UNSPECIFIED)
        isFull = range == AVCOL_RANGE_JPEG;
    const int* coefficients = sws_getCoefficients(PictureColours::space(picture));
    sws_setColorspaceDetails(scaler, coefficients, isFull, target, isTargetFull, 0, NeutralGain, NeutralGain);
}

} // namespace

bool PictureScaler::prepare(const AVFrame& picture, QSize size, AVPixelFormat format)
{
    const std::array input{picture.width,
                           picture.height,
                           picture.format,
                           int(PictureColours::space(picture)),
                           int(PictureColours::range(picture)),
                           size.width(),
                           size.height(),
                           int(format)};
    if (m_scaler && input == m_input)
        return true;
    const QSize own(picture.width, picture.height);
    m_scaler.reset(sws_getContext(own.width(), own.height(), AVPixelFormat(picture.format), size.width(),
                                  size.height(), format, filterFor(own, size), nullptr, nullptr, nullptr));
    m_input = input;
    if (m_scaler && format != picture.format)
        setColours(m_scaler.get(), picture);
    return m_scaler != nullptr;
}

bool PictureScaler::scale(const AVFrame& picture, QSize size, AVPixelFormat format, uint8_t* const rows[],
                          const int strides[])
{
    return prepare(picture, size, format) && sws_scale(m_scaler.get(), picture.data, picture.linesize, 0,
                                                       picture.height, rows, strides) == size.height();
}
