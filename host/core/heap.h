// heap.h: the heap that the module allocates from (acad_malloc and its like), with live counts.
#pragma once

#include <cstddef>

namespace host
{

// Blocks and bytes taken and not yet given back. A call that gives back what it took leaves both
// as they were.
std::size_t heap_live_blocks();
std::size_t heap_live_bytes();

// For the host's own use, where the module's refusals (below) don't count. Null when there is no more.
void* heap_take(std::size_t size);

// Makes the n-th block that the module asks for from now on (acad_malloc, acad_realloc, acutNewString,
// acutNewRb, acutBuildList) fail, once, for tests of what it does then; 0: none. What the host makes for the
// lists that it hands out isn't counted. Answers how far off the refusal asked for before still is; 0: it
// has come.
long heap_refuse(long nth);
// Counts one request; true: it is the one to be refused.
bool heap_refuses();

// Views of drawing objects that are open (made or opened, not yet closed or deleted).
std::size_t live_views();
void count_view(int change);

} // namespace host
