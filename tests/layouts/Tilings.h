#pragma once

#include "layouts/SplitLayout.h"
#include "support/SeededGenerator.h"

/// A random complete layout of a random grid, its cells by their top line, then their left line.
inline SplitLayout RandomTiling(QRandomGenerator& random)
{
    SplitLayout layout{random.bounded(1, 9), random.bounded(1, 9), 0, {}};
    for (int tries = random.bounded(20); tries > 0; --tries) {
        const int top = random.bounded(layout.rows), left = random.bounded(layout.cols);
        layout.cells.append(
            {top, left, random.bounded(top, layout.rows) + 1, random.bounded(left, layout.cols) + 1});
    }
    return TilingOf(layout);
}
