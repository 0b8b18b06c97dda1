#pragma once

#include "packets/PacketSink.h"

#include <atomic>
#include <mutex>
#include <vector>

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
