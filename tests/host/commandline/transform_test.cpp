// Maps of objects: numbers of the map itself, and objects in planes of their own.
#include <numbers>

#include "host/commandline/arc_shapes.h"
#include "host/commandline/map_objects.h"
#include "host/commandline/transform.h"
#include "tests/host/commandline/session.h"
#include "tests/host/database/lists.h"

namespace host::commandline
{

namespace
{

constexpr double PI = std::numbers::pi;

class transforms : public session
{
};

void expect_point(const point3& p, double x, double y, double z)
{
    EXPECT_NEAR(p.x, x, 1e-9);
    EXPECT_NEAR(p.y, y, 1e-9);
    EXPECT_NEAR(p.z, z, 1e-9);
}

TEST_F(transforms, AMapAndItsInverseGiveThePointBack)
{
    const mapping map =
        mapping::moved(5, 6, 7).after(mapping::turned({1, 2, 0}, 0.7).after(mapping::scaled({3, 1, 0}, 2.5)));
    const point3 p{11, -4, 2};
    const point3 back = map.inverse().apply(map.apply(p));
    expect_point(back, p.x, p.y, p.z);
    EXPECT_NEAR(map.scale(), 2.5, 1e-12);
}

TEST_F(transforms, AxesOfAnExtrusionStandAtRightAngles)
{
    for (const point3& z : {point3{0, 0, 1}, {0, 0, -1}, {1, 0, 0}, {0.3, -0.4, 0.5}}) {
        const plane_axes axes = axes_of(z);
        const point3 p{3, 4, 5};
        const point3 there = axes.to_world(p), back = axes.to_plane(there);
        expect_point(back, p.x, p.y, p.z);
    }
    expect_point(axes_of({0, 0, -1}).x, -1, 0, 0);
}

TEST_F(transforms, AnObjectOnItsHeadMovesInTheWorld)
{
    db::database& d = data();
    std::string error;
    const db::object_id id = db::make_entity(d,
                                             {d.text_group(0, "CIRCLE"), db::point_group(10, 5, 6, 7),
                                              db::real_group(40, 2), db::point_group(210, 0, 0, -1)},
                                             &error);
    ASSERT_NE(id, 0u) << error;
    // Its centre is at (-5, 6, -7) in the world.
    transform_object(d, id, mapping::moved(10, 0, 0));
    EXPECT_EQ(described(id, {10, 210}), "CIRCLE 10=-5,6,7 210=0,0,-1");
}

TEST_F(transforms, WhatKindsWithoutARuleHoldStays)
{
    db::database& d = data();
    std::string error;
    db::group_list groups{d.text_group(0, "STRANGE"), d.text_group(100, "AcDbEntity"), d.text_group(8, "0"),
                          d.text_group(100, "AcDbStrange"), db::point_group(10, 1, 2, 3)};
    const db::object_id id = db::make_entity(d, groups, &error);
    ASSERT_NE(id, 0u) << error;
    transform_object(d, id, mapping::moved(10, 0, 0));
    EXPECT_EQ(described(id, {10}), "STRANGE 10=1,2,3");
}

struct mapped_case {
    const char* name;
    const char* list;
    mapping map;
    std::vector<int> codes;
    const char* expected;
};

mapping with_factors(double x, double y, double z)
{
    mapping out;
    out.m[0][0] = x;
    out.m[1][1] = y;
    out.m[2][2] = z;
    return out;
}

const mapped_case MAPPED[] = {
    {"MirroredText",
     "0 TEXT;10 1,0,0;40 1;50 0;1 A",
     with_factors(-1, 1, 1),
     {10, 50, 71},
     "TEXT 10=-1,0,0 50=0 71=2"},
    {"TextMirroredTwice",
     "0 TEXT;10 1,0,0;40 1;71 2;1 A",
     with_factors(-1, 1, 1),
     {10, 71},
     "TEXT 10=-1,0,0 71=0"},
    {"AlignedText",
     "0 TEXT;10 1,0,0;11 3,0,0;72 1;40 1;1 A",
     mapping::moved(1, 2, 3),
     {10, 11},
     "TEXT 10=3.66667,2,3 11=4,2,3"},
    {"UnalignedTextHasOnePlace",
     "0 TEXT;10 1,0,0;40 1;1 A",
     mapping::moved(1, 2, 3),
     {10, 11},
     "TEXT 10=2,2,3 11=0,0,0"},
    {"MirroredEllipticalArc",
     "0 ELLIPSE;10 0,0,0;11 2,0,0;40 0.5;41 0;42 1.5707963267948966",
     with_factors(1, -1, 1),
     {11, 40, 41, 42, 210},
     "ELLIPSE 11=2,0,0 210=0,0,1 40=0.5 41=4.71239 42=6.28319"},
    {"TurnedEllipse",
     "0 ELLIPSE;10 1,0,0;11 2,0,0;40 0.5;41 0;42 1",
     mapping::turned({0, 0, 0}, PI / 2),
     {10, 11, 40, 41, 42},
     "ELLIPSE 10=0,1,0 11=0,2,0 40=0.5 41=0 42=1"},
    {"MirroredSpline",
     "0 SPLINE;100 AcDbSpline;71 1;40 0;40 0;40 1;40 1;10 0,0,0;10 2,1,0;12 1,0,0",
     with_factors(-2, 1, 1),
     {10, 12},
     "SPLINE 10=0,0,0 10=-4,1,0 12=-2,0,0"},
    {"RayKeepsADirectionOfLengthOne",
     "0 RAY;10 1,1,0;11 1,0,0",
     with_factors(3, 2, 1),
     {10, 11},
     "RAY 10=3,2,0 11=1,0,0"},
    {"MovedHatchKeepsTheAxesOfItsEllipses",
     "0 HATCH;100 AcDbEntity;8 0;100 AcDbHatch;10 0,0,1;2 SOLID;70 1;91 1;92 1;93 1;72 3;10 5,5,0;11 2,0,0;40 "
     "0.5;"
     "50 0;51 6;73 1;75 0;98 1;10 5,5,0",
     mapping::moved(1, 2, 3),
     {10, 11, 40, 50, 51},
     "HATCH 10=0,0,4 10=6,7 11=2,0 40=0.5 50=0 51=6 10=6,7"},
    {"TurnedHatch",
     "0 HATCH;100 AcDbEntity;8 0;100 AcDbHatch;10 0,0,0;2 ANSI31;70 0;91 1;92 1;93 2;72 1;10 1,0,0;11 2,0,0;72 "
     "3;"
     "10 2,0,0;11 1,0,0;40 0.5;50 0;51 6;73 1;75 0;52 0.5;41 2;78 1;53 0.785398;43 1;44 0;45 0;46 1;79 1;49 "
     "0.25",
     mapping::scaled({0, 0, 0}, 2).after(mapping::turned({0, 0, 0}, PI / 2)),
     {10, 11, 41, 43, 44, 45, 46, 49, 52, 53},
     "HATCH 10=0,0,0 10=0,2 11=0,4 10=0,4 11=0,2 52=2.0708 41=4 53=2.35619 43=0 44=2 45=-2 46=0 49=0.5"},
    {"MirroredRows",
     "0 INSERT;2 B;10 1,0,0;70 2;71 2;44 3;45 4",
     with_factors(-2, 1, 1),
     {10, 41, 42, 43, 44, 45, 50},
     "INSERT 10=-2,0,0 41=-2 42=1 43=1 50=0 44=-6 45=4"},
};

class mapped_cases : public transforms, public testing::WithParamInterface<mapped_case>
{
};

TEST_P(mapped_cases, GroupByGroup)
{
    db::add_block(data(), "B");
    const list_ptr list = db::testing_lists::list_of(GetParam().list);
    ASSERT_EQ(acdbEntMake(list.get()), RTNORM);
    EXPECT_TRUE(keeps_kind(data(), whole_object_of(data(), nth(0)), GetParam().map));
    transform_object(data(), nth(0), GetParam().map);
    EXPECT_EQ(objects(GetParam().codes), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Mapping, mapped_cases, testing::ValuesIn(MAPPED), name_of_case());

// Any map, back and forth: what stays its kind is where it was.
TEST_F(transforms, AMapAndItsInverseGiveTheObjectBack)
{
    const char* lists[] = {"0 LINE;39 2;10 1,2,3;11 4,5,6",
                           "0 CIRCLE;10 1,2,3;40 2;210 0,0.6,0.8",
                           "0 ELLIPSE;10 1,2,3;11 2,1,0;40 0.5;41 0.5;42 2",
                           "0 SOLID;10 0,0,2;11 1,0,2;12 0,1,2;13 1,1,2",
                           "0 LWPOLYLINE;100 AcDbPolyline;90 2;70 0;38 3;43 0.5;10 1,1;42 0.3;10 5,2",
                           "0 INSERT;2 B;10 1,2,3;41 2;42 3;50 0.7",
                           "0 TEXT;10 1,2,0;40 2;50 0.4;51 0.2;41 0.8;1 A"};
    db::add_block(data(), "B");
    const mapping turn = mapping::moved(5, 6, 7).after(mapping::turned({1, 1, 0}, 0.9));
    const mapping maps[] = {turn, turn.after(mapping::scaled({3, 1, 0}, 2.5)),
                            turn.after(with_factors(-1, 1, 1)), turn.after(with_factors(1, 1, -1))};
    for (const char* text : lists)
        for (const mapping& map : maps) {
            SCOPED_TRACE(text);
            send("ERASE|ALL|");
            const list_ptr list = db::testing_lists::list_of(text);
            ASSERT_EQ(acdbEntMake(list.get()), RTNORM);
            const std::vector<int> codes = {10, 11, 38, 39, 40, 41, 42, 43, 50, 51, 71, 210};
            const std::string before = objects(codes);
            transform_object(data(), nth(0), map);
            EXPECT_NE(objects(codes), before);
            transform_object(data(), nth(0), map.inverse());
            EXPECT_EQ(objects(codes), before);
        }
}

TEST(ArcShapes, ThroughThreePointsAndByBulgeAgree)
{
    const point3 a{640000, 5120000, 0};
    for (const double bulge : {0.2, -0.2, 1.0, -1.0, 3.0, -3.0}) {
        const point3 b{a.x + 30, a.y + 40, 0};
        const std::optional<arc_shape> arc = arc_of_bulge(a, b, bulge);
        ASSERT_TRUE(arc);
        const double middle = arc->start + normal_angle(arc->end - arc->start) / 2;
        const point3 over = on_circle(arc->center, arc->radius, middle);
        EXPECT_NEAR(bulge_through(a, over, b), bulge, 1e-6);
        const std::optional<arc_shape> again = arc_through(a, over, b);
        ASSERT_TRUE(again);
        EXPECT_NEAR(again->radius, arc->radius, 1e-6);
    }
    EXPECT_FALSE(arc_of_bulge(a, a, 1.0));
    EXPECT_FALSE(arc_of_bulge(a, {0, 0, 0}, 0.0));
    EXPECT_FALSE(arc_through(a, a, a));
}

TEST(ArcShapes, ATangentGivesTheBulge)
{
    EXPECT_NEAR(bulge_of_tangent({0, 0, 0}, {10, 0, 0}, PI / 2), -1.0, 1e-12);
    EXPECT_NEAR(bulge_of_tangent({0, 0, 0}, {10, 0, 0}, -PI / 2), 1.0, 1e-12);
    EXPECT_NEAR(bulge_of_tangent({0, 0, 0}, {10, 0, 0}, 0.0), 0.0, 1e-12);
}

} // namespace

} // namespace host::commandline
