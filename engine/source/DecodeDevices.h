#pragma once

#include "source/DecodeDevice.h"

#include <memory>
#include <mutex>
#include <optional>
#include <vector>

/// The devices that the engine decodes with, and what they have failed at: each is opened once, and nothing
/// that it failed at is tried again for another camera. Any thread.
class DecodeDevices : public std::enable_shared_from_this<DecodeDevices>
{
public:
    /// A device that fails at so many kinds of streams is of no use.
    static constexpr size_t MostFailures = 3;

    /// The first one that can decode a stream does.
    explicit DecodeDevices(const std::vector<std::shared_ptr<DecodeDevice>>& devices);

    /// Those that decoders take from now on; null, as at first, where the processor does it all.
    static void use(std::shared_ptr<DecodeDevices> devices);
    static std::shared_ptr<DecodeDevices> inUse();

    /// A device that is open and may be able to decode such a stream; null if there is none by now. Devices
    /// that were not tried yet are opened meanwhile.
    std::shared_ptr<DecodeDevice> choose(const AVCodecParameters& stream);
    /// The device is not chosen for such streams any more.
    void leaveOut(const DecodeDevice& device, const AVCodecParameters& stream);

private:
    enum class State
    {
        Untried,
        Opening,
        Open,
        Useless,
    };

    struct Kind
    {
        AVCodecID codec;
        int profile;
        int width;
        int height;
    };

    struct Known
    {
        std::shared_ptr<DecodeDevice> device;
        State state = State::Untried;
        std::vector<Kind> failures;
    };

    static bool isOf(const Kind& kind, const AVCodecParameters& stream);
    static bool hasFailedAt(const Known& known, const AVCodecParameters& stream);
    void open(size_t index);

    std::mutex m_mutex;
    std::vector<Known> m_known;
};
