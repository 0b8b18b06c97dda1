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
    ArchivePlayer(std::shared_ptr<SegmentTrack> track, std::shared_ptr<PlaybackClock> clock,
                  QObject* parent = nullptr);

    /// Shows the picture of a moment, also in a pause. The clock is the caller's business.
    void seek(qint64 ms) { seekTo(ms); }
    const SegmentTrack& track() const { return *m_track; }

private:
    std::shared_ptr<SegmentTrack> m_track;
};
