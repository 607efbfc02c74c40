// The segment of a pick on each kind of object.
#include "drawing/picked_segment.h"

#include <gtest/gtest.h>

#include <cmath>

#include "hostapi/ads.h"
#include "tests/drawing/drawing_case.h"

namespace
{

using host::db::object_id;

struct segment_ends {
    corner a, b; // compared by their places
    bool operator==(const segment_ends& other) const
    {
        const auto same = [](const corner& p, const corner& q) {
            return p.x == q.x && p.y == q.y && p.z == q.z;
        };
        return same(a, other.a) && same(b, other.b);
    }
};

std::ostream& operator<<(std::ostream& out, const segment_ends& s)
{
    return out << s.a.x << ',' << s.a.y << ',' << s.a.z << " - " << s.b.x << ',' << s.b.y << ',' << s.b.z;
}

class PickedSegment : public drawing_case
{
protected:
    // A U of three legs of 10: up, right, down. `head` names type and flags.
    object_id heavy(const std::string& head, const std::string& vertex, const char* z = "0")
    {
        EXPECT_EQ(make("0 POLYLINE;66 1;" + head), RTNORM);
        for (const char* place : {"0,0,", "0,10,", "10,10,", "10,0,"})
            EXPECT_EQ(make("0 VERTEX;" + vertex + "10 " + place + z), RTNORM);
        EXPECT_EQ(make("0 SEQEND"), RTNORM);
        return last();
    }
    object_id light(const std::string& flags)
    {
        return made("0 LWPOLYLINE;100 AcDbEntity;8 0;100 AcDbPolyline;90 4;" + flags +
                    "10 0,0;10 0,10;42 0.5;10 10,10;10 10,0");
    }

    // False, with `told` filled, when there is none.
    bool pick(object_id id, double x, double y, segment_ends* ends)
    {
        const ads_point at = {x, y, 0.0};
        picked_segment segment{};
        printed.clear();
        if (!read_picked_segment(name_of(id), at, &segment)) {
            EXPECT_EQ(segment.chain, nullptr);
            return false;
        }
        const vertex_chain chain(segment.chain);
        *ends = {corners_of(segment.a).front(), corners_of(segment.b).front()};
        EXPECT_EQ(printed, "");
        return true;
    }
    segment_ends picked(object_id id, double x, double y)
    {
        segment_ends ends{};
        EXPECT_TRUE(pick(id, x, y, &ends)) << printed;
        return ends;
    }
    std::string refused(object_id id, double x, double y)
    {
        segment_ends ends{};
        EXPECT_FALSE(pick(id, x, y, &ends)) << ends;
        return printed;
    }
};

TEST_F(PickedSegment, OfALineIsTheLine)
{
    const object_id line = made("0 LINE;8 0;10 1,2,3;11 4,5,6");
    const segment_ends whole = {{1, 2, 3}, {4, 5, 6}};
    EXPECT_EQ(picked(line, 1, 2), whole);
    EXPECT_EQ(picked(line, 4, 5), whole);
    EXPECT_EQ(picked(line, 1000, -1000), whole); // wherever it was picked
}

TEST_F(PickedSegment, OfAPolylineIsTheLegBesideThePick)
{
    const object_id kinds[] = {light("70 0;"), heavy("70 0;", ""), heavy("70 8;", "70 32;")};
    for (const object_id id : kinds) {
        EXPECT_EQ(picked(id, 1, 5), (segment_ends{{0, 0}, {0, 10}})) << id;
        EXPECT_EQ(picked(id, -20, 5), (segment_ends{{0, 0}, {0, 10}})) << id;
        EXPECT_EQ(picked(id, 9, 2), (segment_ends{{10, 10}, {10, 0}})) << id;
        const segment_ends top = picked(id, 5, 11);
        EXPECT_EQ(top, (segment_ends{{0, 10}, {10, 10}})) << id;
        EXPECT_EQ(top.a.bulge, id == kinds[0] ? 0.5 : 0.0) << id;
    }
}

TEST_F(PickedSegment, HasItsElevations)
{
    EXPECT_EQ(picked(heavy("70 8;", "70 32;", "7"), 1, 5), (segment_ends{{0, 0, 7}, {0, 10, 7}}));
    EXPECT_EQ(picked(light("70 0;38 4;"), 1, 5), (segment_ends{{0, 0, 4}, {0, 10, 4}}));
}

TEST_F(PickedSegment, OfAClosedPolylineIsNeverTheClosingLeg)
{
    for (const object_id id : {light("70 1;"), heavy("70 1;", ""), heavy("70 9;", "70 32;")}) {
        EXPECT_EQ(picked(id, 1, 5), (segment_ends{{0, 0}, {0, 10}})) << id;
        const segment_ends by_the_closing_leg = picked(id, 5, 0.5); // two legs are as far: the later one
        EXPECT_EQ(by_the_closing_leg, (segment_ends{{10, 10}, {10, 0}})) << id;
        EXPECT_EQ(refused(id, -5, -5), NO_SEGMENT_THERE) << id;
    }
}

TEST_F(PickedSegment, BesideNoLegIsTold)
{
    for (const object_id id : {light("70 0;"), heavy("70 0;", ""), heavy("70 8;", "70 32;")}) {
        EXPECT_EQ(refused(id, -5, -5), "\nError: no segment of the polyline at that point") << id;
        EXPECT_EQ(refused(id, 30, 30), NO_SEGMENT_THERE) << id;
    }
}

TEST_F(PickedSegment, OfAPolylineWithoutLengthIsTold)
{
    const object_id point = made("0 LWPOLYLINE;100 AcDbEntity;8 0;100 AcDbPolyline;90 2;70 0;10 3,3;10 3,3");
    EXPECT_EQ(refused(point, 3, 3), NO_SEGMENT_THERE);
}

TEST_F(PickedSegment, OfAnotherTypeIsTold)
{
    const object_id others[] = {made("0 CIRCLE;10 0,0,0;40 2"), made("0 ARC;10 0,0,0;40 2;50 0;51 1"),
                                made("0 TEXT;10 0,0,0;40 2;1 LINE"), made("0 POINT;10 0,0,0")};
    for (const object_id id : others)
        EXPECT_EQ(refused(id, 0, 0), "\nError: selection must be a LINE or POLYLINE") << id;
}

TEST_F(PickedSegment, OfAnErasedObjectIsTold)
{
    const object_id line = made("0 LINE;8 0;10 1,2,3;11 4,5,6");
    ASSERT_EQ(erase(line), RTNORM);
    EXPECT_EQ(refused(line, 1, 2), NOT_A_LINE_OR_POLYLINE);
}

TEST_F(PickedSegment, GivesTheHeapBackWhenItIsExhausted)
{
    for (const object_id id : {made("0 LINE;8 0;10 0,0,0;11 0,10,0"), light("70 0;"), heavy("70 0;", "")}) {
        int failures = 0;
        for (long nth = 1;; ++nth) {
            const std::size_t before = host::heap_live_blocks();
            host::heap_refuse(nth);
            segment_ends ends{};
            const bool found = pick(id, 1, 5, &ends);
            const bool refused_one = host::heap_refuse(0) == 0;
            EXPECT_EQ(host::heap_live_blocks(), before) << nth;
            if (!refused_one) {
                EXPECT_TRUE(found);
                break;
            }
            EXPECT_FALSE(found) << nth;
            EXPECT_NE(printed, "");
            ++failures;
        }
        EXPECT_GE(failures, 2) << id;
    }
}

TEST_F(PickedSegment, ListOfALineThatLacksAnEndHasNoChain)
{
    const ads_point start = {1, 2, 3}, end = {4, 5, 6};
    resbuf* whole = acutBuildList(RTDXF0, "LINE", 10, start, 11, end, 0);
    const vertex_chain chain(pl_read_line(whole));
    EXPECT_EQ(corners_of(chain.get()), (std::vector<corner>{{1, 2, 3}, {4, 5, 6}}));
    acutRelRb(whole);
    for (const int group : {10, 11}) {
        resbuf* half = acutBuildList(RTDXF0, "LINE", group, start, 0);
        EXPECT_EQ(pl_read_line(half), nullptr) << group;
        acutRelRb(half);
    }
    EXPECT_EQ(pl_read_line(nullptr), nullptr);
}

TEST_F(PickedSegment, ListsAreToldApartByTheirType)
{
    const ads_name name = {1, 2};
    struct type_case {
        const char* type;
        bool line, polyline, arc;
    };
    for (const type_case& c : {type_case{"LINE", true, false, false},
                               {"POLYLINE", false, true, false},
                               {"LWPOLYLINE", false, true, false},
                               {"ARC", false, false, true},
                               {"ARC_DIMENSION", false, false, false},
                               {"MLINE", false, false, false},
                               {"XLINE", false, false, false},
                               {"line", false, false, false},
                               {"", false, false, false}}) {
        resbuf* list = acutBuildList(-1, name, RTDXF0, c.type, 8, "LINE", 0);
        EXPECT_EQ(is_line_list(list), c.line) << c.type;
        EXPECT_EQ(is_polyline_list(list), c.polyline) << c.type;
        EXPECT_EQ(is_arc_list(list), c.arc) << c.type;
        acutRelRb(list);
    }
    EXPECT_FALSE(is_line_list(nullptr));
    EXPECT_FALSE(is_polyline_list(nullptr));
    EXPECT_FALSE(is_arc_list(nullptr));
}

TEST(PickFraction, IsThePlanDistanceFromTheFirstEnd)
{
    const vertex_chain chain = make_vertices({{0, 0, 0}, {6, 8, 100}});
    const picked_segment segment{chain.get(), chain.get(), chain->next};
    const ads_point start = {0, 0, 50}, quarter = {1.5, 2, -3}, far = {12, 16, 0}, beside = {0, 10, 0};
    EXPECT_EQ(pick_fraction(segment, start), 0.0);
    EXPECT_EQ(pick_fraction(segment, quarter), 0.25);
    EXPECT_EQ(pick_fraction(segment, far), 2.0);
    EXPECT_EQ(pick_fraction(segment, beside), 1.0); // as the crow flies, not along the segment
}

TEST(PickFraction, OfASegmentWithoutLengthIsNotFinite)
{
    const vertex_chain chain = make_vertices({{1, 1}, {1, 1}});
    const picked_segment segment{chain.get(), chain.get(), chain->next};
    const ads_point on = {1, 1, 0}, off = {2, 1, 0};
    EXPECT_TRUE(std::isnan(pick_fraction(segment, on)));
    EXPECT_TRUE(std::isinf(pick_fraction(segment, off)));
}

} // namespace
