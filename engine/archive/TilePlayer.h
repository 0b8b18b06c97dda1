#pragma once

#include "archive/SegmentReader.h"
#include "decode/FrameConverter.h"

/// The pictures of a camera's recordings one after the other, for whoever goes through them from their first
/// moment on.
class TilePlayer
{
public:
    /// Pictures come no larger than `most`, in their own shape.
    TilePlayer(const QVector<TrackPiece>& pieces, qint64 fromMs, QSize most);

    /// The picture that is shown at a moment, none before an earlier one that was asked for; null where
    /// nothing was recorded.
    FramePtr at(qint64 ms);
    /// What could not be read, or not to its end; a line each.
    const QStringList& unread() const { return m_unread; }

private:
    bool covers(qint64 ms) const;
    bool enter();
    bool decodeNext();
    bool feed();

    QVector<TrackPiece> m_pieces; ///< those that are not begun yet, the first one last
    QVector<TrackPiece> m_all;
    qint64 m_fromMs;
    QSize m_most;
    std::unique_ptr<SegmentReader> m_reader;
    AvCodec m_codec;
    AvFrame m_coming;
    AvFrame m_shown;
    qint64 m_comingMs = 0;
    bool m_hasComing = false;
    bool m_hasShown = false;
    FramePtr m_frame; ///< of what is shown, once it was asked for
    FrameConverter m_converter;
    QStringList m_unread;
};
