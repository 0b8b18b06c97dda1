#pragma once

#include "packets/EncodedPacket.h"

#include <optional>

/// Makes packets of what a demuxer reads: gives times to those that have none and lets the times go on where
/// the stream starts over or jumps back.
class PacketStamper
{
public:
    explicit PacketStamper(std::shared_ptr<const StreamFormat> format) : m_format(std::move(format)) {}

    /// Null if memory is short.
    std::shared_ptr<const EncodedPacket> stamp(const AVPacket& packet);
    /// The same for the sound that comes with it, by the times of the pictures: null before their first
    /// packet, and for sound that does not go on from what came before.
    std::shared_ptr<const EncodedPacket> stampSound(const AVPacket& packet,
                                                    const std::shared_ptr<const StreamFormat>& format);
    /// The next packet is the stream's first again.
    void startOver() { m_startsOver = true; }

private:
    int64_t shiftedPts(const AVPacket& packet);
    int64_t shiftedDts(const AVPacket& packet, int64_t pts) const;

    std::shared_ptr<const StreamFormat> m_format;
    bool m_startsOver = true;
    int64_t m_offset = 0;
    int64_t m_end = 0; ///< where the last of the pictures ends
    std::optional<int64_t> m_lastDts;
    std::optional<int64_t> m_lastSound;
};
