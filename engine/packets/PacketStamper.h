#pragma once

#include "packets/EncodedPacket.h"
#include "packets/PacketClock.h"

#include <optional>

/// Makes packets of what a demuxer reads: gives times to those that have none and lets the times go on where
/// the stream starts over or jumps back.
class PacketStamper
{
public:
    explicit PacketStamper(std::shared_ptr<const StreamFormat> format) : m_format(std::move(format)) {}

    /// Null if memory is short.
    std::shared_ptr<const EncodedPacket> stamp(const AVPacket& packet);
    /// The same for a live stream, whose times go by the arrival of its packets where they stand still or
    /// leap.
    std::shared_ptr<const EncodedPacket> stamp(const AVPacket& packet, const PacketArrival& arrival);
    /// The same for the sound that comes with it, by the times of the pictures: null before their first
    /// packet, and for sound that does not go on from what came before.
    std::shared_ptr<const EncodedPacket> stampSound(const AVPacket& packet,
                                                    const std::shared_ptr<const StreamFormat>& format);
    /// True if a live stream's own times did not tell where its last picture lies, but its coming did.
    bool isByArrival() const { return m_isByArrival; }
    /// The next packet is the stream's first again.
    void startOver() { m_startsOver = true; }

private:
    void followArrival(const AVPacket& packet, qint64 steadyUs);
    std::shared_ptr<EncodedPacket> stamped(const AVPacket& packet);
    int64_t shiftedPts(const AVPacket& packet);
    int64_t shiftedDts(const AVPacket& packet, int64_t pts) const;
    int64_t ownTime(qint64 us) const { return av_rescale_q(us, Microseconds, m_format->timeBase); }

    std::shared_ptr<const StreamFormat> m_format;
    PacketClock m_clock;
    bool m_startsOver = true;
    bool m_isByArrival = false;
    int64_t m_offset = 0;
    int64_t m_end = 0; ///< where the last of the pictures ends
    std::optional<int64_t> m_lastDts;
    std::optional<int64_t> m_lastSound;
    std::optional<int64_t> m_lastKnown; ///< a live stream's own last time
    qint64 m_lastCameUs = 0;
    qint64 m_aheadUs = 0; ///< by how much its own times went faster than its arrivals, since they were laid
};
