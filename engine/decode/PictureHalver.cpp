#include "decode/PictureHalver.h"

#include "decode/HalveRow.h"
#include "decode/PlanarPicture.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

namespace {

/// With chroma of half the size, each plane of the half is whole.
constexpr int EvenStep = 4;

void halvePlane(const AVFrame& from, AVFrame& to, int plane, QSize size)
{
    for (int y = 0; y < size.height(); ++y) {
        const uint8_t* upper = from.data[plane] + ptrdiff_t(2 * y) * from.linesize[plane];
        halveRow(upper, upper + from.linesize[plane], to.data[plane] + ptrdiff_t(y) * to.linesize[plane],
                 size.width());
    }
}

bool canHalve(const AVFrame& picture, QSize size)
{
    return picture.width % EvenStep == 0 && picture.height % EvenStep == 0 &&
           picture.width / 2 >= size.width() && picture.height / 2 >= size.height();
}

} // namespace

const AVFrame& PictureHalver::halve(const AVFrame& picture, QSize size)
{
    const AVFrame* now = &picture;
    if (size.isEmpty() || !PlanarPicture::isPlanar(AVPixelFormat(picture.format)))
        return *now;
    for (size_t step = 0; canHalve(*now, size); ++step) {
        const AVFrame* half = halfOf(*now, step);
        if (!half)
            break;
        now = half;
    }
    return *now;
}

const AVFrame* PictureHalver::halfOf(const AVFrame& picture, size_t step)
{
    if (m_halves.size() <= step)
        m_halves.resize(step + 1);
    AvFrame& half = m_halves[step];
    const QSize size(picture.width / 2, picture.height / 2);
    if (!PlanarPicture::prepare(half, size, picture))
        return nullptr;
    const auto format = AVPixelFormat(picture.format);
    const AVPixFmtDescriptor& about = *av_pix_fmt_desc_get(format);
    for (int plane = 0; plane < av_pix_fmt_count_planes(format); ++plane) {
        const bool isChroma = plane == 1 || plane == 2;
        halvePlane(picture, *half, plane,
                   {size.width() >> (isChroma ? about.log2_chroma_w : 0),
                    size.height() >> (isChroma ? about.log2_chroma_h : 0)});
    }
    return half.get();
}
