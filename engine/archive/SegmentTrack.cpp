#include "archive/SegmentTrack.h"

#include <algorithm>

void SegmentTrack::setPieces(QVector<TrackPiece> pieces, std::optional<qint64> nextMs)
{
    qint64 longest = 0;
    for (const TrackPiece& piece : qAsConst(pieces))
        longest = qMax(longest, piece.endMs - piece.startMs);
    const std::lock_guard lock(m_mutex);
    m_pieces.swap(pieces);
    m_longestMs = longest;
    m_nextMs = nextMs;
}

QVector<TrackPiece> SegmentTrack::pieces() const
{
    const std::lock_guard lock(m_mutex);
    return m_pieces;
}

/// The first piece that begins after a moment.
QVector<TrackPiece>::const_iterator SegmentTrack::behind(qint64 ms) const
{
    return std::upper_bound(m_pieces.begin(), m_pieces.end(), ms,
                            [](qint64 moment, const TrackPiece& piece) { return moment < piece.startMs; });
}

std::optional<TrackPiece> SegmentTrack::at(qint64 ms) const
{
    const std::lock_guard lock(m_mutex);
    for (auto it = behind(ms); it != m_pieces.begin();) {
        --it;
        if (ms < it->endMs)
            return *it;
        if (ms - it->startMs >= m_longestMs)
            break;
    }
    return std::nullopt;
}

std::optional<TrackPiece> SegmentTrack::before(qint64 ms) const
{
    const std::lock_guard lock(m_mutex);
    std::optional<TrackPiece> last;
    for (const TrackPiece& piece : m_pieces) {
        if (piece.endMs <= ms && (!last || last->endMs < piece.endMs))
            last = piece;
    }
    return last;
}

std::optional<qint64> SegmentTrack::nextStart(qint64 ms) const
{
    const std::lock_guard lock(m_mutex);
    const auto next = behind(ms);
    if (next != m_pieces.end())
        return next->startMs;
    return m_nextMs && *m_nextMs > ms ? m_nextMs : std::nullopt;
}

std::optional<TrackPiece> SegmentTrack::following(const TrackPiece& piece) const
{
    const std::lock_guard lock(m_mutex);
    std::optional<TrackPiece> best;
    const auto end = behind(piece.endMs + SeamMs);
    for (auto it = behind(piece.startMs); it != end; ++it) {
        const bool isNearer = !best || qAbs(it->startMs - piece.endMs) < qAbs(best->startMs - piece.endMs);
        if (it->endMs > piece.endMs && isNearer)
            best = *it;
    }
    return best;
}
