#include "archive/TilePlayer.h"

#include <algorithm>

TilePlayer::TilePlayer(const QVector<TrackPiece>& pieces, qint64 fromMs, QSize most)
    : m_pieces(pieces), m_all(pieces), m_fromMs(fromMs), m_most(most), m_coming(av_frame_alloc()),
      m_shown(av_frame_alloc())
{
    std::reverse(m_pieces.begin(), m_pieces.end());
    m_hasComing = m_coming && m_shown && decodeNext();
}

bool TilePlayer::covers(qint64 ms) const
{
    return std::any_of(m_all.begin(), m_all.end(),
                       [ms](const TrackPiece& piece) { return piece.startMs <= ms && ms < piece.endMs; });
}

FramePtr TilePlayer::at(qint64 ms)
{
    while (m_hasComing && m_comingMs <= ms) {
        std::swap(m_coming, m_shown);
        m_hasShown = true;
        m_frame.reset();
        m_hasComing = decodeNext();
    }
    if (!m_hasShown || !covers(ms))
        return nullptr;
    if (!m_frame)
        m_frame = m_converter.convert(*m_shown, FrameConverter::fitted(*m_shown, m_most));
    return m_frame;
}

bool TilePlayer::enter()
{
    while (!m_pieces.isEmpty()) {
        const TrackPiece piece = m_pieces.takeLast();
        QString error;
        m_reader = std::make_unique<SegmentReader>();
        m_codec.reset();
        if (m_reader->open(piece, &error, SegmentReader::Expect::Recording))
            m_codec = m_reader->format()->openDecoder(&error);
        if (m_codec) {
            m_reader->seek(qMax(m_fromMs, piece.startMs));
            return true;
        }
        m_unread.append(error);
    }
    m_reader.reset();
    return false;
}

bool TilePlayer::decodeNext()
{
    while (m_reader || enter()) {
        const int result = avcodec_receive_frame(m_codec.get(), m_coming.get());
        if (result >= 0) {
            m_comingMs = m_reader->momentOf(m_coming->best_effort_timestamp);
            return true;
        }
        if (result != AVERROR(EAGAIN) || !feed())
            m_reader.reset();
    }
    return false;
}

/// False if the codec takes nothing any more. A packet that it can't read is left out.
bool TilePlayer::feed()
{
    while (const AVPacket* packet = m_reader->read()) {
        if (!m_reader->isSound(*packet))
            return avcodec_send_packet(m_codec.get(), packet) != AVERROR_EOF;
    }
    if (const QString trouble = m_reader->trouble(); !trouble.isEmpty())
        m_unread.append(trouble);
    return avcodec_send_packet(m_codec.get(), nullptr) >= 0;
}
