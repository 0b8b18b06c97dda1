#include "decode/MotionDetector.h"

#include "decode/Frame.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int PointsAcross = 88;
constexpr qint64 LookMs = 200;
constexpr qint64 QuietMs = 2000;
constexpr int LooksToBegin = 2;
constexpr int Difference = 24;
constexpr double ShareToBegin = 0.008;
constexpr double ShareToEnd = 0.004;
constexpr int Fraction = 16;
constexpr int Slowness = 8;
constexpr int UsualSensitivity = 50;
constexpr double StepsToHalf = 17; ///< of sensitivity, until half as much is enough

/// How many times as much as usual has to move.
double factorOf(int sensitivity)
{
    return std::exp2((UsualSensitivity - std::clamp(sensitivity, 1, 100)) / StepsToHalf);
}

} // namespace

bool MotionDetector::look(const Frame& frame)
{
    const qint64 since = frame.wallMs - m_lastLookMs;
    if (frame.size() != m_size) {
        start(frame);
        return m_isMoving;
    }
    if (since >= 0 && since < LookMs)
        return m_isMoving;
    m_lastLookMs = frame.wallMs;

    const double share = changedShare(frame) / factorOf(m_rule.sensitivity);
    m_busyLooks = share >= ShareToBegin ? m_busyLooks + 1 : 0;
    if (share >= ShareToEnd)
        m_lastBusyMs = frame.wallMs;
    if (m_isMoving)
        m_isMoving = frame.wallMs - m_lastBusyMs < QuietMs;
    else
        m_isMoving = m_busyLooks >= LooksToBegin;
    return m_isMoving;
}

void MotionDetector::start(const Frame& frame)
{
    m_size = frame.size();
    m_step = qMax(1, frame.width / PointsAcross);
    m_columns = frame.width / m_step;
    m_background.resize(size_t(m_columns) * size_t(frame.height / m_step));
    for (size_t i = 0; i < m_background.size(); ++i)
        m_background[i] = brightness(frame, i) * Fraction;
    m_lastLookMs = frame.wallMs;
    m_busyLooks = 0;
    chooseInside();
}

void MotionDetector::setRule(const MotionRule& rule)
{
    m_rule = rule;
    chooseInside();
}

void MotionDetector::chooseInside()
{
    m_isInside.assign(m_background.size(), m_rule.zones.isEmpty());
    for (size_t i = 0; i < m_isInside.size() && !m_rule.zones.isEmpty(); ++i) {
        const QPointF place((double(i % size_t(m_columns)) + 0.5) * m_step / m_size.width(),
                            (double(i / size_t(m_columns)) + 0.5) * m_step / m_size.height());
        m_isInside[i] = std::any_of(m_rule.zones.begin(), m_rule.zones.end(),
                                    [&place](const QRectF& zone) { return zone.contains(place); });
    }
    m_insideCount = size_t(std::count(m_isInside.begin(), m_isInside.end(), true));
}

double MotionDetector::changedShare(const Frame& frame)
{
    size_t changed = 0;
    for (size_t i = 0; i < m_background.size(); ++i) {
        const int value = brightness(frame, i) * Fraction;
        const int difference = value - m_background[i];
        m_background[i] += difference / Slowness;
        if (qAbs(difference) > Difference * Fraction && m_isInside[i])
            ++changed;
    }
    return m_insideCount == 0 ? 0 : double(changed) / double(m_insideCount);
}

/// Near enough to what the eye sees: (r + 2g + b) / 4.
int MotionDetector::brightness(const Frame& frame, size_t point) const
{
    const size_t x = point % size_t(m_columns) * size_t(m_step);
    const size_t y = point / size_t(m_columns) * size_t(m_step);
    const uchar* pixel = frame.pixels() + y * size_t(frame.rowBytes()) + 3 * x;
    return (pixel[0] + 2 * pixel[1] + pixel[2]) / 4;
}
