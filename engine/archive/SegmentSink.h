#pragma once

#include "archive/Archive.h"
#include "packets/MatroskaWriter.h"
#include "packets/PacketSink.h"

#include <functional>
#include <mutex>
#include <vector>

class QObject;

/// A finished part, or one of which as much as was written is kept.
struct FinishedPart
{
    QString path;
    qint64 startMs;
    qint64 endMs;
    bool isWhole; ///< false if the end of it could not be written
};

/// Writes a camera's packets into one part after the other, each from a key frame to before a key frame. The
/// packets come in the source's thread; what is finished is fetched in the receiver's.
class SegmentSink : public PacketSink
{
public:
    /// `collect` is called in the receiver's thread when there is something to fetch.
    SegmentSink(QObject* receiver, std::function<void()> collect, const Archive& archive,
                const QString& camera, qint64 segmentMs);

    void take(const PacketPtr& packet) override;
    /// Ends the part; the receiver hears nothing more.
    void close();

    std::vector<FinishedPart> takeFinished();
    /// Why the last part could not be written, one line; empty if it could.
    QString takeError();

private:
    bool isFull(qint64 wallMs) const;
    void begin(qint64 wallMs);
    void finish(qint64 endMs);
    void tell();

    mutable std::mutex m_mutex;
    QObject* m_receiver;
    std::function<void()> m_collect;
    const Archive& m_archive;
    const QString m_camera;
    const qint64 m_segmentMs;
    MatroskaWriter m_file;
    qint64 m_startMs = 0;   ///< of the part, or of the last attempt to begin one
    bool m_isBegun = false; ///< there is a part that finish() has not seen
    std::vector<FinishedPart> m_finished;
    QString m_error;
};
