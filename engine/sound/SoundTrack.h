#pragma once

#include "packets/EncodedPacket.h"
#include "sound/SoundSink.h"

struct SwrContext;

/// The sound of one opened source on its way to whoever hears it. It costs nothing while nobody does. Lives
/// in the source's thread.
class SoundTrack
{
public:
    /// `hub` tells who hears it, and must outlive it.
    explicit SoundTrack(const SoundHub& hub) : m_hub(hub) {}

    /// What comes from now on; null for a source without sound, and before the next opening.
    void begin(std::shared_ptr<const StreamFormat> format);
    /// The next packet, and when it is to be heard. What can't be decoded is not heard.
    void hear(const AVPacket& packet, std::chrono::steady_clock::time_point due);

private:
    struct FreeResampler
    {
        void operator()(SwrContext* context) const;
    };

    bool openCodec();
    std::vector<int16_t> resampled(const AVFrame& frame);
    bool prepareResampler(const AVFrame& frame);

    const SoundHub& m_hub;
    std::shared_ptr<const StreamFormat> m_format;
    AvCodec m_codec;
    AvFrame m_frame;
    std::unique_ptr<SwrContext, FreeResampler> m_resampler;
    int m_rate = 0; ///< rate, format and channels that the resampler is set up for
    int m_sampleFormat = -1;
    int m_channels = 0;
    bool m_isBroken = false;
};
