#pragma once

#include "source/DecodeDevice.h"

#include <memory>
#include <vector>

/// A kind of device that FFmpeg knows, on whichever one the system gives for it.
class SystemDevice : public DecodeDevice
{
public:
    explicit SystemDevice(AVHWDeviceType type) : m_type(type) {}
    /// One of each kind that this FFmpeg was built with.
    static std::vector<std::shared_ptr<DecodeDevice>> all();

    bool open() override;
    const AVCodec* decoderFor(AVCodecID codec) const override;
    bool attach(AVCodecContext& codec) override;
    Fetched fetch(AVFrame& picture) override;

private:
    AVHWDeviceType m_type;
    AvBuffer m_context;
};

/// Decoders take the system's devices from now on.
void useSystemDevices();
