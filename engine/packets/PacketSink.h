#pragma once

#include <memory>

struct EncodedPacket;
using PacketPtr = std::shared_ptr<const EncodedPacket>;

/// Takes a source's packets as they come, before they are decoded. Called in the source's thread; a packet or
/// two may still come after the sink was taken off its source.
class PacketSink
{
public:
    virtual ~PacketSink() = default;
    virtual void take(const PacketPtr& packet) = 0;
};
