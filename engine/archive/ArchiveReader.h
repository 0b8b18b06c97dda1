#pragma once

#include "archive/ArchiveIndex.h"
#include "archive/ArchivePaths.h"
#include "archive/SegmentTrack.h"

#include <chrono>
#include <memory>

/// What there is to play in a stretch of time, and when the first piece behind it begins.
struct TrackStretch
{
    QVector<TrackPiece> pieces;
    std::optional<qint64> nextMs;
};

/// What an archive holds, for those who show it; whoever records there. Each answer comes within a few
/// milliseconds, or not at all while the index can't be read. One thread.
class ArchiveReader
{
public:
    explicit ArchiveReader(std::shared_ptr<ArchivePaths> paths) : m_paths(std::move(paths)) {}

    /// All that touches the time from `fromMs` to before `toMs`; none while nobody knows.
    std::optional<QVector<Segment>> segments(const QString& camera, qint64 fromMs, qint64 toMs);
    std::optional<QVector<Span>> spans(const QString& camera, qint64 fromMs, qint64 toMs);
    /// The same as segments(), to be played, and what comes next.
    std::optional<TrackStretch> stretch(const QString& camera, qint64 fromMs, qint64 toMs);
    /// The start of the last segment of a camera.
    std::optional<qint64> newestMs(const QString& camera);
    /// The first motion or alarm that begins after a moment, and the last that begins before it.
    std::optional<Span> spanAfter(const QString& camera, qint64 ms);
    std::optional<Span> spanBefore(const QString& camera, qint64 ms);

private:
    using Clock = std::chrono::steady_clock;

    template <class List>
    std::optional<List> read(List (ArchiveIndex::*list)(const QString&, qint64, qint64) const,
                             const QString& camera, qint64 fromMs, qint64 toMs);
    bool isReady();

    std::shared_ptr<ArchivePaths> m_paths;
    ArchiveIndex m_index;
    Clock::time_point m_restsUntil;
};
