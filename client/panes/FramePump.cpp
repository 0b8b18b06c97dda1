#include "panes/FramePump.h"

FramePump::FramePump(QObject* label, QObject* parent)
    : QObject(parent), m_label(qobject_cast<QWidget*>(label))
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
    if (!frame) {
        clear();
        return;
    }
    const QPointer<FramePump> alive(this);
    if (m_label && frame->size() != m_size) {
        m_size = frame->size();
        QMetaObject::invokeMethod(m_label, "sig_VideoResize", Qt::DirectConnection,
                                  Q_ARG(int, m_size.width()), Q_ARG(int, m_size.height()));
    }
    if (!alive)
        return;
    // The old frame goes only after the label has left it.
    handOver(frame);
    m_frame = std::move(frame);
}

void FramePump::clear()
{
    if (m_frame)
        handOver(nullptr);
    m_frame.reset();
    m_size = {};
}

void FramePump::handOver(const FramePtr& frame)
{
    if (!m_label)
        return;
    const bool isInUse = m_label->testAttribute(Qt::WA_ForceUpdatesDisabled);
    if (isInUse)
        m_label->setUpdatesEnabled(true);
    QMetaObject::invokeMethod(
        m_label, "slot_BufferChange", Qt::DirectConnection,
        Q_ARG(ulong, frame ? reinterpret_cast<ulong>(frame->pixels()) : 0),
                                                     Q_ARG(int, frame ? frame->width : 0),
                                                           Q_ARG(int, frame ? frame->height : 0));
    if (isInUse)
        m_label->setUpdatesEnabled(false);
}
