// Maps of objects: numbers of the map itself, and objects in planes of their own.
#include <numbers>

#include "host/commandline/arc_shapes.h"
#include "host/commandline/transform.h"
#include "tests/host/commandline/session.h"

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
