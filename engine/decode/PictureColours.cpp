#include "decode/PictureColours.h"

#include <cstring>
#include <type_traits>

namespace {

template <class Enum> Enum known(const Enum& value, Enum count, Enum otherwise)
{
    std::underlying_type_t<Enum> number{};
    std::memcpy(&number, &value, sizeof number);
    return number < std::underlying_type_t<Enum>(count) ? Enum(number) : otherwise;
}

} // namespace

AVColorSpace PictureColours::space(const AVFrame& picture)
{
    return known(picture.colorspace, AVCOL_SPC_NB, AVCOL_SPC_UNSPECIFIED);
}

AVColorRange PictureColours::range(const AVFrame& picture)
{
    return known(picture.color_range, AVCOL_RANGE_NB, AVCOL_RANGE_UNSPECIFIED);
}
