// Polylines of the drawing as properties and chains.
#include "drawing/read.h"

#include <gtest/gtest.h>

#include "drawing/open.h"
#include "drawing/pline_props.h"
#include "tests/drawing/drawing_case.h"

namespace
{

using corners = std::vector<corner>;
using host::db::object_id;

class Reading : public drawing_case
{
};

constexpr const char* LW_BEND =
    "0 LWPOLYLINE;100 AcDbEntity;8 0;62 3;100 AcDbPolyline;90 3;70 129;43 0.5;38 7;39 2;"
    "10 1,2;42 0.25;10 3,4;42 0;10 5,6;42 -1";

object_id old_polyline(drawing_case& drawing, const std::string& head, const std::vector<std::string>& vertices)
{
    EXPECT_EQ(drawing.make("0 POLYLINE;66 1;" + head), RTNORM) << head;
    for (const std::string& v : vertices)
        EXPECT_EQ(drawing.make("0 VERTEX;" + v), RTNORM) << v;
    EXPECT_EQ(drawing.make("0 SEQEND"), RTNORM);
    return drawing.last();
}

// ---- properties

TEST_F(Reading, PropertiesOfALightweightPolyline)
{
    const pline_props props = pl_get_props(name_of(made(LW_BEND)));
    EXPECT_EQ(props.name[0], -1);
    EXPECT_EQ(props.name[1], -1);
    EXPECT_EQ(props.kind, 2);
    EXPECT_EQ(props.start_width, 0.5);
    EXPECT_EQ(props.end_width, 0.5);
    EXPECT_EQ(props.ltscale, 1.0);
    EXPECT_EQ(props.curve_type, 0);
    EXPECT_EQ(props.color, 3);
    EXPECT_EQ(props.thickness, 2.0);
    EXPECT_EQ(props.flags, 129);
    EXPECT_STREQ(props.layer, "0");
}

TEST_F(Reading, LightweightPolylineWithoutAConstantWidthHasNone)
{
    const pline_props props = pl_get_props(name_of(
        made("0 LWPOLYLINE;100 AcDbEntity;8 0;100 AcDbPolyline;90 2;70 0;10 1,2;40 1;41 2;10 3,4;40 2;41 3")));
    EXPECT_EQ(props.kind, 2);
    EXPECT_EQ(props.flags, 0);
    EXPECT_EQ(props.start_width, 0.0);
    EXPECT_EQ(props.end_width, 0.0);
}

struct type_case {
    int group_70, group_75, curve_type, flags;
};

TEST_F(Reading, TypesOfA2dPolyline)
{
    const type_case cases[] = {{0, 0, 0, 0}, {1, 0, 0, 1}, {2, 0, 0, 2},     {3, 0, 0, 3},    {4, 5, 5, 4},
                               {5, 5, 5, 5}, {4, 6, 6, 4}, {133, 6, 6, 133}, {128, 0, 0, 128}};
    for (const type_case& c : cases) {
        const object_id id = old_polyline(
            *this, "39 4;70 " + std::to_string(c.group_70) + ";40 0.5;41 0.75;75 " + std::to_string(c.group_75),
            {"10 0,0", "10 1,0"});
        const pline_props props = pl_get_props(name_of(id));
        EXPECT_EQ(props.kind, 0);
        EXPECT_EQ(props.curve_type, c.curve_type) << c.group_70;
        EXPECT_EQ(props.flags, c.flags) << c.group_70;
        EXPECT_EQ(props.thickness, 4.0);
        EXPECT_EQ(props.start_width, 0.5);
        EXPECT_EQ(props.end_width, 0.75);
    }
}

TEST_F(Reading, TypesOfA3dPolyline)
{
    const type_case cases[] = {{8, 0, 0, 8}, {9, 0, 0, 9}, {12, 5, 5, 12}, {13, 5, 5, 13}, {12, 6, 6, 12}};
    for (const type_case& c : cases) {
        const object_id id =
            old_polyline(*this, "70 " + std::to_string(c.group_70) + ";75 " + std::to_string(c.group_75),
                         {"70 32;10 0,0,1", "70 32;10 1,0,2"});
        const pline_props props = pl_get_props(name_of(id));
        EXPECT_EQ(props.kind, 1);
        EXPECT_EQ(props.curve_type, c.curve_type) << c.group_70;
        EXPECT_EQ(props.flags, c.flags) << c.group_70;
    }
}

TEST_F(Reading, OtherObjectsKeepTheDefaultsButTheCommonProperties)
{
    host::db::add_layer(db, "FENCE", 4);
    const pline_props props =
        pl_get_props(name_of(made("0 LINE;8 FENCE;6 CONTINUOUS;48 2.5;62 5;39 9;10 0,0,0;11 1,1,1")));
    EXPECT_EQ(props.kind, 4);
    EXPECT_STREQ(props.layer, "FENCE");
    EXPECT_STREQ(props.linetype, "CONTINUOUS");
    EXPECT_EQ(props.ltscale, 2.5);
    EXPECT_EQ(props.color, 5);
    EXPECT_EQ(props.thickness, 0.0);
    EXPECT_EQ(props.flags, 0);
}

TEST_F(Reading, ObjectThatDoesNotOpenGivesTheDefaults)
{
    const ads_name none = {0, 0};
    const pline_props props = pl_get_props(none);
    EXPECT_EQ(props.kind, 4);
    EXPECT_STREQ(props.layer, "");
    EXPECT_STREQ(props.linetype, "BYLAYER");
    EXPECT_EQ(pl_read_nodes(none, 1), nullptr);
    EXPECT_EQ(pl_read_vertices(none), nullptr);
    EXPECT_EQ(printed, "");
}

TEST_F(Reading, ErasedObjectDoesNotOpen)
{
    const object_id bend = made(LW_BEND);
    ASSERT_EQ(acdbEntDel(name_of(bend)), RTNORM);
    EXPECT_EQ(pl_get_props(name_of(bend)).kind, 4);
    EXPECT_EQ(pl_read_nodes(name_of(bend), 1), nullptr);
    EXPECT_EQ(printed, "");
}

TEST_F(Reading, LongNamesAreCutToTheirFields)
{
    for (const std::size_t length : {124u, 125u, 126u, 200u}) {
        const std::string layer(length, 'L');
        host::db::add_layer(db, layer, 7);
        const pline_props props = pl_get_props(name_of(made("0 LINE;8 " + layer + ";10 0,0,0;11 1,1,1")));
        EXPECT_EQ(std::string(props.layer), layer.substr(0, 125));
    }
    for (const std::size_t length : {28u, 29u, 30u, 60u}) {
        const std::string linetype(length, 'T');
        host::db::add_record(db, "LTYPE", linetype);
        const pline_props props =
            pl_get_props(name_of(made("0 LINE;8 0;6 " + linetype + ";10 0,0,0;11 1,1,1")));
        EXPECT_EQ(std::string(props.linetype), linetype.substr(0, 29));
    }
}

// ---- vertices

TEST_F(Reading, LightweightVerticesInOrderWithElevationAndBulges)
{
    EXPECT_EQ(read(made(LW_BEND)), (corners{{1, 2, 7, 0.25}, {3, 4, 7, 0}, {5, 6, 7, -1}}));
    EXPECT_EQ(printed, "");
}

TEST_F(Reading, VerticesAreOfTypeOne)
{
    const vertex_chain chain(pl_read_vertices(name_of(made(LW_BEND))));
    for (const pl_vertex* v = chain.get(); v; v = v->next)
        EXPECT_EQ(v->type, 1);
}

TEST_F(Reading, TwoDVerticesInOrderWithTheElevationOfThePolyline)
{
    const object_id id = old_polyline(*this, "10 0,0,5;70 1", {"10 1,2,0;42 0.5", "10 3,4,0", "10 5,6,0"});
    EXPECT_EQ(read(id), (corners{{1, 2, 5, 0.5}, {3, 4, 5, 0}, {5, 6, 5, 0}}));
}

TEST_F(Reading, SplineControlPointsOfA2dPolylineAreSkipped)
{
    const object_id id = old_polyline(
        *this, "70 4;75 6", {"70 16;10 0,0", "70 8;10 1,1", "70 1;10 2,2", "70 0;10 3,3", "70 16;10 4,4"});
    EXPECT_EQ(read(id), (corners{{1, 1}, {2, 2}, {3, 3}}));
}

TEST_F(Reading, FitPointsOfA3dPolylineAreSkipped)
{
    const object_id id = old_polyline(*this, "70 12;75 6",
                                      {"70 48;10 0,0,1", "70 40;10 1,1,2", "70 32;10 2,2,3", "70 48;10 3,3,4"});
    EXPECT_EQ(read(id), (corners{{0, 0, 1}, {2, 2, 3}, {3, 3, 4}}));
}

TEST_F(Reading, ArcsAreRefusedWhenTheyAreNotWanted)
{
    const object_id bend = made(LW_BEND);
    const object_id old = old_polyline(*this, "70 0", {"10 0,0", "10 1,0;42 0.5", "10 2,0"});
    const object_id last = old_polyline(*this, "70 0", {"10 0,0", "10 1,0", "10 2,0;42 1e-9"});
    for (const object_id id : {bend, old, last})
        for (const int allow_arcs : {0, 2, -1}) {
            printed.clear();
            EXPECT_EQ(pl_read_nodes(name_of(id), allow_arcs), nullptr);
            EXPECT_EQ(printed, "\nError: unable to handle a polyline with an arc.");
        }
}

TEST_F(Reading, StraightPolylinesAreReadWithArcsUnwanted)
{
    pg_node* nodes = pl_read_nodes(name_of(old_polyline(*this, "70 0", {"10 0,0", "10 1,0"})), 0);
    EXPECT_EQ(pg_count(nodes), 2);
    pl_free_nodes(nodes);
    // A bulge of a 3D polyline's vertex means nothing.
    nodes = pl_read_nodes(name_of(old_polyline(*this, "70 8", {"70 32;10 0,0,3;42 1", "70 32;10 1,0,4"})), 0);
    EXPECT_EQ(pg_count(nodes), 2);
    pl_free_nodes(nodes);
    EXPECT_EQ(printed, "");
}

TEST_F(Reading, OtherObjectsAreNoPolylines)
{
    const object_id mesh = old_polyline(*this, "70 16;71 2;72 2",
                                        {"70 64;10 0,0", "70 64;10 1,0", "70 64;10 0,1", "70 64;10 1,1"});
    for (const object_id id : {made("0 LINE;10 0,0,0;11 1,1,1"), made("0 CIRCLE;10 0,0,0;40 2"), mesh,
                               made("0 TEXT;10 0,0,0;40 1;1 words")}) {
        printed.clear();
        EXPECT_EQ(pl_read_nodes(name_of(id), 1), nullptr);
        EXPECT_EQ(printed, "\nSelected entity is not a 2d or 3d polyline");
        EXPECT_EQ(pl_read_vertices(name_of(id)), nullptr);
        EXPECT_EQ(pl_get_props(name_of(id)).kind, 4);
    }
}

TEST_F(Reading, MirroredPolylinesAreReadInTheWorld)
{
    const object_id light =
        made("0 LWPOLYLINE;100 AcDbEntity;8 0;100 AcDbPolyline;90 2;70 0;38 7;10 1,2;10 3,4;"
             "210 0,0,-1");
    EXPECT_EQ(read(light), (corners{{-1, 2, -7}, {-3, 4, -7}}));
    const object_id old = old_polyline(*this, "70 0;10 0,0,7;210 0,0,-1", {"10 1,2,7", "10 3,4,7"});
    EXPECT_EQ(read(old), (corners{{-1, 2, -7}, {-3, 4, -7}}));
}

TEST_F(Reading, PolylineOfControlPointsAloneGivesNothing)
{
    EXPECT_EQ(pl_read_vertices(name_of(old_polyline(*this, "70 4;75 6", {"70 16;10 0,0", "70 16;10 1,1"}))),
              nullptr);
    EXPECT_EQ(printed, "");
}

// ---- casts and opening

TEST_F(Reading, CheckedCasts)
{
    EXPECT_EQ(object_cast<AcDbPolyline>(nullptr), nullptr);
    const auto line = opened<AcDbObject>(name_of(made("0 LINE;10 0,0,0;11 1,1,1")), AcDb::kForRead);
    ASSERT_NE(line, nullptr);
    EXPECT_NE(object_cast<AcDbEntity>(line.get()), nullptr);
    EXPECT_NE(object_cast<AcDbCurve>(line.get()), nullptr);
    EXPECT_NE(object_cast<AcDbObject>(line.get()), nullptr);
    EXPECT_EQ(object_cast<AcDbPolyline>(line.get()), nullptr);
    EXPECT_EQ(object_cast<AcDb2dPolyline>(line.get()), nullptr);
    EXPECT_EQ(object_cast<AcDb3dPolyline>(line.get()), nullptr);
    EXPECT_EQ(object_cast<AcDb2dVertex>(line.get()), nullptr);
    EXPECT_EQ(object_cast<AcDb3dPolylineVertex>(line.get()), nullptr);
}

TEST_F(Reading, OpeningAnObjectOfAnotherClassGives46AndLeavesNothingOpen)
{
    const auto before = host::live_views();
    AcDbPolyline* pline = reinterpret_cast<AcDbPolyline*>(1);
    EXPECT_EQ(object_open(pline, name_of(made("0 LINE;10 0,0,0;11 1,1,1")), AcDb::kForRead), 46);
    EXPECT_EQ(pline, nullptr);
    EXPECT_EQ(host::live_views(), before);
    const ads_name none = {0, 0};
    EXPECT_NE(object_open(pline, none, AcDb::kForRead), Acad::eOk);
}

} // namespace
