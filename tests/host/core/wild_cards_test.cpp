#include <gtest/gtest.h>

#include <string>

#include "hostapi/ads.h"

namespace
{

struct wild_case {
    const char* text;
    const char* pattern;
    bool fits;
};
class WildCards : public testing::TestWithParam<wild_case>
{
};

TEST_P(WildCards, MatchByTheRules)
{
    EXPECT_EQ(acutWcMatch(GetParam().text, GetParam().pattern) == RTNORM, GetParam().fits)
        << GetParam().text << " against " << GetParam().pattern;
}

INSTANTIATE_TEST_SUITE_P(
    Table, WildCards,
    testing::Values(
        wild_case{"WALL", "WALL", true}, wild_case{"WALL", "wall", false}, wild_case{"WALL", "W*", true},
        wild_case{"WALL", "*L", true}, wild_case{"WALL", "*A*", true}, wild_case{"WALL", "*X*", false},
        wild_case{"", "*", true}, wild_case{"", "", true}, wild_case{"A", "", false},
        wild_case{"P12", "P##", true}, wild_case{"P1X", "P##", false}, wild_case{"PA", "P@", true},
        wild_case{"P1", "P@", false}, wild_case{"P-", "P.", true}, wild_case{"PA", "P.", false},
        wild_case{"AB", "A?", true}, wild_case{"A", "A?", false}, wild_case{"AB", "A[ABC]", true},
        wild_case{"AD", "A[ABC]", false}, wild_case{"AD", "A[~ABC]", true}, wild_case{"A5", "A[0-9]", true},
        wild_case{"AX", "A[0-9]", false}, wild_case{"A-", "A[-09]", true}, wild_case{"A*", "A`*", true},
        wild_case{"AB", "A`*", false}, wild_case{"B", "A,B,C", true}, wild_case{"D", "A,B,C", false},
        wild_case{"A,B", "A`,B", true}, wild_case{"WALL", "~W*", false}, wild_case{"ROAD", "~W*", true},
        wild_case{"ROAD", "~W*,ROAD", true}, wild_case{"A[", "A[", true}, wild_case{"a,b", "[a,]`,b", true},
        wild_case{"xaxbxc", "*a*b*c", true}, wild_case{"xaxbx", "*a*b*c", false}));

TEST(WildCards, ManyStarsStayQuick)
{
    const std::string text(20000, 'a');
    EXPECT_EQ(acutWcMatch(text.c_str(), "*a*a*a*a*a*a*a*a*b"), RTERROR);
}

} // namespace
