#include "source/RingFeed.h"

#include <algorithm>
#include <limits>

namespace {

constexpr qint64 UsualStepUs = 40'000;
/// A stream's own times are steadier than those of arrival, until it starts over, stalls or was paused.
constexpr qint64 MostDriftUs = 1'000'000;
constexpr qint64 Anything = std::numeric_limits<qint64>::min();

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
    m_coming.reset(av_frame_alloc());
    m_shown.reset(av_frame_alloc());
    if (!m_coming || !m_shown)
        return fail("out of memory");
    if (m_packets.empty())
        return fail("nothing was kept");
    m_wantedUs = Anything;
    return goTo(0);
}

bool RingFeed::goTo(size_t index)
{
    QString error;
    m_format = m_packets[index]->format.get();
    m_codec = m_format->openDecoder(&error);
    m_next = index;
    m_isDraining = false;
    m_sent.clear();
    return m_codec || fail(error);
}

void RingFeed::seek(qint64 ms)
{
    const qint64 last = *std::max_element(m_times.begin(), m_times.end());
    m_wantedUs = qBound<qint64>(0, ms * 1000, last);
    m_hasLeftOut = false;
    size_t start = 0;
    for (size_t i = 0; i < m_packets.size(); ++i) {
        if (m_packets[i]->isKey() && m_times[i] <= m_wantedUs)
            start = i;
    }
    goTo(start);
}

SourceFeed::Step RingFeed::advance()
{
    while (m_codec) {
        const int error = avcodec_receive_frame(m_codec.get(), m_coming.get());
        if (error >= 0) {
            if (takeComing())
                return Step::Picture;
        } else if (error == AVERROR_EOF && m_next == m_packets.size()) {
            return std::exchange(m_hasLeftOut, false) ? Step::Picture : Step::End;
        } else if (error == AVERROR_EOF) {
            goTo(m_next);
        } else {
            feedCodec();
        }
    }
    return Step::Failed;
}

bool RingFeed::takeComing()
{
    m_shownUs = m_sent.contains(m_coming->pts) ? m_sent.take(m_coming->pts) : m_shownUs + UsualStepUs;
    m_shown.swap(m_coming);
    m_hasLeftOut = m_shownUs < m_wantedUs;
    return !m_hasLeftOut;
}

/// A codec gives all that it holds before the next format begins.
void RingFeed::feedCodec()
{
    const bool isLast = m_next == m_packets.size();
    if (m_isDraining || isLast || m_packets[m_next]->format.get() != m_format) {
        m_isDraining = true;
        avcodec_send_packet(m_codec.get(), nullptr);
        return;
    }
    const AVPacket* packet = m_packets[m_next]->packet.get();
    m_sent.insert(packet->pts, m_times[m_next]);
    avcodec_send_packet(m_codec.get(), packet);
    ++m_next;
}

FramePtr RingFeed::picture()
{
    const std::shared_ptr<Frame> frame = m_converter.convert(*m_shown);
    if (!frame)
        return nullptr;
    frame->pts = m_shownUs;
    frame->wallMs = m_packets.front()->wallMs + m_shownUs / 1000;
    return frame;
}
