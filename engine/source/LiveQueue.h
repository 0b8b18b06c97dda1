#pragma once

#include "packets/EncodedPacket.h"
#include "packets/PacketSink.h"
#include "source/PictureNeed.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>

/// What a live stream's reader has read and its decoder has not taken yet: never more than a decoder can make
/// good. One that falls behind goes on from the newest key frame, or else from the next one that comes.
class LiveQueue
{
public:
    using Clock = std::chrono::steady_clock;

    /// A decoder that is further behind than this leaves out pictures that no other needs.
    static constexpr auto Behind = std::chrono::milliseconds(300);
    /// What has waited for longer can't be shown within a second of its coming.
    static constexpr auto TooLate = std::chrono::milliseconds(700);
    /// So long a decoder may go on with late pictures, to come from a key frame that was kept to the present.
    static constexpr auto CatchUp = std::chrono::milliseconds(1000);
    static constexpr size_t MostBytes = 8 << 20;

    /// What the decoder is to do next.
    struct Taken
    {
        PacketPtr packet; ///< null if there was nothing in time
        Clock::time_point came;
        bool startsOver = false; ///< it is a key frame that does not follow the picture taken before
        bool isHurried = false;  ///< pictures that no other needs are not worth decoding
        bool isAlone = false;    ///< of the pictures that follow none will be taken
        bool hasEnded = false;   ///< nothing more will come
    };

    /// Never waits for the decoder.
    void push(const PacketPtr& packet, Clock::time_point came);
    /// The reader has read all that there was.
    void end();
    /// While not all pictures are needed, those from the newest key frame on are kept for when they are, and
    /// there is no sound.
    void setNeed(PictureNeed need);
    /// Waits until something is there or `until` has come.
    Taken take(Clock::time_point until);
    /// True if take() would not wait.
    bool hasNext() const;
    /// For how long the decoder has left the oldest of them lying, while it is to take all and has had the
    /// time.
    Clock::duration waited(Clock::time_point now) const;
    /// True if pictures were left out since the last call.
    bool takeLeftOut();

private:
    struct Waiting
    {
        PacketPtr packet;
        Clock::time_point came;
    };

    bool isKept(const EncodedPacket& packet);
    bool canGo() const;
    Taken lendKeyFrame();
    void leaveOutLate(Clock::time_point now);
    void keepPicturesFrom(size_t index);

    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<Waiting> m_waiting;
    size_t m_bytes = 0;
    PictureNeed m_need = PictureNeed::All;
    Clock::time_point m_catchUpEnds;
    bool m_needsKey = true;    ///< pictures are left out until the next key frame
    bool m_startsOver = false; ///< the next picture does not follow the one taken before
    bool m_hasNewKey = false;  ///< the first that waits is a key frame that was not lent yet
    bool m_hasLeftOut = false;
    bool m_hasEnded = false;
};
