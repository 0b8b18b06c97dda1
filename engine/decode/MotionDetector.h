#pragma once

#include "decode/MotionRule.h"

#include <QSize>

#include <vector>

struct Frame;

/// Tells whether something moves, from a few thousand points of a picture against a background that follows
/// slowly. It takes two looks to begin and two quiet seconds to end; a clock in the picture is too small to
/// count.
class MotionDetector
{
public:
    /// What the picture tells, as of its wallMs; pictures closer than a fifth of a second are not looked at.
    bool look(const Frame& frame);

    /// What counts from the next picture on.
    void setRule(const MotionRule& rule);

private:
    void start(const Frame& frame);
    void chooseInside();
    double changedShare(const Frame& frame);
    int brightness(const Frame& frame, size_t point) const;

    MotionRule m_rule;
    QSize m_size;
    int m_columns = 0;
    int m_step = 1;
    std::vector<int> m_background; ///< in sixteenths
    std::vector<bool> m_isInside;  ///< whether what changes there counts
    size_t m_insideCount = 0;
    qint64 m_lastLookMs = 0;
    qint64 m_lastBusyMs = 0;
    int m_busyLooks = 0;
    bool m_isMoving = false;
};
