#pragma once

#include "cameras/SourceAddress.h"
#include "source/VideoSource.h"
#include "synthetic/Caption.h"

class RelayPatience;

/// The source of a camera, whatever kind its address is of. `caption` writes into the pictures of synthetic
/// cameras.
std::unique_ptr<VideoSource> makeCameraSource(const SourceAddress& address,
                                              const CaptionPainter& caption = {});

/// The same for a camera whose pictures a relay has too, which is asked first unless it keeps silent, and by
/// turns with the camera itself whenever one of them is lost.
std::unique_ptr<VideoSource> makeRelayedSource(const SourceAddress& relay, const SourceAddress& camera,
                                               const std::shared_ptr<RelayPatience>& patience);
