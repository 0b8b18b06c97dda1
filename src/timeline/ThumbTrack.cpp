#include "timeline/ThumbTrack.h"

#include "timeline/ToPixel.h"

#include <limits>

int ThumbTrack::EdgeOf(int nValue) const
{
    return ToPixel(total > 0 ? nValue * Length() / total + thumbMinX : thumbMinX);
}

int ThumbTrack::ValueAt(int nEdge) const
{
    if (Length() <= 0)
        return 0;
    constexpr double Bound = std::numeric_limits<int>::max();
    return int(qBound(-Bound, (nEdge - thumbMinX) * total / Length(), Bound));
}
