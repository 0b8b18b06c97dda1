#include "archive/SegmentSink.h"

#include <QObject>

namespace {

constexpr qint64 UsualStepMs = 80;

} // namespace

SegmentSink::SegmentSink(QObject* receiver, std::function<void()> collect, const Archive& archive,
                         const QString& camera, qint64 segmentMs)
    : m_receiver(receiver), m_collect(std::move(collect)), m_archive(archive), m_camera(camera),
      m_segmentMs(segmentMs)
{
}

void SegmentSink::take(const PacketPtr& packet)
{
    const std::lock_guard lock(m_mutex);
    if (!m_receiver)
        return;
    if (packet->isKey() && isFull(packet->wallMs)) {
        const bool goesOn = packet->wallMs >= m_file.lastMs();
        finish(goesOn ? packet->wallMs : m_file.lastMs() + UsualStepMs);
        begin(packet->wallMs);
    }
    if (m_file.isOpen() && !m_file.write(*packet))
        finish(m_file.lastMs() + UsualStepMs);
}

/// A clock that was set back begins a new part too, and so does a stream that was away for long.
bool SegmentSink::isFull(qint64 wallMs) const
{
    return wallMs < m_startMs || wallMs - m_startMs >= m_segmentMs;
}

void SegmentSink::begin(qint64 wallMs)
{
    m_startMs = wallMs;
    m_isBegun = m_file.open(m_archive.partPath(m_camera, wallMs));
    if (m_isBegun)
        return;
    m_error = m_file.error();
    tell();
}

void SegmentSink::finish(qint64 endMs)
{
    m_file.close();
    if (!std::exchange(m_isBegun, false) || m_file.count() == 0)
        return;
    const bool isWhole = m_file.error().isEmpty();
    if (!isWhole)
        m_error = m_file.error();
    // A stream that was away for a while leaves a gap, not a long end.
    m_finished.push_back({m_file.path(), m_file.firstMs(), qMin(endMs, m_file.lastMs() + 1000), isWhole});
    tell();
}

void SegmentSink::close()
{
    const std::lock_guard lock(m_mutex);
    m_receiver = nullptr;
    if (m_isBegun)
        finish(m_file.lastMs() + UsualStepMs);
}

std::vector<FinishedPart> SegmentSink::takeFinished()
{
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_finished, {});
}

QString SegmentSink::takeError()
{
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_error, {});
}

void SegmentSink::tell()
{
    if (m_receiver)
        QMetaObject::invokeMethod(m_receiver, m_collect, Qt::QueuedConnection);
}
