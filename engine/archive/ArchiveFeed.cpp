#include "archive/ArchiveFeed.h"

#include "source/SourceLink.h"

namespace {

/// Nobody sees more pictures a second than this.
constexpr qint64 ShortestStepMs = 33;

} // namespace

ArchiveFeed::ArchiveFeed(std::shared_ptr<const SegmentTrack> track,
                         std::shared_ptr<const PlaybackClock> clock, SourceLink& link)
    : m_track(std::move(track)), m_clock(std::move(clock)), m_link(link), m_sound(link.sound()),
      m_backward(m_track)
{
}

bool ArchiveFeed::open()
{
    seek(m_clock->position());
    return true;
}

void ArchiveFeed::seek(qint64 ms)
{
    m_reader.reset();
    m_isBroken = false;
    m_backwardFrame.reset();
    // In a pause the picture is wanted as it was recorded.
    m_isBackward = m_clock->isBackward() && m_clock->isRunning();
    if (m_isBackward) {
        m_backward.start(ms + 1);
        m_wantedMs = ms;
        return;
    }
    m_backward.start(0);
    const std::optional<TrackPiece> piece = m_track->at(ms);
    if (piece && enter(*piece)) {
        m_reader->seek(ms);
        want(ms);
    }
}

bool ArchiveFeed::enter(const TrackPiece& piece)
{
    QString error;
    m_reader = std::make_unique<SegmentReader>();
    m_isBroken = !m_reader->open(piece, &error) || !m_decoder.open(m_reader->format(), &error);
    if (m_isBroken)
        return fail(error);
    m_sound.begin(m_reader->soundFormat());
    m_link.setSound(m_reader->soundFormat() != nullptr);
    return true;
}

SourceFeed::Step ArchiveFeed::advance()
{
    if (m_isBroken)
        return Step::Failed;
    if (m_isBackward)
        return goBack();
    while (m_reader) {
        const Step step = m_decoder.advance([this] {
            feedDecoder();
            return true;
        });
        if (step == Step::Picture) {
            wantNext();
            return step;
        }
        if (const std::optional<Step> end = finish())
            return *end;
    }
    return Step::End;
}

/// The end of a piece: its last picture if that was left out, nothing if the next piece goes on.
std::optional<SourceFeed::Step> ArchiveFeed::finish()
{
    if (m_decoder.takeLeftOut())
        return Step::Picture;
    const std::optional<TrackPiece> next = m_track->following(m_reader->piece());
    if (!next) {
        m_reader.reset();
        return Step::End;
    }
    const qint64 from = qMax(next->startMs, shownMs() + 1);
    if (!enter(*next))
        return Step::Failed;
    m_reader->seek(from);
    want(from);
    return std::nullopt;
}

void ArchiveFeed::feedDecoder()
{
    const AVPacket* packet = m_reader->read();
    if (!packet)
        m_decoder.drain();
    else if (m_reader->isSound(*packet))
        hear(*packet);
    else
        m_decoder.send(*packet, [this](int64_t stamp) { return m_reader->momentOf(stamp) * 1000; });
}

void ArchiveFeed::hear(const AVPacket& packet)
{
    if (m_clock->isRunning() && m_clock->speed() == PlaybackClock::NormalSpeed)
        m_sound.hear(packet, m_clock->timeOf(m_reader->momentOf(packet.pts, true)));
}

void ArchiveFeed::want(qint64 ms)
{
    const bool isQuick = m_clock->speed() > PlaybackClock::NormalSpeed;
    m_decoder.setWanted(ms * 1000, isQuick ? 0 : PictureDecoder::FullyDecodedUs);
}

/// At high speed, and when the clock has run ahead, pictures in between are not worth showing.
void ArchiveFeed::wantNext()
{
    const qint64 step = ShortestStepMs * m_clock->speed() / PlaybackClock::NormalSpeed;
    const qint64 late = m_clock->isRunning() ? m_clock->position() - shownMs() - step : 0;
    want(shownMs() + qBound(qint64(1), qMax(step, late), qint64(1000)));
}

/// The first picture of all is shown even if it comes too late.
SourceFeed::Step ArchiveFeed::goBack()
{
    const bool isQuick = m_clock->speed() > 2 * PlaybackClock::NormalSpeed;
    std::shared_ptr<Frame> last;
    while (const std::shared_ptr<Frame> frame = m_backward.next({m_link.shownSize(), isQuick})) {
        last = frame;
        if (frame->wallMs <= m_wantedMs)
            break;
    }
    if (!last && !m_backward.error().isEmpty())
        fail(m_backward.error());
    if (!last)
        return m_backward.error().isEmpty() ? Step::End : Step::Failed;
    m_backwardFrame = last;
    m_backwardMs = last->wallMs;
    wantPrevious();
    return Step::Picture;
}

void ArchiveFeed::wantPrevious()
{
    const qint64 step = ShortestStepMs * m_clock->speed() / PlaybackClock::NormalSpeed;
    const qint64 late = shownMs() - m_clock->position() - step;
    m_wantedMs = shownMs() - qBound(qint64(1), qMax(step, late), qint64(1000));
}

FramePtr ArchiveFeed::picture()
{
    if (m_isBackward)
        return m_backwardFrame;
    const std::shared_ptr<Frame> frame = m_decoder.picture();
    if (frame)
        frame->wallMs = shownMs();
    return frame;
}

std::optional<std::chrono::steady_clock::time_point> ArchiveFeed::due() const
{
    return m_clock->timeOf(shownMs());
}
