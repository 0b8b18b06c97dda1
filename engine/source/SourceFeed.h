#pragma once

#include "decode/Frame.h"

#include <QString>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

class SourceLink;

/// One opening of a source: where the pictures come from. Lives in the source's thread and is thrown away
/// after a failure.
class SourceFeed
{
public:
    enum class Step
    {
        Picture,
        End,
        Failed, ///< error() tells why
    };

    SourceFeed() = default;
    virtual ~SourceFeed() = default;
    SourceFeed(const SourceFeed&) = delete;
    SourceFeed& operator=(const SourceFeed&) = delete;

    /// False after a failure.
    virtual bool open() = 0;
    /// Goes on to the next picture.
    virtual Step advance() = 0;
    /// The picture's place in the stream, microseconds.
    virtual qint64 pts() const = 0;
    /// The picture itself, made only for those that are wanted; null if it can't be made.
    virtual FramePtr picture() = 0;
    /// Goes to `ms` from the start; the next step gives the picture shown at that time.
    virtual void seek(qint64 ms) { Q_UNUSED(ms) }

    /// When the picture is to be shown, for feeds that keep a clock of their own.
    virtual std::optional<std::chrono::steady_clock::time_point> due() const { return std::nullopt; }

    /// True if pictures are to be held back until their pts is due; false if they come in their own time.
    virtual bool isPaced() const = 0;
    /// True if the stream goes on while nobody takes it.
    virtual bool isLive() const = 0;
    /// True if the feed gives its packets to the link's hub by itself; false if its pictures were never
    /// encoded.
    virtual bool givesPackets() const = 0;

    /// One line.
    const QString& error() const { return m_error; }

protected:
    bool fail(const QString& error)
    {
        m_error = error;
        return false;
    }

private:
    QString m_error;
};

/// Makes the next opening of a source. Called in the source's thread.
using FeedMaker = std::function<std::unique_ptr<SourceFeed>(SourceLink& link)>;
