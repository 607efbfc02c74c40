#include "polygon/segment_boxes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <iomanip>
#include <random>

#include "tests/polygon/heap.h"
#include "tests/polygon/random_segments.h"

namespace
{

std::vector<pg_segment> segments_of(const pg_node* chain)
{
    std::vector<pg_segment> segments;
    for (; chain && chain->next; chain = chain->next)
        segments.push_back(pg_segment_at(*chain));
    return segments;
}

bool holds(const pg_box& box, const double* point, double slack = 0.0)
{
    return pg_boxes_meet(box, {point[0] - slack, point[1] - slack, point[0] + slack, point[1] + slack});
}

// Of places that are computed about the arcs' centres.
double last_digits(const pg_segment& a, const pg_segment& b)
{
    return 1e-15 *
           (a.radius + std::hypot(a.centre[0], a.centre[1]) + b.radius + std::hypot(b.centre[0], b.centre[1]));
}

bool has_bounds(const pg_box& box)
{
    return box.x1 - box.x0 < 1e100;
}

// The boxes of segments that have points meet, and bounded ones hold the points.
void check_pairs(const std::vector<pg_segment>& segments, int* met)
{
    pg_box_scale scale{};
    for (const pg_segment& s : segments)
        pg_scale_add(&scale, s);
    std::vector<pg_box> boxes;
    for (const pg_segment& s : segments)
        boxes.push_back(pg_segment_box(s, scale));
    for (std::size_t k = 0; k < segments.size(); ++k)
        for (std::size_t m = 0; m < segments.size(); ++m) {
            const pg_segment &a = segments[k], &b = segments[m];
            const pg_box &box_a = boxes[k], &box_b = boxes[m];
            double points[2][3];
            const int count = pg_segment_points(a, b, points);
            *met += count;
            bool fine = count == 0 || pg_boxes_meet(box_a, box_b);
            for (int i = 0; i < count && has_bounds(box_a) && has_bounds(box_b); ++i)
                fine = fine && holds(box_a, points[i], last_digits(a, b)) &&
                       holds(box_b, points[i], last_digits(a, b));
            ASSERT_TRUE(fine) << std::setprecision(17) << count << " points, " << points[0][0] << ' '
                              << points[0][1] << "\na " << a.p[0] << ' ' << a.p[1] << ' ' << a.q[0] << ' '
                              << a.q[1] << ' ' << a.bulge << "\nb " << b.p[0] << ' ' << b.p[1] << ' ' << b.q[0]
                              << ' ' << b.q[1] << ' ' << b.bulge;
        }
}

TEST(SegmentBoxes, HoldEveryPointThatIsAnswered)
{
    for (const place& at : PLACES)
        for (unsigned seed = 1; seed <= 6000; ++seed) {
            SCOPED_TRACE(seed);
            std::mt19937 random(seed);
            int met = 0;
            const auto spots = seed % 2 ? ordinary_chain(random, 24) : nasty_chain(random, 24);
            check_pairs(segments_of(make_chain(spots, at.x, at.y).get()), &met);
            if (HasFatalFailure())
                return;
            EXPECT_GT(met, 0);
        }
}

// A crossing told in the small circle, far from its arc.
TEST(SegmentBoxes, HoldThePointOfAnArcThatBarelyDipsIntoASmallOne)
{
    int inside = 0;
    for (double depth = 0.0; depth < 1.0; depth += 0.01) {
        const double r = 1e6, b = std::tan(0.001 / 4.0);
        const double x = r * std::sin(0.0005), y = r * std::cos(0.0005);
        // Clockwise over the top at (0, r); the small one of radius 1 dips into it by `depth`; the line through
        // the crossings stays within 1e-6 of the top.
        const chain_ptr big = make_chain({{-x, y, -b}, {x, y}});
        const double centre = r + 1.0 - depth;
        const chain_ptr small = make_chain({{-0.6, centre - 0.8, 1.0 / 3.0}, {0.6, centre - 0.8}});
        std::vector<pg_segment> segments = segments_of(big.get());
        segments.push_back(segments_of(small.get())[0]);
        int met = 0;
        check_pairs(segments, &met);
        inside += met > 2; // more than each with itself
    }
    EXPECT_GT(inside, 50);
}

TEST(SegmentBoxes, AreTightAroundOrdinarySegments)
{
    const auto segments = segments_of(make_chain({{0, 0}, {10, 0, 1}, {10, 4}}).get());
    pg_box_scale scale{};
    for (const pg_segment& s : segments)
        pg_scale_add(&scale, s);
    EXPECT_FALSE(holds(pg_segment_box(segments[0], scale), std::data({5.0, 0.01, 0.0})));
    EXPECT_TRUE(holds(pg_segment_box(segments[1], scale), std::data({12.0, 2.0, 0.0})));
    EXPECT_FALSE(holds(pg_segment_box(segments[1], scale), std::data({12.1, 2.0, 0.0})));
}

TEST(SegmentBoxes, TreeFindsEveryBoxInOrder)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> place(0, 10), size(0, 2);
    for (int count = 0; count <= 40; ++count) {
        const int live = test_heap::live_blocks();
        pg_box_tree tree = pg_boxes_new(count);
        std::vector<pg_box> boxes;
        for (int i = 0; i < count; ++i) {
            const double x = place(random), y = place(random);
            boxes.push_back({x, y, x + size(random), y + size(random)});
            pg_boxes_set(&tree, i, boxes.back());
        }
        std::vector<bool> gone(boxes.size());
        for (int round = 0; round < 50; ++round) {
            const double x = place(random), y = place(random);
            const pg_box asked = round % 10 == 0 ? pg_box{-1, -1, 99, 99} : pg_box{x, y, x + 1, y + 1};
            int i = pg_boxes_next(tree, asked, round % 3);
            for (int j = round % 3; j < count; ++j)
                if (!gone[static_cast<std::size_t>(j)] &&
                    pg_boxes_meet(asked, boxes[static_cast<std::size_t>(j)])) {
                    EXPECT_EQ(i, j);
                    i = pg_boxes_next(tree, asked, j + 1);
                }
            EXPECT_EQ(i, -1);
            if (round % 5 == 4 && count > 0) {
                const int drop = static_cast<int>(random() % static_cast<unsigned>(count));
                pg_boxes_remove(&tree, drop);
                gone[static_cast<std::size_t>(drop)] = true;
            }
        }
        pg_boxes_free(&tree);
        EXPECT_EQ(test_heap::live_blocks(), live);
    }
}

TEST(SegmentBoxes, ATreeWithoutMemoryFindsNothing)
{
    test_heap::fail_at(1);
    pg_box_tree tree = pg_boxes_new(5);
    EXPECT_EQ(tree.nodes, nullptr);
    EXPECT_EQ(pg_boxes_next(tree, {0, 0, 1, 1}, 0), -1);
    pg_boxes_free(&tree);
}

// A removed box is not met even by a box without bounds.
TEST(SegmentBoxes, UnboundedBoxMeetsAllButRemovedOnes)
{
    const chain_ptr chain = make_chain({{0, 0}, {NAN, 0}});
    const pg_box unbounded = pg_segment_box(pg_segment_at(*chain), {});
    pg_box_tree tree = pg_boxes_new(2);
    pg_boxes_set(&tree, 0, unbounded);
    pg_boxes_set(&tree, 1, unbounded);
    EXPECT_EQ(pg_boxes_next(tree, {1e9, 0, 1e9, 0}, 0), 0);
    pg_boxes_remove(&tree, 0);
    EXPECT_EQ(pg_boxes_next(tree, unbounded, 0), 1);
    pg_boxes_remove(&tree, 1);
    EXPECT_EQ(pg_boxes_next(tree, unbounded, 0), -1);
    pg_boxes_free(&tree);
}

} // namespace
