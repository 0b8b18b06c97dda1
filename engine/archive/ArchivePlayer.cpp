#include "archive/ArchivePlayer.h"

#include "archive/ArchiveFeed.h"

ArchivePlayer::ArchivePlayer(const SourceAddress& address, std::shared_ptr<SegmentTrack> track,
                             std::shared_ptr<PlaybackClock> clock, QObject* parent)
    : VideoSource(
          address,
          [track, clock](SourceLink& link) { return std::make_unique<ArchiveFeed>(track, clock, link); },
          parent),
      m_track(track), m_clock(clock)
{
}
