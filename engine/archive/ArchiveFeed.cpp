#include "archive/ArchiveFeed.h"

namespace {

/// Nobody sees more pictures a second than this.
constexpr qint64 ShortestStepMs = 33;
/// Before a seek's picture this much is decoded in full, so that there is one to show at the end of a piece.
constexpr qint64 FullyDecodedMs = 1000;

} // namespace

ArchiveFeed::ArchiveFeed(std::shared_ptr<const SegmentTrack> track,
                         std::shared_ptr<const PlaybackClock> clock, SourceLink& link)
    : m_track(std::move(track)), m_clock(std::move(clock)), m_link(link), m_sound(link.sound())
{
}

bool ArchiveFeed::open()
{
    m_coming.reset(av_frame_alloc());
    m_shown.reset(av_frame_alloc());
    if (!m_coming || !m_shown)
        return fail("out of memory");
    seek(m_clock->position());
    return true;
}

void ArchiveFeed::seek(qint64 ms)
{
    m_reader.reset();
    m_isBroken = false;
    const std::optional<TrackPiece> piece = m_track->at(ms);
    if (piece && enter(*piece)) {
        m_reader->seek(ms);
        m_wantedMs = ms;
    }
}

bool ArchiveFeed::enter(const TrackPiece& piece)
{
    QString error;
    m_reader = std::make_unique<SegmentReader>();
    m_isBroken = !m_reader->open(piece, &error);
    if (!m_isBroken)
        m_codec = m_reader->format()->openDecoder(&error);
    m_isBroken = m_isBroken || !m_codec;
    if (!m_isBroken) {
        m_sound.begin(m_reader->soundFormat());
        m_link.setSound(m_reader->soundFormat() != nullptr);
    }
    m_isDraining = false;
    m_hasLeftOut = false;
    return !m_isBroken || fail(error);
}

SourceFeed::Step ArchiveFeed::advance()
{
    if (m_isBroken)
        return Step::Failed;
    while (m_reader) {
        const int result = avcodec_receive_frame(m_codec.get(), m_coming.get());
        if (result >= 0) {
            if (takeComing())
                return Step::Picture;
        } else if (result == AVERROR_EOF) {
            if (const std::optional<Step> step = finish())
                return *step;
        } else {
            feedCodec();
        }
    }
    return Step::End;
}

/// The end of a piece: its last picture if that was left out, nothing if the next piece goes on.
std::optional<SourceFeed::Step> ArchiveFeed::finish()
{
    if (std::exchange(m_hasLeftOut, false) && m_shownMs < m_wantedMs) {
        m_wantedMs = m_shownMs;
        return Step::Picture;
    }
    const std::optional<TrackPiece> next = m_track->following(m_reader->piece());
    if (!next) {
        m_reader.reset();
        return Step::End;
    }
    m_wantedMs = qMax(next->startMs, m_shownMs + 1);
    if (!enter(*next))
        return Step::Failed;
    m_reader->seek(m_wantedMs);
    return std::nullopt;
}

void ArchiveFeed::feedCodec()
{
    const AVPacket* packet = m_isDraining ? nullptr : m_reader->read();
    m_isDraining = !packet;
    if (packet && m_reader->isSound(*packet)) {
        hear(*packet);
        return;
    }
    if (packet)
        m_codec->skip_frame = isPassedOver(*packet) ? AVDISCARD_NONREF : AVDISCARD_DEFAULT;
    avcodec_send_packet(m_codec.get(), packet);
}

/// True for pictures on the way from a key frame to where the player goes: those that no other one needs are
/// not decoded.
bool ArchiveFeed::isPassedOver(const AVPacket& packet) const
{
    const bool isQuick = m_clock->speed() > PlaybackClock::NormalSpeed;
    return m_reader->momentOf(packet.pts) < m_wantedMs - (isQuick ? 0 : FullyDecodedMs);
}

void ArchiveFeed::hear(const AVPacket& packet)
{
    if (m_clock->isRunning() && m_clock->speed() == PlaybackClock::NormalSpeed)
        m_sound.hear(packet, m_clock->timeOf(m_reader->momentOf(packet.pts, true)));
}

bool ArchiveFeed::takeComing()
{
    const int64_t stamp = m_coming->best_effort_timestamp;
    m_shownMs = stamp == AV_NOPTS_VALUE ? m_shownMs + ShortestStepMs : m_reader->momentOf(stamp);
    m_shown.swap(m_coming);
    m_hasLeftOut = m_shownMs < m_wantedMs;
    if (m_hasLeftOut)
        return false;
    // At high speed, and when the clock has run ahead, pictures in between are not worth showing.
    const qint64 step = ShortestStepMs * m_clock->speed() / PlaybackClock::NormalSpeed;
    const qint64 late = m_clock->isRunning() ? m_clock->position() - m_shownMs - step : 0;
    m_wantedMs = m_shownMs + qBound<qint64>(1, qMax(step, late), 1000);
    return true;
}

FramePtr ArchiveFeed::picture()
{
    const std::shared_ptr<Frame> frame = m_converter.convert(*m_shown);
    if (!frame)
        return nullptr;
    frame->pts = m_shownMs * 1000;
    frame->wallMs = m_shownMs;
    return frame;
}

std::optional<std::chrono::steady_clock::time_point> ArchiveFeed::due() const
{
    return m_clock->timeOf(m_shownMs);
}
