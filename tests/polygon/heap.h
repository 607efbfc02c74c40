// heap.h: the host of these tests: a heap, a break key, a message line and a polar point.
#pragma once

#include <string>

namespace test_heap
{
int live_blocks();
// The N-th allocation from now fails (1: the next one); 0: none does.
void fail_at(int n);
// Whether that allocation has come.
bool has_failed();
// The N-th allocation from now and all behind it fail; 0: none does.
void fail_from(int n);
// The N-th poll of the break key from now answers yes, once; 0: none does.
void break_at(int n);
} // namespace test_heap

// What was printed since this was last asked; alerts as "[alert] text\n".
std::string printed_text();
