#pragma once

#include "packets/PacketStamper.h"
#include "sound/SoundTrack.h"
#include "source/MediaInput.h"
#include "source/PictureDecoder.h"

class RelayPatience;
class SourceLink;

/// What FFmpeg opens and is played at its own speed: files, which loop, and filter graphs.
class MediaFeed : public SourceFeed
{
public:
    /// `link` must outlive the feed; its stop breaks off whatever the feed waits for.
    MediaFeed(const SourceAddress& address, SourceLink& link);
    /// Makes feeds for everything that FFmpeg opens, one for each opening: live ones for streams and devices.
    static FeedMaker maker(const SourceAddress& address);
    /// The same for a stream that a relay has too, by turns: the relay first, unless it keeps silent.
    static FeedMaker maker(const SourceAddress& relay, const SourceAddress& camera,
                           const std::shared_ptr<RelayPatience>& patience);

    bool open() override;
    Step advance() override;
    qint64 pts() const override { return m_decoder.placeUs(); }
    FramePtr picture() override;
    bool isPaced() const override { return true; }
    bool isLive() const override { return false; }
    bool givesPackets() const override { return m_stamper != nullptr; }

private:
    void givePacket(const AVPacket& packet);
    void giveSound(const AVPacket& packet);
    void hearSound(const AVPacket& packet);
    qint64 placeOf(int64_t stamp, AVRational timeBase) const;
    bool feedDecoder();
    void takePacket();
    bool loop();

    SourceLink& m_link;
    MediaInput m_input;
    PictureDecoder m_decoder;
    SoundTrack m_sound;
    std::unique_ptr<PacketStamper> m_stamper;      ///< null for a stream of plain pictures
    std::chrono::steady_clock::time_point m_shown; ///< when the picture before was
    bool m_sawPicture = false;                     ///< since the last start from the beginning
    qint64 m_offset = 0; ///< added to the stream's own times, so that they go on over a loop
};
