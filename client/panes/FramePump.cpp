#include "panes/FramePump.h"

#include <CPaneDeck.h>

namespace {

/// The frame's own pixels, which it keeps as long as there is an image of them.
QImage imageOf(const FramePtr& frame)
{
    if (!frame)
        return QImage();
    const auto release = [](void* held) { delete static_cast<FramePtr*>(held); };
    return {frame->pixels(),       frame->width, frame->height,      frame->rowBytes(),
            QImage::Format_RGB888, release,      new FramePtr(frame)};
}

} // namespace

FramePump::FramePump(CPaneDeck* deck, int pane, QObject* parent) : QObject(parent), m_deck(deck), m_pane(pane)
{
}

FramePump::~FramePump()
{
    clear();
}

void FramePump::setSource(VideoSource* source)
{
    if (source == m_source)
        return;
    if (m_source)
        m_source->disconnect(this);
    m_source = source;
    if (!source)
        return;
    connect(source, &VideoSource::frameReady, this, &FramePump::takeFrame);
    takeFrame();
}

void FramePump::takeFrame()
{
    if (FramePtr frame = m_source ? m_source->frame() : nullptr)
        show(std::move(frame));
}

void FramePump::show(FramePtr frame)
{
    const QSize before = videoSize();
    m_frame = std::move(frame);
    const QPointer<FramePump> alive(this);
    if (videoSize() != before)
        Q_EMIT videoSizeChanged();
    if (alive && m_deck)
        m_deck->SetFrame(m_pane, imageOf(m_frame), QRect(), m_frame ? m_frame->pictureSize : QSize());
}

QSize FramePump::videoSize() const
{
    if (!m_frame)
        return QSize();
    return m_frame->pictureSize.isEmpty() ? m_frame->size() : m_frame->pictureSize;
}

void FramePump::clear()
{
    if (m_frame)
        show(nullptr);
}
