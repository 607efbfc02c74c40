// collection.h: a fixture that sees to it that all memory is given back.
#pragma once

#include <gtest/gtest.h>

#include "tests/polygon/heap.h"

class Collection : public testing::Test
{
protected:
    void SetUp() override { printed_text(); }
    void TearDown() override
    {
        test_heap::fail_at(0);
        EXPECT_EQ(test_heap::live_blocks(), 0);
    }
};
