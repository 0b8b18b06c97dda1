#include "decode/PlanarPicture.h"

#include "decode/PictureColours.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

bool PlanarPicture::isPlanar(AVPixelFormat format)
{
    const AVPixFmtDescriptor* about = av_pix_fmt_desc_get(format);
    constexpr uint64_t Other = AV_PIX_FMT_FLAG_PAL | AV_PIX_FMT_FLAG_BITSTREAM | AV_PIX_FMT_FLAG_HWACCEL;
    if (!about || about->flags & Other || about->log2_chroma_w > 1 || about->log2_chroma_h > 1)
        return false;
    for (int i = 0; i < about->nb_components; ++i) {
        if (about->comp[i].depth != 8 || about->comp[i].step != 1)
            return false;
    }
    return true;
}

bool PlanarPicture::prepare(AvFrame& picture, QSize size, const AVFrame& like)
{
    const bool isFit = picture && picture->width == size.width() && picture->height == size.height() &&
                       picture->format == like.format;
    if (!isFit) {
        picture.reset(av_frame_alloc());
        if (!picture)
            return false;
        picture->width = size.width();
        picture->height = size.height();
        picture->format = like.format;
        if (av_frame_get_buffer(picture.get(), 0) < 0)
            picture.reset();
    }
    if (!picture)
        return false;
    picture->colorspace = PictureColours::space(like);
    picture->color_range = PictureColours::range(like);
    return true;
}
