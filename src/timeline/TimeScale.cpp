#include "timeline/TimeScale.h"

#include "timeline/ToPixel.h"

#include <cmath>
#include <iterator>

const TimeScale::Row TimeScale::Rows[] = {
    {0.0, 48, 4, 4, 14, 17},     {1.7, 120, 5, 5, 14, 17},   {3.4, 144, 3, 3, 14, 17},
    {5.3, 288, 3, 3, 14, 17},    {8.0, 1440, 5, 10, 14, 17}, {16.0, 1440, 5, 5, 16, 19},
    {192.0, 2880, 2, 2, 14, 17},
};

TimeScale::TimeScale(double fWidth, double fRatio)
    : m_pRow(RowOf(fRatio)), m_fStep(fWidth / m_pRow->intervals)
{
}

const TimeScale::Row* TimeScale::RowOf(double fRatio)
{
    const Row* row = std::end(Rows) - 1;
    while (row != Rows && !(fRatio >= row->fromRatio))
        --row;
    return row;
}

QString TimeScale::Label(int nTick) const
{
    const auto digit = [](int number) { return QChar('0' + number % 10); };
    const int minutes = nTick * 1440 / Intervals();
    const int hour = minutes / 60;
    const int minute = minutes % 60;
    const QChar text[] = {digit(hour / 10), digit(hour), ':', digit(minute / 10), digit(minute)};
    return hour < 10 ? QString(text + 1, 4) : QString(text, 5);
}

int TimeScale::FirstTick(int nLeft) const
{
    if (m_fStep <= 0)
        return 0;
    return qMax(0, ToPixel(std::floor((double(nLeft) - TickReach) / m_fStep)));
}

int TimeScale::LastTick(int nRight) const
{
    if (m_fStep <= 0)
        return Intervals();
    return qMin(Intervals(), ToPixel(std::ceil((double(nRight) + TickReach) / m_fStep)));
}
