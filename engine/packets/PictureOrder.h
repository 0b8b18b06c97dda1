#pragma once

#include "packets/FFmpeg.h"

namespace PictureOrder {

/// True if the stream's header says that its pictures are shown in the order in which they come: what cameras
/// send as H.264, as far as they tell. Of other codecs, and of headers that are not understood, nothing is
/// known.
bool isKept(const AVCodecParameters& stream);

} // namespace PictureOrder
