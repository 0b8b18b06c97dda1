#pragma once

#include "archive/Archive.h"
#include "packets/MatroskaWriter.h"
#include "packets/PacketSink.h"

#include <atomic>
#include <functional>
#include <mutex>

/// Writes a camera's packets into one part after the other, each from a key frame to before a key frame. How
/// long a part is its packets tell, never the clock: where the two come apart, where the stream stalls or
/// starts over and where packets are missing, a new part begins with the next key frame.
class SegmentSink : public PacketSink
{
public:
    /// Called in the thread that the packets come in, and to do no more than pass it on.
    struct Listener
    {
        std::function<void(const FinishedPart& part)> finished;
        /// One line, when writing fails for the first time; empty when it has gone well for a while again.
        std::function<void(const QString& error)> failed;
    };

    SegmentSink(std::shared_ptr<ArchivePaths> paths, const QString& camera, qint64 segmentMs,
                Listener listener);

    void take(const PacketPtr& packet) override;
    void skip() override;
    void end() override;
    /// The next key frame begins a new part, so that what is written now becomes a recording soon. Any
    /// thread.
    void cut() { m_isCutAsked = true; }
    /// From a write that failed until writing has gone well for some seconds. Any thread.
    bool isFailing() const { return m_isFailing; }
    /// The listener hears nothing more. Any thread.
    void silence();

private:
    void watch(const EncodedPacket& packet);
    bool isDue(const EncodedPacket& packet) const;
    void begin(const EncodedPacket& packet);
    void finish(std::optional<qint64> nextMs = std::nullopt);
    void fail(const QString& error);
    void noteWell(const EncodedPacket& packet);
    void tellFailed(const QString& error);

    std::shared_ptr<ArchivePaths> m_paths;
    const QString m_camera;
    const qint64 m_segmentMs;
    std::mutex m_mutex; ///< of the listener alone
    std::optional<Listener> m_listener;
    MatroskaWriter m_file;
    bool m_isBegun = false; ///< there is a part that finish() has not seen
    bool m_isCut = true;    ///< the next key frame begins a part
    bool m_isTorn = false;  ///< between the last two packets some are missing
    std::atomic<bool> m_isCutAsked{false};
    std::atomic<bool> m_isFailing{false};
    std::shared_ptr<const StreamFormat> m_format;
    qint64 m_beganMs = 0;             ///< the part's first packet by the clock
    qint64 m_beganAt = 0;             ///< and in the stream
    qint64 m_lastAt = 0;              ///< the last packet in the stream
    qint64 m_lastMs = 0;              ///< and by the clock
    qint64 m_stepMs = 0;              ///< between the last two
    std::optional<qint64> m_failedMs; ///< of the packet at which writing last failed
};
