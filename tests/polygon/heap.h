// heap.h: the heap and the break key of these tests.
#pragma once

namespace test_heap
{
int live_blocks();
// The N-th allocation from now fails (1: the next one); 0: none does.
void fail_at(int n);
// The N-th poll of the break key from now answers yes, once; 0: none does.
void break_at(int n);
} // namespace test_heap
