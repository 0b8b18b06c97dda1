#include "packets/PacketHub.h"

#include <algorithm>

void PacketHub::add(std::shared_ptr<PacketSink> sink)
{
    const std::lock_guard lock(m_mutex);
    m_sinks.push_back(std::move(sink));
    m_count = int(m_sinks.size());
}

void PacketHub::remove(const std::shared_ptr<PacketSink>& sink)
{
    const std::lock_guard lock(m_mutex);
    m_sinks.erase(std::remove(m_sinks.begin(), m_sinks.end(), sink), m_sinks.end());
    m_count = int(m_sinks.size());
}

void PacketHub::give(const PacketPtr& packet)
{
    std::vector<std::shared_ptr<PacketSink>> sinks;
    {
        const std::lock_guard lock(m_mutex);
        sinks = m_sinks;
    }
    for (const auto& sink : sinks)
        sink->take(packet);
}
