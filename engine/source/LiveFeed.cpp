#include "source/LiveFeed.h"

#include "source/SourceLink.h"

#include <algorithm>

namespace {

using namespace std::chrono_literals;

/// How often a decoder that waits looks around, and one whose pictures nobody sees.
constexpr auto Tick = 250ms;
constexpr auto UnseenTick = 1s;
constexpr auto LeastSilence = 2s;
/// So many packets of which no picture comes, for so long, are of something else than they were.
constexpr int MostBlind = 25;
constexpr auto LongestBlindness = 5s;
constexpr int SilentSteps = 3;
constexpr int StepShare = 8;
/// An interval that is longer than what counts as lost is no usual one.
constexpr auto LongestStep = 60s;
/// A pane that shows later pictures says so, and goes on saying so for a while, as the delay goes up and
/// down.
constexpr auto LateAfter = 500ms;
constexpr auto LateLasts = 2s;
constexpr auto NeverShownAfter = 1s;
/// Large enough for motion to be seen.
constexpr QSize MotionSize(176, 144);
/// Motion is seen in key frames that come at least this often.
constexpr auto OftenEnough = 2500ms;

constexpr LiveQueue::Clock::time_point NoKey;

} // namespace

LiveFeed::LiveFeed(const SourceAddress& address, SourceLink& link)
    : m_link(link), m_input(address, [&link] { return link.isStopped(); }), m_lastCame(Clock::now()),
      m_mostSilence(LeastSilence), m_keyStep(0s), m_sound(link.sound())
{
}

LiveFeed::~LiveFeed()
{
    m_input.breakOff();
    if (m_reader.joinable())
        m_reader.join();
    m_link.setLate(false);
    m_link.setSilent(false);
}

bool LiveFeed::open()
{
    if (!m_input.open())
        return fail(m_input.error());
    const InputStreams& streams = m_input.streams();
    m_isPlain = m_input.isPlain();
    m_stamper = std::make_unique<PacketStamper>(streams.format());
    m_sound.begin(streams.soundFormat());
    m_link.setSound(streams.soundFormat() != nullptr);
    QString error;
    if (!m_decoder.open(streams.format(), &error))
        return fail(error);
    m_lastCame = m_lastPicture = Clock::now();
    m_readPause.putOff(Clock::now());
    m_reader = std::thread([this] { readAll(); });
    return true;
}

void LiveFeed::readAll()
{
    while (readOne()) {
    }
    m_queue.end();
    m_link.needChanged();
}

/// False if there is nothing more to read; the input's error tells why.
bool LiveFeed::readOne()
{
    const int error = m_input.read();
    if (error == AVERROR(EAGAIN))
        return !m_link.isStopped();
    if (error == AVERROR_EOF)
        return m_input.fail("the stream has ended");
    if (error < 0)
        return m_input.fail("cannot read: %1", error);
    const AVPacket& packet = m_input.packet();
    const InputStreams& streams = m_input.streams();
    const PacketArrival arrival = PacketArrival::of(packet);
    if (packet.stream_index == streams.pictures())
        handOn(m_stamper->stamp(packet, arrival));
    else if (packet.stream_index == streams.sound())
        handOn(m_stamper->stampSound(packet, streams.soundFormat()));
    // Sound that goes on does not make up for pictures.
    return Clock::now() - m_lastCame.load() <= m_input.patience() ||
           m_input.fail("cannot read: no pictures in it");
}

void LiveFeed::handOn(const PacketPtr& packet)
{
    if (!packet)
        return;
    const Clock::time_point now = Clock::now();
    if (!packet->isSound())
        measure(now);
    if (packet->isKey()) {
        const Clock::time_point before = m_lastKey.exchange(now);
        m_keyStep = before == NoKey ? 0s : qMax(m_keyStep.load(), now - before);
    }
    // Sound that no recording can hold is still heard.
    const auto& recorded = m_input.streams().format();
    if (!m_isPlain && (packet->format == recorded || packet->format == recorded->sound) &&
        m_link.packets().hasSinks())
        m_link.packets().give(packet);
    m_queue.push(packet, now);
    tellStanding(now);
    if (packet->isKey())
        m_link.needChanged();
    if (!packet->isSound())
        rest(*packet);
}

/// Where nobody waits for the pictures, what can wait on its way is read by the bundle.
void LiveFeed::rest(const EncodedPacket& packet)
{
    const Clock::time_point now = Clock::now();
    if (m_stamper->isByArrival())
        m_readPause.putOff(now);
    const int64_t place = av_rescale_q(packet.packet->dts, packet.format->timeBase, Microseconds);
    const Clock::duration pause = m_readPause.after(place, packet.bytes(), now);
    if (pause > 0s && m_input.canWait() && need() != PictureNeed::All)
        m_link.waitForNeed(now + pause, PictureNeed::All);
}

/// Learns how often pictures come, and from that for how long none may come.
void LiveFeed::measure(Clock::time_point came)
{
    const Clock::duration step = qMin<Clock::duration>(came - m_lastCame.exchange(came), LongestStep);
    m_step = m_step == 0s ? step : m_step + (step - m_step) / StepShare;
    m_mostSilence = qMax<Clock::duration>(LeastSilence, SilentSteps * m_step);
    m_input.setPatience(m_mostSilence.load() * 2);
}

/// A decoder that gets no time, or is stuck in a driver, can't tell that its picture stands.
void LiveFeed::tellStanding(Clock::time_point now)
{
    const Clock::duration waited = m_queue.waited(now);
    if (waited > LateAfter)
        m_link.setLate(true);
    if (waited > LeastSilence)
        m_link.setSilent(true);
}

SourceFeed::Step LiveFeed::advance()
{
    while (true) {
        const Step step = m_decoder.advance([this] { return feedDecoder(); });
        if (step == Step::Picture && takeComing())
            return step;
        if (step == Step::Failed)
            return step;
        if (step == Step::End && !std::exchange(m_isAlone, false)) {
            fail(m_input.error());
            return Step::Failed;
        }
        if (step == Step::End)
            m_decoder.startOver();
    }
}

/// Pictures that were never encoded are all needed by whoever records them.
PictureNeed LiveFeed::need() const
{
    if (m_isPlain && m_link.packets().hasSinks())
        return PictureNeed::All;
    const PictureNeed need = m_link.need();
    const bool isRare = m_keyStep.load() > OftenEnough || Clock::now() - m_lastKey.load() > OftenEnough;
    return need == PictureNeed::KeyFrames && isRare ? PictureNeed::All : need;
}

bool LiveFeed::feedDecoder()
{
    if (m_link.isStopped())
        return fail("stopped");
    const PictureNeed need = this->need();
    m_queue.setNeed(need);
    if (need != PictureNeed::All)
        waitUnseen(need);
    const LiveQueue::Taken taken = m_queue.take(Clock::now() + (need == PictureNeed::All ? Tick : 0ms));
    if (need != PictureNeed::All)
        m_lastPicture = Clock::now();
    tellSilence();
    if (isBlind())
        return fail("cannot decode: no pictures in it");
    if (m_queue.takeLeftOut())
        tellLate(Clock::now(), NeverShownAfter);
    if (taken.packet)
        decode(taken);
    else if (taken.hasEnded)
        m_decoder.drain();
    return true;
}

/// Whoever comes to look waits for nothing.
void LiveFeed::waitUnseen(PictureNeed need)
{
    const bool hasBegun = m_lastKey.load() != NoKey;
    if (hasBegun)
        m_link.setState(SourceState::Playing);
    const auto hasNews = [this, need] { return m_queue.hasNext() || this->need() != need; };
    m_link.waitFor(hasNews, Clock::now() + (hasBegun ? UnseenTick : Tick));
}

void LiveFeed::decode(const LiveQueue::Taken& taken)
{
    const EncodedPacket& packet = *taken.packet;
    if (packet.isSound()) {
        m_sound.hear(*packet.packet, Clock::now());
        return;
    }
    if (taken.startsOver) {
        m_decoder.startOver();
        m_coming.clear();
        m_showsAnyhow = true;
    }
    ++m_blindPackets;
    const AVRational timeBase = packet.format->timeBase;
    const auto place = [timeBase](int64_t stamp) { return av_rescale_q(stamp, timeBase, Microseconds); };
    const bool isHurried = taken.isHurried && !packet.isKey();
    m_coming.push_back({place(packet.packet->pts), packet.wallMs, taken.came, isHurried});
    m_decoder.setHurried(isHurried);
    m_decoder.setRough(taken.isAlone);
    m_decoder.send(*packet.packet, place);
    m_isAlone = taken.isAlone;
    if (m_isAlone)
        m_decoder.drain();
}

/// Finds when the decoded picture came; false if it is too late to be shown.
bool LiveFeed::takeComing()
{
    m_lastPicture = Clock::now();
    m_blindPackets = 0;
    const qint64 place = m_decoder.placeUs();
    const auto isThis = [place](const Coming& one) { return one.placeUs == place; };
    const auto isMissing = [place](const Coming& one) { return one.isHurried && one.placeUs < place; };
    const bool hasLeftOut = std::any_of(m_coming.begin(), m_coming.end(), isMissing);
    const auto found = std::find_if(m_coming.begin(), m_coming.end(), isThis);
    if (found != m_coming.end()) {
        m_shown = *found;
        const auto isPast = [place](const Coming& one) { return one.placeUs <= place; };
        m_coming.erase(std::remove_if(m_coming.begin(), m_coming.end(), isPast), m_coming.end());
    }
    const Clock::time_point now = Clock::now();
    tellLate(now, hasLeftOut ? NeverShownAfter : now - m_shown.came);
    return std::exchange(m_showsAnyhow, false) || now - m_shown.came <= NeverShownAfter;
}

void LiveFeed::tellLate(Clock::time_point now, Clock::duration late)
{
    if (late > LateAfter)
        m_lateEnds = now + LateLasts;
    m_link.setLate(now < m_lateEnds);
}

void LiveFeed::tellSilence()
{
    const Clock::time_point last = qMin(m_lastCame.load(), m_lastPicture);
    m_link.setSilent(Clock::now() - last > m_mostSilence.load());
}

/// Packets come, but the decoder makes no picture of them.
bool LiveFeed::isBlind() const
{
    return m_blindPackets > MostBlind && Clock::now() - m_lastPicture > LongestBlindness;
}

/// Pictures are brought up to a larger size as long as there is time for it.
ShownSize LiveFeed::shownSize() const
{
    if (m_link.need() != PictureNeed::All)
        return {MotionSize, false};
    ShownSize shown = m_link.shownSize();
    shown.isEnlarged = shown.isEnlarged && Clock::now() >= m_lateEnds;
    return shown;
}

FramePtr LiveFeed::picture()
{
    const std::shared_ptr<Frame> frame = m_decoder.picture(m_isPlain ? ShownSize() : shownSize());
    if (frame)
        frame->wallMs = m_shown.wallMs;
    return frame;
}
