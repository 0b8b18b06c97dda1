#include "fleet/PlainFleetReader.h"

#include "fleet/FleetSchema.h"

namespace {

constexpr int RestMs = 1000;

} // namespace

TrackStretch stretchOf(const QVector<Segment>& segments, qint64 nextMs, qint64 fromMs, qint64 toMs)
{
    TrackStretch stretch;
    if (nextMs > 0)
        stretch.nextMs = nextMs;
    for (const Segment& segment : segments) {
        if (segment.startMs >= toMs)
            stretch.nextMs = qMin(stretch.nextMs.value_or(segment.startMs), segment.startMs);
        else if (segment.endMs > fromMs)
            stretch.pieces.append({segment.path, segment.startMs, segment.endMs});
    }
    return stretch;
}

std::optional<Span> firstOf(const std::optional<QVector<Span>>& spans)
{
    return spans && !spans->isEmpty() ? std::make_optional(spans->first()) : std::nullopt;
}

bool PlainFleetReader::isReady()
{
    if (m_database.isOpen() || !m_restsUntil.hasExpired())
        return m_database.isOpen();
    m_restsUntil.setRemainingTime(RestMs);
    const bool isKnown = m_database.open() && FleetSchema::check(m_database) == FleetSchema::State::Current;
    if (!isKnown)
        m_database.close();
    return isKnown;
}

/// A connection that is lost is of no use any more.
template <class Answer> Answer PlainFleetReader::kept(Answer answer)
{
    if (m_database.result() == FleetDatabase::Result::Away)
        m_database.close();
    return answer;
}

std::optional<QVector<Segment>> PlainFleetReader::segments(const QString& camera, qint64 fromMs, qint64 toMs)
{
    return isReady() ? kept(m_index.segments(camera, fromMs, toMs)) : std::nullopt;
}

std::optional<QVector<Span>> PlainFleetReader::spans(const QString& camera, qint64 fromMs, qint64 toMs)
{
    return isReady() ? kept(m_index.spans(camera, fromMs, toMs)) : std::nullopt;
}

QHash<QString, RecordedTimes> PlainFleetReader::times(const QStringList& cameras, qint64 fromMs, qint64 toMs)
{
    const auto found = isReady() ? kept(m_index.times(cameras, fromMs, toMs)) : std::nullopt;
    return found.value_or(QHash<QString, RecordedTimes>());
}

std::optional<TrackStretch> PlainFleetReader::stretch(const QString& camera, qint64 fromMs, qint64 toMs)
{
    const auto found = segments(camera, fromMs, toMs);
    const auto next = found ? kept(m_index.nextMs(camera, toMs)) : std::nullopt;
    return next ? std::make_optional(stretchOf(*found, *next, fromMs, toMs)) : std::nullopt;
}

std::optional<qint64> PlainFleetReader::newestMs(const QString& camera)
{
    const auto newest = isReady() ? kept(m_index.newestMs(camera)) : std::nullopt;
    return newest && *newest > 0 ? newest : std::nullopt;
}

std::optional<Span> PlainFleetReader::spanAfter(const QString& camera, qint64 ms)
{
    return isReady() ? firstOf(kept(m_index.spanAfter(camera, ms))) : std::nullopt;
}

std::optional<Span> PlainFleetReader::spanBefore(const QString& camera, qint64 ms)
{
    return isReady() ? firstOf(kept(m_index.spanBefore(camera, ms))) : std::nullopt;
}
