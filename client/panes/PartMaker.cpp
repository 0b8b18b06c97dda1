#include "panes/PartMaker.h"

PartMaker::PartMaker()
{
    m_pool.setMaxThreadCount(1);
}

PartMaker::~PartMaker()
{
    {
        const std::lock_guard lock(m_mutex);
        m_next.reset();
    }
    m_pool.waitForDone();
}

void PartMaker::make(FramePtr frame, const QRect& part, QSize size)
{
    const std::lock_guard lock(m_mutex);
    m_next = Order{std::move(frame), part, size};
    if (!std::exchange(m_isWorking, true))
        m_pool.start([this] { work(); });
}

std::optional<PartMaker::Order> PartMaker::takeOrder()
{
    const std::lock_guard lock(m_mutex);
    m_isWorking = m_next.has_value();
    return std::exchange(m_next, std::nullopt);
}

void PartMaker::work()
{
    while (const std::optional<Order> order = takeOrder()) {
        FramePtr part = m_converter.convert(*order->frame, order->part, order->size);
        {
            const std::lock_guard lock(m_mutex);
            m_made = std::move(part);
        }
        QMetaObject::invokeMethod(this, &PartMaker::deliver, Qt::QueuedConnection);
    }
}

void PartMaker::deliver()
{
    FramePtr part;
    {
        const std::lock_guard lock(m_mutex);
        part.swap(m_made);
    }
    if (part)
        Q_EMIT made(part);
}
