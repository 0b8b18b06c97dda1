#pragma once

#include <memory>

struct EncodedPacket;
using PacketPtr = std::shared_ptr<const EncodedPacket>;

/// Takes a source's packets as they come, before they are decoded. Called in the source's thread, or in that
/// of a PacketQueue in between; a packet or two may still come after the sink was taken off its source.
class PacketSink
{
public:
    virtual ~PacketSink() = default;
    virtual void take(const PacketPtr& packet) = 0;
    /// Packets were left out in between; the next one of the pictures is a key frame.
    virtual void skip() {}
    /// No more packets come through a queue.
    virtual void end() {}
};
