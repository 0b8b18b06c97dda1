#include "packets/PacketQueue.h"

#include "packets/EncodedPacket.h"

#include <condition_variable>
#include <deque>
#include <mutex>

namespace {

constexpr std::chrono::seconds Patience{3};
/// Many cameras at once would wake as many threads with each packet: what comes is handed on in bundles,
/// unless it takes more than a share of the room.
constexpr std::chrono::milliseconds BundlePause{200};
constexpr size_t UrgentShare = 4;

} // namespace

struct PacketQueue::Shared
{
    std::shared_ptr<PacketSink> target;
    size_t mostBytes;
    size_t mostPackets;
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<PacketPtr> packets; ///< null where some were left out
    size_t bytes = 0;
    bool isAwaited = false; ///< its thread waits for the first packet of a bundle
    bool isSkipping = false;
    bool isClosed = false;
    bool hasEnded = false;

    bool isUrgent() const
    {
        return isClosed || isSkipping || bytes > mostBytes / UrgentShare ||
               packets.size() > mostPackets / UrgentShare;
    }
    void handOn(std::unique_lock<std::mutex>& lock);
};

/// Until a packet is written it takes its room.
void PacketQueue::Shared::handOn(std::unique_lock<std::mutex>& lock)
{
    while (!packets.empty()) {
        const PacketPtr packet = std::move(packets.front());
        packets.pop_front();
        lock.unlock();
        if (packet)
            target->take(packet);
        else
            target->skip();
        lock.lock();
        bytes -= packet ? packet->bytes() : 0;
    }
}

PacketQueue::PacketQueue(std::shared_ptr<PacketSink> target, size_t mostBytes, size_t mostPackets)
    : m_shared(std::make_shared<Shared>())
{
    m_shared->target = std::move(target);
    m_shared->mostBytes = mostBytes;
    m_shared->mostPackets = mostPackets;
    m_thread = std::thread([shared = m_shared] { run(*shared); });
}

PacketQueue::~PacketQueue()
{
    close();
    if (m_thread.joinable())
        wait(Clock::now() + Patience);
}

void PacketQueue::take(const PacketPtr& packet)
{
    Shared& shared = *m_shared;
    const std::lock_guard lock(shared.mutex);
    const bool hasRoom =
        shared.bytes + packet->bytes() <= shared.mostBytes && shared.packets.size() < shared.mostPackets;
    if (shared.isClosed || (shared.isSkipping && !(packet->isKey() && hasRoom)))
        return;
    shared.isSkipping = !hasRoom;
    if (hasRoom)
        shared.bytes += packet->bytes();
    shared.packets.push_back(hasRoom ? packet : nullptr);
    if (std::exchange(shared.isAwaited, false) || shared.isUrgent())
        shared.changed.notify_all();
}

void PacketQueue::close()
{
    const std::lock_guard lock(m_shared->mutex);
    m_shared->isClosed = true;
    m_shared->changed.notify_all();
}

bool PacketQueue::wait(Clock::time_point until)
{
    if (!m_thread.joinable())
        return true;
    bool hasEnded = false;
    {
        std::unique_lock lock(m_shared->mutex);
        hasEnded = m_shared->changed.wait_until(lock, until, [this] { return m_shared->hasEnded; });
    }
    if (hasEnded)
        m_thread.join();
    else
        m_thread.detach();
    return hasEnded;
}

void PacketQueue::run(Shared& shared)
{
    std::unique_lock lock(shared.mutex);
    while (true) {
        shared.isAwaited = true;
        shared.changed.wait(lock, [&] { return shared.isClosed || !shared.packets.empty(); });
        shared.isAwaited = false;
        if (shared.packets.empty())
            break;
        shared.handOn(lock);
        shared.changed.wait_for(lock, BundlePause, [&] { return shared.isUrgent(); });
    }
    lock.unlock();
    shared.target->end();
    lock.lock();
    shared.hasEnded = true;
    shared.changed.notify_all();
}
