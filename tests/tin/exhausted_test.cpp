// Runs and reading on a heap that ends at each of their requests in turn, for good or for that one request:
// they come to an end, leave the network whole, and all blocks are given back.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "common/user_break.h"
#include "hostapi/ads.h"
#include "tests/tin/compare_host.h"
#include "tests/tin/inputs.h"
#include "tin/network.h"

namespace
{

using tin_inputs::input;

// Reads the points and barriers; the caller's list becomes that of the network.
void read_in(const input& in, tin_network& n)
{
    n.contour_interval = in.interval;
    n.split_on_barriers = in.split;
    std::vector<tin_point*> taken;
    tin_point* list = nullptr;
    for (const tin_inputs::spot& s : in.points) {
        tin_point* p = tin_point_new(s.x, s.y, s.z);
        tin_point* earlier = tin_add_point(&n, p);
        taken.push_back(earlier ? earlier : p);
        if (earlier) {
            acad_free(p);
            continue;
        }
        tin_keep_point(&n, p, &list);
    }
    for (const tin_inputs::ends& e : in.barriers) {
        tin_point *from = taken[std::size_t(e[0])], *to = taken[std::size_t(e[1])];
        if (from != to)
            tin_add_barrier(&n, from, to);
    }
    n.points = list;
}

// Each triangle is once in the list, and so are those beyond its sides; no corner is missing.
bool is_whole(const tin_network& n)
{
    std::set<const tin_triangle*> all;
    for (const tin_triangle* t = n.triangles; t; t = t->next)
        if (!all.insert(t).second)
            return false;
    for (const tin_triangle* t : all)
        for (int i = 0; i < 3; ++i)
            if (!t->corner[i] || (t->side[i] && !all.count(t->side[i])))
                return false;
    return true;
}

void expect_survival(const input& in, bool again)
{
    int requests = 0;
    for (int room = 0; room <= requests; ++room) {
        {
            tin_network n;
            compare_host::heap_ends_after(-1);
            read_in(in, n);
            compare_host::heap_ends_after(room, again);
            EXPECT_EQ(tin_triangulate(&n), RTNORM);
            requests = compare_host::blocks_asked_for();
            EXPECT_TRUE(is_whole(n)) << in.name << ", room for " << room;
        }
        ASSERT_EQ(compare_host::live_blocks(), 0) << in.name << ", room for " << room;
    }
    EXPECT_GT(requests, 2 * int(in.points.size()));
    compare_host::heap_ends_after(-1);
    compare_host::take_text();
}

TEST(TinExhausted, RunsSurviveAtEachRequest)
{
    user_break_clear();
    std::map<std::string, int> of_interest = {{"barriers 3", 0},     {"both diagonals, split", 0},
                                              {"overlap, split", 0}, {"fan", 0},
                                              {"run, split", 0},     {"ring of 40", 0},
                                              {"scatter 2", 0},      {"long breaklines", 0}};
    for (const input& in : tin_inputs::all())
        if (of_interest.count(in.name)) {
            ++of_interest[in.name];
            expect_survival(in, false);
            expect_survival(in, true);
        }
    for (const auto& [name, seen] : of_interest)
        EXPECT_EQ(seen, 1) << name;
}

TEST(TinExhausted, ABarrierWithoutRoomIsNone)
{
    const int live = compare_host::live_blocks();
    {
        tin_network n;
        tin_point *list = nullptr, *from = tin_point_new(0, 0, 0), *to = tin_point_new(3, 4, 0);
        for (tin_point* p : {from, to}) {
            ASSERT_EQ(tin_add_point(&n, p), nullptr);
            tin_keep_point(&n, p, &list);
        }
        n.points = list;
        EXPECT_EQ(list, to);
        EXPECT_EQ(to->next, from);
        EXPECT_EQ(n.x_min, 0);
        EXPECT_EQ(n.x_max, 3);
        EXPECT_EQ(n.y_min, 0);
        EXPECT_EQ(n.y_max, 4);

        compare_host::heap_ends_after(0, true);
        EXPECT_FALSE(tin_add_barrier(&n, from, to));
        EXPECT_EQ(n.barriers, nullptr);
        EXPECT_EQ(from->partners, nullptr);
        EXPECT_TRUE(tin_add_barrier(&n, from, to));
        ASSERT_NE(n.barriers, nullptr);
        EXPECT_EQ(n.barriers->next, nullptr);
        ASSERT_NE(from->partners, nullptr);
        EXPECT_EQ(from->partners->point, to);
        EXPECT_EQ(to->partners->point, from);
    }
    EXPECT_EQ(compare_host::live_blocks(), live);
}

// Which points are taken doesn't depend on the heap: what speeds the reading up is done without.
TEST(TinExhausted, ReadingAnswersTheSame)
{
    const auto places = tin_inputs::with_doubles(tin_inputs::scatter(9, 1500, 30), 10);
    std::vector<int> expected;
    int requests = 1;
    for (int room = -1; room < requests; ++room) {
        std::vector<tin_point*> made;
        std::vector<int> answers;
        compare_host::heap_ends_after(-1);
        for (const tin_inputs::spot& s : places)
            made.push_back(tin_point_new(s.x, s.y, s.z));
        {
            tin_network n;
            std::map<const tin_point*, int> number = {{nullptr, -1}};
            compare_host::heap_ends_after(room);
            for (tin_point* p : made) {
                number[p] = int(number.size());
                answers.push_back(number.at(tin_add_point(&n, p)));
            }
            requests = compare_host::blocks_asked_for();
            n.points = nullptr;
        }
        if (room < 0)
            expected = answers;
        EXPECT_TRUE(answers == expected) << room;
        for (tin_point* p : made)
            acad_free(p);
        ASSERT_EQ(compare_host::live_blocks(), 0);
    }
    EXPECT_GT(std::count_if(expected.begin(), expected.end(), [](int a) { return a >= 0; }), 100);
    compare_host::heap_ends_after(-1);
}

} // namespace
