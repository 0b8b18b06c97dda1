#include "synthetic/SceneSprite.h"

#include "synthetic/SceneArt.h"

#include <QtMath>

#include <random>

namespace {

/// Share of the picture's width and height over which a sprite wanders to either side of the middle.
constexpr double Wander = 0.3;
constexpr double StepsPerSecond = 12;

} // namespace

SceneSprite::SceneSprite(unsigned seed, QSize range) : m_range(range)
{
    std::minstd_rand random(seed);
    const auto between = [&random](double least, double most) {
        return least + (most - least) * double(random() - random.min()) / double(random.max() - random.min());
    };
    random.discard(3);
    m_movingMs = qint64(between(12000, 20000));
    m_cycleMs = m_movingMs + qint64(between(6000, 12000));
    m_acrossSeconds = between(7, 14);
    m_downSeconds = between(9, 17);
    m_phase = between(0, 2 * M_PI);
}

QPoint SceneSprite::position(qint64 ms) const
{
    const double turn = 2 * M_PI * movedSeconds(ms);
    const double x = 0.5 + Wander * std::sin(turn / m_acrossSeconds + m_phase);
    const double y = 0.5 + Wander * std::cos(turn / m_downSeconds + m_phase);
    return {int(x * m_range.width()) - SceneArt::SpriteSize.width() / 2,
            int(y * m_range.height()) - SceneArt::SpriteSize.height() / 2};
}

int SceneSprite::step(qint64 ms, int steps) const
{
    return int(qint64(movedSeconds(ms) * StepsPerSecond) % steps);
}

double SceneSprite::movedSeconds(qint64 ms) const
{
    return double(ms / m_cycleMs * m_movingMs + qMin(ms % m_cycleMs, m_movingMs)) / 1000;
}
