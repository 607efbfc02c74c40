// Barriers split at points that lie on them.
#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

#include "tests/tin/survey.h"
#include "tin/barriers.h"

namespace
{

using pairs = std::vector<std::pair<int, int>>;

// Hangs the points in the order given, which must be the reverse of reading, and splits.
pairs split(survey& s, const std::vector<int>& waiting)
{
    tin_point* tree = s.network.points;
    tin_point* head = nullptr;
    for (std::size_t i = waiting.size(); i-- > 0;) {
        s.points[std::size_t(waiting[i])]->next = head;
        head = s.points[std::size_t(waiting[i])];
    }
    s.network.points = head;
    tin_split_barriers(&s.network);
    s.network.points = tree;
    pairs found;
    for (const tin_barrier* b = s.network.barriers; b; b = b->next) {
        const auto number = [&](const tin_point* p) {
            return int(std::find(s.points.begin(), s.points.end(), p) - s.points.begin());
        };
        found.push_back({number(b->from), number(b->to)});
    }
    return found;
}

int partner_count(const tin_point* p)
{
    int count = 0;
    for (const tin_link* link = p->partners; link; link = link->next)
        ++count;
    return count;
}

TEST(TinSplit, HeadIsSplitAndItsLowerHalfFollowsTheNextOne)
{
    survey s;
    s.offer_all({{0, 0}, {10, 10}, {5, 5}, {0, 20}, {10, 30}});
    s.barrier(3, 4);
    s.barrier(0, 1);
    EXPECT_EQ(split(s, {4, 3, 2, 1, 0}), (pairs{{3, 4}, {2, 0}, {1, 2}}));
    EXPECT_EQ(partner_count(s.points[0]), 1);
    EXPECT_EQ(partner_count(s.points[1]), 1);
    EXPECT_EQ(partner_count(s.points[2]), 2);
}

TEST(TinSplit, BarrierInTheListIsReplacedInItsPlace)
{
    survey s;
    s.offer_all({{0, 0}, {10, 10}, {5, 5}, {0, 20}, {10, 30}});
    s.barrier(0, 1);
    s.barrier(3, 4);
    EXPECT_EQ(split(s, {4, 3, 2, 1, 0}), (pairs{{3, 4}, {2, 0}, {1, 2}}));
}

TEST(TinSplit, OnlyBarrierIsSplitUntilAHalfIsPassedBy)
{
    survey s;
    s.offer_all({{0, 0}, {10, 10}, {2, 2}, {4, 4}, {6, 6}, {8, 8}});
    s.barrier(0, 1);
    // 8,8 comes first; the half below it stands behind the head, is split at 6,6, and 6,6 to 0,0 is passed by.
    EXPECT_EQ(split(s, {5, 4, 3, 2, 1, 0}), (pairs{{1, 5}, {4, 0}, {5, 4}}));
}

TEST(TinSplit, LowerHalfIsNotLookedAtAgain)
{
    survey s;
    s.offer_all({{0, 0}, {10, 10}, {2, 2}, {8, 8}, {0, 20}, {10, 30}});
    s.barrier(0, 1);
    s.barrier(4, 5); // the head
    EXPECT_EQ(split(s, {5, 4, 3, 2, 1, 0}), (pairs{{4, 5}, {3, 0}, {1, 3}}));
}

TEST(TinSplit, UpperHalfIsLookedAtAgain)
{
    survey s;
    s.offer_all({{0, 0}, {10, 10}, {8, 8}, {2, 2}, {0, 20}, {10, 30}});
    s.barrier(0, 1);
    s.barrier(4, 5);
    EXPECT_EQ(split(s, {5, 4, 3, 2, 1, 0}), (pairs{{4, 5}, {3, 0}, {2, 3}, {1, 2}}));
}

TEST(TinSplit, PointsOnABarrierAndBesideIt)
{
    const struct {
        const char* name;
        place from, to, r;
        bool splits;
    } cases[] = {
        {"on it", {0, 0}, {10, 10}, {5, 5}, true},
        {"within the band", {0, 0}, {10, 10}, {5, 5 + 9e-7}, true},
        {"beyond the band", {0, 0}, {10, 10}, {5, 5 + 1.1e-6}, false},
        {"below the band", {0, 0}, {10, 10}, {5, 5 - 1.1e-6}, false},
        {"beyond an end", {0, 0}, {10, 10}, {11, 11}, false},
        {"falling", {0, 10}, {10, 0}, {5, 5}, true},
        {"vertical", {5, 0}, {5, 10}, {5, 3}, true},
        {"vertical, all but on it", {5, 0}, {5, 10}, {5 + 1e-9, 3}, false},
        {"vertical, beyond", {5, 0}, {5, 10}, {5, 11}, false},
        {"level", {0, 5}, {10, 5}, {3, 5}, true},
        {"level, all but on it", {0, 5}, {10, 5}, {3, 5 + 1e-7}, false},
    };
    for (const auto& c : cases)
        for (const bool turned : {false, true}) {
            survey s;
            s.offer_all({c.from, c.to, c.r});
            s.barrier(turned ? 1 : 0, turned ? 0 : 1);
            EXPECT_EQ(split(s, {2, 1, 0}).size(), c.splits ? 2u : 1u) << c.name;
        }
}

TEST(TinSplit, IsToldUnlessQuiet)
{
    survey s;
    s.offer_all({{0, 0}, {10, 10}});
    split(s, {1, 0});
    EXPECT_EQ(printed(), "");
    s.network.quiet = 0;
    split(s, {1, 0});
    EXPECT_EQ(printed(), "\nFinding points on barriers ...");
}

TEST(TinSplit, RunSplitsOnlyWhenAsked)
{
    for (const int asked : {0, 1}) {
        survey s;
        s.network.split_on_barriers = asked;
        s.offer_all({{0, 0}, {10, 10}, {5, 5}, {0, 10}, {10, 1}});
        s.barrier(0, 1);
        s.run();
        EXPECT_EQ(s.network.barriers->next != nullptr, asked == 1);
        EXPECT_TRUE(has_edge(s.network, s.points[0], s.points[2]));
        EXPECT_TRUE(has_edge(s.network, s.points[1], s.points[2]));
    }
}

// A place far out takes the digits from all others, which then are one place.
TEST(TinSplit, PointsThatFallTogetherEnd)
{
    survey s;
    s.network.split_on_barriers = 1;
    s.offer_all({{1, 1}, {2, 2}, {3, 3}, {4, 5}, {5, 4}, {-1e300, -1e300}, {2.5, 9}});
    s.barrier(0, 1);
    s.barrier(2, 5);
    s.run();
    EXPECT_EQ(s.network.point_count, 7);
    EXPECT_NE(s.network.triangles, nullptr);
}

} // namespace
