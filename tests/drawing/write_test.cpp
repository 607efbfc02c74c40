// New objects from chains.
#include "drawing/write.h"

#include <gtest/gtest.h>

#include "common/text_buffer.h"
#include "host/database/sysvars.h"
#include "tests/drawing/drawing_case.h"
#include "tests/drawing/screen.h"
#include "tests/growth.h"

namespace
{

using corners = std::vector<corner>;
using host::db::object_id;

class Writing : public drawing_case
{
protected:
    std::string current_layer() { return host::db::text_variable(db.owner(), "CLAYER"); }
    // Writes corners as nodes; the list of the new object.
    std::string make_entity(const corners& made, const pline_props& props, int with_bulges, int auto_kind)
    {
        const vertex_chain chain = make_vertices(made);
        pg_node* nodes = nullptr;
        pg_node** end = &nodes;
        for (const pl_vertex* v = chain.get(); v; v = v->next) {
            const double point[3] = {v->x, v->y, v->z};
            *end = pg_node_push(point, nullptr, v->bulge);
            end = &(*end)->next;
        }
        pl_make_entity(nodes, props, with_bulges, auto_kind);
        pl_free_nodes(nodes);
        return got(last());
    }
    bool has(const std::string& list, const std::string& groups)
    {
        return (";" + list + ";").find(";" + groups + ";") != std::string::npos;
    }
};

const corners BEND = {{0, 0, 5}, {10, 0, 5, 0.5}, {10, 10, 5}};

TEST_F(Writing, LightweightPolylineWithAllItsProperties)
{
    host::db::add_record(db, "LTYPE", "DASHED");
    pline_props props;
    props.kind = KIND_LW;
    props.start_width = 1;
    props.end_width = 2;
    props.ltscale = 3;
    props.color = 4;
    props.thickness = 6;
    props.flags = PLINE_CLOSED | PLINE_LINETYPE_GENERATION;
    text_set(props.linetype, "dashed");
    text_set(props.layer, "kerb");
    const std::string list = make_entity(BEND, props, 1, 0);
    for (const char* groups :
         {"0 LWPOLYLINE", "8 KERB", "62 4", "6 DASHED", "48 3", "90 3", "70 129", "38 5", "39 6",
          "10 0,0,0;40 1;41 2;42 0;10 10,0,0;40 1;41 2;42 0.5;10 10,10,0;40 1;41 2;42 0"})
        EXPECT_TRUE(has(list, groups)) << groups << " in " << list;
    EXPECT_EQ(current_layer(), "KERB");
}

TEST_F(Writing, BulgesOnlyWhenTheyAreWanted)
{
    pline_props props;
    props.kind = KIND_LW;
    for (const int with_bulges : {0, 2, -1}) {
        make_entity(BEND, props, with_bulges, 0);
        EXPECT_EQ(read(last()), (corners{{0, 0, 5}, {10, 0, 5}, {10, 10, 5}})) << with_bulges;
    }
    make_entity(BEND, props, 1, 0);
    EXPECT_EQ(read(last()), BEND);
    props.kind = KIND_P2D;
    make_entity(BEND, props, 0, 0);
    EXPECT_EQ(read(last()), (corners{{0, 0, 5}, {10, 0, 5}, {10, 10, 5}}));
    make_entity(BEND, props, 1, 0);
    EXPECT_EQ(read(last()), BEND);
}

struct kind_case {
    const char* name;
    int kind, flags, curve_type, auto_kind;
    bool z_differs;
    const char* expected; // type, and flags of the polyline
};

TEST_F(Writing, KindOfTheNewObject)
{
    const kind_case cases[] = {
        {"as the record says, lightweight", 2, 0, 0, 0, false, "0 LWPOLYLINE"},
        {"as the record says, lightweight though z differs", 2, 0, 0, 0, true, "0 LWPOLYLINE"},
        {"as the record says, old style", 0, 0, 0, 0, false, "100 AcDb2dPolyline"},
        {"old style though z differs", 0, 0, 0, 0, true, "100 AcDb2dPolyline"},
        {"none of the kinds is old style", 4, 0, 0, 0, false, "100 AcDb2dPolyline"},
        {"as the record says, 3D", 1, 0, 0, 0, false, "100 AcDb3dPolyline"},
        {"the flag of 3D rules the kind", 2, 8, 0, 0, false, "100 AcDb3dPolyline"},
        {"chosen, flat", 0, 0, 0, 1, false, "0 LWPOLYLINE"},
        {"chosen, z differs", 0, 0, 0, 1, true, "100 AcDb3dPolyline"},
        {"chosen, z differs, lightweight in the record", 2, 0, 0, 1, true, "100 AcDb3dPolyline"},
        {"chosen, flat, with a curve", 0, 4, 5, 1, false, "100 AcDb2dPolyline"},
        {"chosen, flat, with a curve, lightweight in the record", 2, 4, 5, 1, false, "0 LWPOLYLINE"},
        {"another way of choosing looks at z", 0, 0, 0, 2, true, "100 AcDb3dPolyline"},
        {"another way of choosing, flat", 0, 0, 0, 2, false, "100 AcDb2dPolyline"},
    };
    for (const kind_case& c : cases) {
        pline_props props;
        props.kind = c.kind;
        props.flags = c.flags;
        props.curve_type = c.curve_type;
        const std::string list =
            make_entity({{0, 0, 5}, {1, 0, c.z_differs ? 5 + 1e-12 : 5}}, props, 1, c.auto_kind);
        EXPECT_TRUE(has(list, c.expected)) << c.name << ": " << list;
    }
}

struct curve_case {
    int curve_type, flags, group_70, group_75;
};

TEST_F(Writing, CurveTypesOf2dPolylines)
{
    const curve_case cases[] = {{0, 0, 0, 0}, {0, 2, 2, 0},     {0, 3, 3, 0},     {5, 4, 4, 5},
                                {5, 0, 0, 0}, {5, 5, 5, 5},     {6, 4, 4, 6},     {6, 1, 1, 0},
                                {7, 4, 0, 0}, {0, 128, 128, 0}, {6, 132, 132, 6}, {0, 4, 0, 0}};
    for (const curve_case& c : cases) {
        pline_props props;
        props.kind = KIND_P2D;
        props.curve_type = c.curve_type;
        props.flags = c.flags;
        const std::string list = make_entity({{0, 0}, {1, 0}}, props, 1, 0);
        EXPECT_TRUE(has(list, "70 " + std::to_string(c.group_70))) << c.curve_type << "," << c.flags << list;
        EXPECT_TRUE(has(list, "75 " + std::to_string(c.group_75))) << c.curve_type << "," << c.flags << list;
    }
}

TEST_F(Writing, CurveTypesOf3dPolylines)
{
    const curve_case cases[] = {{0, 0, 8, 0},   {0, 1, 9, 0}, {5, 4, 12, 5}, {5, 5, 13, 5},
                                {6, 12, 12, 6}, {6, 0, 8, 0}, {0, 128, 8, 0}};
    for (const curve_case& c : cases) {
        pline_props props;
        props.kind = KIND_P3D;
        props.curve_type = c.curve_type;
        props.flags = c.flags;
        const std::string list = make_entity({{0, 0}, {1, 0}}, props, 1, 0);
        EXPECT_TRUE(has(list, "70 " + std::to_string(c.group_70))) << c.curve_type << "," << c.flags << list;
        EXPECT_TRUE(has(list, "75 " + std::to_string(c.group_75))) << c.curve_type << "," << c.flags << list;
    }
}

TEST_F(Writing, OldStylePolylineKeepsEachZAndTheElevationOfTheFirst)
{
    pline_props props;
    props.kind = KIND_P2D;
    props.start_width = 0.5;
    props.end_width = 0.75;
    props.thickness = 2;
    props.color = 6;
    text_set(props.layer, "WALL");
    const std::string list = make_entity({{1, 2, 3}, {4, 5, 6, 0.5}}, props, 1, 0);
    for (const char* groups : {"8 WALL", "62 6", "39 2", "10 0,0,3", "40 0.5;41 0.75"})
        EXPECT_TRUE(has(list, groups)) << groups << " in " << list;
    const object_id first = next(last());
    EXPECT_TRUE(has(got(first), "10 1,2,3")) << got(first);
    EXPECT_TRUE(has(got(first), "40 0.5;41 0.75")) << got(first);
    EXPECT_TRUE(has(got(first), "8 WALL")) << got(first);
    EXPECT_TRUE(has(got(first), "62 6")) << got(first);
    EXPECT_TRUE(has(got(next(first)), "10 4,5,6")) << got(next(first));
    EXPECT_TRUE(has(got(next(first)), "42 0.5")) << got(next(first));
}

TEST_F(Writing, SpatialPolylineHasNoBulges)
{
    pline_props props;
    props.kind = KIND_P3D;
    make_entity({{0, 0, 1, 0.5}, {1, 0, 2, 0.5}}, props, 1, 0);
    EXPECT_EQ(read(last()), (corners{{0, 0, 1}, {1, 0, 2}}));
}

TEST_F(Writing, SpatialPolylineAndItsVerticesHaveLayerAndColour)
{
    host::db::add_record(db, "LTYPE", "DASHED");
    pline_props props;
    props.kind = KIND_P3D;
    props.color = 6;
    props.ltscale = 3;
    props.thickness = 2;
    props.start_width = props.end_width = 1;
    text_set(props.linetype, "DASHED");
    text_set(props.layer, "WALL");
    const std::string list = make_entity({{0, 0, 1}, {1, 0, 2}}, props, 1, 0);
    for (const char* groups : {"8 WALL", "62 6", "6 DASHED", "48 3"})
        EXPECT_TRUE(has(list, groups)) << groups << " in " << list;
    for (const char* groups : {"39 2", "40 1"})
        EXPECT_FALSE(has(list, groups)) << groups << " in " << list;
    const std::string vertex = got(next(last()));
    for (const char* groups : {"8 WALL", "62 6", "10 0,0,1"})
        EXPECT_TRUE(has(vertex, groups)) << groups << " in " << vertex;
}

TEST_F(Writing, WhatTheHostRefusesIsPassedOver)
{
    for (const int kind : {KIND_P2D, KIND_P3D, KIND_LW}) {
        pline_props props;
        props.kind = kind;
        props.color = 300;
        props.ltscale = -1;
        props.start_width = kind == KIND_LW ? -1 : 0;
        text_set(props.linetype, "NOSUCH");
        text_set(props.layer, "semi;colon"); // no character that is replaced, nor one of a name
        make_entity({{0, 0}, {1, 0}}, props, 1, 0);
        const pline_props read_back = pl_get_props(last_name());
        EXPECT_EQ(read_back.kind, kind);
        EXPECT_EQ(read_back.color, 256);
        EXPECT_EQ(read_back.ltscale, 1.0);
        EXPECT_STREQ(read_back.linetype, "BYLAYER");
        EXPECT_STREQ(read_back.layer, "0");
        EXPECT_EQ(current_layer(), "0");
    }
    EXPECT_EQ(count(), 3);
}

TEST_F(Writing, FrozenLockedAndOffLayerIsFreedByAWrite)
{
    const object_id layer = host::db::add_layer(db, "KERB", 4);
    for (const int kind : {KIND_P2D, KIND_P3D, KIND_LW}) {
        host::db::set_text(db.owner(), "CLAYER", "0");
        host::db::find(db.modify(layer), 70)->integer = 1 | 4;
        host::db::find(db.modify(layer), 62)->integer = -4;
        pline_props props;
        props.kind = kind;
        props.color = 3;
        text_set(props.layer, "kerb");
        EXPECT_TRUE(has(make_entity({{0, 0}, {1, 0}}, props, 1, 0), "8 KERB"));
        EXPECT_EQ(current_layer(), "KERB");
        EXPECT_EQ(host::db::int_of(db.at(layer).groups, 70, -1), 0);
        EXPECT_EQ(host::db::int_of(db.at(layer).groups, 62, -1), 4) << "on, with its own colour";
    }
}

TEST_F(Writing, NewLayerHasTheColourOfTheRecord)
{
    struct {
        const char* layer;
        int color, of_layer;
    } const cases[] = {{"A", 256, 7}, {"B", 5, 5}};
    for (const auto& c : cases) {
        pl_write_simple(make_vertices({{0, 0}, {1, 0}}).get(), c.layer, 0, c.color, 0);
        const object_id layer = db.record("LAYER", c.layer);
        ASSERT_NE(layer, 0u);
        EXPECT_EQ(host::db::int_of(db.at(layer).groups, 62, -1), c.of_layer);
        EXPECT_EQ(pl_get_props(last_name()).color, c.color);
    }
}

TEST_F(Writing, ObjectsGoIntoTheCurrentSpace)
{
    host::db::set_int(db.owner(), "TILEMODE", 0);
    for (const int kind : {KIND_P2D, KIND_P3D, KIND_LW})
        for (const int viewport : {1, 2}) {
            host::db::set_int(db.owner(), "CVPORT", viewport);
            pline_props props;
            props.kind = kind;
            make_entity({{0, 0}, {1, 0}}, props, 1, 0);
            const object_id space = viewport == 1 ? db.paper_space() : db.model_space();
            object_id made = db.at(space).last;
            while (made && db.is(made, "ENDBLK"))
                made = db.at(made).previous;
            ASSERT_NE(made, 0u) << kind << " in " << viewport;
            EXPECT_EQ(pl_get_props(name_of(made)).kind, kind) << viewport;
            EXPECT_EQ(has(got(made), "67 1"), viewport == 1) << got(made);
        }
}

struct layer_case {
    const char* asked;
    const char* on;      // of the new object
    const char* current; // afterwards
};

TEST_F(Writing, Layers)
{
    host::db::add_layer(db, "BASE", 3);
    const layer_case cases[] = {
        {"", "BASE", "BASE"},          {"CLAYER", "BASE", "BASE"}, {" clayer ", "BASE", "BASE"},
        {" fence ", "FENCE", "FENCE"}, {"a:b", "A_B", "A_B"},      {"   ", "BASE", "BASE"},
    };
    for (const layer_case& c : cases) {
        host::db::set_text(db.owner(), "CLAYER", "BASE");
        pline_props props;
        props.kind = KIND_LW;
        text_set(props.layer, c.asked);
        const std::string list = make_entity({{0, 0}, {1, 0}}, props, 1, 0);
        EXPECT_TRUE(has(list, std::string("8 ") + c.on)) << c.asked << ": " << list;
        EXPECT_EQ(current_layer(), c.current) << c.asked;
    }
}

TEST_F(Writing, NullChainMakesTheLayerButNoObject)
{
    pline_props props;
    text_set(props.layer, "EMPTY");
    pl_make_entity(nullptr, props, 1, 0);
    EXPECT_EQ(count(), 0);
    EXPECT_EQ(current_layer(), "EMPTY");
}

TEST_F(Writing, WhatIsReadIsWrittenAgain)
{
    pline_props props;
    props.color = 3;
    for (const int kind : {KIND_P2D, KIND_P3D, KIND_LW})
        for (const int flags : {0, PLINE_CLOSED}) {
            props.kind = kind;
            props.flags = flags | (kind == KIND_P3D ? PLINE_3D : 0);
            const corners shape = {{0, 0, 5}, {10, 0, 5, kind == KIND_P3D ? 0 : 0.5}, {10, 10, 5}};
            make_entity(shape, props, 1, 0);
            const std::string first = got(last());
            const vertex_chain chain(pl_read_vertices(last_name()));
            EXPECT_EQ(corners_of(chain.get()), shape);
            pl_write_vertices(chain.get(), pl_get_props(last_name()), 0, 0, 1);
            EXPECT_EQ(got(last()), first) << kind << "," << flags;
            EXPECT_EQ(pl_get_props(last_name()).flags, props.flags);
        }
}

// ---- chains of vertices

TEST_F(Writing, NothingOfNoVertexOrOne)
{
    const vertex_chain one = make_vertices({{0, 0}});
    pl_write_vertices(nullptr, {}, 1, 0, 0);
    pl_write_vertices(one.get(), {}, 1, 0, 0);
    pl_write_simple(nullptr, nullptr, 0, -1, 0);
    EXPECT_EQ(count(), 0);
}

TEST_F(Writing, FlatChainBecomesLightweightAndAnyDifferenceInZ3d)
{
    pl_write_vertices(make_vertices({{0, 0, 5}, {1, 0, 5, 0.5}, {2, 0, 5}}).get(), {}, 1, 0, 1);
    EXPECT_EQ(db.type_of(last()), "LWPOLYLINE");
    pl_write_vertices(make_vertices({{0, 0, 5}, {1, 0, 5 + 1e-12, 0.5}, {2, 0, 5}}).get(), {}, 1, 0, 1);
    EXPECT_EQ(pl_get_props(last_name()).kind, KIND_P3D);
    EXPECT_EQ(read(last())[1].bulge, 0.0) << "bulges are lost on the way";
}

TEST_F(Writing, ClosingVertexIsCutOffTheCallersChain)
{
    const vertex_chain chain = make_vertices({{0, 0, 5}, {1, 0, 5}, {1, 1, 5}, {0, 0, 5}});
    pline_props props;
    props.flags = PLINE_CLOSED;
    pl_write_vertices(chain.get(), props, 1, 1, 0);
    const corners cut = {{0, 0, 5}, {1, 0, 5}, {1, 1, 5}};
    EXPECT_EQ(read(last()), cut);
    EXPECT_EQ(corners_of(chain.get()), cut);
    EXPECT_EQ(pl_get_props(last_name()).flags, PLINE_CLOSED);
}

TEST_F(Writing, ClosingVertexStaysUnlessItIsExactlyOnTheFirstAndAskedFor)
{
    struct closing_case {
        corner last;
        int drop_closing;
    };
    for (const closing_case& c :
         {closing_case{{0, 0, 5}, 0}, {{0, 0, 5}, 2}, {{1e-15, 0, 5}, 1}, {{0, 0, 5.1}, 1}}) {
        const vertex_chain chain = make_vertices({{0, 0, 5}, {1, 0, 5}, {1, 1, 5}, c.last});
        pl_write_vertices(chain.get(), {}, 1, c.drop_closing, 0);
        EXPECT_EQ(read(last()).size(), 4u);
        EXPECT_EQ(corners_of(chain.get()).size(), 4u);
    }
}

TEST_F(Writing, TwoEqualVerticesLeaveOneAndTheWriteGoesAhead)
{
    const vertex_chain chain = make_vertices({{3, 4, 5}, {3, 4, 5}});
    pl_write_vertices(chain.get(), {}, 1, 1, 0);
    EXPECT_EQ(corners_of(chain.get()), (corners{{3, 4, 5}}));
    EXPECT_EQ(count(), 1);
}

TEST_F(Writing, SimpleRecord)
{
    pl_write_simple(make_vertices({{0, 0}, {1, 0, 0, 0.5}, {0, 0}}).get(), "fence", 1, -5, 1);
    const pline_props props = pl_get_props(last_name());
    EXPECT_EQ(props.kind, KIND_LW);
    EXPECT_EQ(props.color, 256);
    EXPECT_EQ(props.flags, 1);
    EXPECT_STREQ(props.layer, "FENCE");
    EXPECT_EQ(props.ltscale, 1.0);
    EXPECT_EQ(props.thickness, 0.0);
    EXPECT_EQ(read(last()), (corners{{0, 0}, {1, 0, 0, 0.5}})) << "flags of 1 drop the closing vertex too";
    pl_write_simple(make_vertices({{0, 0}, {1, 0, 0, 0.5}}).get(), nullptr, 0, 0, 0);
    EXPECT_EQ(pl_get_props(last_name()).color, 0);
    EXPECT_STREQ(pl_get_props(last_name()).layer, "FENCE") << "the current layer";
    EXPECT_EQ(read(last())[1].bulge, 0.0);
    pl_write_simple(make_vertices({{0, 0}, {1, 0}}).get(), "", 129, 3, 0);
    EXPECT_EQ(pl_get_props(last_name()).flags, 129);
    EXPECT_EQ(pl_get_props(last_name()).color, 3);
}

TEST_F(Writing, SimpleNodes)
{
    const double a[3] = {0, 0, 1}, b[3] = {5, 0, 2};
    pg_node* nodes = pg_node_push(a, pg_node_push(b, nullptr, 0), 0.5);
    pl_make_nodes_simple(nodes, "x", 0, -1, 0);
    EXPECT_EQ(pl_get_props(last_name()).kind, KIND_LW);
    EXPECT_EQ(read(last())[0].bulge, 0.5);
    pl_make_nodes_simple(nodes, nullptr, 0, 2, 1);
    EXPECT_EQ(pl_get_props(last_name()).kind, KIND_P3D);
    EXPECT_EQ(pl_get_props(last_name()).color, 2);
    pl_make_nodes_simple(nodes->next, nullptr, 0, 2, 1);
    pl_make_nodes_simple(nullptr, nullptr, 0, 2, 1);
    EXPECT_EQ(count(), 2);
    pl_free_nodes(nodes);
}

TEST_F(Writing, LongChainsTakeTimeInProportion)
{
    for (const int kind : {KIND_LW, KIND_P2D, KIND_P3D}) {
        const auto work = [&](int size) {
            corners made;
            for (int i = 0; i < size; ++i)
                made.push_back({double(i), double(i % 7)});
            pline_props props;
            props.kind = kind;
            const vertex_chain chain = make_vertices(made);
            pl_write_vertices(chain.get(), props, 0, 0, 1);
            EXPECT_EQ(read(last()).size(), made.size());
        };
        EXPECT_TRUE(grows_in_proportion(work, 50000)) << kind;
    }
}

TEST_F(Writing, WithoutADrawingNothingHappens)
{
    host::close_all_documents();
    screen::alerts.clear();
    pline_props props;
    text_set(props.layer, "FENCE");
    const vertex_chain chain = make_vertices({{0, 0}, {1, 0}});
    pl_write_vertices(chain.get(), props, 1, 0, 0);
    EXPECT_EQ(screen::alerts, (std::vector<std::string>{"Failed"}));
}

} // namespace
