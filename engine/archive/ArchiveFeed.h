#pragma once

#include "archive/PlaybackClock.h"
#include "archive/SegmentReader.h"
#include "decode/FrameConverter.h"
#include "sound/SoundTrack.h"
#include "source/SourceFeed.h"
#include "source/SourceLink.h"

/// Plays a track by a clock: it begins where the clock is, goes on from piece to piece and ends in a gap,
/// until a seek. A seek's milliseconds are a moment of recorded time.
class ArchiveFeed : public SourceFeed
{
public:
    /// `link` must outlive the feed.
    ArchiveFeed(std::shared_ptr<const SegmentTrack> track, std::shared_ptr<const PlaybackClock> clock,
                SourceLink& link);

    bool open() override;
    Step advance() override;
    qint64 pts() const override { return m_shownMs * 1000; }
    FramePtr picture() override;
    void seek(qint64 ms) override;
    std::optional<std::chrono::steady_clock::time_point> due() const override;
    bool isPaced() const override { return true; }
    bool isLive() const override { return false; }
    bool givesPackets() const override { return true; }

private:
    bool enter(const TrackPiece& piece);
    void feedCodec();
    bool isPassedOver(const AVPacket& packet) const;
    void hear(const AVPacket& packet);
    bool takeComing();
    std::optional<Step> finish();

    std::shared_ptr<const SegmentTrack> m_track;
    std::shared_ptr<const PlaybackClock> m_clock;
    SourceLink& m_link;
    std::unique_ptr<SegmentReader> m_reader;
    AvCodec m_codec;
    FrameConverter m_converter;
    SoundTrack m_sound;
    AvFrame m_coming;
    AvFrame m_shown;
    qint64 m_shownMs = 0;
    qint64 m_wantedMs = 0; ///< pictures before it are left out
    bool m_isBroken = false;
    bool m_isDraining = false;
    bool m_hasLeftOut = false;
};
