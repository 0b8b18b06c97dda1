#pragma once

#include "packets/PacketSink.h"

#include <chrono>
#include <thread>

/// Hands packets on to another sink in a thread of its own, so that whoever gives them waits for nothing,
/// however slow the other sink is. What finds no room is left out up to a key frame that does.
class PacketQueue : public PacketSink
{
public:
    using Clock = std::chrono::steady_clock;

    explicit PacketQueue(std::shared_ptr<PacketSink> target, size_t mostBytes = 16 << 20,
                         size_t mostPackets = 4096);
    /// Waits for a while, as wait() does.
    ~PacketQueue() override;

    void take(const PacketPtr& packet) override;
    /// No more packets are taken; what is here is still handed on.
    void close();
    /// After close(): false if the other sink has not come to its end by then. Its thread is left to itself.
    bool wait(Clock::time_point until);

private:
    struct Shared;

    static void run(Shared& shared);

    std::shared_ptr<Shared> m_shared;
    std::thread m_thread;
};
