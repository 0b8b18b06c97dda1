#pragma once

#include <QtGlobal>

/// A place or size in pixels, truncated towards zero. What no widget could have is brought to a bound far
/// outside every scale, so that sums of places stay within an int; what is no number becomes 0.
inline int ToPixel(double fPlace)
{
    constexpr double Bound = 1 << 26;
    return qIsNaN(fPlace) ? 0 : int(qBound(-Bound, fPlace, Bound));
}
