// growth.h: whether work takes time in proportion to its size. Compared is the processor time of this thread
// with that of a 32nd of the work, so neither a slow machine nor a busy one makes a difference.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <functional>

inline double processor_seconds(const std::function<void(int)>& work, int size)
{
    timespec before = {}, after = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &before);
    work(size);
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &after);
    return double(after.tv_sec - before.tv_sec) + 1e-9 * double(after.tv_nsec - before.tv_nsec);
}

// `size` is large enough for squared cost to show: it is about 1000 times that of the 32nd, where caches and
// a logarithm make of 32 no more than 100. What doesn't look proportional is measured again.
inline testing::AssertionResult grows_in_proportion(const std::function<void(int)>& work, int size)
{
    constexpr int PART = 32;
    constexpr double LIMIT = 200;
    double few = processor_seconds(work, size / PART);
    for (int run = 0; run < 2; ++run)
        few = std::min(few, processor_seconds(work, size / PART));
    double ratio = processor_seconds(work, size) / few;
    for (int run = 0; run < 3 && ratio > LIMIT; ++run)
        ratio = std::min(ratio, processor_seconds(work, size) / few);
    if (ratio <= LIMIT)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << PART << " times the work takes " << ratio << " times as long";
}
