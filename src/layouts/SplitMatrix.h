#pragma once

#include "layouts/SplitLayout.h"

#include <QLine>
#include <QVector>
#include <QtGlobal>

/// A layout as a picture of its lines. Position (i, j) counts half grid units from the top left corner: both
/// even is a crossing of grid lines, one odd the unit of a grid line between two crossings, both odd the
/// inside of a grid square. A plain value.
struct SplitMatrix
{
    static constexpr int MaxGrid = SplitLayout::MaxGrid;
    static constexpr int Stride = 18; ///< one more than the largest grid uses: a growing grid writes there

    /// What lies at a position.
    enum Mark
    {
        Empty = 0,
        Line = 1,  ///< a line without a corner of any cell
        Corner = 2 ///< a corner of at least one cell
    };

    int rows = 0;                   ///< grid rows, 1 to 8
    int cols = 0;                   ///< grid columns, 1 to 8
    int cells[Stride][Stride] = {}; ///< row position, column position

    int LastRow() const { return 2 * qBound(0, rows, MaxGrid); }
    int LastCol() const { return 2 * qBound(0, cols, MaxGrid); }

    /// The mark at a position of the grid; Empty outside of it.
    int At(int row, int col) const
    {
        const bool inside = row >= 0 && row <= LastRow() && col >= 0 && col <= LastCol();
        return inside ? cells[row][col] : int(Empty);
    }
};

/// The arithmetic between layouts and matrices.
namespace SplitLines {

/// Draws the layout into `out`. Only the used area of `out` is written. Cells outside of the grid are left
/// out.
void FromLayout(const SplitLayout& layout, SplitMatrix& out);

/// Finds the cells of the matrix, by their top line, then their left line, and appends them to `out`.
/// A region that is no closed rectangle yields no cell.
void ToLayout(const SplitMatrix& matrix, SplitLayout& out);

/// Whether no position of the straight stretch, both ends included, is empty. True for any other two points.
bool IsSolid(const SplitMatrix& matrix, int r1, int c1, int r2, int c2);

/// The lines inside of the border, from corner to corner, in matrix positions: x is the column position and
/// y the row position.
QVector<QLine> Inner(const SplitMatrix& matrix);

} // namespace SplitLines
