#pragma once

#include "cameras/SourceAddress.h"
#include "packets/InputStreams.h"

#include <atomic>
#include <chrono>
#include <functional>

/// What FFmpeg has opened, and how its packets are read. Any one thread at a time, but for breakOff().
class MediaInput
{
public:
    using Clock = std::chrono::steady_clock;

    /// Whatever waits is broken off while `isStopped` is true.
    MediaInput(const SourceAddress& address, std::function<bool()> isStopped);

    /// False after a failure, of which error() tells.
    bool open();
    /// Goes on to the next packet of the pictures or of their sound. FFmpeg's number for why there is none,
    /// of which AVERROR(EAGAIN) comes after a short wait.
    int read();
    /// What was read last.
    const AVPacket& packet() const { return *m_packet; }
    /// Goes back to the beginning; false where that can't be done.
    bool rewind();
    /// Whatever waits now, or later, ends soon.
    void breakOff() { m_isBrokenOff = true; }
    /// Lets go of what was opened, of which nothing but streams() is left.
    void close() { m_context.reset(); }
    /// How long it may keep silent before it counts as lost; never less than the usual ten seconds.
    void setPatience(Clock::duration patience);
    Clock::duration patience() const { return m_patience; }

    /// True if what is not read at once waits on its way, and is not lost.
    bool canWait() const { return m_canWait; }
    const InputStreams& streams() const { return m_streams; }
    /// True if its pictures come as they are, never encoded.
    bool isPlain() const;
    /// A time stamp's place from the beginning, microseconds.
    qint64 placeOf(int64_t stamp, AVRational timeBase) const;

    /// One line.
    const QString& error() const { return m_error; }
    /// Makes this the error; always false.
    bool fail(const QString& error);
    /// Makes `what` the error, with the reason that FFmpeg gives in place of %1; always false.
    bool fail(const QString& what, int error);

private:
    static int isInterrupted(void* input);
    bool openContext();
    bool mayLogIn();
    int openBy(SourceAddress::Transport transport, const AVInputFormat* format);
    bool findStreams();
    int64_t start() const;
    QString reasonOf(int error) const;
    void watch();
    bool hasStoodStill() const;

    SourceAddress m_address;
    std::function<bool()> m_isStopped;
    std::atomic<bool> m_isBrokenOff{false};
    AvInput m_context;
    AvPacket m_packet;
    InputStreams m_streams;
    Clock::duration m_patience;
    Clock::time_point m_patienceEnds;
    bool m_canWait = false;
    bool m_isTired = false; ///< it kept silent for too long, once
    QString m_error;
};
