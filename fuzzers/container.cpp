#include "Scratch.h"
#include "source/MediaFeed.h"
#include "source/SourceLink.h"

// Any file is played as a camera is: some pictures, with what loops back at its end.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    constexpr int Steps = 40;
    static Scratch scratch;
    const auto address = SourceAddress::parse("Any=" + scratch.Write("any", data, size));
    SourceLink link(nullptr);
    link.setPaused(true);
    MediaFeed feed(*address, link);
    bool isWell = feed.open();
    for (int i = 0; isWell && i < Steps; ++i) {
        isWell = feed.advance() == SourceFeed::Step::Picture;
        const FramePtr frame = isWell && i % 8 == 0 ? feed.picture() : nullptr;
        if (frame && size_t(frame->rowBytes()) * size_t(frame->height) > frame->buffer.size())
            abort();
    }
    if (isWell == feed.error().isEmpty() && !feed.error().contains('\n'))
        return 0;
    abort();
}
