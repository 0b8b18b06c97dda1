#include "synthetic/CameraSource.h"

#include "source/MediaFeed.h"
#include "synthetic/SyntheticCamera.h"

std::unique_ptr<VideoSource> makeCameraSource(const SourceAddress& address, const CaptionPainter& caption)
{
    if (address.kind() == SourceAddress::Kind::Synthetic)
        return std::make_unique<SyntheticCamera>(address, caption);
    return std::make_unique<VideoSource>(MediaFeed::maker(address));
}

std::unique_ptr<VideoSource> makeRelayedSource(const SourceAddress& relay, const SourceAddress& camera,
                                               const std::shared_ptr<RelayPatience>& patience)
{
    return std::make_unique<VideoSource>(MediaFeed::maker(relay, camera, patience));
}
