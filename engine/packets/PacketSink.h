#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <vector>

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

/// Where the packets of one source go. Any thread.
class PacketHub
{
public:
    void add(std::shared_ptr<PacketSink> sink);
    void remove(const std::shared_ptr<PacketSink>& sink);
    bool hasSinks() const { return m_count > 0; }
    void give(const PacketPtr& packet);

private:
    std::mutex m_mutex;
    std::vector<std::shared_ptr<PacketSink>> m_sinks;
    std::atomic<int> m_count{0};
};
