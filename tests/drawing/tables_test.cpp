// Symbol tables and the current space.
#include "drawing/tables.h"

#include <gtest/gtest.h>

#include "host/database/sysvars.h"
#include "tests/drawing/drawing_case.h"
#include "tests/drawing/screen.h"

namespace
{

using host::db::object_id;

class Tables : public drawing_case
{
protected:
    Tables()
    {
        screen::alerts.clear();
        screen::vectors.clear();
        screen::updates = 0;
    }
    std::string variable(const char* name) { return host::db::text_variable(db.owner(), name); }
    // Groups of a table record without its handles and names of tables.
    std::string record(const char* table, const char* name)
    {
        const host::list_ptr list(acdbTblSearch(table, name, 0));
        return host::db::testing_lists::shown(list.get());
    }
    struct layer_made {
        std::string name;
        Acad::ErrorStatus status;
    };
    layer_made make_current(const std::string& name, int color)
    {
        char text[200];
        text_set(text, name);
        const Acad::ErrorStatus status = layer_make_current(text, color);
        return {text, status};
    }
};

TEST_F(Tables, NewLayer)
{
    const auto made = make_current("  side walk \r\n", 3);
    EXPECT_EQ(made.status, Acad::eOk);
    EXPECT_EQ(made.name, "SIDE WALK");
    EXPECT_EQ(variable("CLAYER"), "SIDE WALK");
    EXPECT_EQ(record("LAYER", "SIDE WALK"), "0 LAYER;2 SIDE WALK;70 0;62 3;6 Continuous;370 -3");
}

TEST_F(Tables, NewLayerByLayerGetsColourSeven)
{
    make_current("A", 256);
    EXPECT_EQ(record("LAYER", "A"), "0 LAYER;2 A;70 0;62 7;6 Continuous;370 -3");
}

TEST_F(Tables, ForbiddenCharactersBecomeUnderscores)
{
    EXPECT_EQ(make_current("a<b>c/d\\e\"f:g?h|i,j=k`l~m*n", 1).name, "A_B_C_D_E_F_G_H_I_J_K_L_M_N");
    EXPECT_EQ(variable("CLAYER"), "A_B_C_D_E_F_G_H_I_J_K_L_M_N");
}

TEST_F(Tables, CurrentLayerAndEmptyNamesLeaveTheTableAlone)
{
    for (const char* name : {"CLAYER", "clayer", " Clayer ", "", "   "}) {
        EXPECT_EQ(make_current(name, 1).status, Acad::eOk) << name;
        EXPECT_EQ(variable("CLAYER"), "0") << name;
    }
    EXPECT_EQ(record("LAYER", "CLAYER"), "");
}

TEST_F(Tables, FrozenLockedAndOffLayerIsFreed)
{
    const object_id layer = host::db::add_layer(db, "Old", 4);
    for (auto& g : db.modify(layer)) {
        if (g.code == 70)
            g.integer = 1 | 4;
        if (g.code == 62)
            g.integer = -4;
    }
    EXPECT_EQ(make_current("old", 6).status, Acad::eOk);
    EXPECT_EQ(variable("CLAYER"), "Old");
    EXPECT_EQ(record("LAYER", "Old"), "0 LAYER;2 Old;70 0;62 4;6 Continuous;370 -3") << "its own colour stays";
}

TEST_F(Tables, NamesThatTheHostRefusesChangeNothing)
{
    EXPECT_NE(make_current("a;b", 1).status, Acad::eOk);
    EXPECT_EQ(variable("CLAYER"), "0");
    const std::string style = variable("TEXTSTYLE");
    EXPECT_NE(text_style_make_current("a:b"), Acad::eOk);
    EXPECT_EQ(variable("TEXTSTYLE"), style);
    EXPECT_NE(linetype_ensure("a:b"), Acad::eOk);
    EXPECT_TRUE(screen::alerts.empty());
}

TEST_F(Tables, LayerWithoutATableAlerts)
{
    host::close_all_documents();
    EXPECT_NE(make_current("A", 1).status, Acad::eOk);
    EXPECT_NE(text_style_make_current("A"), Acad::eOk);
    EXPECT_NE(linetype_ensure("A"), Acad::eOk);
    const double a[3] = {0, 0, 0};
    pg_node* nodes = pg_node_push(a, pg_node_push(a, nullptr, 0), 0);
    nodes_as_lines(nodes, {});
    pl_free_nodes(nodes);
    EXPECT_EQ(screen::alerts, (std::vector<std::string>{"Failed", "Failed", "Failed", "Failed"}));
}

TEST_F(Tables, NewTextStyle)
{
    EXPECT_EQ(text_style_make_current("notes"), Acad::eOk);
    EXPECT_EQ(variable("TEXTSTYLE"), "NOTES");
    EXPECT_NE(record("STYLE", "NOTES").find(";40 0;"), std::string::npos) << record("STYLE", "NOTES");
}

TEST_F(Tables, TextStyleLosesItsFixedHeight)
{
    const object_id style = host::db::add_record(db, "STYLE", "Tall");
    for (auto& g : db.modify(style))
        if (g.code == 40)
            g.real = 2.5;
    ASSERT_NE(record("STYLE", "Tall").find(";40 2.5;"), std::string::npos);
    EXPECT_EQ(text_style_make_current("tall"), Acad::eOk);
    EXPECT_EQ(variable("TEXTSTYLE"), "Tall");
    EXPECT_NE(record("STYLE", "Tall").find(";40 0;"), std::string::npos);
    for (const char* name : {"", "CSTYLE", "cstyle"}) {
        for (auto& g : db.modify(style))
            if (g.code == 40)
                g.real = 2.5;
        EXPECT_EQ(text_style_make_current(name), Acad::eOk) << name;
        EXPECT_NE(record("STYLE", "Tall").find(";40 0;"), std::string::npos) << name;
        EXPECT_EQ(variable("TEXTSTYLE"), "Tall") << name;
    }
}

TEST_F(Tables, LinetypeIsMadeOnce)
{
    EXPECT_EQ(linetype_ensure("gasline"), Acad::eOk);
    const std::string made = record("LTYPE", "GASLINE");
    EXPECT_NE(made.find("2 GASLINE;"), std::string::npos) << made;
    EXPECT_NE(made.find("73 2;40 0.75;49 0.5"), std::string::npos) << made;
    EXPECT_NE(made.find("49 -0.25"), std::string::npos) << made;
    EXPECT_EQ(linetype_ensure("GasLine"), Acad::eOk);
    EXPECT_EQ(linetype_ensure("Continuous"), Acad::eOk);
    EXPECT_NE(record("LTYPE", "Continuous").find("73 0"), std::string::npos) << "what is there stays as it is";
}

TEST_F(Tables, CurrentSpace)
{
    EXPECT_STREQ(current_space_name(), "*Model_Space");
    host::db::set_int(db.owner(), "TILEMODE", 0);
    host::db::set_int(db.owner(), "CVPORT", 1);
    EXPECT_STREQ(current_space_name(), "*Paper_Space");
    host::db::set_int(db.owner(), "CVPORT", 2);
    EXPECT_STREQ(current_space_name(), "*Model_Space") << "a model viewport is active";
    host::db::set_int(db.owner(), "TILEMODE", 1);
    EXPECT_STREQ(current_space_name(), "*Model_Space");
}

TEST_F(Tables, NodesAsLines)
{
    host::db::add_layer(db, "FENCE", 3);
    const double a[3] = {0, 0, 1}, b[3] = {5, 0, 2}, c[3] = {5, 6, 3};
    pg_node* nodes = pg_node_push(a, pg_node_push(b, pg_node_push(c, nullptr, 0), 0), 0.5);
    pline_props props;
    props.color = 2;
    props.thickness = 4;
    props.ltscale = 3;
    text_set(props.layer, "FENCE");
    text_set(props.linetype, "CONTINUOUS");
    nodes_as_lines(nodes, props);
    EXPECT_EQ(types(), (std::vector<std::string>{"LINE", "LINE"}));
    const std::string list = got(last());
    for (const char* groups : {"8 FENCE", "62 2", "39 4", "48 3", "6 Continuous", "10 5,0,2;11 5,6,3"})
        EXPECT_NE(list.find(groups), std::string::npos) << groups << " in " << list;
    text_set(props.layer, "NOSUCH");
    nodes_as_lines(nodes->next, props);
    EXPECT_NE(got(last()).find("8 0;"), std::string::npos) << "the current layer, and none is made";
    EXPECT_EQ(record("LAYER", "NOSUCH"), "");
    nodes_as_lines(nodes->next->next, props);
    nodes_as_lines(nullptr, props);
    EXPECT_EQ(count(), 3);
    pl_free_nodes(nodes);
}

TEST_F(Tables, EntityLayerAndColour)
{
    host::db::add_layer(db, "Fence", 3);
    const auto line = [&](const std::string& more) {
        return name_of(made("0 LINE;" + more + "10 0,0,0;11 1,1,1"));
    };
    char layer[64] = "before";
    entity_layer(line("8 Fence;"), layer);
    EXPECT_STREQ(layer, "Fence");
    char shorter[4];
    entity_layer(line("8 Fence;"), shorter);
    EXPECT_STREQ(shorter, "Fen");
    EXPECT_EQ(entity_color(line("8 Fence;62 5;")), 5);
    EXPECT_EQ(entity_color(line("8 Fence;")), 3);
    EXPECT_EQ(entity_color(line("8 Fence;62 0;")), 0);
    host::db::find(db.modify(db.record("LAYER", "Fence")), 62)->integer = -3;
    EXPECT_EQ(entity_color(line("8 Fence;")), 3) << "a layer that is off keeps its colour";
    const ads_name none = {0, 0};
    entity_layer(none, layer);
    EXPECT_STREQ(layer, "");
    EXPECT_EQ(entity_color(none), 256);
}

TEST_F(Tables, ExtentsArePlanar)
{
    ads_point low = {7, 7, 7}, high = {8, 8, 8};
    entity_extents(name_of(made("0 LINE;10 4,-2,1;11 1,5,9")), low, high);
    EXPECT_EQ(low[0], 1);
    EXPECT_EQ(low[1], -2);
    EXPECT_EQ(low[2], 7);
    EXPECT_EQ(high[0], 4);
    EXPECT_EQ(high[1], 5);
    EXPECT_EQ(high[2], 8);
    const ads_name none = {0, 0};
    entity_extents(none, low, high);
    EXPECT_EQ(low[0], 1) << "nothing is written when it does not open";
}

TEST_F(Tables, NodesOnTheScreen)
{
    const double a[3] = {0, 0, 1}, b[3] = {5, 0, 2}, c[3] = {5, 6, 3};
    pg_node* nodes = pg_node_push(a, pg_node_push(b, pg_node_push(c, nullptr, 0), 0), 0);
    nodes_grdraw(nodes, 4);
    EXPECT_EQ(screen::vectors, (std::vector<std::string>{"0,0,1 5,0,2 4 0", "5,0,2 5,6,3 4 0"}));
    EXPECT_EQ(screen::updates, 1);
    nodes_grdraw(nullptr, 4);
    EXPECT_EQ(screen::vectors.size(), 2u);
    pl_free_nodes(nodes);
}

} // namespace
