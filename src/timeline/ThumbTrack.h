#pragma once

/// The rule between a value on the scale and the left edge of the thumb that marks it, in pixels of the
/// scale. Both ways truncate towards zero. Where the rule would divide by zero it gives the left end or the
/// value 0.
struct ThumbTrack
{
    double right = 0;     ///< right end of the scale
    double thumbMinX = 0; ///< left edge of the thumb at value 0
    double thumbWidth = 0;
    int total = 0; ///< the value at the right end

    int EdgeOf(int nValue) const;
    int ValueAt(int nEdge) const;

private:
    double Length() const { return right - thumbMinX - thumbWidth / 2; }
};
