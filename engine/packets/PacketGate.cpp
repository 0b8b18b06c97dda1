#include "packets/PacketGate.h"

#include "packets/EncodedPacket.h"
#include "packets/PacketRing.h"

PacketGate::PacketGate(std::shared_ptr<PacketSink> target, qint64 beforeMs, qint64 afterMs, size_t mostBytes)
    : m_target(std::move(target)), m_beforeMs(beforeMs), m_afterMs(afterMs), m_mostBytes(mostBytes),
      m_ring(makeRing())
{
}

PacketGate::~PacketGate() = default;

std::unique_ptr<PacketRing> PacketGate::makeRing() const
{
    return std::make_unique<PacketRing>(m_beforeMs, m_mostBytes);
}

void PacketGate::take(const PacketPtr& packet)
{
    const bool isOpen = m_isOpen;
    if (isOpen)
        m_lastOpenMs = packet->wallMs;
    if (isOpen && m_ring) {
        for (const PacketPtr& waiting : m_ring->snapshot())
            m_target->take(waiting);
        m_ring.reset();
    }
    // A clock that was set back ends it too.
    if (!isOpen && !m_ring && qAbs(packet->wallMs - m_lastOpenMs) > m_afterMs) {
        m_target->end();
        m_ring = makeRing();
    }
    if (m_ring)
        m_ring->take(packet);
    else
        m_target->take(packet);
}

void PacketGate::skip()
{
    if (m_ring)
        m_ring = makeRing();
    else
        m_target->skip();
}

void PacketGate::end()
{
    m_target->end();
}
