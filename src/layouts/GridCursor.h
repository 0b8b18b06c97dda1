#pragma once

#include "layouts/SplitMatrix.h"

#include <QPoint>
#include <QRect>

/// Where the keys are on a layout's grid: a square, x its column and y its row, and the square from which
/// others are selected up to it. A plain value.
struct GridCursor
{
    QPoint at;
    QPoint anchor;

    /// Goes a step as far as the grid reaches; the anchor stays if the selection is to grow.
    void Step(const SplitMatrix& matrix, const QPoint& way, bool grows);

    /// Back into a grid that has become smaller.
    void Clamp(const SplitMatrix& matrix);

    /// The whole cells that the selection touches, grown until they fill a rectangle of squares.
    QRect Selected(const SplitMatrix& matrix) const;
};

/// What keys do to a layout. Each change of a complete tiling gives a complete tiling.
namespace GridKeys {

/// Makes one cell of those that fill a rectangle of squares. False if there are no two of them.
bool Join(SplitMatrix& matrix, const QRect& squares);

/// Cuts a square's cell in two along the side of the square that lies in a direction. False if a line runs
/// there already.
bool Cut(SplitMatrix& matrix, const QPoint& square, const QPoint& way);

/// The number of the pane whose cell a square belongs to, from 0; -1 if it belongs to none.
int PaneAt(const SplitMatrix& matrix, const QPoint& square);

} // namespace GridKeys
