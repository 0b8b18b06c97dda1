#pragma once

#include "archive/BackwardPictures.h"
#include "archive/PlaybackClock.h"
#include "archive/SegmentReader.h"
#include "sound/SoundTrack.h"
#include "source/PictureDecoder.h"

/// Plays a track by a clock: it begins where the clock is, goes on from piece to piece and ends in a gap,
/// until a seek. A seek's milliseconds are a moment of recorded time. While the clock runs backwards so does
/// it; who turns it round seeks.
class ArchiveFeed : public SourceFeed
{
public:
    /// `link` must outlive the feed.
    ArchiveFeed(std::shared_ptr<const SegmentTrack> track, std::shared_ptr<const PlaybackClock> clock,
                SourceLink& link);

    bool open() override;
    Step advance() override;
    qint64 pts() const override { return shownMs() * 1000; }
    FramePtr picture() override;
    void seek(qint64 ms) override;
    std::optional<std::chrono::steady_clock::time_point> due() const override;
    bool isPaced() const override { return true; }
    bool isLive() const override { return false; }
    bool givesPackets() const override { return true; }

private:
    bool enter(const TrackPiece& piece);
    void feedDecoder();
    void hear(const AVPacket& packet);
    void want(qint64 ms);
    void wantNext();
    std::optional<Step> finish();
    Step goBack();
    void wantPrevious();
    qint64 shownMs() const { return m_isBackward ? m_backwardMs : m_decoder.placeUs() / 1000; }

    std::shared_ptr<const SegmentTrack> m_track;
    std::shared_ptr<const PlaybackClock> m_clock;
    SourceLink& m_link;
    std::unique_ptr<SegmentReader> m_reader;
    PictureDecoder m_decoder;
    SoundTrack m_sound;
    BackwardPictures m_backward;
    std::shared_ptr<Frame> m_backwardFrame;
    qint64 m_backwardMs = 0;
    qint64 m_wantedMs = 0; ///< backwards, what lies behind it is left out
    bool m_isBackward = false;
    bool m_isBroken = false;
};
