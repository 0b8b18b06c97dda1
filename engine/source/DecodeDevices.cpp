#include "source/DecodeDevices.h"

#include "source/EngineThreads.h"

#include <algorithm>

namespace {

struct InUse
{
    std::mutex mutex;
    std::shared_ptr<DecodeDevices> devices;
};

/// Never destroyed: a thread that is stuck in a driver may outlive the program's end.
InUse& theOnesInUse()
{
    static InUse* inUse = new InUse;
    return *inUse;
}

} // namespace

DecodeDevices::DecodeDevices(const std::vector<std::shared_ptr<DecodeDevice>>& devices)
{
    for (const std::shared_ptr<DecodeDevice>& device : devices)
        m_known.push_back({device, State::Untried, {}});
}

void DecodeDevices::use(std::shared_ptr<DecodeDevices> devices)
{
    const std::lock_guard lock(theOnesInUse().mutex);
    theOnesInUse().devices = std::move(devices);
}

std::shared_ptr<DecodeDevices> DecodeDevices::inUse()
{
    const std::lock_guard lock(theOnesInUse().mutex);
    return theOnesInUse().devices;
}

std::shared_ptr<DecodeDevice> DecodeDevices::choose(const AVCodecParameters& stream)
{
    std::shared_ptr<DecodeDevice> chosen;
    std::vector<size_t> untried;
    {
        const std::lock_guard lock(m_mutex);
        for (size_t i = 0; i < m_known.size() && !chosen; ++i) {
            Known& known = m_known[i];
            if (known.state == State::Useless || !known.device->decoderFor(stream.codec_id))
                continue;
            if (known.state == State::Open && !hasFailedAt(known, stream))
                chosen = known.device;
            if (known.state == State::Untried) {
                known.state = State::Opening;
                untried.push_back(i);
            }
        }
    }
    for (const size_t index : untried)
        startEngineThread([self = shared_from_this(), index] { self->open(index); });
    return chosen;
}

void DecodeDevices::open(size_t index)
{
    const bool isOpen = m_known[index].device->open();
    const std::lock_guard lock(m_mutex);
    m_known[index].state = isOpen ? State::Open : State::Useless;
}

void DecodeDevices::leaveOut(const DecodeDevice& device, const AVCodecParameters& stream)
{
    const std::lock_guard lock(m_mutex);
    for (Known& known : m_known) {
        if (known.device.get() != &device || hasFailedAt(known, stream))
            continue;
        known.failures.push_back({stream.codec_id, stream.profile, stream.width, stream.height});
        if (known.failures.size() >= MostFailures)
            known.state = State::Useless;
    }
}

bool DecodeDevices::hasFailedAt(const Known& known, const AVCodecParameters& stream)
{
    return std::any_of(known.failures.begin(), known.failures.end(),
                       [&](const Kind& kind) { return isOf(kind, stream); });
}

bool DecodeDevices::isOf(const Kind& kind, const AVCodecParameters& stream)
{
    return kind.codec == stream.codec_id && kind.profile == stream.profile && kind.width == stream.width &&
           kind.height == stream.height;
}
