#pragma once

#include "archive/SegmentTrack.h"

/// The moment of the last picture before another moment, and of the first one behind it, over seams and gaps;
/// none where the track ends. Packets are read for it, but not decoded: any thread that may wait for a disk.
std::optional<qint64> pictureBefore(const SegmentTrack& track, qint64 ms);
std::optional<qint64> pictureAfter(const SegmentTrack& track, qint64 ms);
