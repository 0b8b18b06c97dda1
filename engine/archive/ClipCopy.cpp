#include "archive/ClipCopy.h"

#include "archive/SegmentReader.h"

#include <limits>

namespace {

constexpr qint64 NoEnd = std::numeric_limits<qint64>::min();
constexpr qint64 StepUs = 40'000;
/// Sound lies some way behind its pictures in a file.
constexpr qint64 SoundMs = 1000;

} // namespace

void ExportRemarks::add(const ExportRemarks& other)
{
    gaps += other.gaps;
    gapMs += other.gapMs;
    lostSound = lostSound || other.lostSound;
    unread += other.unread;
}

ClipCopy::ClipCopy(const ExportTask& task, ClipMuxer::Container container, const QString& directory)
    : m_task(task), m_container(container), m_directory(directory)
{
}

bool ClipCopy::run(const GoOn& goOn)
{
    for (const TrackPiece& piece : qAsConst(m_task.pieces)) {
        if (piece.endMs > m_task.fromMs && piece.startMs < m_task.toMs && !addPiece(piece, goOn))
            return false;
    }
    if (m_muxer.isOpen() && !endFile())
        return false;
    if (m_files.empty())
        m_error = m_remarks.unread.value(0, "nothing is recorded there");
    return !m_files.empty();
}

/// False ends it all. A piece that can't be read is left out, and told.
bool ClipCopy::addPiece(const TrackPiece& piece, const GoOn& goOn)
{
    SegmentReader reader;
    QString error;
    if (!reader.open(piece, &error, SegmentReader::Expect::Recording)) {
        m_remarks.unread.append(error);
        return true;
    }
    const qint64 fromMs = qMax(m_task.fromMs, piece.startMs);
    if (m_muxer.isOpen() && !m_format->isLike(*reader.format()) && !endFile())
        return false;
    if (!m_muxer.isOpen() && !begin(*reader.format(), fromMs))
        return false;
    m_format = reader.format();
    m_pictures = 0;
    reader.seek(fromMs);
    while (const AVPacket* packet = reader.read()) {
        const bool isSound = reader.isSound(*packet);
        const qint64 moment = reader.momentOf(packet->dts, isSound);
        if (!isSound && moment >= m_task.toMs + SoundMs)
            return true;
        if (moment >= m_task.toMs)
            continue;
        if (!take(reader, *packet))
            return false;
        if (!goOn(qBound(qint64(0), moment - m_task.fromMs, m_task.toMs - m_task.fromMs)))
            return false;
    }
    if (const QString trouble = reader.trouble(); !trouble.isEmpty())
        m_remarks.unread.append(trouble);
    return true;
}

bool ClipCopy::begin(const StreamFormat& format, qint64 zeroMs)
{
    if (!ClipMuxer::holds(m_container, format)) {
        m_error = "such a file can't hold this video";
        return false;
    }
    ExportFile file;
    if (!file.open(m_directory, &m_error))
        return false;
    if (!m_muxer.open(file.path(), m_container, format))
        return failToWrite();
    m_files.push_back(std::move(file));
    m_remarks.lostSound = m_remarks.lostSound || (format.sound && !m_muxer.hasSound());
    m_zeroMs = zeroMs;
    m_shiftUs = 0;
    m_endUs = NoEnd;
    return true;
}

bool ClipCopy::endFile()
{
    if (m_muxer.close())
        return true;
    return failToWrite();
}

bool ClipCopy::failToWrite()
{
    m_error = QString("cannot write %1: %2").arg(m_directory, m_muxer.error());
    return false;
}

bool ClipCopy::take(const SegmentReader& reader, const AVPacket& packet)
{
    const bool isSound = reader.isSound(packet);
    if (!isSound && m_pictures == 0)
        place(reader, packet);
    const auto& format = isSound ? m_format->sound : m_format;
    if ((isSound && m_pictures == 0) || !format)
        return true;
    AvPacket own(av_packet_clone(&packet));
    if (own && !isSound)
        own->dts = decodedAt(packet);
    const qint64 offsetUs = (reader.piece().startMs - m_zeroMs) * 1000 + m_shiftUs - reader.firstUs();
    if (!own || !m_muxer.write(*own, format->timeBase, isSound, offsetUs))
        return failToWrite();
    if (!isSound) {
        const qint64 shownUs = av_rescale_q(packet.pts, format->timeBase, Microseconds) + offsetUs;
        m_endUs = qMax(m_endUs, shownUs + lengthUs(packet));
        ++m_pictures;
    }
    return true;
}

qint64 ClipCopy::lengthUs(const AVPacket& packet) const
{
    return packet.duration > 0 ? av_rescale_q(packet.duration, m_format->timeBase, Microseconds) : StepUs;
}

/// Of the first pictures behind a seek nobody knows when they are decoded, where later ones come out of their
/// order: before the first one is shown.
int64_t ClipCopy::decodedAt(const AVPacket& packet) const
{
    const int delay = m_format->parameters->video_delay;
    if (m_pictures >= delay)
        return packet.dts;
    return m_firstPts -
           av_rescale_q((delay - m_pictures) * lengthUs(packet), Microseconds, m_format->timeBase);
}

/// Lays a piece behind the one before: where it was recorded, if that is about there, or else right behind
/// it, be it that nothing was recorded in between or that the clock was set back.
void ClipCopy::place(const SegmentReader& reader, const AVPacket& packet)
{
    m_firstPts = packet.pts;
    if (m_endUs == NoEnd)
        return;
    const qint64 ownUs = av_rescale_q(packet.pts, reader.format()->timeBase, Microseconds);
    const qint64 laidUs = ownUs - reader.firstUs() + (reader.piece().startMs - m_zeroMs) * 1000 + m_shiftUs;
    const qint64 gapUs = laidUs - m_endUs;
    const bool isGap = gapUs > SegmentTrack::SeamMs * 1000;
    if (isGap) {
        ++m_remarks.gaps;
        m_remarks.gapMs += gapUs / 1000;
    }
    if (isGap || gapUs < 0)
        m_shiftUs -= gapUs;
}
