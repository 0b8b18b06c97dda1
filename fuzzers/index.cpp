#include "Scratch.h"
#include "archive/Archive.h"
#include "archive/DayColors.h"
#include "archive/SegmentTrack.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

namespace {

/// Rows of what anybody may have written into an index: fields between zero bytes, a row for every six.
QVector<Segment> rowsOf(const QByteArray& text)
{
    QVector<Segment> rows;
    const QList<QByteArray> fields = text.split('\0');
    for (int i = 0; i + 5 < fields.size(); i += 6)
        rows.append({QString::fromUtf8(fields[i]), QString::fromUtf8(fields[i + 1]),
                     fields[i + 2].toLongLong(), fields[i + 3].toLongLong(), fields[i + 4].toLongLong(),
                     fields[i + 5] == "1"});
    return rows;
}

void show(const ArchiveIndex& index, const QVector<Segment>& rows)
{
    for (const Segment& row : rows) {
        QVector<TrackPiece> pieces;
        for (const Segment& known : index.segments(row.camera, 0, Segment::LastMs))
            pieces.append({known.path, known.startMs, known.endMs});
        const SegmentTrack track(pieces);
        const QDate day = QDateTime::fromMSecsSinceEpoch(row.startMs).date();
        dayColors(day, QTimeZone::utc(), index.segments(row.camera, row.startMs, row.endMs),
                  index.spans(row.camera, row.startMs, row.endMs));
        track.at(row.startMs);
        track.nextStart(row.endMs);
    }
}

} // namespace

// Whatever an index holds, as rows or as a file, nothing outside of the archive goes and the archive can be
// used.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static int count = 0;
    static QCoreApplication application(count, nullptr);
    static Scratch scratch;
    const QByteArray input(reinterpret_cast<const char*>(data), static_cast<int>(size));
    const QString directory = scratch.Path("archive");
    QDir(directory).removeRecursively();
    QDir().mkpath(directory + "/A/2026-01-01");
    const QString outside = scratch.Write("outside.mkv", data, 0);
    if (input.startsWith("SQLite"))
        scratch.Write("archive/index.sqlite", data, size);
    QString error;
    Archive archive(directory, [](const QString&) {
        return SegmentContent{SegmentContent::Plays, 1000, {}};
    });
    if (!archive.open(&error))
        return 0;
    const QVector<Segment> rows = rowsOf(input);
    for (const Segment& row : rows) {
        archive.index().add(row);
        archive.index().addSpan(row.camera, {Span::Kind(row.bytes & 3), row.startMs, row.endMs});
    }
    show(archive.index(), rows);
    for (int i = 0; i < 100 && archive.recoverSome(); ++i) {
    }
    archive.open(&error);
    archive.limit({0, 1}, 1'700'000'000'000);
    if (!QFile::exists(outside) || !QFile::exists(directory + "/index.sqlite"))
        abort();
    return 0;
}
