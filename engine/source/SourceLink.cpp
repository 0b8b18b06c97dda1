#include "source/SourceLink.h"

#include <QCoreApplication>

SourceLink::SourceLink(QObject* receiver, std::shared_ptr<SourceShare> share)
    : m_receiver(receiver), m_share(std::move(share))
{
}

QEvent::Type SourceLink::newsEvent()
{
    static const auto type = QEvent::Type(QEvent::registerEventType());
    return type;
}

void SourceLink::stop()
{
    {
        const std::lock_guard lock(m_receiverMutex);
        m_receiver = nullptr;
    }
    const std::lock_guard lock(m_mutex);
    m_stopped = true;
    m_frame.reset();
    m_newOrder = true;
    m_ordered.notify_all();
}

void SourceLink::setPaused(bool paused)
{
    const std::lock_guard lock(m_mutex);
    m_paused = paused;
    m_newOrder = true;
    m_ordered.notify_all();
}

void SourceLink::seek(qint64 ms)
{
    const std::lock_guard lock(m_mutex);
    m_seekMs = ms;
    m_news.frame = false;
    m_newOrder = true;
    m_ordered.notify_all();
}

SourceLink::News SourceLink::takeNews()
{
    const std::lock_guard lock(m_mutex);
    m_announced = false;
    return std::exchange(m_news, {});
}

FramePtr SourceLink::frame() const
{
    const std::lock_guard lock(m_mutex);
    return m_frame;
}

SourceState SourceLink::state() const
{
    const std::lock_guard lock(m_mutex);
    return m_state;
}

QString SourceLink::reason() const
{
    const std::lock_guard lock(m_mutex);
    return m_reason;
}

bool SourceLink::motion() const
{
    const std::lock_guard lock(m_mutex);
    return m_motion;
}

bool SourceLink::hasSound() const
{
    const std::lock_guard lock(m_mutex);
    return m_hasSound;
}

bool SourceLink::isLate() const
{
    const std::lock_guard lock(m_mutex);
    return m_isLate;
}

bool SourceLink::isSilent() const
{
    const std::lock_guard lock(m_mutex);
    return m_isSilent;
}

int SourceLink::frameAgeMs() const
{
    const std::lock_guard lock(m_mutex);
    const auto age = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - m_delivered);
    return m_frame ? int(age.count()) : 0;
}

int SourceLink::retryMs() const
{
    const std::lock_guard lock(m_mutex);
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(m_retry - Clock::now());
    return m_state == SourceState::Lost ? int(qMax<qint64>(0, left.count())) : 0;
}

bool SourceLink::isPaused() const
{
    const std::lock_guard lock(m_mutex);
    return m_paused;
}

std::optional<qint64> SourceLink::takeSeek()
{
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_seekMs, std::nullopt);
}

bool SourceLink::waitUntil(Clock::time_point time)
{
    std::unique_lock lock(m_mutex);
    return !m_ordered.wait_until(lock, time, [this] { return m_stopped || m_seekMs; });
}

void SourceLink::waitForOrder()
{
    std::unique_lock lock(m_mutex);
    m_ordered.wait(lock, [this] { return m_newOrder; });
    m_newOrder = false;
}

void SourceLink::setState(SourceState state, const QString& reason)
{
    announce([&](News& news) {
        if (m_state == state && m_reason == reason)
            return;
        m_state = state;
        if (!reason.isEmpty() || state == SourceState::Playing)
            m_reason = reason;
        news.state = true;
    });
}

std::optional<MotionRule> SourceLink::takeMotionRule()
{
    if (m_motionRuleNumber == m_share->motionRuleNumber)
        return std::nullopt;
    const std::lock_guard<std::mutex> lock(m_share->motionMutex);
    m_motionRuleNumber = m_share->motionRuleNumber;
    return m_share->motionRule;
}

void SourceLink::setMotion(bool motion)
{
    announce([&](News& news) {
        news.motion = news.motion || m_motion != motion;
        m_motion = motion;
    });
}

void SourceLink::setFlag(bool& flag, bool value)
{
    announce([&](News& news) { news.state = std::exchange(flag, value) != value || news.state; });
}

void SourceLink::setSound(bool has)
{
    setFlag(m_hasSound, has);
}

void SourceLink::setLate(bool late)
{
    setFlag(m_isLate, late);
}

void SourceLink::setSilent(bool silent)
{
    setFlag(m_isSilent, silent);
}

void SourceLink::setRetry(Clock::time_point time)
{
    const std::lock_guard lock(m_mutex);
    m_retry = time;
}

PictureNeed SourceLink::need() const
{
    if (m_share->isWatched || m_share->sound.sink())
        return PictureNeed::All;
    return wantsMotion() ? PictureNeed::KeyFrames : PictureNeed::None;
}

void SourceLink::forgetOldFrame()
{
    FramePtr old;
    const std::lock_guard lock(m_mutex);
    if (m_isUnseen || Clock::now() - m_delivered > std::chrono::seconds(1))
        m_frame.swap(old);
}

void SourceLink::needChanged()
{
    const std::lock_guard lock(m_mutex);
    m_ordered.notify_all();
}

ShownSize SourceLink::shownSize() const
{
    const std::lock_guard lock(m_share->shownMutex);
    return m_share->shown;
}

void SourceLink::waitForNeed(Clock::time_point time, PictureNeed least)
{
    waitFor([this, least] { return need() >= least; }, time);
}

void SourceLink::waitFor(const std::function<bool()>& isMet, Clock::time_point time)
{
    std::unique_lock lock(m_mutex);
    m_ordered.wait_until(lock, time, [&] { return m_stopped || isMet(); });
}

void SourceLink::deliver(FramePtr frame)
{
    announce([&](News& news) {
        // What was on its way when the seek came belongs to the place before it.
        if (m_seekMs)
            return;
        // The frame that was here goes back to its pool outside the lock.
        m_frame.swap(frame);
        m_delivered = Clock::now();
        m_isUnseen = need() != PictureNeed::All;
        news.frame = true;
    });
}

template <class Change> void SourceLink::announce(Change change)
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_stopped)
            return;
        change(m_news);
        if (m_announced || !(m_news.frame || m_news.state || m_news.motion))
            return;
        m_announced = true;
    }
    // The event wakes the receiver, which at once asks for the news: it must not find their lock taken.
    const std::lock_guard lock(m_receiverMutex);
    if (m_receiver)
        QCoreApplication::postEvent(m_receiver, new QEvent(newsEvent()));
}
