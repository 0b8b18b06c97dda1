#pragma once

#include "packets/PacketSink.h"
#include "source/PictureDecoder.h"

#include <vector>

/// Plays packets that were kept, each picture at its place in time; their sound is left out.
class RingFeed : public SourceFeed
{
public:
    /// The first packet is a key frame. Without packets the feed fails to open.
    explicit RingFeed(std::vector<PacketPtr> packets);
    /// From the first picture to the last, in microseconds.
    static qint64 lengthUs(const std::vector<PacketPtr>& packets);

    bool open() override;
    Step advance() override;
    qint64 pts() const override { return m_decoder.placeUs(); }
    FramePtr picture() override;
    /// Beyond the end: to the last picture.
    void seek(qint64 ms) override;
    bool isPaced() const override { return true; }
    bool isLive() const override { return false; }
    bool givesPackets() const override { return true; }

private:
    bool goTo(size_t index);
    void feedDecoder();

    std::vector<PacketPtr> m_packets;
    std::vector<qint64> m_times; ///< by packet: when its picture is due, microseconds from the first
    PictureDecoder m_decoder;
    const StreamFormat* m_format = nullptr; ///< that of the decoder
    size_t m_next = 0;
};
