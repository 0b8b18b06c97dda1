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

/// What there is to play of a camera around the moment that is shown, sorted by time. Any thread.
class SegmentTrack
{
public:
    /// Pieces closer together than this play on without a gap.
    static constexpr qint64 SeamMs = 1500;

    explicit SegmentTrack(QVector<TrackPiece> pieces = {}) { setPieces(std::move(pieces)); }

    /// Known of a camera are the pieces of a stretch of time, and when the first one behind it begins.
    void setPieces(QVector<TrackPiece> pieces, std::optional<qint64> nextMs = std::nullopt);
    QVector<TrackPiece> pieces() const;
    /// The piece that covers a moment; where several do, since the clock was set back, the one that begins
    /// last. What of the others lies behind that is shown when they are played from their beginning.
    std::optional<TrackPiece> at(qint64 ms) const;
    /// The piece that ends last of those that end at or before a moment.
    std::optional<TrackPiece> before(qint64 ms) const;
    /// The start of the first piece after a moment.
    std::optional<qint64> nextStart(qint64 ms) const;
    /// The piece that goes on where another ends; of several the one whose beginning fits best.
    std::optional<TrackPiece> following(const TrackPiece& piece) const;

private:
    QVector<TrackPiece>::const_iterator behind(qint64 ms) const;

    mutable std::mutex m_mutex;
    QVector<TrackPiece> m_pieces;
    std::optional<qint64> m_nextMs;
    qint64 m_longestMs = 0;
};
