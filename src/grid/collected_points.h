// collected_points.h: what copying a grid asks of its collected points.
#pragma once

#include "grid/grid.h"

// Into a grid without any, under the same handles. False when the heap is exhausted.
bool copy_collected_points(const grid* source, grid* target);
