#include "layouts/SplitLayout.h"

namespace {

/// One bit for each square of an 8 by 8 grid.
quint64 Squares(const SplitCell& cell)
{
    quint64 squares = 0;
    for (int row = cell.x1; row < cell.x2; ++row) {
        for (int col = cell.y1; col < cell.y2; ++col)
            squares |= quint64(1) << (row * SplitLayout::MaxGrid + col);
    }
    return squares;
}

} // namespace

bool IsInGrid(const SplitCell& cell, int rows, int cols)
{
    return 0 <= cell.x1 && cell.x1 < cell.x2 && cell.x2 <= rows //
           && 0 <= cell.y1 && cell.y1 < cell.y2 && cell.y2 <= cols;
}

bool IsEmpty(const SplitLayout& layout)
{
    return layout.count == 0 && layout.cells.isEmpty();
}

bool IsTiling(const SplitLayout& layout)
{
    const SplitCell grid{0, 0, layout.rows, layout.cols};
    if (!IsInGrid(grid, SplitLayout::MaxGrid, SplitLayout::MaxGrid))
        return false;
    quint64 covered = 0;
    for (const SplitCell& cell : layout.cells) {
        if (!IsInGrid(cell, layout.rows, layout.cols) || (covered & Squares(cell)) != 0)
            return false;
        covered |= Squares(cell);
    }
    return layout.count == layout.cells.size() && covered == Squares(grid);
}
