#include "source/EngineThreads.h"

#include <algorithm>
#include <condition_variable>
#include <list>
#include <mutex>
#include <thread>
#include <vector>

namespace {

/// All of them. Those that are done are joined in passing, so that each has also cleaned up after
/// itself.
class Crew
{
public:
    void start(std::function<void()> work)
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

} // namespace

void startEngineThread(std::function<void()> work)
{
    crew().start(std::move(work));
}

bool waitForEngineThreads(int ms)
{
    return crew().waitForAll(ms);
}
