#pragma once

#include "packets/FFmpeg.h"

#include <QtGlobal>

#include <optional>

/// When a packet came.
struct PacketArrival
{
    qint64 steadyUs = 0;            ///< by a clock that nobody sets, microseconds
    qint64 wallMs = 0;              ///< by the machine's clock, milliseconds since 1970
    std::optional<qint64> senderMs; ///< when its picture was taken, by the sender's clock

    static PacketArrival now();
    /// Of a packet that comes now, with what its sender tells.
    static PacketArrival of(const AVPacket& packet);
};

/// Tells when the pictures of a live stream were taken: by the sender's clock as far as it agrees with the
/// machine's, else by the stream's own times, laid so that no picture is taken after it came.
class PacketClock
{
public:
    /// A sender's clock that differs by more was never set.
    static constexpr qint64 MostSenderOffMs = 10'000;
    /// A stream's own times and its arrivals differ by no more, unless one of the two clocks was set.
    static constexpr qint64 MostOffMs = 1'000;

    /// Milliseconds since 1970; `ownUs` is the picture's place in the stream, which leaps and stops as little
    /// as PacketStamper lets it.
    qint64 wallMs(qint64 ownUs, const PacketArrival& arrival);

private:
    std::optional<qint64> m_offsetUs; ///< from own times to the machine's clock
};
