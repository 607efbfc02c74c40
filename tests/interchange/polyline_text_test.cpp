// Polylines as lines of a file.
#include "interchange/polyline_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <random>

#include "interchange/polyline_file.h"
#include "tests/drawing/chains.h"

namespace
{

struct text_case {
    const char* name;
    line_form form;
    std::vector<corner> chain;
    bool closed;
    int color;
    const char* expected;
};

TEST(PolylineText, Cases)
{
    const std::vector<corner> bend = {{1.005, 2.5, 3}, {-4, 5.555, 6.25}, {7, 8, 9}};
    const text_case cases[] = {
        {"own with z",
         {1, true},
         bend,
         false,
         4,
         "POLYLINE,4\n1.00,2.50,3.00\n-4.00,5.55,6.25\n7.00,8.00,9.00\n"},
        {"own without z", {1, false}, bend, false, 15, "POLYLINE,15\n1.00,2.50\n-4.00,5.55\n7.00,8.00\n"},
        {"own, closed",
         {1, true},
         {{1, 2, 3}, {4, 5, 6}},
         true,
         0,
         "POLYLINE,0\n4.00,5.00,6.00\n1.00,2.00,3.00\n4.00,5.00,6.00\n"},
        {"own without z, closed",
         {1, false},
         {{1, 2, 3}, {4, 5, 6}},
         true,
         0,
         "POLYLINE,0\n4.00,5.00\n1.00,2.00\n4.00,5.00\n"},
        {"DTM", {2, true}, {{1, 2, 3}, {4, 5, 6}}, false, 4, "2\n1.00,2.00,3.00\n4.00,5.00,6.00\nEND\n"},
        {"DTM, closed, always with z",
         {2, false},
         {{1, 2, 3}, {4, 5, 6}},
         true,
         4,
         "2\n4.00,5.00,6.00\n1.00,2.00,3.00\n4.00,5.00,6.00\nEND\n"},
        {"MicroStation",
         {0, true},
         {{1, 2, 3}, {4, 5, 6}},
         false,
         4,
         "1.000000   2.000000   3.000000   1\n4.000000   5.000000   6.000000   0\n"},
        {"MicroStation, closed: two blanks before the first flag",
         {0, false},
         {{1, 2, 3}, {4, 5, 6}},
         true,
         4,
         "4.000000   5.000000   6.000000  1\n1.000000   2.000000   3.000000   0\n4.000000   5.000000   "
         "6.000000   0\n"},
        {"one vertex, closed", {1, false}, {{1, 2, 3}}, true, 1, "POLYLINE,1\n1.00,2.00\n1.00,2.00\n"},
    };
    for (const text_case& c : cases) {
        std::string text = "before\n";
        add_polyline(text, c.form, make_vertices(c.chain).get(), c.closed, c.color);
        EXPECT_EQ(text, std::string("before\n") + c.expected) << c.name;
    }
}

TEST(PolylineText, DigitsAreThoseOfPrintf)
{
    std::mt19937_64 random(73);
    std::vector<double> values = {0.0,
                                  -0.0,
                                  0.005,
                                  0.015,
                                  0.125,
                                  -0.001,
                                  2.675,
                                  1e15,
                                  -1e22,
                                  1e300,
                                  640000.005,
                                  std::numeric_limits<double>::max(),
                                  std::numeric_limits<double>::denorm_min()};
    std::uniform_real_distribution<double> grid(-6e6, 6e6);
    for (int i = 0; i < 20000; ++i)
        values.push_back(grid(random));
    for (int i = 0; i < 20000; ++i)
        values.push_back(std::round(grid(random)) / 1000 + 0.0005); // near ties
    for (const double value : values) {
        const auto chain = make_vertices({{0, 0}});
        chain->x = chain->y = value; // a minus sign before 0 stays
        std::string text;
        add_polyline(text, {0, true}, chain.get(), false, 0);
        char expected[1024];
        std::snprintf(expected, sizeof expected, "%.6f   %.6f   %.6f   %d\n", value, value, 0.0, 1);
        ASSERT_EQ(text, expected);
        text.clear();
        add_polyline(text, {2, true}, chain.get(), false, 0);
        std::snprintf(expected, sizeof expected, "2\n%.2f,%.2f,%.2f\nEND\n", value, value, 0.0);
        ASSERT_EQ(text, expected);
    }
}

} // namespace
