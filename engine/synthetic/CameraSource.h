#pragma once

#include "cameras/SourceAddress.h"
#include "source/VideoSource.h"
#include "synthetic/Caption.h"

/// The source of a camera, whatever kind its address is of. `caption` writes into the pictures of synthetic
/// cameras.
std::unique_ptr<VideoSource> makeCameraSource(const SourceAddress& address,
                                              const CaptionPainter& caption = {});
