// compare_host.h: the host of the comparison: a heap that is given back as a whole and may end, a break key, a
// message line and the crossing of two segments.
#pragma once

#include <string>

namespace compare_host
{
// The N-th poll of the break key from now answers yes, once; 0: none does.
void break_at(int n);
std::string take_text();
// The heap has room for so many more blocks; -1: no end of them. `again`: only the next one is refused.
void heap_ends_after(int more, bool again = false);
int blocks_asked_for(); // since then
int live_blocks();
void give_all_back();
} // namespace compare_host
