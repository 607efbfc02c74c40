#include "tests/polygon/heap.h"

#include <cstdlib>

#include "hostapi/ads.h"

namespace
{
int live = 0;
int until_failure = 0;
int until_break = 0;
} // namespace

int test_heap::live_blocks()
{
    return live;
}

void test_heap::fail_at(int n)
{
    until_failure = n;
}

void test_heap::break_at(int n)
{
    until_break = n;
}

int acedUsrBrk()
{
    return until_break > 0 && --until_break == 0 ? 1 : 0;
}

void* acad_malloc(std::size_t size)
{
    if (until_failure > 0 && --until_failure == 0)
        return nullptr;
    ++live;
    return std::malloc(size);
}

void acad_free(void* block)
{
    if (block)
        --live;
    std::free(block);
}
