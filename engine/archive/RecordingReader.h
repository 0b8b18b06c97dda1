#pragma once

#include "archive/ArchiveIndex.h"
#include "archive/SegmentTrack.h"

#include <QHash>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

/// What there is to play in a stretch of time, and when the first piece behind it begins.
struct TrackStretch
{
    QVector<TrackPiece> pieces;
    std::optional<qint64> nextMs;
};

/// When a camera was recorded, and what was seen there. The segments tell no more than times: where gaps are
/// shorter than a second, one may stand for all.
struct RecordedTimes
{
    QVector<Segment> segments;
    QVector<Span> spans;
};

/// What was recorded, for those who show it, wherever that is kept. An answer comes soon, or it is none while
/// nobody knows. One thread.
class RecordingReader
{
public:
    virtual ~RecordingReader() = default;

    /// All that touches the time from `fromMs` to before `toMs`.
    virtual std::optional<QVector<Segment>> segments(const QString& camera, qint64 fromMs, qint64 toMs) = 0;
    virtual std::optional<QVector<Span>> spans(const QString& camera, qint64 fromMs, qint64 toMs) = 0;
    /// The same of many cameras, for who shows when they were recorded. Of whom nobody knows is left out.
    virtual QHash<QString, RecordedTimes> times(const QStringList& cameras, qint64 fromMs, qint64 toMs);
    /// Of how many times() tells soon enough for who can't wait.
    virtual int camerasAtOnce() const { return 1; }
    /// The same as segments(), to be played, and what comes next.
    virtual std::optional<TrackStretch> stretch(const QString& camera, qint64 fromMs, qint64 toMs) = 0;
    /// The start of the last segment of a camera.
    virtual std::optional<qint64> newestMs(const QString& camera) = 0;
    /// The first motion or alarm that begins after a moment, and the last that begins before it.
    virtual std::optional<Span> spanAfter(const QString& camera, qint64 ms) = 0;
    virtual std::optional<Span> spanBefore(const QString& camera, qint64 ms) = 0;
};

/// Makes a reader for the thread that calls it.
using ReaderMaker = std::function<std::unique_ptr<RecordingReader>()>;

inline QHash<QString, RecordedTimes> RecordingReader::times(const QStringList& cameras, qint64 fromMs,
                                                            qint64 toMs)
{
    QHash<QString, RecordedTimes> times;
    for (const QString& camera : cameras) {
        const auto recorded = segments(camera, fromMs, toMs);
        const auto seen = recorded ? spans(camera, fromMs, toMs) : std::nullopt;
        if (seen)
            times.insert(camera, {*recorded, *seen});
    }
    return times;
}
