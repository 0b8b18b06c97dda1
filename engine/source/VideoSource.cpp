#include "source/VideoSource.h"

#include "source/SourceLink.h"
#include "source/SourceThread.h"

#include <QPointer>

VideoSource::VideoSource(FeedMaker make, QObject* parent)
    : QObject(parent), m_make(std::move(make)), m_share(std::make_shared<SourceShare>())
{
}

VideoSource::~VideoSource()
{
    if (m_link)
        m_link->stop();
    m_share->sound.set(nullptr);
}

void VideoSource::start()
{
    if (m_link)
        return;
    m_link = std::make_shared<SourceLink>(this, m_share);
    m_link->setPaused(m_isPaused);
    startSourceThread(m_link, m_make);
    Q_EMIT stateChanged();
}

void VideoSource::stop()
{
    if (!m_link)
        return;
    m_link->stop();
    m_link.reset();
    m_share->sound.hush();
    Q_EMIT stateChanged();
}

void VideoSource::setPaused(bool paused)
{
    m_isPaused = paused;
    if (m_link)
        m_link->setPaused(paused);
    if (paused)
        m_share->sound.hush();
}

SourceState VideoSource::state() const
{
    return m_link ? m_link->state() : SourceState::Stopped;
}

QString VideoSource::reason() const
{
    return m_link ? m_link->reason() : QString();
}

FramePtr VideoSource::frame() const
{
    return m_link ? m_link->frame() : nullptr;
}

bool VideoSource::isLate() const
{
    return m_link && m_link->isLate();
}

bool VideoSource::isSilent() const
{
    return m_link && m_link->state() == SourceState::Playing && m_link->isSilent();
}

int VideoSource::frameAgeMs() const
{
    return m_link ? m_link->frameAgeMs() : 0;
}

int VideoSource::retryMs() const
{
    return m_link ? m_link->retryMs() : 0;
}

void VideoSource::setWatched(bool watched)
{
    const bool wasWatched = m_share->isWatched.exchange(watched);
    if (!m_link)
        return;
    // What was seen last is not what is there now.
    if (watched && !wasWatched)
        m_link->forgetOldFrame();
    m_link->needChanged();
}

void VideoSource::ptz(int command, bool start)
{
    Q_UNUSED(command)
    Q_UNUSED(start)
}

void VideoSource::setShownSize(const ShownSize& shown)
{
    const std::lock_guard lock(m_share->shownMutex);
    m_share->shown = shown;
}

void VideoSource::addSink(std::shared_ptr<PacketSink> sink)
{
    m_share->packets.add(std::move(sink));
    if (m_link)
        m_link->needChanged();
}

void VideoSource::removeSink(const std::shared_ptr<PacketSink>& sink)
{
    m_share->packets.remove(sink);
}

bool VideoSource::hasSound() const
{
    return m_link && m_link->hasSound();
}

void VideoSource::setSoundSink(std::shared_ptr<SoundSink> sink)
{
    m_share->sound.set(std::move(sink));
    if (m_link)
        m_link->needChanged();
}

void VideoSource::setMotionDetection(bool on)
{
    m_share->motionWishes += on ? 1 : -1;
    if (m_link)
        m_link->needChanged();
}

void VideoSource::setMotionRule(const MotionRule& rule)
{
    const std::lock_guard<std::mutex> lock(m_share->motionMutex);
    m_share->motionRule = rule;
    ++m_share->motionRuleNumber;
}

bool VideoSource::hasMotion() const
{
    return m_link && m_share->motionWishes > 0 && m_link->motion();
}

void VideoSource::seekTo(qint64 ms)
{
    if (!m_link)
        return;
    m_link->seek(ms);
    m_share->sound.hush();
}

void VideoSource::customEvent(QEvent* event)
{
    if (event->type() != SourceLink::newsEvent() || !m_link)
        return;
    const SourceLink::News news = m_link->takeNews();
    const QPointer<VideoSource> alive(this);
    if (news.state)
        Q_EMIT stateChanged();
    if (alive && m_link && news.motion)
        Q_EMIT motionChanged(hasMotion());
    if (alive && m_link && news.frame)
        Q_EMIT frameReady();
}
