#pragma once

#include "decode/FrameConverter.h"
#include "packets/EncodedPacket.h"
#include "packets/PacketSink.h"
#include "source/SourceFeed.h"

#include <QHash>

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
    qint64 pts() const override { return m_shownUs; }
    FramePtr picture() override;
    /// Beyond the end: to the last picture.
    void seek(qint64 ms) override;
    bool isPaced() const override { return true; }
    bool isLive() const override { return false; }
    bool givesPackets() const override { return true; }

private:
    bool goTo(size_t index);
    void feedCodec();
    bool takeComing();

    std::vector<PacketPtr> m_packets;
    std::vector<qint64> m_times; ///< by packet: when its picture is due, microseconds from the first
    AvCodec m_codec;
    FrameConverter m_converter;
    AvFrame m_coming;
    AvFrame m_shown;
    qint64 m_shownUs = 0;
    const StreamFormat* m_format = nullptr; ///< that of the codec
    size_t m_next = 0;
    bool m_isDraining = false;
    QHash<qint64, qint64> m_sent; ///< due times of the packets that the codec has, by their pts
    qint64 m_wantedUs = 0;        ///< pictures before it are left out
    bool m_hasLeftOut = false;
};
