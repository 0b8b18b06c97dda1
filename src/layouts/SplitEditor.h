#pragma once

#include "layouts/SplitMatrix.h"

#include <QPoint>
#include <QSize>
#include <QVector>

/// A stretch of a grid line in matrix positions, its smaller end first.
struct SplitSegment
{
    bool horizontal = false;
    int rowStart = 0;
    int colStart = 0;
    int rowEnd = 0;
    int colEnd = 0;
};

inline bool operator==(const SplitSegment& a, const SplitSegment& b)
{
    return a.horizontal == b.horizontal && a.rowStart == b.rowStart && a.colStart == b.colStart &&
           a.rowEnd == b.rowEnd && a.colEnd == b.colEnd;
}

/// The grid lines near a cursor, in matrix positions. 0 stands both for no line and for the top or left
/// border.
struct SplitHit
{
    int row = 0;
    int col = 0;
};

/// A segment that the removal of a line came to.
struct SplitVisit
{
    SplitSegment segment;
    bool hadLine = false; ///< there was a line to remove
};

inline bool operator==(const SplitVisit& a, const SplitVisit& b)
{
    return a.segment == b.segment && a.hadLine == b.hadLine;
}

/// What a click on a layout's grid does, apart from the widget. `size` is the size in pixels of the surface
/// that shows the grid. Each change of a complete tiling gives a complete tiling.
namespace SplitEditor {

/// Pixels of a grid unit: the width of a column, the height of a row. Truncated, so that a strip at the right
/// and at the bottom lies beyond the last grid line. Empty if there is no grid or no room for it.
QSize Pitch(const SplitMatrix& matrix, const QSize& size);

/// Finds the grid lines that catch a cursor, from two pixels before a line to one behind it. False in the
/// open, near the border alone, near the grid's corners and outside of the grid.
bool HitTest(const SplitMatrix& matrix, const QSize& size, const QPoint& pos, SplitHit& hit);

/// Chooses the candidate segment that a cursor means; at a crossing the unit left of it. True if a line of
/// the layout runs there, which a click removes.
bool ClassifyHit(const SplitMatrix& matrix, const QSize& size, const QPoint& pos, const SplitHit& hit,
                 SplitSegment& segment);

/// The segment made a whole unit of its line, from an even position to the next.
SplitSegment Widened(const SplitSegment& segment);

/// Stretches a segment until it meets a line at both ends. False if it lies outside of the grid.
bool ExtendSegment(const SplitMatrix& matrix, SplitSegment& segment);

void AddLine(SplitMatrix& matrix, const SplitSegment& segment);

/// Removes a unit of a line and what can't stay without it. The visited segments in their order.
QVector<SplitVisit> EraseSegment(SplitMatrix& matrix, const SplitSegment& unit);

/// Visits what EraseSegment() would. `scratch` is a copy of the layout's matrix and useless afterwards.
QVector<SplitVisit> PreviewErase(SplitMatrix& scratch, const SplitSegment& unit);

/// Sets the number of rows (kind 0) or columns (kind 1), 1 to 8. New ones come as single squares; cells that
/// stretch over the new border are cut at it. False if there is no such size.
bool Resize(SplitMatrix& matrix, int kind, int value);

} // namespace SplitEditor
