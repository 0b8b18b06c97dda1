#pragma once

#include "archive/SegmentTrack.h"
#include "video/EncodedPacket.h"

/// Reads the video of one recorded file, with the moments of its pictures.
class SegmentReader
{
public:
    /// False with one line in `error` if there is nothing in it to play.
    bool open(const TrackPiece& piece, QString* error);
    const TrackPiece& piece() const { return m_piece; }
    const std::shared_ptr<const StreamFormat>& format() const { return m_format; }

    /// Goes to the key frame before a moment.
    void seek(qint64 ms);
    /// Reads on; null at the end. The packet is good until the next call, its times are set.
    const AVPacket* read();
    /// The moment of a time stamp of the stream.
    qint64 momentOf(int64_t stamp) const;

    /// How long a file plays, milliseconds; 0 or less if nothing in it does. Also of a file that was not
    /// ended.
    static qint64 duration(const QString& path);

private:
    TrackPiece m_piece;
    AvInput m_input;
    AvPacket m_packet;
    std::shared_ptr<const StreamFormat> m_format;
    int m_stream = -1;
    int64_t m_firstStamp = 0;
};
