#include "layouts/SplitLayout.h"

#include <algorithm>
#include <utility>

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

/// The free squares from one on, as far right as they go, then as far down.
SplitCell GapAt(int row, int col, const SplitLayout& layout, quint64 covered)
{
    SplitCell gap{row, col, row + 1, col + 1};
    const auto isFree = [&](const SplitCell& cell) {
        return IsInGrid(cell, layout.rows, layout.cols) && (covered & Squares(cell)) == 0;
    };
    while (isFree({gap.x1, gap.y1, gap.x2, gap.y2 + 1}))
        ++gap.y2;
    while (isFree({gap.x1, gap.y1, gap.x2 + 1, gap.y2}))
        ++gap.x2;
    return gap;
}

} // namespace

bool IsInGrid(const SplitCell& cell, int rows, int cols)
{
    return 0 <= cell.x1 && cell.x1 < cell.x2 && cell.x2 <= rows //
           && 0 <= cell.y1 && cell.y1 < cell.y2 && cell.y2 <= cols;
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

SplitLayout TilingOf(const SplitLayout& layout)
{
    SplitLayout tiling{
        qBound(1, layout.rows, SplitLayout::MaxGrid), qBound(1, layout.cols, SplitLayout::MaxGrid), 0, {}};
    quint64 covered = 0;
    const auto add = [&](const SplitCell& cell) {
        if (!IsInGrid(cell, tiling.rows, tiling.cols) || (covered & Squares(cell)) != 0)
            return;
        covered |= Squares(cell);
        tiling.cells.append(cell);
    };
    for (const SplitCell& cell : layout.cells)
        add(cell);
    for (int row = 0; row < tiling.rows; ++row) {
        for (int col = 0; col < tiling.cols; ++col)
            add(GapAt(row, col, tiling, covered));
    }
    std::sort(tiling.cells.begin(), tiling.cells.end(), [](const SplitCell& a, const SplitCell& b) {
        return std::pair(a.x1, a.y1) < std::pair(b.x1, b.y1);
    });
    tiling.count = tiling.cells.size();
    return tiling;
}
