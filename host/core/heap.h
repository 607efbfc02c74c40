// heap.h: the heap that the module allocates from (acad_malloc and its like), with live counts.
#pragma once

#include <cstddef>

namespace host
{

// Blocks and bytes taken and not yet given back. A call that gives back what it took leaves both
// as they were.
std::size_t heap_live_blocks();
std::size_t heap_live_bytes();

// Views of drawing objects that are open (made or opened, not yet closed or deleted).
std::size_t live_views();
void count_view(int change);

} // namespace host
