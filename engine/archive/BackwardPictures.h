#pragma once

#include "archive/SegmentReader.h"
#include "source/PictureDecoder.h"

#include <deque>
#include <vector>

/// The pictures of a track from a moment backwards, from key frame to key frame: while those behind a key
/// frame are shown, those behind the one before it are decoded. They are held in the size in which they are
/// shown, and thinned out where a key frame's would take more than `MostBytes`. One thread.
class BackwardPictures
{
public:
    static constexpr qint64 MostBytes = 96 << 20;

    struct Wish
    {
        ShownSize shown;
        bool keysOnly = false;
    };

    explicit BackwardPictures(std::shared_ptr<const SegmentTrack> track) : m_track(std::move(track)) {}

    /// From now on pictures of before a moment come.
    void start(qint64 beforeMs);
    /// The one before the last one that came, its moment in `wallMs`; null where a gap or the track begins,
    /// or after a failure, of which error() tells.
    std::shared_ptr<Frame> next(const Wish& wish);
    const QString& error() const { return m_error; }

private:
    using Frames = std::vector<std::shared_ptr<Frame>>;

    bool gather(bool keysOnly);
    std::optional<TrackPiece> pieceBefore() const;
    bool enter(const TrackPiece& piece);
    void readGroup();
    bool decode(const ShownSize& shown);
    void feed();
    void keep(const ShownSize& shown, qint64 ms);

    std::shared_ptr<const SegmentTrack> m_track;
    std::unique_ptr<SegmentReader> m_reader;
    PictureDecoder m_decoder;
    QString m_error;
    qint64 m_beforeMs = 0;          ///< what lies behind that was gathered
    std::deque<AvPacket> m_packets; ///< to be decoded
    qint64 m_groupMs = 0;           ///< from its key frame on
    qint64 m_groupEndMs = 0;
    size_t m_groupSize = 0;
    size_t m_decoded = 0;
    size_t m_stride = 1;
    bool m_isDecoding = false;
    Frames m_coming;
    Frames m_ready; ///< the next one last
};
