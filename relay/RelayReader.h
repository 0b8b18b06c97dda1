#pragma once

#include "packets/PacketSink.h"
#include "packets/PacketStamper.h"
#include "source/MediaInput.h"

#include <thread>

/// One connection to a camera: reads its packets in a thread of its own, and decodes nothing.
class RelayReader
{
public:
    using Taker = std::function<void(const PacketPtr& packet)>;

    /// Whatever waits is broken off while `isStopped` is true.
    RelayReader(const SourceAddress& address, std::function<bool()> isStopped);
    ~RelayReader();

    /// Waits for the camera; false after a failure, of which error() tells.
    bool open();
    /// That of the pictures, with that of their sound.
    std::shared_ptr<const StreamFormat> format() const { return m_input.streams().format(); }
    const QString& error() const { return m_input.error(); }
    /// Gives each packet to `take`, and calls `end` once the camera is lost and let go; both in the thread
    /// that reads.
    void start(Taker take, std::function<void()> end);
    /// Waits until nothing more is given.
    void stop();

private:
    bool readOne(const Taker& take);
    PacketPtr stamp(const AVPacket& packet);

    MediaInput m_input;
    std::unique_ptr<PacketStamper> m_stamper;
    std::thread m_thread;
};
