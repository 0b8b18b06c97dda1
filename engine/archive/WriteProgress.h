#pragma once

#include "archive/SegmentSink.h"

/// Hands packets on and counts those that were dealt with: written, or not to be written. While the disk does
/// not take them, or a write never returns, the count stands still.
class WriteProgress : public PacketSink
{
public:
    /// `written` is where the packets of `target` go in the end.
    WriteProgress(std::shared_ptr<PacketSink> target, std::shared_ptr<SegmentSink> written)
        : m_target(std::move(target)), m_written(std::move(written))
    {
    }

    void take(const PacketPtr& packet) override
    {
        m_target->take(packet);
        if (!m_written->isFailing())
            ++m_count;
    }
    void skip() override { m_target->skip(); }
    void end() override { m_target->end(); }
    /// Any thread.
    qint64 count() const { return m_count; }

private:
    const std::shared_ptr<PacketSink> m_target;
    const std::shared_ptr<SegmentSink> m_written;
    std::atomic<qint64> m_count{0};
};
