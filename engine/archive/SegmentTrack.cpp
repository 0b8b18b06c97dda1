#include "archive/SegmentTrack.h"

void SegmentTrack::setPieces(QVector<TrackPiece> pieces)
{
    const std::lock_guard lock(m_mutex);
    m_pieces.swap(pieces);
}

QVector<TrackPiece> SegmentTrack::pieces() const
{
    const std::lock_guard lock(m_mutex);
    return m_pieces;
}

std::optional<TrackPiece> SegmentTrack::at(qint64 ms) const
{
    const std::lock_guard lock(m_mutex);
    for (const TrackPiece& piece : m_pieces) {
        if (piece.startMs <= ms && ms < piece.endMs)
            return piece;
    }
    return std::nullopt;
}

std::optional<qint64> SegmentTrack::nextStart(qint64 ms) const
{
    const std::lock_guard lock(m_mutex);
    for (const TrackPiece& piece : m_pieces) {
        if (piece.startMs > ms)
            return piece.startMs;
    }
    return std::nullopt;
}

std::optional<TrackPiece> SegmentTrack::following(const TrackPiece& piece) const
{
    const std::lock_guard lock(m_mutex);
    for (const TrackPiece& other : m_pieces) {
        if (other.startMs > piece.startMs && other.endMs > piece.endMs)
            return other.startMs - piece.endMs <= SeamMs ? std::make_optional(other) : std::nullopt;
    }
    return std::nullopt;
}
