#pragma once

#include "layouts/SplitLayout.h"
#include "support/SeededGenerator.h"

/// A random complete layout of the grid, its cells by their top line, then their left line.
SplitLayout RandomTiling(int rows, int cols, QRandomGenerator& random);

/// Whether the cells cover every grid square exactly once, and their number is the layout's count.
bool Tiles(const SplitLayout& layout);
