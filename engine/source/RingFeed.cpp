#include "source/RingFeed.h"

#include <algorithm>

namespace {

/// A stream's own times are steadier than those of arrival, until it starts over, stalls or was paused.
constexpr qint64 MostDriftUs = 1'000'000;

std::vector<qint64> dueTimes(const std::vector<PacketPtr>& packets)
{
    std::vector<qint64> times;
    const EncodedPacket* before = nullptr;
    qint64 offset = 0;
    for (const PacketPtr& packet : packets) {
        const qint64 arrived = (packet->wallMs - packets.front()->wallMs) * 1000;
        const qint64 own = av_rescale_q(packet->packet->pts, packet->format->timeBase, Microseconds);
        const bool isNew = !before || before->format != packet->format;
        if (isNew || std::abs(own + offset - arrived) > MostDriftUs)
            offset = arrived - own;
        times.push_back(own + offset);
        before = packet.get();
    }
    return times;
}

std::vector<PacketPtr> picturesOf(std::vector<PacketPtr> packets)
{
    const auto isSound = [](const PacketPtr& packet) { return packet->isSound(); };
    packets.erase(std::remove_if(packets.begin(), packets.end(), isSound), packets.end());
    return packets;
}

} // namespace

RingFeed::RingFeed(std::vector<PacketPtr> packets)
    : m_packets(picturesOf(std::move(packets))), m_times(dueTimes(m_packets))
{
}

qint64 RingFeed::lengthUs(const std::vector<PacketPtr>& packets)
{
    const std::vector<qint64> times = dueTimes(picturesOf(packets));
    return times.empty() ? 0 : *std::max_element(times.begin(), times.end());
}

bool RingFeed::open()
{
    if (m_packets.empty())
        return fail("nothing was kept");
    return goTo(0);
}

bool RingFeed::goTo(size_t index)
{
    QString error;
    m_format = m_packets[index]->format.get();
    m_next = index;
    return m_decoder.open(m_packets[index]->format, &error) || fail(error);
}

void RingFeed::seek(qint64 ms)
{
    const qint64 last = *std::max_element(m_times.begin(), m_times.end());
    const qint64 wanted = qBound<qint64>(0, ms * 1000, last);
    m_decoder.setWanted(wanted);
    size_t start = 0;
    for (size_t i = 0; i < m_packets.size(); ++i) {
        if (m_packets[i]->isKey() && m_times[i] <= wanted)
            start = i;
    }
    goTo(start);
}

SourceFeed::Step RingFeed::advance()
{
    while (m_decoder.isOpen()) {
        const Step step = m_decoder.advance([this] {
            feedDecoder();
            return true;
        });
        if (step != Step::End)
            return step;
        if (m_next == m_packets.size())
            return m_decoder.takeLeftOut() ? Step::Picture : Step::End;
        goTo(m_next);
    }
    return Step::Failed;
}

/// A codec gives all that it holds before the next format begins.
void RingFeed::feedDecoder()
{
    if (m_next == m_packets.size() || m_packets[m_next]->format.get() != m_format) {
        m_decoder.drain();
        return;
    }
    const AVPacket& packet = *m_packets[m_next]->packet;
    const auto ownUs = [this](int64_t stamp) {
        return av_rescale_q(stamp, m_format->timeBase, Microseconds);
    };
    const qint64 offset = m_times[m_next] - ownUs(packet.pts);
    m_decoder.send(packet, [=](int64_t stamp) { return ownUs(stamp) + offset; });
    ++m_next;
}

FramePtr RingFeed::picture()
{
    const std::shared_ptr<Frame> frame = m_decoder.picture();
    if (frame)
        frame->wallMs = m_packets.front()->wallMs + frame->pts / 1000;
    return frame;
}
