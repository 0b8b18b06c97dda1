#include "sound/SoundTrack.h"

extern "C" {
#include <libswresample/swresample.h>
}

void SoundTrack::FreeResampler::operator()(SwrContext* context) const
{
    swr_free(&context);
}

void SoundTrack::begin(std::shared_ptr<const StreamFormat> format)
{
    m_format = std::move(format);
    m_codec.reset();
    m_isBroken = false;
}

void SoundTrack::hear(const AVPacket& packet, std::chrono::steady_clock::time_point due)
{
    const std::shared_ptr<SoundSink> sink = m_hub.sink();
    if (!sink)
        m_codec.reset();
    if (!sink || !openCodec())
        return;
    avcodec_send_packet(m_codec.get(), &packet);
    while (avcodec_receive_frame(m_codec.get(), m_frame.get()) >= 0) {
        Sound sound{resampled(*m_frame), due};
        due += std::chrono::microseconds(sound.samples.size() / Sound::Channels * 1'000'000 / Sound::Rate);
        sink->take(std::move(sound));
    }
}

bool SoundTrack::openCodec()
{
    if (m_codec || m_isBroken || !m_format)
        return m_codec != nullptr;
    QString error;
    m_codec = m_format->openDecoder(&error);
    m_frame.reset(av_frame_alloc());
    m_isBroken = !m_codec || !m_frame;
    return !m_isBroken;
}

bool SoundTrack::prepareResampler(const AVFrame& frame)
{
    if (m_resampler && m_rate == frame.sample_rate && m_sampleFormat == frame.format &&
        m_channels == frame.ch_layout.nb_channels)
        return true;
    AVChannelLayout wanted;
    av_channel_layout_default(&wanted, Sound::Channels);
    AVChannelLayout given;
    av_channel_layout_default(&given, frame.ch_layout.nb_channels);
    SwrContext* context = nullptr;
    int error = swr_alloc_set_opts2(&context, &wanted, AV_SAMPLE_FMT_S16, Sound::Rate, &given,
                                    AVSampleFormat(frame.format), frame.sample_rate, 0, nullptr);
    if (error >= 0)
        error = swr_init(context);
    m_resampler.reset(context);
    m_rate = frame.sample_rate;
    m_sampleFormat = frame.format;
    m_channels = frame.ch_layout.nb_channels;
    if (error < 0)
        m_resampler.reset();
    return error >= 0;
}

std::vector<int16_t> SoundTrack::resampled(const AVFrame& frame)
{
    if (!prepareResampler(frame))
        return {};
    const int most = swr_get_out_samples(m_resampler.get(), frame.nb_samples);
    std::vector<int16_t> samples(size_t(qMax(0, most)) * Sound::Channels);
    auto* out = reinterpret_cast<uint8_t*>(samples.data());
    const int made = swr_convert(m_resampler.get(), &out, most,
                                 const_cast<const uint8_t**>(frame.extended_data), frame.nb_samples);
    samples.resize(size_t(qMax(0, made)) * Sound::Channels);
    return samples;
}
