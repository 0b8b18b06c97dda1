#pragma once

#include "decode/Frame.h"
#include "decode/MotionRule.h"
#include "packets/PacketHub.h"
#include "sound/SoundSink.h"
#include "source/PictureNeed.h"
#include "source/ShownSize.h"
#include "source/SourceState.h"

#include <QEvent>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>

/// What stays with a source while threads come and go.
struct SourceShare
{
    PacketHub packets;
    SoundHub sound;
    std::atomic<int> motionWishes{0};
    std::atomic<bool> isWatched{true};
    std::mutex shownMutex;
    ShownSize shown;
    std::mutex motionMutex;
    MotionRule motionRule;
    std::atomic<int> motionRuleNumber{0};
};

/// What a source and its thread share. Orders go down, news come up: at most one event is on its
/// way to the receiver, and a newer frame takes the place of one that nobody has fetched.
class SourceLink
{
public:
    using Clock = std::chrono::steady_clock;

    struct News
    {
        bool frame = false;
        bool state = false;
        bool motion = false;
    };

    /// `receiver` gets a NewsEvent when there are news; it may be null.
    explicit SourceLink(QObject* receiver,
                        std::shared_ptr<SourceShare> share = std::make_shared<SourceShare>());
    static QEvent::Type newsEvent();

    /// The thread is to end; the receiver hears nothing more. Doesn't wait.
    void stop();
    void setPaused(bool paused);
    void seek(qint64 ms);
    /// What has come since the last call.
    News takeNews();
    FramePtr frame() const;
    SourceState state() const;
    QString reason() const;
    bool motion() const;
    /// True if the source has sound.
    bool hasSound() const;
    bool isLate() const;
    bool isSilent() const;
    /// How long ago the newest frame was delivered; 0 before the first.
    int frameAgeMs() const;
    /// How long it is until a lost source is tried again.
    int retryMs() const;
    /// Those who wait for the need of pictures look again.
    void needChanged();
    /// Forgets a frame that nobody was to see, or that was delivered longer ago than a second.
    void forgetOldFrame();

    bool isStopped() const { return m_stopped; }
    bool isPaused() const;
    PacketHub& packets() { return m_share->packets; }
    SoundHub& sound() { return m_share->sound; }
    bool wantsMotion() const { return m_share->motionWishes > 0; }
    /// The rule of motion if there was a new one since the last call.
    std::optional<MotionRule> takeMotionRule();
    void setMotion(bool motion);
    void setSound(bool has);
    /// Its pictures are shown later than they should be, or some are left out.
    void setLate(bool late);
    /// None has come for longer than usual.
    void setSilent(bool silent);
    void setRetry(Clock::time_point time);
    PictureNeed need() const;
    ShownSize shownSize() const;
    /// Until at least so many pictures are needed, the source is stopped, or `time`.
    void waitForNeed(Clock::time_point time, PictureNeed least = PictureNeed::KeyFrames);
    /// Until `isMet`, the source is stopped, or `time`; it is asked anew after needChanged().
    void waitFor(const std::function<bool()>& isMet, Clock::time_point time);
    std::optional<qint64> takeSeek();
    /// False if a stop or a seek came first.
    bool waitUntil(Clock::time_point time);
    /// Until any order comes.
    void waitForOrder();
    /// `reason` is kept until the source plays.
    void setState(SourceState state, const QString& reason = {});
    void deliver(FramePtr frame);

private:
    template <class Change> void announce(Change change);
    void setFlag(bool& flag, bool value);

    mutable std::mutex m_mutex;
    std::condition_variable m_ordered;
    std::mutex m_receiverMutex; ///< never taken while the other one is held
    QObject* m_receiver;
    std::shared_ptr<SourceShare> m_share;
    std::atomic<bool> m_stopped{false};
    bool m_paused = false;
    bool m_newOrder = false;
    bool m_announced = false;
    std::optional<qint64> m_seekMs;
    int m_motionRuleNumber = 0;
    News m_news;
    FramePtr m_frame;
    bool m_isUnseen = false; ///< the frame was made for motion detection alone
    bool m_motion = false;
    bool m_hasSound = false;
    bool m_isLate = false;
    bool m_isSilent = false;
    Clock::time_point m_delivered;
    Clock::time_point m_retry;
    SourceState m_state = SourceState::Connecting;
    QString m_reason;
};
