#include "host/database/geometry.h"

#include <numbers>
#include <random>

#include "host/database/spline.h"
#include "tests/host/database/lists.h"

namespace host::db
{
namespace
{

using namespace testing_lists;

box window(double x1, double y1, double x2, double y2)
{
    return {{x1, y1, 0}, {x2, y2, 0}};
}

std::string shown_box(const box& b)
{
    if (b.is_empty())
        return "empty";
    std::string text;
    for (const double value : {b.low[0], b.low[1], b.low[2], b.high[0], b.high[1], b.high[2]}) {
        char part[40];
        std::snprintf(part, sizeof part, "%s%.6g", text.empty() ? "" : " ",
                      std::fabs(value) < 1e-9 ? 0.0 : value);
        text += part;
    }
    return text;
}

struct Geometry : Drawing {
    Geometry()
    {
        for (const char* list :
             {"0 BLOCK;2 BOX;70 0;10 1,1,0", "0 LWPOLYLINE;90 4;70 1;10 1,1;10 3,1;10 3,2;10 1,2",
              "0 ATTDEF;10 50,50,0;40 1;1 unseen;2 T;3 P;70 0", "0 ENDBLK", "0 BLOCK;2 NEST;70 0;10 0,0,0",
              "0 INSERT;2 BOX;10 10,0,0", "0 ENDBLK"})
            EXPECT_EQ(make(list), RTNORM) << list;
    }
    object_id sequence(std::vector<const char*> lists)
    {
        for (const char* list : lists)
            EXPECT_EQ(make(list), RTNORM) << list;
        EXPECT_EQ(make("0 SEQEND"), RTNORM);
        return last();
    }
    std::string extents(object_id id) const { return shown_box(extents_of(db, id)); }
};

struct extents_case {
    const char *list, *extents;
};

TEST_F(Geometry, ExtentsOfEachKind)
{
    const extents_case cases[] = {
        {"0 POINT;10 1,2,3", "1 2 3 1 2 3"},
        {"0 LINE;10 1,2,3;11 -4,5,6", "-4 2 3 1 5 6"},
        {"0 LINE;10 1,2,0;11 4,5,0;39 7", "1 2 0 4 5 7"},
        {"0 CIRCLE;10 1,2,3;40 5", "-4 -3 3 6 7 3"},
        {"0 CIRCLE;10 640000,5120000,0;40 0.5", "640000 5.12e+06 0 640000 5.12e+06 0"},
        {"0 CIRCLE;10 1,2,3;40 5;210 1,0,0", "3 -4 -3 3 6 7"},
        {"0 ARC;10 0,0,0;40 2;50 0;51 1.570796326794897", "0 0 0 2 2 0"},
        {"0 ARC;10 0,0,0;40 2;50 5.497787143782138;51 0.785398163397448", "1.41421 -1.41421 0 2 1.41421 0"},
        {"0 ARC;10 0,0,0;40 2;50 0.785398163397448;51 5.497787143782138", "-2 -2 0 1.41421 2 0"},
        {"0 ARC;10 0,0,0;40 2;50 0;51 1.570796326794897;210 0,0,-1", "-2 0 0 0 2 0"},
        {"0 ELLIPSE;10 0,0,0;11 4,0,0;40 0.5", "-4 -2 0 4 2 0"},
        {"0 ELLIPSE;10 0,0,0;11 0,4,0;40 0.5;41 0;42 1.570796326794897", "-2 0 0 0 4 0"},
        {"0 LWPOLYLINE;90 3;70 0;38 9;10 0,0;10 5,0;10 5,3", "0 0 9 5 3 9"},
        {"0 LWPOLYLINE;90 2;70 0;10 0,0;42 1;10 4,0", "0 -2 0 4 0 0"},
        {"0 LWPOLYLINE;90 2;70 0;10 0,0;42 -1;10 4,0", "0 0 0 4 2 0"},
        {"0 LWPOLYLINE;90 2;70 1;10 0,0;42 1;10 4,0;42 1", "0 -2 0 4 2 0"},
        {"0 LWPOLYLINE;90 2;70 0;10 0,0;42 0.414213562373095;10 4,4", "0 0 0 4 4 0"},
        {"0 SOLID;10 0,0,0;11 4,0,0;12 0,3,0;13 4,3,0", "0 0 0 4 3 0"},
        {"0 TRACE;10 0,0,1;11 4,0,1;12 0,3,1;13 4,3,1", "0 0 1 4 3 1"},
        {"0 3DFACE;10 0,0,0;11 4,0,1;12 4,3,2;13 0,3,5", "0 0 0 4 3 5"},
        {"0 TEXT;10 1,2,0;40 2;1 abc", "1 2 0 6.33333 4 0"},
        {"0 TEXT;10 1,2,0;40 2;1 %%d%%uab", "1 2 0 6.33333 4 0"},
        {"0 TEXT;10 1,2,0;40 2;41 0.5;1 abc", "1 2 0 3.66667 4 0"},
        {"0 TEXT;10 0,0,0;11 10,10,0;40 2;1 abc;72 2;73 3", "4.66667 8 0 10 10 0"},
        {"0 TEXT;10 0,0,0;11 10,10,0;40 2;1 abc;72 1;73 2", "7.33333 9 0 12.6667 11 0"},
        {"0 TEXT;10 0,0,0;11 10,0,0;40 2;1 abc;72 5", "0 0 0 10 2 0"},
        {"0 TEXT;10 1,2,0;40 2;1 abc;50 1.570796326794897", "-1 2 0 1 7.33333 0"},
        {"0 MTEXT;100 AcDbMText;10 0,0,0;40 3;71 1;1 ab\\Pabcd", "0 -8 0 11 0 0"},
        {"0 MTEXT;100 AcDbMText;10 0,0,0;40 3;71 5;1 {a\\Lb\\l}", "-2.5 -1.5 0 2.5 1.5 0"},
        {"0 MTEXT;100 AcDbMText;10 0,0,0;40 3;71 7;41 5.4;1 abcd", "0 0 0 11 3 0"},
        {"0 MTEXT;100 AcDbMText;10 0,0,0;40 3;71 7;41 5.4;1 ab cd", "0 0 0 5 8 0"},
        {"0 MTEXT;100 AcDbMText;10 0,0,0;40 3;71 7;41 12;1 a b c abcd", "0 0 0 11 13 0"},
        {"0 INSERT;2 BOX;10 10,10,0", "10 10 0 12 11 0"},
        {"0 INSERT;2 BOX;10 10,10,0;41 2;42 3", "10 10 0 14 13 0"},
        {"0 INSERT;2 BOX;10 10,10,0;50 1.570796326794897", "9 10 0 10 12 0"},
        {"0 INSERT;2 BOX;10 10,10,0;210 0,0,-1", "-12 10 0 -10 11 0"},
        {"0 INSERT;2 BOX;10 10,10,0;70 3;71 2;44 5;45 6", "10 10 0 22 17 0"},
        {"0 INSERT;2 NEST;10 1,1,0;41 2;42 2;43 2", "21 1 0 25 3 0"},
        {"0 RAY;10 1,2,0;11 1,0,0", "1 2 0 1 2 0"},
        {"0 XLINE;10 1,2,0;11 1,0,0", "1 2 0 1 2 0"},
        {"0 LEADER;100 AcDbLeader;10 0,0,0;10 5,5,0;10 9,5,0", "0 0 0 9 5 0"},
        {"0 VIEWPORT;10 10,20,0;40 6;41 4;68 2;69 2", "7 18 0 13 22 0"},
        {"0 DIMENSION;2 BOX;10 0,0,0;70 1;13 0,0,0;14 5,0,0", "0 0 0 2 1 0"},
        {"0 DIMENSION;2 NONE;10 0,3,0;70 1;11 2,4,0;13 0,0,0;14 5,0,0", "0 0 0 5 4 0"},
        {"0 SPLINE;100 AcDbSpline;70 8;71 3;72 8;73 4;74 0;40 0;40 0;40 0;40 0;40 1;40 1;40 1;40 1;10 0,0,0;10 "
         "0,4,0;"
         "10 4,4,0;10 4,0,0",
         "0 0 0 4 3 0"},
        {"0 SPLINE;100 AcDbSpline;70 8;71 3;72 0;73 0;74 2;11 0,0,0;11 3,4,0", "0 0 0 3 4 0"},
        {"0 HATCH;100 AcDbHatch;10 0,0,2;210 0,0,1;2 SOLID;70 1;71 0;91 1;92 2;72 0;73 1;93 3;10 0,0,0;10 "
         "4,0,0;"
         "10 4,3,0;97 0;75 0;76 1;98 1;10 99,99,0",
         "0 0 2 4 3 2"},
        {"0 HATCH;100 AcDbHatch;10 0,0,0;210 0,0,1;2 ANSI31;70 0;71 0;91 1;92 1;93 2;72 1;10 -2,0,0;11 "
         "2,0,0;72 2;"
         "10 0,0,0;40 2;50 0;51 3.141592653589793;73 1;97 0;75 0;76 1;98 1;10 99,99,0",
         "-2 0 0 2 2 0"},
        {"0 HATCH;100 AcDbHatch;10 0,0,0;210 0,0,1;2 ANSI31;70 0;71 0;91 1;92 1;93 1;72 2;10 0,0,0;40 2;50 0;"
         "51 1.570796326794897;73 0;97 0;75 0",
         "0 -2 0 2 0 0"},
        {"0 GLYPH;100 AcDbGlyph;10 1,1,1;11 9,9,9;10 5,0,0", "1 0 0 5 1 1"},
    };
    for (const extents_case& each : cases)
        EXPECT_EQ(extents(made(each.list)), each.extents) << each.list;
}

TEST_F(Geometry, FarFromTheOriginExtentsKeepTheirDigits)
{
    const box b = extents_of(db, made("0 CIRCLE;10 640000,5120000,0;40 0.5"));
    EXPECT_DOUBLE_EQ(b.low[0], 639999.5);
    EXPECT_DOUBLE_EQ(b.high[1], 5120000.5);
}

TEST_F(Geometry, CodesInATextTakeNoRoom)
{
    const struct {
        const char *text, *extents;
    } cases[] = {
        {"ab", "0 0 0 5 3 0"},
        {"{\\fArial|b0|i0;ab}", "0 0 0 5 3 0"},
        {"\\H2.5x;\\C1;ab", "0 0 0 5 3 0"},
        {"a\\\\", "0 0 0 5 3 0"},
        {"a\\U+00B0", "0 0 0 5 3 0"},
        {"\\S1/2;", "0 0 0 8 3 0"},
        {"a\\", "0 0 0 5 3 0"},
        {"", "0 0 0 0 3 0"},
    };
    const object_id id = made("0 MTEXT;100 AcDbMText;10 0,0,0;40 3;71 7;1 x");
    for (const auto& each : cases) {
        *find(db.modify(id), 1) = db.text_group(1, each.text);
        EXPECT_EQ(extents(id), each.extents) << each.text;
    }
}

TEST_F(Geometry, OldPolylinesByTheirVertices)
{
    EXPECT_EQ(extents(sequence({"0 POLYLINE;70 0;10 0,0,5", "0 VERTEX;10 0,0,5;42 1", "0 VERTEX;10 4,0,5"})),
              "0 -2 5 4 0 5");
    EXPECT_EQ(extents(sequence({"0 POLYLINE;70 8", "0 VERTEX;10 0,0,1", "0 VERTEX;10 4,7,3"})), "0 0 1 4 7 3");
    // The frame of a spline doesn't show.
    EXPECT_EQ(extents(sequence({"0 POLYLINE;70 4", "0 VERTEX;10 0,90,0;70 16", "0 VERTEX;10 0,0,0;70 8",
                                "0 VERTEX;10 4,1,0;70 8"})),
              "0 0 0 4 1 0");
    EXPECT_EQ(
        extents(sequence({"0 POLYLINE;70 16;71 2;72 2", "0 VERTEX;10 0,0,0;70 64", "0 VERTEX;10 4,0,0;70 64",
                          "0 VERTEX;10 0,4,1;70 64", "0 VERTEX;10 4,4,2;70 64"})),
        "0 0 0 4 4 2");
}

TEST_F(Geometry, InsertIncludesItsAttributes)
{
    const object_id id = sequence({"0 INSERT;2 BOX;66 1;10 0,0,0", "0 ATTRIB;10 5,5,0;40 2;1 ab;2 T;70 0"});
    EXPECT_EQ(extents(id), "0 0 0 8.33333 7 0");
}

TEST_F(Geometry, BlocksThatHoldEachOtherEnd)
{
    make("0 BLOCK;2 A;70 0;10 0,0,0");
    make("0 POINT;10 1,1,0");
    make("0 ENDBLK");
    make("0 BLOCK;2 B;70 0;10 0,0,0");
    make("0 INSERT;2 A;10 5,0,0");
    make("0 ENDBLK");
    make("0 BLOCK;2 A;70 0;10 0,0,0");
    make("0 POINT;10 1,1,0");
    make("0 INSERT;2 B;10 0,5,0");
    EXPECT_EQ(make("0 ENDBLK"), RTNORM);
    EXPECT_EQ(extents(made("0 INSERT;2 A;10 0,0,0")), "1 1 0 1 1 0");
}

// Each level refers ten times to the next: all of it would be ten thousand million points.
TEST_F(Geometry, ExplodingNestsAreCutOff)
{
    make("0 BLOCK;2 L0;70 0;10 0,0,0");
    make("0 POINT;10 1,1,0");
    make("0 ENDBLK");
    for (int level = 1; level <= 10; ++level) {
        make("0 BLOCK;2 L" + std::to_string(level) + ";70 0;10 0,0,0");
        for (int i = 0; i < 10; ++i)
            make("0 INSERT;2 L" + std::to_string(level - 1) + ";10 0,0,0");
        ASSERT_EQ(make("0 ENDBLK"), RTNORM);
    }
    EXPECT_EQ(extents(made("0 INSERT;2 L10;10 0,0,0")), "1 1 0 1 1 0");
}

TEST_F(Geometry, ErasedPartsOfABlockDontCount)
{
    const object_id id = made("0 INSERT;2 BOX;10 0,0,0");
    db.set_erased(first_entity(db, db.record("BLOCK_RECORD", "BOX")), true);
    EXPECT_EQ(extents(id), "empty");
}

TEST_F(Geometry, SpaceExtentsLeaveErasedObjectsOut)
{
    EXPECT_TRUE(space_extents(db, db.model_space()).is_empty());
    made("0 POINT;10 1,2,3");
    const object_id far = made("0 POINT;10 100,2,3");
    made("0 CIRCLE;10 0,0,0;40 1");
    EXPECT_EQ(shown_box(space_extents(db, db.model_space())), "-1 -1 0 100 2 3");
    erase(far);
    EXPECT_EQ(shown_box(space_extents(db, db.model_space())), "-1 -1 0 1 2 3");
    // A text whose end lies beyond all numbers has a place, but no extent.
    make("0 TEXT;10 1e308,0,0;40 1e308;1 MAIN STREET");
    EXPECT_EQ(shown_box(space_extents(db, db.model_space())), "-1 -1 0 1 2 3");
}

TEST_F(Geometry, OutlineKeepsWithinTheTolerance)
{
    const object_id id = made("0 CIRCLE;10 0,0,0;40 10");
    for (const double tolerance : {1.0, 0.1, 0.001}) {
        const auto runs = outline_of(db, id, tolerance);
        ASSERT_EQ(runs.size(), 1u);
        const run& points = runs[0];
        EXPECT_NEAR(points.front().first, points.back().first, 1e-9);
        EXPECT_NEAR(points.front().second, points.back().second, 1e-9);
        for (std::size_t i = 1; i < points.size(); ++i) {
            const double x = (points[i - 1].first + points[i].first) / 2;
            const double y = (points[i - 1].second + points[i].second) / 2;
            EXPECT_LE(10 - std::hypot(x, y), tolerance * (1 + 1e-9));
        }
    }
    EXPECT_LT(outline_of(db, id, 0.1)[0].size(), outline_of(db, id, 0.001)[0].size());
}

struct distance_case {
    const char* list;
    double x, y, distance;
};

TEST_F(Geometry, DistanceFromAnObject)
{
    const distance_case cases[] = {
        {"0 POINT;10 1,2,3", 4, 6, 5},
        {"0 LINE;10 0,0,0;11 10,0,9", 5, 3, 3},
        {"0 LINE;10 0,0,0;11 10,0,0", 13, 4, 5},
        {"0 CIRCLE;10 0,0,0;40 5", 0, 0, 5},
        {"0 CIRCLE;10 0,0,0;40 5", 3, 4, 0},
        {"0 CIRCLE;10 0,0,0;40 5", 8, 0, 3},
        {"0 ARC;10 0,0,0;40 5;50 0;51 1.570796326794897", 3, 3, 5 - 3 * std::numbers::sqrt2},
        {"0 ARC;10 0,0,0;40 5;50 0;51 1.570796326794897", 0, -1, std::sqrt(26)},
        {"0 ARC;10 0,0,0;40 5;50 0;51 1.570796326794897;210 0,0,-1", -3, 3, 5 - 3 * std::numbers::sqrt2},
        {"0 LWPOLYLINE;90 2;70 0;10 0,0;42 1;10 4,0", 2, -3, 1},
        {"0 LWPOLYLINE;90 2;70 0;10 0,0;42 1;10 4,0", 2, 3, std::hypot(2, 3)},
        {"0 LWPOLYLINE;90 3;70 1;10 0,0;10 4,0;10 4,4", 1.5, 2.5, std::numbers::sqrt2 / 2},
        {"0 TEXT;10 0,0,0;40 2;1 abc", 2, 1, 0},
        {"0 TEXT;10 0,0,0;40 2;1 abc", 2, 4, 2},
        {"0 SOLID;10 0,0,0;11 4,0,0;12 0,4,0;13 4,4,0", 2, 2, 0},
        {"0 3DFACE;10 0,0,0;11 4,0,0;12 4,4,0;13 0,4,0", 2, 1, 1},
        {"0 INSERT;2 BOX;10 10,10,0", 11, 10.25, 0.25},
        {"0 XLINE;10 0,0,0;11 1,0,0", 5000, 7, 7},
        {"0 RAY;10 0,0,0;11 1,0,0", -3, 4, 5},
    };
    for (const distance_case& each : cases)
        EXPECT_NEAR(distance_to(db, made(each.list), each.x, each.y), each.distance, 1e-6)
            << each.list << " from " << each.x << ',' << each.y;
}

struct window_case {
    const char* list;
    box window;
    bool inside, crosses;
};

TEST_F(Geometry, WindowsHoldOrCrossObjects)
{
    const char* circle = "0 CIRCLE;10 0,0,0;40 5";
    const char* quarter = "0 ARC;10 0,0,0;40 5;50 0;51 1.570796326794897";
    const char* text = "0 TEXT;10 0,0,0;40 2;1 abc";
    const window_case cases[] = {
        {"0 POINT;10 1,2,3", window(1, 2, 1, 2), true, true},
        {"0 POINT;10 1,2,3", window(1.1, 2, 3, 3), false, false},
        {"0 LINE;10 0,0,0;11 10,10,0", window(4, 5, 6, 7), false, true},
        {"0 LINE;10 0,0,0;11 10,10,0", window(6, 0, 9, 5), false, false},
        {"0 LINE;10 0,0,0;11 10,10,0", window(0, 0, 10, 10), true, true},
        {"0 LINE;10 0,0,0;11 10,10,0", window(10, 10, 12, 12), false, true},
        {circle, window(-5, -5, 5, 5), true, true},
        {circle, window(-1, -1, 1, 1), false, false},
        {circle, window(4.9, -0.1, 5.1, 0.1), false, true},
        {circle, window(5.001, -1, 6, 1), false, false},
        {circle, window(5, -1, 6, 1), false, true},
        {circle, window(3.6, 3.6, 9, 9), false, false},
        {circle, window(3.5, 3.5, 9, 9), false, true},
        {quarter, window(-9, -9, -1, 9), false, false},
        {quarter, window(0, 0, 5, 5), true, true},
        {quarter, window(3, 3, 3.6, 3.6), false, true},
        {"0 LWPOLYLINE;90 2;70 0;10 0,0;42 1;10 4,0", window(1, -2.1, 3, -1.9), false, true},
        {"0 LWPOLYLINE;90 2;70 0;10 0,0;42 1;10 4,0", window(1, 0.1, 3, 2.1), false, false},
        {"0 LWPOLYLINE;90 4;70 1;10 0,0;10 9,0;10 9,9;10 0,9", window(1, 1, 2, 2), false, false},
        {text, window(1, 0.5, 2, 1), false, true},
        {text, window(-1, -1, 9, 9), true, true},
        {"0 SOLID;10 0,0,0;11 4,0,0;12 0,4,0;13 4,4,0", window(1, 1, 2, 2), false, true},
        {"0 INSERT;2 BOX;10 10,10,0", window(9, 9, 13, 12), true, true},
        {"0 INSERT;2 BOX;10 10,10,0", window(9, 9, 10.5, 10.5), false, true},
        {"0 INSERT;2 BOX;10 10,10,0", window(10.5, 10.2, 11, 10.8), false, false},
        {"0 XLINE;10 0,0,0;11 1,1,0", window(999, 999, 1001, 1001), false, true},
        {"0 XLINE;10 0,0,0;11 1,1,0", window(-1, -1, 1, 1), false, true},
        {"0 RAY;10 0,0,0;11 1,1,0", window(-9, -9, -1, -1), false, false},
    };
    for (const window_case& each : cases) {
        const object_id id = made(each.list);
        EXPECT_EQ(inside_window(db, id, each.window), each.inside) << each.list << shown_box(each.window);
        EXPECT_EQ(crosses_window(db, id, each.window), each.crosses) << each.list << shown_box(each.window);
    }
}

TEST_F(Geometry, PolygonsAndFences)
{
    const run triangle = {{0, 0}, {10, 0}, {0, 10}};
    const struct {
        const char* list;
        bool inside, crosses, fenced; // the fence is the open run of the triangle's corners
    } cases[] = {
        {"0 POINT;10 2,2,0", true, true, false},
        {"0 POINT;10 8,8,0", false, false, false},
        {"0 LINE;10 1,1,0;11 3,3,0", true, true, false},
        {"0 LINE;10 1,1,0;11 9,9,0", false, true, true},
        {"0 LINE;10 -1,5,0;11 1,5,0", false, true, false},
        {"0 LINE;10 -5,-1,0;11 20,-1,0", false, false, false},
        {"0 LINE;10 5,-1,0;11 5,20,0", false, true, true},
        {"0 CIRCLE;10 2,2,0;40 1", true, true, false},
        {"0 CIRCLE;10 2,2,0;40 2.5", false, true, true},
        {"0 CIRCLE;10 2,2,0;40 90", false, false, false},
        {"0 SOLID;10 -50,-50,0;11 50,-50,0;12 -50,50,0;13 50,50,0", false, true, true},
    };
    for (const auto& each : cases) {
        const object_id id = made(each.list);
        EXPECT_EQ(inside_polygon(db, id, triangle), each.inside) << each.list;
        EXPECT_EQ(crosses_polygon(db, id, triangle), each.crosses) << each.list;
        EXPECT_EQ(crosses_fence(db, id, triangle), each.fenced) << each.list;
    }
    const object_id point = made("0 POINT;10 0,0,0");
    for (const run& nothing : {run{}, run{{0, 0}}, run{{0, 0}, {5, 5}}}) {
        EXPECT_FALSE(inside_polygon(db, point, nothing));
        EXPECT_FALSE(crosses_polygon(db, point, nothing));
    }
}

TEST(Spline, MalformedCurvesGiveNothing)
{
    spline_curve curve{3, {0, 0, 0, 0, 1, 1, 1, 1}, {}, {{0, 0, 0}, {0, 4, 0}, {4, 4, 0}, {4, 0, 0}}};
    EXPECT_EQ(spline_points(curve).size(), 17u);
    spline_curve bad = curve;
    bad.degree = 0;
    EXPECT_TRUE(spline_points(bad).empty());
    bad = curve;
    bad.knots.pop_back();
    EXPECT_TRUE(spline_points(bad).empty());
    bad = curve;
    bad.knots[3] = 5;
    EXPECT_TRUE(spline_points(bad).empty());
    bad = curve;
    bad.weights = {1};
    EXPECT_TRUE(spline_points(bad).empty());
}

// A quarter of a circle as a rational curve of the second degree.
TEST(Spline, RationalCurveRunsOnItsCircle)
{
    const spline_curve curve{
        2, {0, 0, 0, 1, 1, 1}, {1, std::numbers::sqrt2 / 2, 1}, {{1, 0, 0}, {1, 1, 0}, {0, 1, 0}}};
    for (const vec& p : spline_points(curve))
        EXPECT_NEAR(std::hypot(p.x, p.y), 1, 1e-12);
}

// ---- the index against a walk over all

struct Index : Geometry {
    std::mt19937 random{4711};
    double number(double low, double high) { return std::uniform_real_distribution<>(low, high)(random); }
    std::string at(double x, double y)
    {
        return testing_lists::number(x) + ',' + testing_lists::number(y) + ",0";
    }

    object_id any()
    {
        const double x = number(0, 1000), y = number(0, 1000);
        switch (random() % 5) {
        case 0:
            return made("0 POINT;10 " + at(x, y));
        case 1:
            return made("0 LINE;10 " + at(x, y) + ";11 " + at(number(0, 1000), number(0, 1000)));
        case 2:
            return made("0 CIRCLE;10 " + at(x, y) + ";40 " + testing_lists::number(number(0.01, 20)));
        case 3:
            return made("0 INSERT;2 BOX;10 " + at(x, y));
        default:
            return made("0 LINE;10 " + at(x, y) + ";11 " + at(x + number(-3, 3), y + number(-3, 3)));
        }
    }
    std::vector<object_id> by_walk(const box& in) const
    {
        std::vector<object_id> found;
        for (object_id at = first_entity(db, db.model_space()); at; at = next_entity(db, at)) {
            const box own = extents_of(db, at);
            if (is_near(own, in) || db.is(at, "XLINE"))
                found.push_back(at);
        }
        std::reverse(found.begin(), found.end());
        return found;
    }
    static bool is_near(const box& a, const box& b)
    {
        return !a.is_empty() && a.low[0] <= b.high[0] && a.high[0] >= b.low[0] && a.low[1] <= b.high[1] &&
               a.high[1] >= b.low[1];
    }
    box any_window()
    {
        const double x = number(-50, 1000), y = number(-50, 1000), size = std::exp(number(-2, 7));
        return window(x, y, x + size, y + size * number(0.1, 2));
    }
    void compare(const char* when)
    {
        for (int i = 0; i < 20; ++i) {
            const box in = any_window();
            ASSERT_EQ(near_window(db, db.model_space(), in), by_walk(in)) << when << ' ' << shown_box(in);
        }
    }
};

TEST_F(Index, FindsWhatAWalkFinds)
{
    compare("empty");
    std::vector<object_id> ids;
    for (int i = 0; i < 800; ++i)
        ids.push_back(any());
    compare("built");
    for (int round = 0; round < 30; ++round) {
        db.command_boundary("ROUND");
        for (int i = 0; i < 20; ++i) {
            const object_id id = ids[random() % ids.size()];
            switch (random() % 3) {
            case 0:
                db.set_erased(id, !db.at(id).erased);
                break;
            case 1:
                ids.push_back(any());
                break;
            default:
                for (group& each : db.modify(id))
                    if (each.kind == group_kind::point && each.code < 20) {
                        each.point[0] += number(-200, 200);
                        each.point[1] += number(-200, 200);
                    }
            }
        }
        compare("changed");
        if (round % 3 == 0) {
            db.undo_back();
            compare("undone");
        }
    }
}

TEST_F(Index, FollowsWhatHappensInsideOfBlocks)
{
    const object_id id = made("0 INSERT;2 NEST;10 0,0,0");
    const auto near = [&](double x, double y) {
        return near_window(db, db.model_space(), window(x - 0.5, y - 0.5, x + 0.5, y + 0.5)) ==
               std::vector<object_id>{id};
    };
    EXPECT_TRUE(near(11, 0));
    EXPECT_FALSE(near(100, 100));
    make("0 BLOCK;2 BOX;70 0;10 0,0,0");
    make("0 POINT;10 90,100,0");
    ASSERT_EQ(make("0 ENDBLK"), RTNORM);
    EXPECT_FALSE(near(11, 0));
    EXPECT_TRUE(near(100, 100));
}

TEST_F(Index, FollowsPartsOfAnObject)
{
    const object_id id = sequence({"0 POLYLINE;70 0", "0 VERTEX;10 0,0,0", "0 VERTEX;10 1,1,0"});
    const box far = window(50, 50, 60, 60);
    EXPECT_TRUE(near_window(db, db.model_space(), far).empty());
    find(db.modify(next(id)), 10)->point[0] = 55;
    find(db.modify(next(next(id))), 10)->point[1] = 55;
    EXPECT_EQ(near_window(db, db.model_space(), far), std::vector<object_id>{id});
}

TEST_F(Index, LinesWithoutEndAreAlwaysNear)
{
    const object_id id = made("0 XLINE;10 0,0,0;11 1,1,0");
    EXPECT_EQ(near_window(db, db.model_space(), window(1e6, 0, 2e6, 1)), std::vector<object_id>{id});
}

TEST_F(Index, StrangePlacesAreNoTrouble)
{
    const object_id far = made("0 LINE;10 1e20,0,0;11 0,0,0");
    const object_id tiny = made("0 LINE;10 1e-300,0,0;11 0,0,0");
    for (int i = 0; i < 100; ++i)
        made("0 POINT;10 7,7,0");
    made("0 POINT;10 1e14,-1e14,0");
    EXPECT_EQ(near_window(db, db.model_space(), window(-1, -1, 1, 1)), (std::vector<object_id>{tiny, far}));
    EXPECT_EQ(near_window(db, db.model_space(), window(6, 6, 8, 8)).size(), 101u);
    EXPECT_TRUE(near_window(db, 0, window(0, 0, 1, 1)).empty());
    EXPECT_TRUE(near_window(db, 4'000'000'000u, window(0, 0, 1, 1)).empty());
}

TEST_F(Index, SpacesAreApart)
{
    made("0 POINT;10 1,1,0");
    make("0 POINT;67 1;10 1,1,0");
    const box in = window(0, 0, 2, 2);
    EXPECT_EQ(near_window(db, db.model_space(), in).size(), 1u);
    EXPECT_EQ(near_window(db, db.paper_space(), in),
              std::vector<object_id>{first_entity(db, db.paper_space())});
}

} // namespace
} // namespace host::db
