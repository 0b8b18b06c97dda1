#include "source/RingPlayer.h"

#include "source/RingFeed.h"

RingPlayer::RingPlayer(std::vector<PacketPtr> packets, QObject* parent)
    : VideoSource([packets](SourceLink&) { return std::make_unique<RingFeed>(packets); }, parent),
      m_startMs(packets.empty() ? 0 : packets.front()->wallMs), m_lengthMs(RingFeed::lengthUs(packets) / 1000)
{
}

void RingPlayer::seek(int position)
{
    seekTo(qBound(0, position, LastPosition) * m_lengthMs / LastPosition);
}

int RingPlayer::position() const
{
    if (m_lengthMs == 0)
        return 0;
    return int(
        qBound(qint64(0), (positionMs() - m_startMs) * LastPosition / m_lengthMs, qint64(LastPosition)));
}

qint64 RingPlayer::positionMs() const
{
    const FramePtr newest = frame();
    return newest ? newest->wallMs : m_startMs;
}
