#include "archive/SegmentSink.h"

namespace {

constexpr qint64 MostStepMs = 2000;  ///< between the stream and the clock
constexpr qint64 MostStallMs = 1000; ///< within the stream
/// What comes behind a longer hole is no part of what was before it: a part covers all of its time.
constexpr qint64 MostHoleMs = 2000;
constexpr qint64 SeamMs = 200;
constexpr qint64 RetryMs = 2000;
constexpr qint64 WellMs = 10'000;
/// What a full disk seems to take first lies in memory.
constexpr qint64 SureMs = 5000;
/// A stream of few pictures a second doesn't stall between them.
constexpr qint64 UsualSteps = 3;

qint64 placeOf(const EncodedPacket& packet)
{
    return av_rescale_q(packet.packet->dts, packet.format->timeBase, {1, 1000});
}

} // namespace

SegmentSink::SegmentSink(std::shared_ptr<ArchivePaths> paths, const QString& camera, qint64 segmentMs,
                         Listener listener)
    : m_paths(std::move(paths)), m_camera(camera), m_segmentMs(segmentMs), m_listener(std::move(listener))
{
}

void SegmentSink::take(const PacketPtr& packet)
{
    if (!packet->isSound())
        watch(*packet);
    if (std::exchange(m_isTorn, false))
        finish();
    if (packet->isKey() && isDue(*packet)) {
        finish(packet->wallMs);
        begin(*packet);
    }
    if (!m_file.isOpen())
        return;
    if (m_file.write(*packet)) {
        noteWell(*packet);
        return;
    }
    finish();
    fail(m_file.error());
}

void SegmentSink::watch(const EncodedPacket& packet)
{
    const qint64 at = placeOf(packet);
    if (packet.format != m_format) {
        m_isCut = true;
        m_stepMs = 0;
        m_isTorn = false;
    } else {
        const qint64 step = at - m_lastAt;
        const qint64 apart = (packet.wallMs - m_beganMs) - (at - m_beganAt);
        const bool isStall = m_stepMs > 0 && step > qMax(MostStallMs, UsualSteps * m_stepMs);
        m_isTorn = isStall && step > MostHoleMs;
        m_isCut = m_isCut || isStall || qAbs(apart) > MostStepMs;
        m_stepMs = step;
    }
    m_format = packet.format;
    m_lastAt = at;
    m_lastMs = packet.wallMs;
}

bool SegmentSink::isDue(const EncodedPacket& packet) const
{
    if (!m_file.isOpen())
        return !m_failedMs || qAbs(packet.wallMs - *m_failedMs) >= RetryMs;
    return m_isCut || m_isCutAsked || m_file.lengthMs() >= m_segmentMs ||
           m_file.bytes() >= m_paths->mostPartBytes();
}

void SegmentSink::begin(const EncodedPacket& packet)
{
    m_isCut = false;
    m_isCutAsked = false;
    m_beganMs = packet.wallMs;
    m_beganAt = placeOf(packet);
    const QString path = m_paths->beginPart(m_camera, packet.wallMs);
    m_isBegun = m_file.open(path);
    if (m_isBegun)
        return;
    m_paths->endPart(path);
    fail(m_file.error());
}

/// `nextMs` is when what follows begins: a part that ends there but for the clocks' differences ends there.
void SegmentSink::finish(std::optional<qint64> nextMs)
{
    m_file.close();
    if (!std::exchange(m_isBegun, false))
        return;
    if (m_file.count() == 0) {
        m_paths->endPart(m_file.path());
        return;
    }
    const qint64 start = m_file.firstMs();
    const qint64 end = start + m_file.lengthMs();
    const bool isSeam = nextMs && *nextMs > start && qAbs(*nextMs - end) < SeamMs;
    const std::lock_guard lock(m_mutex);
    if (m_listener)
        m_listener->finished(
            {m_file.path(), m_camera, start, isSeam ? *nextMs : end, m_file.error().isEmpty()});
}

void SegmentSink::skip()
{
    m_isCut = true;
    fail("the disk is too slow: pictures are left out");
}

void SegmentSink::end()
{
    finish();
}

void SegmentSink::silence()
{
    const std::lock_guard lock(m_mutex);
    m_listener.reset();
}

void SegmentSink::fail(const QString& error)
{
    const bool isNew = !m_failedMs;
    m_failedMs = m_lastMs;
    m_isFailing = true;
    if (isNew)
        tellFailed(error);
}

void SegmentSink::noteWell(const EncodedPacket& packet)
{
    if (m_isFailing && (!m_failedMs || qAbs(packet.wallMs - *m_failedMs) >= SureMs))
        m_isFailing = false;
    if (!m_failedMs || qAbs(packet.wallMs - *m_failedMs) < WellMs)
        return;
    m_failedMs.reset();
    tellFailed({});
}

void SegmentSink::tellFailed(const QString& error)
{
    const std::lock_guard lock(m_mutex);
    if (m_listener)
        m_listener->failed(error);
}
