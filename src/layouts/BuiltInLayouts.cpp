#include "layouts/BuiltInLayouts.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr int Counts[] = {1, 4, 6, 8, 9, 16, 25, 36, 49, 64};

SplitLayout UniformLayout(int blocks, int unitsPerBlock)
{
    SplitLayout layout{blocks * unitsPerBlock, blocks * unitsPerBlock, blocks * blocks, {}};
    for (int i = 0; i < blocks; ++i) {
        for (int j = 0; j < blocks; ++j)
            layout.cells.append(
                {i * unitsPerBlock, j * unitsPerBlock, (i + 1) * unitsPerBlock, (j + 1) * unitsPerBlock});
    }
    return layout;
}

/// One big pane in the top left corner, small ones of `unit` grid units down the right and along the bottom.
SplitLayout CornerLayout(int grid, int unit)
{
    const int big = grid - unit;
    SplitLayout layout{grid, grid, 0, {{0, 0, big, big}}};
    for (int row = 0; row < big; row += unit)
        layout.cells.append({row, big, row + unit, grid});
    for (int col = 0; col < grid; col += unit)
        layout.cells.append({big, col, grid, col + unit});
    layout.count = layout.cells.size();
    return layout;
}

} // namespace

SplitLayout BuiltInLayout(int index)
{
    switch (index) {
    case 0:
        return UniformLayout(1, 6);
    case 1:
        return UniformLayout(2, 3);
    case 2:
        return CornerLayout(6, 2);
    case 3:
        return CornerLayout(4, 1);
    case 4:
        return UniformLayout(3, 2);
    default:
        return UniformLayout(index - 1, 1);
    }
}

int BuiltInLayoutIndex(int count)
{
    const auto found = std::find(std::begin(Counts), std::end(Counts), count);
    return found == std::end(Counts) ? -1 : int(found - std::begin(Counts));
}
