#pragma once

#include "packets/PacketClock.h"

#include <chrono>
#include <cstddef>

/// Tells when the reader of a live stream may rest. What comes meanwhile waits in the connection, and is read
/// as a bundle: the reader is woken a few times a second, not for every part of a picture.
class ReadPause
{
public:
    using Clock = std::chrono::steady_clock;

    static constexpr auto Longest = std::chrono::milliseconds(200);
    /// So much finds room in a connection without holding up its sender, at least.
    static constexpr size_t Room = 64 << 10;
    /// For so long a stream has to keep to its own times.
    static constexpr auto Trial = std::chrono::seconds(2);

    /// There is none for a while: the stream is new, or its pictures have no times but those of their coming.
    void putOff(Clock::time_point now) { m_trialEnds = now + Trial; }
    /// How long nothing need be read after a picture with that place in the stream, which grows from one to
    /// the next; 0 while others are there, or about to come.
    Clock::duration after(qint64 placeUs, size_t bytes, Clock::time_point now);

private:
    PacketClock m_clock;
    Clock::time_point m_trialEnds;
    Clock::time_point m_lastEnd; ///< when all had been read before
    qint64 m_placeUs = 0;
    size_t m_bytes = 0; ///< since then
};
