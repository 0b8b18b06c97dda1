#include "archive/PictureSteps.h"

#include "archive/SegmentReader.h"

namespace {

/// Calls `take` with the moment of each picture, from the key frame at or before `ms` on, until none that
/// follows can lie before `endMs`.
template <class Take> void readPictures(const TrackPiece& piece, qint64 ms, const qint64& endMs, Take take)
{
    SegmentReader reader;
    QString error;
    if (!reader.open(piece, &error))
        return;
    reader.seek(ms);
    while (const AVPacket* packet = reader.read()) {
        if (reader.isSound(*packet))
            continue;
        if (reader.momentOf(packet->dts) >= endMs)
            return;
        take(reader.momentOf(packet->pts));
    }
}

std::optional<qint64> lastBefore(const TrackPiece& piece, qint64 ms)
{
    std::optional<qint64> last;
    readPictures(piece, ms - 1, ms, [&last, ms](qint64 moment) {
        if (moment < ms && (!last || *last < moment))
            last = moment;
    });
    return last;
}

std::optional<qint64> firstAfter(const TrackPiece& piece, qint64 ms)
{
    std::optional<qint64> first;
    qint64 endMs = piece.endMs;
    readPictures(piece, ms, endMs, [&](qint64 moment) {
        if (moment <= ms || moment >= endMs)
            return;
        first = moment;
        endMs = moment;
    });
    return first;
}

} // namespace

std::optional<qint64> pictureBefore(const SegmentTrack& track, qint64 ms)
{
    if (const auto piece = track.at(ms - 1)) {
        if (const auto moment = lastBefore(*piece, ms))
            return moment;
    }
    const std::optional<TrackPiece> earlier = track.before(ms);
    return earlier ? lastBefore(*earlier, earlier->endMs) : std::nullopt;
}

std::optional<qint64> pictureAfter(const SegmentTrack& track, qint64 ms)
{
    if (const auto piece = track.at(ms)) {
        if (const auto moment = firstAfter(*piece, ms))
            return moment;
    }
    return track.nextStart(ms);
}
