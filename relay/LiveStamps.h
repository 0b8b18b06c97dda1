#pragma once

#include <QtGlobal>

#include <optional>

/// Lays the times of a live stream on the clock of whoever sends it on. Steps between packets stay what the
/// camera made them; none is ever to be sent later than it came, so that nothing waits.
class LiveStamps
{
public:
    /// The time of a packet of the stream's own time that came at `nowNs` of the clock, both nanoseconds: at
    /// most `nowNs`, and where the camera's clock is the slower one at most a second before it.
    qint64 lay(qint64 ownNs, qint64 nowNs);

private:
    std::optional<qint64> m_offsetNs;
};
