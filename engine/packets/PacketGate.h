#pragma once

#include "packets/PacketSink.h"

#include <QtGlobal>

#include <atomic>

class PacketRing;

/// Hands packets on from a while before it is opened until a while after it is shut, and ends the other sink
/// each time. What comes before waits in memory, up to `mostBytes`.
class PacketGate : public PacketSink
{
public:
    /// Milliseconds by the packets' own time; what comes before begins with a key frame, and so earlier.
    PacketGate(std::shared_ptr<PacketSink> target, qint64 beforeMs, qint64 afterMs,
               size_t mostBytes = 16 << 20);
    ~PacketGate() override;

    /// Any thread; shut at first.
    void setOpen(bool open) { m_isOpen = open; }

    void take(const PacketPtr& packet) override;
    void skip() override;
    void end() override;

private:
    std::unique_ptr<PacketRing> makeRing() const;

    const std::shared_ptr<PacketSink> m_target;
    const qint64 m_beforeMs;
    const qint64 m_afterMs;
    const size_t m_mostBytes;
    std::atomic<bool> m_isOpen{false};
    std::unique_ptr<PacketRing> m_ring; ///< what waits; none while packets go through
    qint64 m_lastOpenMs = 0;
};
