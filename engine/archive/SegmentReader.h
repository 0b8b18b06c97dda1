#pragma once

#include "archive/SegmentTrack.h"
#include "packets/InputStreams.h"

/// Reads one recorded file, with the moments of its pictures and its sound.
class SegmentReader
{
public:
    enum class Expect
    {
        AnyFormat,
        Recording ///< Matroska alone: a list of other files that bears such a name is none
    };

    /// False with one line in `error` if there is nothing in it to play.
    bool open(const TrackPiece& piece, QString* error, Expect expect = Expect::AnyFormat);
    const TrackPiece& piece() const { return m_piece; }
    /// That of the pictures.
    const std::shared_ptr<const StreamFormat>& format() const { return m_streams.format(); }
    const std::shared_ptr<const StreamFormat>& soundFormat() const { return m_streams.soundFormat(); }

    /// Goes to the last complete picture at or before a moment.
    void seek(qint64 ms);
    /// Reads on; null at the end. The packet is good until the next call, its times are set.
    const AVPacket* read();
    /// True if what was read is sound.
    bool isSound(const AVPacket& packet) const { return packet.stream_index == m_streams.sound(); }
    /// The moment of a time stamp of the pictures, or of the sound.
    qint64 momentOf(int64_t stamp, bool isSound = false) const;

    /// The time of the first picture on the file's own line, microseconds.
    qint64 firstUs() const { return av_rescale_q(m_firstStamp, format()->timeBase, Microseconds); }

    /// How long the file plays, milliseconds, also one that was not ended; 0 without a picture. It is then
    /// read to its end.
    qint64 measure();
    /// What ended the reading: AVERROR_EOF, or another error of FFmpeg; 0 before it has ended.
    int end() const { return m_end; }
    /// One line if the reading was ended by anything but the file's end, else empty.
    QString trouble() const;

    /// How long a file plays, milliseconds; 0 if nothing in it does.
    static qint64 duration(const QString& path);

private:
    QString refusal(int error) const;

    TrackPiece m_piece;
    AvInput m_input;
    AvPacket m_packet;
    InputStreams m_streams;
    int64_t m_firstStamp = 0; ///< of the pictures
    int m_end = 0;
};
