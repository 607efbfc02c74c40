// Colours of the product's own polyline files.
#include "interchange/color_codes.h"

#include <gtest/gtest.h>

namespace
{

TEST(ColorCodes, TheSevenStandardColoursHaveCodesOfTheirOwn)
{
    const int pairs[][2] = {{1, 4}, {2, 14}, {3, 2}, {4, 3}, {5, 1}, {6, 5}, {7, 15}};
    for (const auto& p : pairs) {
        EXPECT_EQ(file_color_of(p[0]), p[1]);
        EXPECT_EQ(host_color_of(p[1]), p[0]);
    }
}

TEST(ColorCodes, OthersPassUnchanged)
{
    for (const int color : {0, 8, 9, 13, 16, 255, 256, -3, 1000}) {
        EXPECT_EQ(file_color_of(color), color);
        EXPECT_EQ(host_color_of(color), color);
    }
    EXPECT_EQ(file_color_of(14), 14);
    EXPECT_EQ(file_color_of(15), 15);
    EXPECT_EQ(host_color_of(6), 6);
    EXPECT_EQ(host_color_of(7), 7);
}

} // namespace
