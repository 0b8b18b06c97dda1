#pragma once

#include <QString>

/// The ticks of a day's scale of a given width: how many there are, where they stand, and what is written on
/// them. A tick is named by its index, from 0 at midnight to Intervals() at the next midnight. x runs in
/// pixels from the scale's left end.
class TimeScale
{
public:
    /// The right and left reach of a tick's line and label box from its x.
    static constexpr int TickReach = 22;
    static constexpr int TickBottom = 33;

    /// fWidth is the scale's width, fRatio how many times the whole day would fit into it at no zoom.
    TimeScale(double fWidth, double fRatio);

    int Intervals() const { return m_pRow->intervals; }
    double TickX(int nTick) const { return nTick * m_fStep; }
    double End() const { return TickX(Intervals()); }

    bool IsMajor(int nTick) const { return nTick % m_pRow->majorEvery == 0; }
    bool IsLabelled(int nTick) const { return nTick % m_pRow->labelEvery == 0; }
    int Top(int nTick) const { return IsMajor(nTick) ? m_pRow->majorTop : m_pRow->minorTop; }

    /// The time of a labelled tick, such as "0:00" or "24:00".
    QString Label(int nTick) const;

    /// The first and the last tick that can touch the pixels from nLeft to nRight with line or label; never
    /// outside the scale, but first > last if none can.
    int FirstTick(int nLeft) const;
    int LastTick(int nRight) const;

private:
    struct Row
    {
        double fromRatio;
        int intervals;
        int majorEvery;
        int labelEvery;
        int majorTop;
        int minorTop;
    };

    static const Row Rows[];
    static const Row* RowOf(double fRatio);

    const Row* m_pRow;
    double m_fStep;
};
