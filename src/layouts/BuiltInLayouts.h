#pragma once

#include "layouts/SplitLayout.h"

/// The built-in normal layout of an index from 0 to 9: 1, 4, 6, 8, 9, 16, 25, 36, 49 and 64 panes.
SplitLayout BuiltInLayout(int index);

/// The index of the built-in layout with that many panes; -1 if there is none.
int BuiltInLayoutIndex(int count);
