#include "source/LiveQueue.h"

#include <limits>

namespace {

constexpr size_t None = std::numeric_limits<size_t>::max();

} // namespace

void LiveQueue::push(const PacketPtr& packet, Clock::time_point came)
{
    const std::lock_guard lock(m_mutex);
    if (!isKept(*packet))
        return;
    m_waiting.push_back({packet, came});
    m_bytes += packet->bytes();
    if (canGo())
        m_changed.notify_all();
}

bool LiveQueue::isKept(const EncodedPacket& packet)
{
    const bool isFull = !m_waiting.empty() && m_bytes + packet.bytes() > MostBytes;
    if (packet.isSound())
        return m_need == PictureNeed::All && !isFull;
    if (packet.isKey()) {
        m_needsKey = false;
        if (isFull || m_need != PictureNeed::All)
            keepPicturesFrom(None);
        m_hasNewKey = m_need != PictureNeed::All;
        return true;
    }
    m_needsKey = m_needsKey || isFull;
    m_hasLeftOut = m_hasLeftOut || isFull;
    return !m_needsKey;
}

void LiveQueue::end()
{
    const std::lock_guard lock(m_mutex);
    m_hasEnded = true;
    m_changed.notify_all();
}

void LiveQueue::setNeed(PictureNeed need)
{
    const std::lock_guard lock(m_mutex);
    if (std::exchange(m_need, need) == need)
        return;
    m_hasLeftOut = false;
    m_catchUpEnds = Clock::now() + CatchUp;
    m_changed.notify_all();
}

LiveQueue::Taken LiveQueue::take(Clock::time_point until)
{
    std::unique_lock lock(m_mutex);
    m_changed.wait_until(lock, until, [this] { return canGo() || m_hasEnded; });
    const Clock::time_point now = Clock::now();
    if (m_need == PictureNeed::All)
        leaveOutLate(now);
    Taken taken;
    taken.hasEnded = m_hasEnded;
    if (!canGo())
        return taken;
    if (m_need == PictureNeed::KeyFrames)
        return lendKeyFrame();
    const Waiting next = m_waiting.front();
    m_waiting.pop_front();
    m_bytes -= next.packet->bytes();
    const bool startsOver = !next.packet->isSound() && std::exchange(m_startsOver, false);
    return {next.packet, next.came, startsOver, now - next.came > Behind, false, false};
}

/// It stays, as the first of the pictures that are kept.
LiveQueue::Taken LiveQueue::lendKeyFrame()
{
    m_hasNewKey = false;
    m_startsOver = true;
    return {m_waiting.front().packet, m_waiting.front().came, true, false, true, false};
}

bool LiveQueue::takeLeftOut()
{
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_hasLeftOut, false);
}

bool LiveQueue::hasNext() const
{
    const std::lock_guard lock(m_mutex);
    return canGo() || m_hasEnded;
}

LiveQueue::Clock::duration LiveQueue::waited(Clock::time_point now) const
{
    const std::lock_guard lock(m_mutex);
    const bool isDue = m_need == PictureNeed::All && !m_waiting.empty() && now > m_catchUpEnds;
    return isDue ? now - m_waiting.front().came : Clock::duration();
}

bool LiveQueue::canGo() const
{
    if (m_waiting.empty() || m_need == PictureNeed::None)
        return false;
    return m_need == PictureNeed::All || m_hasNewKey;
}

void LiveQueue::leaveOutLate(Clock::time_point now)
{
    size_t first = None;
    size_t newestKey = None;
    for (size_t i = 0; i < m_waiting.size(); ++i) {
        const EncodedPacket& packet = *m_waiting[i].packet;
        if (first == None && !packet.isSound())
            first = i;
        else if (packet.isKey())
            newestKey = i;
    }
    if (first == None || now - m_waiting[first].came <= Behind)
        return;
    const bool isHopeless = now - m_waiting[first].came > TooLate && now > m_catchUpEnds;
    if (newestKey == None && !isHopeless)
        return;
    m_hasLeftOut = true;
    m_needsKey = newestKey == None;
    keepPicturesFrom(newestKey);
}

void LiveQueue::keepPicturesFrom(size_t index)
{
    std::deque<Waiting> kept;
    for (size_t i = 0; i < m_waiting.size(); ++i) {
        if (i >= index || m_waiting[i].packet->isSound())
            kept.push_back(std::move(m_waiting[i]));
        else
            m_bytes -= m_waiting[i].packet->bytes();
    }
    m_waiting.swap(kept);
    m_startsOver = true;
}
