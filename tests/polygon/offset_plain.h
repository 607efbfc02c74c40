// offset_plain.h: the parallel of a chain and the removal of its loops, written down step by step and without
// an index, to judge the kernel's own.
#pragma once

#include <vector>

#include "tests/polygon/chains.h"

namespace plain
{

struct parallel {
    std::vector<spot> spots;
    int messages = 0; // "Did not intersect\n"
};

// Of a chain that pg_clean has been over.
parallel offset(const std::vector<spot>& chain, double distance, int side, int corner_mode, int remove_loops);

std::vector<spot> without_loops(std::vector<spot> chain);

} // namespace plain
