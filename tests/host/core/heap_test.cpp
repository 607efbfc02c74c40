#include "host/core/heap.h"

#include <gtest/gtest.h>

#include <cstring>

#include "hostapi/ads.h"

TEST(Heap, CountsBlocksAndBytesUntilTheyAreGivenBack)
{
    const std::size_t blocks = host::heap_live_blocks(), bytes = host::heap_live_bytes();
    void* a = acad_malloc(10);
    void* b = acad_malloc(0);
    EXPECT_EQ(host::heap_live_blocks(), blocks + 2);
    EXPECT_EQ(host::heap_live_bytes(), bytes + 10);
    acad_free(a);
    acad_free(b);
    acad_free(nullptr);
    EXPECT_EQ(host::heap_live_blocks(), blocks);
    EXPECT_EQ(host::heap_live_bytes(), bytes);
}

TEST(Heap, ReallocKeepsContentsAndCount)
{
    const std::size_t blocks = host::heap_live_blocks();
    char* text = static_cast<char*>(acad_realloc(nullptr, 4));
    std::memcpy(text, "abc", 4);
    text = static_cast<char*>(acad_realloc(text, 4000));
    EXPECT_STREQ(text, "abc");
    EXPECT_EQ(host::heap_live_blocks(), blocks + 1);
    acad_free(text);
    EXPECT_EQ(host::heap_live_blocks(), blocks);
}

TEST(Heap, RefusesTheNthRequestOfTheModule)
{
    const std::size_t blocks = host::heap_live_blocks();
    host::heap_refuse(3);
    void* first = acad_malloc(1);
    char* second = nullptr;
    EXPECT_EQ(acutNewString("a", &second), RTNORM);
    EXPECT_EQ(acad_malloc(1), nullptr);
    EXPECT_EQ(host::heap_refuse(0), 0);
    for (const auto& refused :
         {+[] { return acad_realloc(nullptr, 1); }, +[] { return static_cast<void*>(acutNewRb(RTSHORT)); },
          +[] { return static_cast<void*>(acutBuildList(RTSHORT, 1, 0)); }}) {
        host::heap_refuse(1);
        EXPECT_EQ(refused(), nullptr);
    }
    host::heap_refuse(5);
    acad_free(acad_realloc(first, 2));
    EXPECT_EQ(host::heap_refuse(0), 4) << "what a list of the host's own takes isn't counted";
    acad_free(second);
    EXPECT_EQ(host::heap_live_blocks(), blocks);
}

TEST(HeapDeathTest, BlockGivenBackTwiceStopsTheProgram)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    alignas(16) char not_ours[64] = {};
    EXPECT_DEATH(acad_free(not_ours + 32), "not a live block");
}
