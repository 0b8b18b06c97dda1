#pragma once

#include <QPoint>
#include <QSize>

/// Something that wanders about in a scene: it moves for a while, then rests, as its seed has it.
class SceneSprite
{
public:
    /// `range` is the size of the picture in which it keeps near the middle.
    SceneSprite(unsigned seed, QSize range);

    /// Upper left corner at `ms`, milliseconds of any clock.
    QPoint position(qint64 ms) const;
    /// Which of `steps` pictures it shows then.
    int step(qint64 ms, int steps) const;

private:
    double movedSeconds(qint64 ms) const;

    QSize m_range;
    qint64 m_cycleMs;
    qint64 m_movingMs;
    double m_acrossSeconds;
    double m_downSeconds;
    double m_phase;
};
