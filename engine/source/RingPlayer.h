#pragma once

#include "packets/PacketSink.h"
#include "source/VideoSource.h"

/// Plays what a ring has kept, from its begin; at its end it rests in SourceState::Ended until a seek.
class RingPlayer : public VideoSource
{
    Q_OBJECT

public:
    /// `packets` is a ring's snapshot.
    explicit RingPlayer(std::vector<PacketPtr> packets, QObject* parent = nullptr);

    /// 0 is the begin, 1000 the end; others are brought into this range. In a pause, too, the picture of that
    /// time is shown.
    void seek(int position);
    /// Place of the newest picture, 0 to 1000.
    int position() const;
    /// When the newest picture was taken, milliseconds since 1970.
    qint64 positionMs() const;

private:
    static constexpr int LastPosition = 1000;

    qint64 m_startMs; ///< 0 without packets
    qint64 m_lengthMs;
};
