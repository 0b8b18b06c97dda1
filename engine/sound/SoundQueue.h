#pragma once

#include "sound/SoundSink.h"

#include <deque>

/// Sound on its way to a device, each piece at its time. Pieces that follow each other closely are joined,
/// what comes too late is left out, and where there is nothing there is silence. One thread at a time.
class SoundQueue
{
public:
    using Clock = std::chrono::steady_clock;

    /// Sound is heard this much after its time, so that a piece that comes when it is due is not late.
    static constexpr std::chrono::milliseconds Delay{120};
    static constexpr int LoudestVolume = 10;

    void add(Sound sound);
    void clear();
    /// 0, silence, to 10, as it was recorded; in steps that the ear takes as even.
    void setVolume(int volume);
    /// Fills `count` samples of each channel, of which the first is heard at `now`.
    void fill(int16_t* samples, size_t count, Clock::time_point now);

private:
    size_t skip(size_t count, Clock::time_point now);
    size_t copy(int16_t* samples, size_t count);

    std::deque<Sound> m_sounds;
    size_t m_used = 0;        ///< samples of the first piece that have gone, of all channels
    bool m_isFlowing = false; ///< the sample before was sound
    float m_gain = 1;
};
