#include "sound/SoundQueue.h"

#include <algorithm>

namespace {

using namespace std::chrono_literals;

/// Pieces that follow each other are joined in spite of this much between their times.
constexpr auto MostDrift = 80ms;
constexpr auto Latest = 200ms;
/// Some seconds of pieces: a source that runs ahead of its own time must not fill the memory.
constexpr size_t MostPieces = 500;

std::chrono::steady_clock::duration lengthOf(size_t count)
{
    return std::chrono::microseconds(int64_t(count) * 1'000'000 / Sound::Rate);
}

} // namespace

void SoundQueue::add(Sound sound)
{
    if (sound.samples.empty())
        return;
    if (m_sounds.size() >= MostPieces)
        clear();
    m_sounds.push_back(std::move(sound));
}

void SoundQueue::clear()
{
    m_sounds.clear();
    m_used = 0;
    m_isFlowing = false;
}

void SoundQueue::setVolume(int volume)
{
    const float part = float(std::clamp(volume, 0, LoudestVolume)) / LoudestVolume;
    m_gain = part * part;
}

void SoundQueue::fill(int16_t* samples, size_t count, Clock::time_point now)
{
    std::fill(samples, samples + count * Sound::Channels, int16_t(0));
    size_t done = 0;
    while (done < count && !m_sounds.empty()) {
        const size_t silent = skip(count - done, now + lengthOf(done));
        done += silent;
        if (silent == 0 && !m_sounds.empty())
            done += copy(samples + done * Sound::Channels, count - done);
    }
    m_isFlowing = m_isFlowing && done == count;
}

/// Drops what is too late, and counts the silence before the next piece.
size_t SoundQueue::skip(size_t count, Clock::time_point now)
{
    while (!m_sounds.empty() && m_used == 0) {
        const Clock::duration wait = m_sounds.front().due + Delay - now;
        if (m_isFlowing && wait < MostDrift && wait > -MostDrift)
            return 0;
        if (wait >= -Latest) {
            const auto frames =
                std::chrono::duration_cast<std::chrono::microseconds>(wait).count() * Sound::Rate / 1'000'000;
            m_isFlowing = frames <= 0;
            return size_t(std::clamp<int64_t>(frames, 0, int64_t(count)));
        }
        m_sounds.pop_front();
        m_isFlowing = false;
    }
    return 0;
}

size_t SoundQueue::copy(int16_t* samples, size_t count)
{
    const std::vector<int16_t>& from = m_sounds.front().samples;
    const size_t number = std::min(count * Sound::Channels, from.size() - m_used);
    const auto first = from.begin() + std::ptrdiff_t(m_used);
    std::transform(first, first + std::ptrdiff_t(number), samples,
                   [this](int16_t sample) { return int16_t(float(sample) * m_gain); });
    m_used += number;
    if (m_used == from.size()) {
        m_sounds.pop_front();
        m_used = 0;
    }
    m_isFlowing = true;
    return std::max<size_t>(1, number / Sound::Channels);
}
