#pragma once

#include "cameras/SourceAddress.h"
#include "packets/InputStreams.h"
#include "packets/PacketStamper.h"
#include "sound/SoundTrack.h"
#include "source/PictureDecoder.h"

#include <chrono>

/// Everything that FFmpeg opens: files, which loop, streams, capture devices and filter graphs.
class MediaFeed : public SourceFeed
{
public:
    /// `link` must outlive the feed; its stop breaks off whatever the feed waits for.
    MediaFeed(const SourceAddress& address, SourceLink& link);
    /// Makes such feeds, one for each opening.
    static FeedMaker maker(const SourceAddress& address);

    bool open() override;
    Step advance() override;
    qint64 pts() const override { return m_decoder.placeUs(); }
    FramePtr picture() override;
    bool isPaced() const override { return !m_address.isLive(); }
    bool isLive() const override { return m_address.isLive(); }
    bool givesPackets() const override { return m_stamper != nullptr; }

private:
    static int isInterrupted(void* feed);
    bool openInput();
    bool openDecoder();
    void givePacket();
    void giveSound();
    void hearSound();
    qint64 placeOf(int64_t stamp, AVRational timeBase) const;
    bool failWith(const QString& what, int error);
    bool feedDecoder();
    void takePacket();
    bool loop();
    bool rewind();
    void watch();

    SourceAddress m_address;
    SourceLink& m_link;
    AvInput m_input;
    InputStreams m_streams;
    AvPacket m_packet;
    PictureDecoder m_decoder;
    SoundTrack m_sound;
    std::unique_ptr<PacketStamper> m_stamper; ///< null for a stream of plain pictures
    std::chrono::steady_clock::time_point m_patienceEnds;
    std::chrono::steady_clock::time_point m_shown; ///< when the picture before was
    bool m_sawPicture = false;                     ///< since the last start from the beginning
    qint64 m_offset = 0; ///< added to the stream's own times, so that they go on over a loop
};
