#include "archive/ClipWriter.h"

#include "archive/SegmentReader.h"
#include "packets/MatroskaWriter.h"

namespace {

class Clip
{
public:
    Clip(qint64 fromMs, qint64 toMs, MatroskaWriter& file) : m_fromMs(fromMs), m_toMs(toMs), m_file(file) {}

    bool add(const TrackPiece& piece, QString* error)
    {
        SegmentReader reader;
        if (!reader.open(piece, error))
            return false;
        const qint64 from = qMax(m_fromMs, piece.startMs);
        reader.seek(from);
        std::optional<qint64> shift;
        while (const AVPacket* packet = reader.read()) {
            const bool isSound = reader.isSound(*packet);
            const qint64 moment = reader.momentOf(packet->dts, isSound);
            // Sound may lie some way before its pictures, or behind them.
            if (moment >= m_toMs && !isSound)
                break;
            if (isSound && (!shift || moment >= m_toMs || !reader.format()->sound))
                continue;
            // What lies between two pieces doesn't belong to the clip.
            if (!shift)
                shift = m_file.count() > 0 ? m_file.lastMs() + StepMs - moment : 0;
            if (write(*packet, isSound ? reader.format()->sound : reader.format(), moment + *shift))
                continue;
            *error = m_file.error();
            return false;
        }
        return true;
    }

private:
    static constexpr qint64 StepMs = 40;

    bool write(const AVPacket& packet, const std::shared_ptr<const StreamFormat>& format, qint64 wallMs)
    {
        AvPacket own(av_packet_clone(&packet));
        return !own || m_file.write({std::move(own), format, wallMs});
    }

    qint64 m_fromMs;
    qint64 m_toMs;
    MatroskaWriter& m_file;
};

} // namespace

bool writeClip(const QVector<TrackPiece>& pieces, qint64 fromMs, qint64 toMs, const QString& path,
               QString* error)
{
    MatroskaWriter file;
    if (!file.open(path)) {
        *error = file.error();
        return false;
    }
    Clip clip(fromMs, toMs, file);
    for (const TrackPiece& piece : pieces) {
        if (piece.endMs > fromMs && piece.startMs < toMs && !clip.add(piece, error))
            return false;
    }
    const bool isWritten = file.count() > 0;
    file.close();
    if (isWritten && !file.error().isEmpty())
        *error = file.error();
    else if (!isWritten)
        *error = "nothing is recorded there";
    return isWritten && file.error().isEmpty();
}
