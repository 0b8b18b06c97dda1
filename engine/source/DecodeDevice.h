#pragma once

#include "packets/FFmpeg.h"

/// Something beside the processor that decodes pictures. open() comes first, once, in a thread of its own;
/// all else in any thread after it.
class DecodeDevice
{
public:
    enum class Fetched
    {
        Yes,
        NotNeeded, ///< the picture was decoded by the processor, as the device can't do it
        Failed,
    };

    virtual ~DecodeDevice() = default;
    /// False if there is no such device. May take its time.
    virtual bool open() = 0;
    /// The decoder that can use the device for such streams; null for none. Before open() too.
    virtual const AVCodec* decoderFor(AVCodecID codec) const = 0;
    /// Makes a decoder that is about to be opened use the device.
    virtual bool attach(AVCodecContext& codec) = 0;
    /// Brings a decoded picture into memory.
    virtual Fetched fetch(AVFrame& picture) = 0;
};
