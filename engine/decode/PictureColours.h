#pragma once

#include "packets/FFmpeg.h"

/// How a picture's colours are meant. A stream may hold any number there, also one that FFmpeg's enumerations
/// lack; it is left at unspecified then.
namespace PictureColours {

AVColorSpace space(const AVFrame& picture);
AVColorRange range(const AVFrame& picture);

} // namespace PictureColours
