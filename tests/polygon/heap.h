// heap.h: the heap of these tests.
#pragma once

namespace test_heap
{
int live_blocks();
// The N-th allocation from now fails (1: the next one); 0: none does.
void fail_at(int n);
} // namespace test_heap
