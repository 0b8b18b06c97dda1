#include "archive/ArchiveReader.h"

namespace {

/// Whoever asks for many lists waits no more than once in so long.
constexpr std::chrono::milliseconds Rest{250};

} // namespace

bool ArchiveReader::isReady()
{
    if (Clock::now() < m_restsUntil)
        return false;
    QString error;
    if (m_index.isIntact() || m_index.open(m_paths->directory(), &error, ArchiveIndex::Access::Read))
        return true;
    m_restsUntil = Clock::now() + Rest;
    return false;
}

template <class List>
std::optional<List> ArchiveReader::read(List (ArchiveIndex::*list)(const QString&, qint64, qint64) const,
                                        const QString& camera, qint64 fromMs, qint64 toMs)
{
    if (!isReady())
        return std::nullopt;
    List found = (m_index.*list)(camera, fromMs, toMs);
    if (m_index.result() == ArchiveIndex::Result::Done)
        return found;
    m_restsUntil = Clock::now() + Rest;
    m_index.close();
    return std::nullopt;
}

std::optional<QVector<Segment>> ArchiveReader::segments(const QString& camera, qint64 fromMs, qint64 toMs)
{
    return read(&ArchiveIndex::segments, camera, fromMs, toMs);
}

std::optional<QVector<Span>> ArchiveReader::spans(const QString& camera, qint64 fromMs, qint64 toMs)
{
    return read(&ArchiveIndex::spans, camera, fromMs, toMs);
}

std::optional<TrackStretch> ArchiveReader::stretch(const QString& camera, qint64 fromMs, qint64 toMs)
{
    const auto found = segments(camera, fromMs, toMs);
    if (!found)
        return std::nullopt;
    TrackStretch stretch;
    for (const Segment& segment : *found) {
        if (const QString path = m_paths->full(segment.path); !path.isEmpty())
            stretch.pieces.append({path, segment.startMs, segment.endMs});
    }
    const QVector<Segment> next = m_index.next(camera, toMs);
    if (!next.isEmpty())
        stretch.nextMs = next.first().startMs;
    return stretch;
}

std::optional<qint64> ArchiveReader::newestMs(const QString& camera)
{
    const QVector<Segment> found = isReady() ? m_index.newest(camera) : QVector<Segment>();
    return found.isEmpty() ? std::nullopt : std::make_optional(found.first().startMs);
}

std::optional<Span> ArchiveReader::spanAfter(const QString& camera, qint64 ms)
{
    const QVector<Span> found = isReady() ? m_index.spanAfter(camera, ms) : QVector<Span>();
    return found.isEmpty() ? std::nullopt : std::make_optional(found.first());
}

std::optional<Span> ArchiveReader::spanBefore(const QString& camera, qint64 ms)
{
    const QVector<Span> found = isReady() ? m_index.spanBefore(camera, ms) : QVector<Span>();
    return found.isEmpty() ? std::nullopt : std::make_optional(found.first());
}
