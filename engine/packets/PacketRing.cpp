#include "packets/PacketRing.h"

#include "packets/EncodedPacket.h"

void PacketRing::take(const PacketPtr& packet)
{
    const std::lock_guard lock(m_mutex);
    if (packet->isKey())
        m_groups.push_back(0);
    if (m_groups.empty())
        return;
    m_packets.push_back(packet);
    ++m_groups.back();
    m_size += packet->bytes();
    while (!m_groups.empty() && hasSpare())
        dropOldest();
}

std::vector<PacketPtr> PacketRing::snapshot() const
{
    const std::lock_guard lock(m_mutex);
    return {m_packets.begin(), m_packets.end()};
}

bool PacketRing::hasSpare() const
{
    if (m_size > m_bytes)
        return true;
    if (m_groups.size() < 2)
        return false;
    return m_packets.back()->wallMs - m_packets[m_groups.front()]->wallMs >= m_ms;
}

void PacketRing::dropOldest()
{
    for (size_t left = m_groups.front(); left > 0; --left) {
        m_size -= m_packets.front()->bytes();
        m_packets.pop_front();
    }
    m_groups.pop_front();
}
