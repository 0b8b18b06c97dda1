#include "packets/EncodedPacket.h"

#include "packets/PictureLimit.h"

#include <algorithm>

namespace {

std::shared_ptr<StreamFormat> emptyFormat(AVRational timeBase)
{
    AvParameters parameters(avcodec_parameters_alloc());
    return parameters ? std::make_shared<StreamFormat>(StreamFormat{std::move(parameters), timeBase, nullptr})
                      : nullptr;
}

bool areLike(const AVCodecParameters& one, const AVCodecParameters& two)
{
    return one.codec_id == two.codec_id && one.width == two.width && one.height == two.height &&
           one.sample_rate == two.sample_rate && one.ch_layout.nb_channels == two.ch_layout.nb_channels &&
           one.extradata_size == two.extradata_size &&
           std::equal(one.extradata, one.extradata + one.extradata_size, two.extradata);
}

} // namespace

std::shared_ptr<const StreamFormat> StreamFormat::of(const AVCodecParameters& parameters, AVRational timeBase,
                                                     std::shared_ptr<const StreamFormat> sound)
{
    std::shared_ptr<StreamFormat> format = emptyFormat(timeBase);
    if (!format || avcodec_parameters_copy(format->parameters.get(), &parameters) < 0)
        return nullptr;
    format->sound = std::move(sound);
    return format;
}

std::shared_ptr<const StreamFormat> StreamFormat::of(const AVCodecContext& codec)
{
    std::shared_ptr<StreamFormat> format = emptyFormat(codec.time_base);
    const bool isCopied = format && avcodec_parameters_from_context(format->parameters.get(), &codec) >= 0;
    return isCopied ? format : nullptr;
}

bool StreamFormat::isLike(const StreamFormat& other) const
{
    if (!sound != !other.sound || (sound && !sound->isLike(*other.sound)))
        return false;
    return av_cmp_q(timeBase, other.timeBase) == 0 && areLike(*parameters, *other.parameters);
}

AvCodec StreamFormat::openDecoder(QString* error, const AVCodec* decoder,
                                  const std::function<bool(AVCodecContext&)>& prepare) const
{
    if (!PictureLimit::allows(parameters->width, parameters->height)) {
        *error =
            QString("its pictures are too large: %1 x %2").arg(parameters->width).arg(parameters->height);
        return nullptr;
    }
    if (!decoder)
        decoder = avcodec_find_decoder(parameters->codec_id);
    AvCodec codec(decoder ? avcodec_alloc_context3(decoder) : nullptr);
    if (!codec) {
        *error = "no decoder for it";
        return nullptr;
    }
    int result = avcodec_parameters_to_context(codec.get(), parameters.get());
    codec->pkt_timebase = timeBase;
    codec->thread_count = 1;
    codec->max_pixels = PictureLimit::MostPixels;
    if (result >= 0 && prepare && !prepare(*codec))
        result = AVERROR_EXTERNAL;
    if (result >= 0)
        result = avcodec_open2(codec.get(), decoder, nullptr);
    if (result >= 0)
        return codec;
    *error = "cannot decode: " + errorText(result);
    return nullptr;
}
