#pragma once

#include "packets/PacketStamper.h"
#include "sound/SoundTrack.h"
#include "source/LiveQueue.h"
#include "source/MediaInput.h"
#include "source/PictureDecoder.h"
#include "source/ReadPause.h"

#include <atomic>
#include <thread>

class SourceLink;

/// A stream or a device that goes on while nobody takes its pictures. A thread of its own reads, stamps and
/// hands on; the pictures are decoded here, as many as there is time for, and none that is more than a second
/// late.
class LiveFeed : public SourceFeed
{
public:
    /// `link` must outlive the feed; its stop breaks off whatever the feed waits for.
    LiveFeed(const SourceAddress& address, SourceLink& link);
    ~LiveFeed() override;

    bool open() override;
    Step advance() override;
    qint64 pts() const override { return m_decoder.placeUs(); }
    FramePtr picture() override;
    bool isPaced() const override { return false; }
    bool isLive() const override { return true; }
    bool givesPackets() const override { return !m_isPlain; }

private:
    using Clock = LiveQueue::Clock;

    /// A picture on its way through the decoder.
    struct Coming
    {
        qint64 placeUs;
        qint64 wallMs;
        Clock::time_point came;
        bool isHurried; ///< it may be left out
    };

    void readAll();
    bool readOne();
    void handOn(const PacketPtr& packet);
    void rest(const EncodedPacket& packet);
    void measure(Clock::time_point came);
    void tellStanding(Clock::time_point now);
    bool feedDecoder();
    void waitUnseen(PictureNeed need);
    void decode(const LiveQueue::Taken& taken);
    bool takeComing();
    void tellLate(Clock::time_point now, Clock::duration late);
    void tellSilence();
    bool isBlind() const;
    PictureNeed need() const;
    ShownSize shownSize() const;

    SourceLink& m_link;
    MediaInput m_input;
    LiveQueue m_queue;
    std::thread m_reader;

    // The reader's, once it runs.
    std::unique_ptr<PacketStamper> m_stamper;
    ReadPause m_readPause;
    Clock::duration m_step{}; ///< from picture to picture, as usual
    bool m_isPlain = false;

    std::atomic<Clock::time_point> m_lastKey{}; ///< when a key frame came; before any clock if none has
    std::atomic<Clock::time_point> m_lastCame;
    std::atomic<Clock::duration> m_mostSilence;
    std::atomic<Clock::duration> m_keyStep; ///< the longest so far from key frame to key frame

    // The decoder's.
    PictureDecoder m_decoder;
    SoundTrack m_sound;
    std::deque<Coming> m_coming;
    Coming m_shown{};
    Clock::time_point m_lastPicture; ///< or when none was wanted
    int m_blindPackets = 0;          ///< decoded since
    Clock::time_point m_lateEnds;
    bool m_showsAnyhow = true; ///< the next picture is shown however late it is
    bool m_isAlone = false;
};
