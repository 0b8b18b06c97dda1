#pragma once

#include "LiveStamps.h"
#include "RelayReader.h"

#include <gst/app/gstappsrc.h>

#include <functional>

/// What a camera sends, on its way into the pipeline from which all desks are served.
class RelayFeed
{
public:
    /// Ends, or never begins, once `isStopped` is true.
    RelayFeed(const SourceAddress& address, std::function<bool()> isStopped)
        : m_reader(address, std::move(isStopped))
    {
    }
    ~RelayFeed();
    RelayFeed(const RelayFeed&) = delete;
    RelayFeed& operator=(const RelayFeed&) = delete;

    /// Waits for the camera. A bin with a payloader for its pictures and one for its sound, floating; null,
    /// with one line in `error`, where the camera doesn't answer or sends what can't be handed on.
    GstElement* open(QString* error);
    /// Begins to read. `lost` is called once, in a thread of its own, when no more comes.
    void start(std::function<void()> lost);
    /// Waits until nothing more is read.
    void stop() { m_reader.stop(); }

private:
    void take(const PacketPtr& packet);
    void push(GstAppSrc* target, const PacketPtr& packet, GstBuffer* buffer);

    GstAppSrc* m_pictures = nullptr;
    GstAppSrc* m_sound = nullptr;
    LiveStamps m_stamps;
    bool m_hasKey = false;
    RelayReader m_reader; ///< the first to go: its thread uses all the others
};
