#pragma once

#include "decode/Frame.h"
#include "packets/PacketHub.h"
#include "sound/SoundSink.h"
#include "source/SourceState.h"

#include <QEvent>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>

/// What stays with a source while threads come and go.
struct SourceShare
{
    PacketHub packets;
    SoundHub sound;
    std::atomic<bool> wantsMotion{false};
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

    bool isStopped() const { return m_stopped; }
    bool isPaused() const;
    PacketHub& packets() { return m_share->packets; }
    SoundHub& sound() { return m_share->sound; }
    bool wantsMotion() const { return m_share->wantsMotion; }
    void setMotion(bool motion);
    void setSound(bool has);
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
    News m_news;
    FramePtr m_frame;
    bool m_motion = false;
    bool m_hasSound = false;
    SourceState m_state = SourceState::Connecting;
    QString m_reason;
};
