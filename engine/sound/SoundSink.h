#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

/// A piece of sound ready to be heard: two channels of 16 bits by turns.
struct Sound
{
    static constexpr int Rate = 48'000;
    static constexpr int Channels = 2;

    std::vector<int16_t> samples;
    std::chrono::steady_clock::time_point due;
};

/// Takes a source's sound as it is decoded. Any thread.
class SoundSink
{
public:
    virtual ~SoundSink() = default;
    virtual void take(Sound sound) = 0;
    /// Forgets what has not been heard yet.
    virtual void hush() = 0;
};

/// Who hears a source: nobody at first. Any thread.
class SoundHub
{
public:
    std::shared_ptr<SoundSink> sink() const
    {
        const std::lock_guard lock(m_mutex);
        return m_sink;
    }

    /// Null for nobody; the one before is hushed.
    void set(std::shared_ptr<SoundSink> sink)
    {
        {
            const std::lock_guard lock(m_mutex);
            m_sink.swap(sink);
        }
        if (sink)
            sink->hush();
    }

    void hush() const
    {
        if (const auto now = sink())
            now->hush();
    }

private:
    mutable std::mutex m_mutex;
    std::shared_ptr<SoundSink> m_sink;
};
