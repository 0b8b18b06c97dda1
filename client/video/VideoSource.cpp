#include "video/VideoSource.h"

#include "video/MediaFeed.h"
#include "video/SourceLink.h"
#include "video/SourceThread.h"
#include "video/SyntheticFeed.h"

#include <QPointer>

namespace {

std::unique_ptr<SourceFeed> makeFeed(const SourceAddress& address, SourceLink& link)
{
    if (address.kind() == SourceAddress::Kind::Synthetic)
        return std::make_unique<SyntheticFeed>(address, link);
    return std::make_unique<MediaFeed>(address, link);
}

} // namespace

VideoSource::VideoSource(const SourceAddress& address, QObject* parent)
    : QObject(parent), m_address(address), m_ptz(std::make_shared<PtzControl>())
{
}

VideoSource::~VideoSource()
{
    if (m_link)
        m_link->stop();
}

void VideoSource::start()
{
    if (m_link)
        return;
    m_link = std::make_shared<SourceLink>(this, m_ptz);
    m_link->setPaused(m_isPaused);
    startSourceThread(m_link, [address = m_address](SourceLink& link) { return makeFeed(address, link); });
    Q_EMIT stateChanged();
}

void VideoSource::stop()
{
    if (!m_link)
        return;
    m_link->stop();
    m_link.reset();
    Q_EMIT stateChanged();
}

void VideoSource::setPaused(bool paused)
{
    m_isPaused = paused;
    if (m_link)
        m_link->setPaused(paused);
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

void VideoSource::ptz(int command, bool start)
{
    m_ptz->command(command, start, SyntheticFeed::nowMs());
}

void VideoSource::customEvent(QEvent* event)
{
    if (event->type() != SourceLink::newsEvent() || !m_link)
        return;
    const SourceLink::News news = m_link->takeNews();
    const QPointer<VideoSource> guard(this);
    if (news.state)
        Q_EMIT stateChanged();
    if (guard && m_link && news.frame)
        Q_EMIT frameReady();
}
