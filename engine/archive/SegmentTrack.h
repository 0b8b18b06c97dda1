#pragma once

#include <QString>
#include <QVector>

#include <mutex>
#include <optional>

/// A file and the recorded time that it covers, milliseconds since 1970.
struct TrackPiece
{
    QString path; ///< full
    qint64 startMs = 0;
    qint64 endMs = 0;
};

/// What there is to play of a camera, sorted by time. Any thread.
class SegmentTrack
{
public:
    /// Pieces closer together than this play on without a gap.
    static constexpr qint64 SeamMs = 1500;

    explicit SegmentTrack(QVector<TrackPiece> pieces = {}) : m_pieces(std::move(pieces)) {}

    void setPieces(QVector<TrackPiece> pieces);
    QVector<TrackPiece> pieces() const;
    /// The piece that covers a moment.
    std::optional<TrackPiece> at(qint64 ms) const;
    /// The start of the first piece after a moment.
    std::optional<qint64> nextStart(qint64 ms) const;
    /// The piece that goes on where another ends.
    std::optional<TrackPiece> following(const TrackPiece& piece) const;

private:
    mutable std::mutex m_mutex;
    QVector<TrackPiece> m_pieces;
};
