#include "archive/ArchivePlayer.h"

#include "archive/ArchiveFeed.h"

ArchivePlayer::ArchivePlayer(std::shared_ptr<SegmentTrack> track, std::shared_ptr<PlaybackClock> clock,
                             QObject* parent)
    : VideoSource(
          [track, clock](SourceLink& link) { return std::make_unique<ArchiveFeed>(track, clock, link); },
          parent),
      m_track(track)
{
}
