// Points beside edges in the network of src/tin and in the plain one.
#include <gtest/gtest.h>

#include "tests/tin/both_texts.h"
#include "tests/tin/edge_inputs.h"

namespace
{

using tin_inputs::input;

// Sets on which the order of the determinant's sum decides may come out in two ways.
int compared(unsigned first, unsigned last, int count)
{
    int same = 0;
    for (unsigned seed = first; seed < last; ++seed) {
        const input in = tin_inputs::edge_input(seed, count);
        const std::string expected = plain_text(in, false);
        if (expected != plain_text(in, true))
            continue;
        ++same;
        EXPECT_TRUE(expected == library_text(in)) << in.name << ", " << count;
    }
    return same;
}

TEST(TinCompareEdges, SmallSets)
{
    EXPECT_GT(compared(0, 1152, 40), 300);
}

TEST(TinCompareEdges, MiddlingSets)
{
    EXPECT_GT(compared(2000, 2192, 250), 50);
}

TEST(TinCompareEdges, LargeSets)
{
    EXPECT_GT(compared(5000, 5024, 1500), 5);
}

} // namespace
