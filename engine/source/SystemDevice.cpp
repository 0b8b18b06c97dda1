#include "source/SystemDevice.h"

#include "source/DecodeDevices.h"

namespace {

/// How the decoder uses a device of that kind by a context alone; null if it can't.
const AVCodecHWConfig* configOf(const AVCodec& codec, AVHWDeviceType type)
{
    for (int i = 0; const AVCodecHWConfig* config = avcodec_get_hw_config(&codec, i); ++i) {
        if (config->device_type == type && config->methods & AV_CODEC_HW_CONFIG_METHOD_HW_DEVICE_CTX)
            return config;
    }
    return nullptr;
}

/// FFmpeg asks once more, without the device's format, after the device has refused a stream.
AVPixelFormat chooseFormat(AVCodecContext* codec, const AVPixelFormat* offered)
{
    const auto* device = reinterpret_cast<const AVHWDeviceContext*>(codec->hw_device_ctx->data);
    const AVCodecHWConfig* config = configOf(*codec->codec, device->type);
    for (const AVPixelFormat* format = offered; config && *format != AV_PIX_FMT_NONE; ++format) {
        if (*format == config->pix_fmt)
            return *format;
    }
    return avcodec_default_get_format(codec, offered);
}

} // namespace

std::vector<std::shared_ptr<DecodeDevice>> SystemDevice::all()
{
    std::vector<std::shared_ptr<DecodeDevice>> devices;
    AVHWDeviceType type = AV_HWDEVICE_TYPE_NONE;
    while ((type = av_hwdevice_iterate_types(type)) != AV_HWDEVICE_TYPE_NONE)
        devices.push_back(std::make_shared<SystemDevice>(type));
    return devices;
}

bool SystemDevice::open()
{
    AVBufferRef* context = nullptr;
    const int error = av_hwdevice_ctx_create(&context, m_type, nullptr, nullptr, 0);
    m_context.reset(context);
    return error >= 0;
}

const AVCodec* SystemDevice::decoderFor(AVCodecID id) const
{
    void* place = nullptr;
    while (const AVCodec* codec = av_codec_iterate(&place)) {
        if (codec->id == id && av_codec_is_decoder(codec) && configOf(*codec, m_type))
            return codec;
    }
    return nullptr;
}

bool SystemDevice::attach(AVCodecContext& codec)
{
    codec.get_format = chooseFormat;
    codec.hw_device_ctx = av_buffer_ref(m_context.get());
    return codec.hw_device_ctx;
}

DecodeDevice::Fetched SystemDevice::fetch(AVFrame& picture)
{
    if (!picture.hw_frames_ctx)
        return Fetched::NotNeeded;
    const AvFrame inMemory(av_frame_alloc());
    if (!inMemory || av_hwframe_transfer_data(inMemory.get(), &picture, 0) < 0 ||
        av_frame_copy_props(inMemory.get(), &picture) < 0)
        return Fetched::Failed;
    av_frame_unref(&picture);
    av_frame_move_ref(&picture, inMemory.get());
    return Fetched::Yes;
}

void useSystemDevices()
{
    DecodeDevices::use(std::make_shared<DecodeDevices>(SystemDevice::all()));
}
