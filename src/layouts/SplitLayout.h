#pragma once

#include <QList>

/// One pane's place in a layout's grid, as grid line numbers from 0 at the top or left edge.
/// x counts rows and y counts columns, the reverse of screen coordinates.
struct SplitCell
{
    int x1 = 0; ///< top line
    int y1 = 0; ///< left line
    int x2 = 0; ///< bottom line
    int y2 = 0; ///< right line
};

/// One layout. `cells` holds exactly `count` entries, in pane order.
struct SplitLayout
{
    static constexpr int MaxGrid = 8;

    int rows = 0;  ///< 1 to 8
    int cols = 0;  ///< 1 to 8
    int count = 0; ///< panes on a page
    QList<SplitCell> cells;
};

/// Whether the cell has an area and lies within the grid.
bool IsInGrid(const SplitCell& cell, int rows, int cols);

/// Whether the grid is 1 to 8 by 1 to 8 and `count` cells cover each of its squares exactly once.
bool IsTiling(const SplitLayout& layout);

/// The complete layout that is nearest to one with gaps and overlaps, its cells by their top line, then their
/// left line: a cell that lies on an earlier one is left out, and what is then free becomes cells. The grid
/// is made 1 to 8 by 1 to 8.
SplitLayout TilingOf(const SplitLayout& layout);

inline bool operator==(const SplitCell& a, const SplitCell& b)
{
    return a.x1 == b.x1 && a.y1 == b.y1 && a.x2 == b.x2 && a.y2 == b.y2;
}

inline bool operator==(const SplitLayout& a, const SplitLayout& b)
{
    return a.rows == b.rows && a.cols == b.cols && a.count == b.count && a.cells == b.cells;
}
