#pragma once

#include "packets/PacketSink.h"

#include <QtGlobal>

#include <deque>
#include <mutex>
#include <vector>

/// Keeps the last packets of a source in memory, from a key frame on.
class PacketRing : public PacketSink
{
public:
    /// Keeps at least `ms` milliseconds, if that much has come and fits into `bytes`, and less than a key
    /// frame's distance more.
    explicit PacketRing(qint64 ms = 60'000, size_t bytes = 32 << 20) : m_ms(ms), m_bytes(bytes) {}

    void take(const PacketPtr& packet) override;
    /// What it holds now: nothing, or packets of which the first is a key frame.
    std::vector<PacketPtr> snapshot() const;

private:
    void dropOldest();
    bool hasSpare() const;

    const qint64 m_ms;
    const size_t m_bytes;
    mutable std::mutex m_mutex;
    std::deque<PacketPtr> m_packets;
    std::deque<size_t> m_groups; ///< number of packets from each key frame to the next
    size_t m_size = 0;
};
