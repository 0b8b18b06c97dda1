#pragma once

/// The part of a zoomed scale that its viewport shows: the scale's width, and where its left end lies in the
/// viewport.
struct ScaleView
{
    /// The zoom's upper end. The last row of ticks begins at 192, and at common widths a second is about two
    /// pixels wide here: more would show nothing new and only lengthen the way to pan. A scale that Qt could
    /// not make as wide as this, QWIDGETSIZE_MAX, ends there.
    static constexpr int MaxRatio = 200;

    double baseWidth = 0; ///< width of the viewport; the scale is never narrower
    double zoomWidth = 0;
    int x = 0; ///< 0 or negative

    /// How many times the viewport fits into the scale; 1 as long as there is no viewport.
    double Ratio() const;

    /// The view after some notches of the wheel, forward positive: a base width is added for each, and what
    /// is under the cursor, cursorX in the scale's coordinates, stays under it as far as both ends of the
    /// viewport stay covered.
    ScaleView Zoomed(int nNotches, int nCursorX) const;

    /// The place for a scale that is dragged to nX and ends at fEnd.
    int Panned(int nX, double fEnd) const;
};
