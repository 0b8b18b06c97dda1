#pragma once

#include "archive/ClipMuxer.h"
#include "archive/ExportFile.h"
#include "archive/SegmentTrack.h"

#include <QStringList>

#include <functional>
#include <vector>

class SegmentReader;

/// What is to be taken out of the recordings of a camera.
struct ExportTask
{
    QString camera;
    QVector<TrackPiece> pieces; ///< all that touch the stretch, by their beginning
    qint64 fromMs = 0;
    qint64 toMs = 0;
};

/// What was not taken as it was recorded.
struct ExportRemarks
{
    int gaps = 0;
    qint64 gapMs = 0;       ///< how long they are together
    bool lostSound = false; ///< the container can't hold it
    QStringList unread;     ///< files that could not be read, or not to their end; a line each

    void add(const ExportRemarks& other);
};

/// Copies a stretch of a camera's recordings, without encoding, into a file that begins with the key frame at
/// or before its first moment, gaps closed. Where the stream changes, the next file begins.
class ClipCopy
{
public:
    /// Told how far it is, milliseconds of the stretch; false ends it.
    using GoOn = std::function<bool(qint64 doneMs)>;

    ClipCopy(const ExportTask& task, ClipMuxer::Container container, const QString& directory);

    /// False if it was ended, or failed: then error() is one line.
    bool run(const GoOn& goOn);
    /// The files, not named yet, in their order.
    std::vector<ExportFile>& files() { return m_files; }
    const ExportRemarks& remarks() const { return m_remarks; }
    const QString& error() const { return m_error; }

private:
    bool addPiece(const TrackPiece& piece, const GoOn& goOn);
    bool begin(const StreamFormat& format, qint64 zeroMs);
    bool endFile();
    bool failToWrite();
    bool take(const SegmentReader& reader, const AVPacket& packet);
    void place(const SegmentReader& reader, const AVPacket& packet);
    qint64 lengthUs(const AVPacket& packet) const;
    int64_t decodedAt(const AVPacket& packet) const;

    ExportTask m_task;
    ClipMuxer::Container m_container;
    QString m_directory;
    std::vector<ExportFile> m_files;
    ClipMuxer m_muxer;
    std::shared_ptr<const StreamFormat> m_format; ///< of what is being written
    qint64 m_zeroMs = 0;                          ///< the moment that lies at the file's 0, but for gaps
    qint64 m_shiftUs = 0;                         ///< what gaps and overlaps have moved
    qint64 m_endUs = 0;                           ///< on the file's line, where the pictures end
    int m_pictures = 0;                           ///< of the piece, so far
    int64_t m_firstPts = 0;                       ///< of the piece's first one, by its own line
    ExportRemarks m_remarks;
    QString m_error;
};
