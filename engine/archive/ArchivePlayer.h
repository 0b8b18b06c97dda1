#pragma once

#include "archive/PlaybackClock.h"
#include "archive/SegmentTrack.h"
#include "source/VideoSource.h"

/// A camera's recording as a source, played by a clock that several players may share. In a gap it rests in
/// SourceState::Ended.
class ArchivePlayer : public VideoSource
{
    Q_OBJECT

public:
    ArchivePlayer(const SourceAddress& address, std::shared_ptr<SegmentTrack> track,
                  std::shared_ptr<PlaybackClock> clock, QObject* parent = nullptr);

    bool hasPtz() const override { return false; }
    /// Shows the picture of a moment, also in a pause. The clock is the caller's business.
    void seek(qint64 ms) { seekTo(ms); }
    const std::shared_ptr<SegmentTrack>& track() const { return m_track; }
    const std::shared_ptr<PlaybackClock>& clock() const { return m_clock; }

private:
    std::shared_ptr<SegmentTrack> m_track;
    std::shared_ptr<PlaybackClock> m_clock;
};
