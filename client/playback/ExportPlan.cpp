#include "playback/ExportPlan.h"

#include "cameras/ClientArchive.h"

namespace {

/// The part of a segment's file that lies in a stretch.
qint64 bytesWithin(const Segment& segment, qint64 fromMs, qint64 toMs)
{
    const qint64 within = qMin(segment.endMs, toMs) - qMax(segment.startMs, fromMs);
    const double share = double(within) / double(segment.endMs - segment.startMs);
    return qint64(double(segment.bytes) * qBound(0.0, share, 1.0));
}

} // namespace

ExportPlan ExportPlan::of(const ClientArchive& archive, const QStringList& cameras, qint64 fromMs,
                          qint64 toMs)
{
    ExportPlan plan;
    for (const QString& camera : cameras) {
        const auto segments = archive.segments(camera, fromMs, toMs).value_or(QVector<Segment>());
        const auto pieces = archive.stretch(camera, fromMs, toMs).value_or(TrackStretch()).pieces;
        if (pieces.isEmpty() || fromMs >= toMs) {
            plan.without.append(camera);
            continue;
        }
        for (const Segment& segment : segments)
            plan.bytes += bytesWithin(segment, fromMs, toMs);
        plan.tasks.append({camera, pieces, fromMs, toMs});
    }
    return plan;
}
