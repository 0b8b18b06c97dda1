#include "source/SourceThread.h"

#include "decode/MotionDetector.h"
#include "decode/PacketEncoder.h"
#include "source/EngineThreads.h"
#include "source/Pacer.h"
#include "source/RetryPause.h"

#include <thread>

#ifdef Q_OS_LINUX
#include <sys/resource.h>
#endif

namespace {

#ifdef Q_OS_LINUX
/// A third of the weight of the window's thread, which is enough for it to come first, and leaves the
/// pictures their share beside whatever else the machine does.
constexpr int BackgroundNice = 5;
#endif

/// This thread gets a smaller share of a processor that others ask for too; where that can't be said of one
/// thread alone, nothing changes.
void giveWay()
{
#ifdef Q_OS_LINUX
    ::setpriority(PRIO_PROCESS, 0, BackgroundNice);
#endif
}

using namespace std::chrono_literals;

constexpr auto RestPause = 250ms;
constexpr auto LookPause = 200ms;

class Player
{
public:
    explicit Player(SourceLink& link) : m_link(link) {}

    /// Plays one feed until it is lost or the link is stopped.
    void play(SourceFeed& feed)
    {
        m_pacer.reset();
        m_encoder.reset();
        while (!m_link.isStopped()) {
            takeSeek(feed);
            if (isResting(feed)) {
                m_link.waitForNeed(Pacer::Clock::now() + RestPause);
                m_pacer.reset();
                continue;
            }
            if (m_link.isPaused() && !feed.isLive() && !m_isSought) {
                m_link.waitForOrder();
                m_pacer.reset();
                continue;
            }
            const SourceFeed::Step step = feed.advance();
            if (step == SourceFeed::Step::Failed)
                return;
            if (step == SourceFeed::Step::End)
                rest();
            else
                show(feed);
        }
    }

    RetryPause& pause() { return m_pause; }

private:
    /// True while nobody takes the pictures of a source that makes them itself.
    bool isResting(const SourceFeed& feed) const
    {
        return feed.isLive() && feed.isPaced() && m_link.need() == PictureNeed::None &&
               !m_link.packets().hasSinks();
    }

    void takeSeek(SourceFeed& feed)
    {
        const std::optional<qint64> ms = m_link.takeSeek();
        if (!ms)
            return;
        feed.seek(*ms);
        m_pacer.reset();
        m_isSought = true;
    }

    void rest()
    {
        m_isSought = false;
        m_link.setState(SourceState::Ended);
        m_link.waitForOrder();
    }

    Pacer::Clock::time_point dueTime(const SourceFeed& feed)
    {
        const auto own = feed.due();
        return own ? *own : m_pacer.due(feed.pts(), Pacer::Clock::now());
    }

    /// A picture that was sought is shown at once, also in a pause.
    void show(SourceFeed& feed)
    {
        const bool isSought = std::exchange(m_isSought, false);
        if (!isSought && feed.isPaced() && !m_link.waitUntil(dueTime(feed)))
            return;
        const bool isUnseen = !isSought && (isUnwanted() || (m_link.isPaused() && feed.isLive()));
        const bool isEncoded = !feed.givesPackets() && m_link.packets().hasSinks();
        FramePtr frame = isUnseen && !isEncoded ? nullptr : feed.picture();
        encode(isEncoded ? frame.get() : nullptr);
        if (!isUnseen && frame)
            deliver(std::move(frame));
    }

    /// Motion alone is looked for in a few pictures a second.
    bool isUnwanted()
    {
        const PictureNeed need = m_link.need();
        const auto now = Pacer::Clock::now();
        if (need == PictureNeed::None || (need == PictureNeed::KeyFrames && now - m_lastShown < LookPause))
            return true;
        m_lastShown = now;
        return false;
    }

    /// Every second picture is enough for a recording. Nothing starts the encoder over: the next packet is a
    /// key frame again.
    void encode(const Frame* frame)
    {
        if (!frame)
            m_encoder.reset();
        if (frame && !m_encoder) {
            m_encoder = std::make_unique<PacketEncoder>();
            m_isSpared = false;
        }
        if (frame && !std::exchange(m_isSpared, !m_isSpared))
            m_encoder->encode(*frame, m_link.packets());
    }

    void deliver(FramePtr frame)
    {
        m_link.setState(SourceState::Playing);
        if (const std::optional<MotionRule> rule = m_link.takeMotionRule())
            m_motion.setRule(*rule);
        if (m_link.wantsMotion())
            m_link.setMotion(m_motion.look(*frame));
        m_link.deliver(std::move(frame));
    }

    SourceLink& m_link;
    Pacer m_pacer;
    RetryPause m_pause;
    MotionDetector m_motion;
    std::unique_ptr<PacketEncoder> m_encoder;
    Pacer::Clock::time_point m_lastShown;
    bool m_isSpared = false; ///< the next picture is not encoded
    bool m_isSought = false;
};

/// Decoding gives way to whoever waits for the window, and to the threads that read. These take over the rank
/// of the thread that starts them, which must not be a decoder's.
void playBehind(Player& player, SourceFeed& feed)
{
    std::thread([&] {
        giveWay();
        player.play(feed);
    }).join();
}

void run(SourceLink& link, const FeedMaker& make)
{
    Player player(link);
    while (!link.isStopped()) {
        link.setState(SourceState::Connecting);
        std::unique_ptr<SourceFeed> feed = make(link);
        if (feed->open())
            playBehind(player, *feed);
        if (link.isStopped())
            return;
        if (link.state() == SourceState::Playing)
            player.pause().reset();
        const QString reason = feed->error();
        feed.reset();
        link.setMotion(false);
        const auto again = SourceLink::Clock::now() + std::chrono::milliseconds(player.pause().next());
        link.setRetry(again);
        link.setState(SourceState::Lost, reason);
        while (!link.isStopped() && !link.waitUntil(again))
            link.takeSeek();
    }
}

} // namespace

void startSourceThread(std::shared_ptr<SourceLink> link, FeedMaker make)
{
    startEngineThread([link = std::move(link), make = std::move(make)] { run(*link, make); });
}

bool waitForSourceThreads(int ms)
{
    return waitForEngineThreads(ms);
}
