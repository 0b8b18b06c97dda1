#pragma once

#include "packets/FFmpeg.h"

#include <QSize>

/// Pictures whose colours lie in planes of bytes, as nearly all that is decoded does.
namespace PlanarPicture {

bool isPlanar(AVPixelFormat format);

/// Makes `picture` one of that size with the format and the colours of `like`, unless it is one already.
/// False if memory is short.
bool prepare(AvFrame& picture, QSize size, const AVFrame& like);

} // namespace PlanarPicture
