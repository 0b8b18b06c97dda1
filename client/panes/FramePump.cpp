#include "panes/FramePump.h"

#include "panes/PartMaker.h"

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
        paint();
}

void FramePump::paint()
{
    if (!isZoomed() || !m_frame) {
        m_deck->SetFrame(m_pane, imageOf(m_frame), QRect(), m_frame ? m_frame->pictureSize : QSize());
        return;
    }
    m_parts->make(m_frame, m_zoom.pixels(videoSize()), panePixels());
}

/// May come when nothing is zoomed any more, or nothing shown.
void FramePump::showPart(const FramePtr& part)
{
    if (isZoomed() && m_frame && m_deck)
        m_deck->SetFrame(m_pane, imageOf(part), QRect(), videoSize());
}

void FramePump::setZoom(const ZoomView& zoom)
{
    if (m_zoom == zoom)
        return;
    m_zoom = zoom;
    if (!m_parts) {
        m_parts = std::make_unique<PartMaker>();
        connect(m_parts.get(), &PartMaker::made, this, &FramePump::showPart);
    }
    if (m_frame && m_deck)
        paint();
}

QSize FramePump::videoSize() const
{
    if (!m_frame)
        return QSize();
    return m_frame->pictureSize.isEmpty() ? m_frame->size() : m_frame->pictureSize;
}

QSize FramePump::panePixels() const
{
    if (!m_deck)
        return QSize();
    const QWidget& label = *m_deck->PaneWidget(m_pane);
    return (QSizeF(label.size()) * label.devicePixelRatioF()).toSize();
}

void FramePump::clear()
{
    if (m_frame)
        show(nullptr);
}
