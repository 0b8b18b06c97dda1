#include "source/SourceThread.h"

#include "decode/MotionDetector.h"
#include "decode/PacketEncoder.h"
#include "source/Pacer.h"
#include "source/RetryPause.h"

#include <algorithm>
#include <list>
#include <thread>

namespace {

/// All source threads. Those that are done are joined in passing, so that each has also cleaned up after
/// itself.
class Crew
{
public:
    template <class Work> void start(Work work)
    {
        const std::lock_guard lock(m_mutex);
        joinTheDone();
        ++m_running;
        m_threads.emplace_back([this, work = std::move(work)]() mutable {
            work();
            work = nullptr;
            signOff();
        });
    }

    bool waitForAll(int ms)
    {
        std::unique_lock lock(m_mutex);
        const bool isDone =
            m_signedOff.wait_for(lock, std::chrono::milliseconds(ms), [this] { return m_running == 0; });
        joinTheDone();
        return isDone;
    }

private:
    void signOff()
    {
        const std::lock_guard lock(m_mutex);
        m_done.push_back(std::this_thread::get_id());
        --m_running;
        m_signedOff.notify_all();
    }

    void joinTheDone()
    {
        for (const std::thread::id id : m_done) {
            const auto thread = std::find_if(m_threads.begin(), m_threads.end(),
                                             [id](const std::thread& other) { return other.get_id() == id; });
            thread->join();
            m_threads.erase(thread);
        }
        m_done.clear();
    }

    std::mutex m_mutex;
    std::condition_variable m_signedOff;
    std::list<std::thread> m_threads;
    std::vector<std::thread::id> m_done;
    int m_running = 0;
};

/// Never destroyed: a thread stuck in a system call may still sign off while the program ends.
Crew& crew()
{
    static Crew* crew = new Crew;
    return *crew;
}

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
        const bool isUnseen = !isSought && m_link.isPaused() && feed.isLive();
        const bool isEncoded = !feed.givesPackets() && m_link.packets().hasSinks();
        FramePtr frame = isUnseen && !isEncoded ? nullptr : feed.picture();
        encode(isEncoded ? frame.get() : nullptr);
        if (!isUnseen && frame)
            deliver(std::move(frame));
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
        m_pause.reset();
        m_link.setState(SourceState::Playing);
        if (m_link.wantsMotion())
            m_link.setMotion(m_motion.look(*frame));
        m_link.deliver(std::move(frame));
    }

    SourceLink& m_link;
    Pacer m_pacer;
    RetryPause m_pause;
    MotionDetector m_motion;
    std::unique_ptr<PacketEncoder> m_encoder;
    bool m_isSpared = false; ///< the next picture is not encoded
    bool m_isSought = false;
};

void run(SourceLink& link, const FeedMaker& make)
{
    Player player(link);
    while (!link.isStopped()) {
        link.setState(SourceState::Connecting);
        const std::unique_ptr<SourceFeed> feed = make(link);
        if (feed->open())
            player.play(*feed);
        if (link.isStopped())
            return;
        link.setMotion(false);
        link.setState(SourceState::Lost, feed->error());
        const auto again = SourceLink::Clock::now() + std::chrono::milliseconds(player.pause().next());
        while (!link.isStopped() && !link.waitUntil(again))
            link.takeSeek();
    }
}

} // namespace

void startSourceThread(std::shared_ptr<SourceLink> link, FeedMaker make)
{
    crew().start(
        std::function<void()>([link = std::move(link), make = std::move(make)] { run(*link, make); }));
}

bool waitForSourceThreads(int ms)
{
    return crew().waitForAll(ms);
}
