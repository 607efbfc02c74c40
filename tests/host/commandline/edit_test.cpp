// Commands that change objects, by what they do to a line, an arc, a text and a polyline.
#include "host/commandline/picks.h"
#include "tests/host/commandline/session.h"

namespace host::commandline
{

namespace
{

class editing : public session
{
protected:
    db::object_id last_object() { return commandline::last_object(data()); }
};

struct edit_case {
    const char* name;
    const char* draw;
    const char* edit;
    std::vector<int> codes;
    const char* expected;
};

const edit_case CASES[] = {
    {"Move", "LINE|0,0|5,0|", "MOVE|ALL||0,0|1,2,3", {10, 11}, "LINE 10=1,2,3 11=6,2,3"},
    {"MoveByDisplacement", "LINE|0,0|5,0|", "MOVE|ALL||1,2|", {10, 11}, "LINE 10=1,2,0 11=6,2,0"},
    {"MoveDisplacementWord", "LINE|0,0|5,0|", "MOVE|ALL||D|1,2", {10, 11}, "LINE 10=1,2,0 11=6,2,0"},
    {"MoveLw", "PLINE|0,0|5,0|5,5|", "_.MOVE|L||0,0|1,2,3", {10, 38}, "LWPOLYLINE 38=3 10=1,2 10=6,2 10=6,7"},
    {"Move3DPoly",
     "3DPOLY|0,0,1|5,0,2|",
     "MOVE|L||0,0|1,1,1",
     {10},
     "POLYLINE 10=0,0,0 (VERTEX 10=1,1,2) (VERTEX 10=6,1,3)"},
    {"MoveArc", "ARC|1,0|0,1|-1,0", "MOVE|L||0,0|5,5", {10, 40, 50}, "ARC 10=5,5,0 40=1 50=0"},
    {"Copy", "LINE|0,0|5,0|", "COPY|ALL||0,0|0,1", {10, 11}, "LINE 10=0,0,0 11=5,0,0 / LINE 10=0,1,0 11=5,1,0"},
    {"CopyMultiple",
     "POINT|0,0",
     "COPY|ALL||M|0,0|1,0|2,0|",
     {10},
     "POINT 10=0,0,0 / POINT 10=1,0,0 / POINT 10=2,0,0"},
    {"Copy3DPoly",
     "3DPOLY|0,0,1|5,0,2|",
     "COPY|L||0,0|0,1",
     {10},
     "POLYLINE 10=0,0,0 (VERTEX 10=0,0,1) (VERTEX 10=5,0,2) / POLYLINE 10=0,0,0 (VERTEX 10=0,1,1) (VERTEX "
     "10=5,1,2)"},
    {"Erase", "LINE|0,0|5,0|5,5|", "ERASE|L|", {10}, "LINE 10=0,0,0"},
    {"Rotate", "LINE|1,0|2,0|", "ROTATE|ALL||0,0|90", {10, 11}, "LINE 10=0,1,0 11=0,2,0"},
    {"RotateByPoint", "LINE|1,0|2,0|", "ROTATE|ALL||0,0|0,9", {10, 11}, "LINE 10=0,1,0 11=0,2,0"},
    {"RotateReference",
     "LINE|1,0|2,0|",
     "ROTATE|ALL||0,0|R|45|90",
     {10, 11},
     "LINE 10=0.707107,0.707107,0 11=1.41421,1.41421,0"},
    {"RotateCopy", "POINT|1,0", "ROTATE|ALL||0,0|C|90", {10}, "POINT 10=1,0,0 / POINT 10=0,1,0"},
    {"RotateText", "TEXT|1,0|1|30|x", "ROTATE|L||0,0|60", {10, 50}, "TEXT 10=0.5,0.866025,0 50=1.5708"},
    {"RotateArc", "ARC|1,0|0,1|-1,0", "ROTATE|L||0,0|90", {50, 51}, "ARC 50=1.5708 51=4.71239"},
    {"Scale", "CIRCLE|2,0|1", "SCALE|ALL||0,0|3", {10, 40}, "CIRCLE 10=6,0,0 40=3"},
    {"ScaleReference", "CIRCLE|2,0|1", "SCALE|ALL||0,0|R|2|5", {10, 40}, "CIRCLE 10=5,0,0 40=2.5"},
    {"ScaleLwWidth", "PLINE|0,0|W|1|1|5,0|", "SCALE|L||0,0|2", {10, 43}, "LWPOLYLINE 43=2 10=0,0 10=10,0"},
    {"MirrorArc", "ARC|1,0|0,1|-1,0", "MIRROR|L||0,0|1,0|Y", {10, 50, 51}, "ARC 10=0,0,0 50=3.14159 51=0"},
    {"MirrorBulge",
     "PLINE|0,0|A|S|5,5|10,0|",
     "MIRROR|L||0,0|1,0|Y",
     {10, 42},
     "LWPOLYLINE 10=0,0 42=1 10=10,0 42=0"},
    {"MirrorKeepsTheSource", "POINT|1,1", "MIRROR|L||0,0|1,0|N", {10}, "POINT 10=1,1,0 / POINT 10=1,-1,0"},
    {"ChpropScale", "LINE|0,0|5,0|", "_.CHPROP|L||_SCALE|2.5|", {48}, "LINE 48=2.5"},
    {"ChpropScaleOfOneHasNoGroup", "LINE|0,0|5,0|", "CHPROP|L||S|2.5|S|1|", {48}, "LINE"},
    {"ChpropScaleKeptByEnter", "LINE|0,0|5,0|", "CHPROP|L||S|2.5|S||", {48}, "LINE 48=2.5"},
    {"ChpropScaleByTwoPoints", "LINE|0,0|5,0|", "CHPROP|L||S|0,0|3,4|", {48}, "LINE 48=5"},
    {"ChpropScaleOfLw", "PLINE|0,0|5,0|", "CHPROP|L||S|0.25|", {48}, "LWPOLYLINE 48=0.25"},
    {"ChpropSeveral", "LINE|0,0|5,0|", "CHPROP|L||C|3|S|2|T|4|", {39, 48, 62}, "LINE 62=3 48=2 39=4"},
    {"ChpropByBlock", "LINE|0,0|5,0|", "CHPROP|L||C|byblock|", {62}, "LINE 62=0"},
    {"ChpropColor", "LINE|0,0|5,0|", "CHPROP|L||C|red|", {62}, "LINE 62=1"},
    {"ChpropByLayer", "LINE|0,0|5,0|", "CHPROP|L||C|5|C|BYLAYER|", {62}, "LINE"},
    {"ChpropThickness", "LINE|0,0|5,0|", "CHPROP|L||T|4|", {39}, "LINE 39=4"},
    {"ChpropLayer", "LINE|0,0|5,0|", "CHPROP|L||LA|0|", {8}, "LINE 8=0"},
    {"ChpropLinetype", "LINE|0,0|5,0|", "CHPROP|L||LT|Continuous|", {6}, "LINE 6=Continuous"},
    {"ChpropLineweight", "LINE|0,0|5,0|", "CHPROP|L||LW|0.5|", {370}, "LINE 370=50"},
    {"ChpropLineweightByBlock", "LINE|0,0|5,0|", "CHPROP|L||LW|0.5|LW|ByBlock|", {370}, "LINE 370=-2"},
    {"ChpropLineweightByLayer", "LINE|0,0|5,0|", "CHPROP|L||LW|0.5|LW|BYLAYER|", {370}, "LINE"},
    {"ChpropLineweightDefault", "LINE|0,0|5,0|", "CHPROP|L||LW|default|", {370}, "LINE 370=-3"},
    {"ChpropHeaviestLineweight", "LINE|0,0|5,0|", "CHPROP|L||LW|1e300|", {370}, "LINE 370=211"},
    {"ChangeProperties", "LINE|0,0|5,0|", "CHANGE|L||P|C|2|", {62}, "LINE 62=2"},
};

class edit_cases : public session, public testing::WithParamInterface<edit_case>
{
};

TEST_P(edit_cases, SentByAProgram)
{
    send(GetParam().draw);
    EXPECT_EQ(send(GetParam().edit), RTNORM) << shown;
    EXPECT_EQ(objects(GetParam().codes), GetParam().expected);
}

TEST_P(edit_cases, TypedByAUserAndUndone)
{
    send(GetParam().draw);
    const std::string before = objects(GetParam().codes);
    type(GetParam().edit);
    EXPECT_EQ(objects(GetParam().codes), GetParam().expected);
    EXPECT_FALSE(answers_ended()) << shown;
    send("U");
    EXPECT_EQ(objects(GetParam().codes), before);
}

INSTANTIATE_TEST_SUITE_P(Editing, edit_cases, testing::ValuesIn(CASES), name_of_case());

TEST_F(editing, ChpropOfASequenceTakesItsVerticesAlong)
{
    send("LAYER|N|FENCE|");
    send("3DPOLY|0,0,1|5,0,2|");
    send("CHPROP|L||LA|fence|");
    EXPECT_EQ(objects({8}), "POLYLINE 8=FENCE (VERTEX 8=FENCE) (VERTEX 8=FENCE)");
}

TEST_F(editing, TheScaleOfLinetypesIsMeantByEachOfItsWords)
{
    send("LINE|0,0|5,0|");
    double scale = 2.0;
    for (const char* word : {"S", "s", "_S", "Sc", "SCALE", "_SCALE", "scale", "ltScale", "LTSCALE", "_LTSCALE",
                             "LTS", "lts", "LTSC", "LS", "_LS", "_.SCALE"}) {
        SCOPED_TRACE(word);
        ads_name line;
        ASSERT_EQ(acdbEntLast(line), RTNORM);
        scale += 0.125;
        const int status =
            acedCommand(RTSTR, "_.CHPROP", RTENAME, line, RTSTR, "", RTSTR, word, RTREAL, scale, RTSTR, "", 0);
        if (std::string_view(word) == "_.SCALE") { // a command's name, no key word
            EXPECT_NE(status, RTNORM);
            break;
        }
        EXPECT_EQ(status, RTNORM);
        EXPECT_DOUBLE_EQ(db::real_of(data().at(nth(0)).groups, 48, 1.0), scale);
    }
}

TEST_F(editing, WordsOfOtherPropertiesAreNotTakenForTheScale)
{
    send("LINE|0,0|5,0|");
    db::set_int(doc(), "CMDECHO", 1);
    EXPECT_EQ(send("CHPROP|L||L|LT|Continuous|"), RTERROR);
    EXPECT_TRUE(has_shown("Invalid option keyword.")) << shown;
    EXPECT_EQ(objects({6, 48}), "LINE 6=Continuous");
}

// As tools do it that make an object again: all digits, the same name, still the newest.
TEST_F(editing, ChangedPropertiesLeaveTheObjectTheLastWithItsName)
{
    send("POINT|9,9");
    send("3DPOLY|0,0,1|5,0,2|");
    ads_name before, after;
    ASSERT_EQ(acdbEntLast(before), RTNORM);
    const std::uint64_t name = data().at(last_object()).handle;
    const double scale = 0.1 + 0.2;
    ASSERT_EQ(acedCommand(RTSTR, "_.CHPROP", RTENAME, before, RTSTR, "", RTSTR, "_SCALE", RTREAL, scale, RTSTR,
                          "", 0),
              RTNORM);
    ASSERT_EQ(acdbEntLast(after), RTNORM);
    EXPECT_EQ(before[0], after[0]);
    EXPECT_EQ(before[1], after[1]);
    EXPECT_EQ(data().at(last_object()).handle, name);
    EXPECT_EQ(db::real_of(data().at(last_object()).groups, 48, 1.0), scale);
    EXPECT_EQ(objects({8, 48}), "POINT 8=0 / POLYLINE 8=0 48=0.3 (VERTEX 8=0) (VERTEX 8=0)");
}

// Files have the thickness with the kind's own groups, not with those common to all.
TEST_F(editing, AThicknessStandsBehindTheMarkerOfItsKind)
{
    send("ARC|1,0|0,1|-1,0");
    send("CHPROP|L||T|4|");
    EXPECT_EQ(objects({100, 8, 39, 40, 50}),
              "ARC 100=AcDbEntity 8=0 100=AcDbCircle 39=4 40=1 100=AcDbArc 50=0");
    send("CHPROP|L||T|0|");
    EXPECT_EQ(db::real_of(data().at(nth(0)).groups, 39, 0.0), 0.0);
}

TEST_F(editing, WrongScalesAreRefusedAndTheNextOneIsTaken)
{
    send("LINE|0,0|5,0|");
    db::set_int(doc(), "CMDECHO", 1);
    EXPECT_EQ(send("CHPROP|L||S|0|-1|much|3|"), RTERROR);
    EXPECT_EQ(objects({48}), "LINE 48=3");
    EXPECT_TRUE(has_shown("Value must be positive and nonzero.")) << shown;
    EXPECT_TRUE(has_shown("Requires numeric distance or two points.")) << shown;
}

TEST_F(editing, ChpropOfALockedObjectChangesNothingAndLeavesNoCommandWaiting)
{
    send("LAYER|M|FIXED|");
    send("LINE|0,0|5,0|");
    send("LAYER|LO|FIXED|");
    ads_name line;
    ASSERT_EQ(acdbEntLast(line), RTNORM);
    acedCommand(RTSTR, "_.CHPROP", RTENAME, line, RTSTR, "", RTSTR, "_SCALE", RTREAL, 2.0, RTSTR, "", 0);
    EXPECT_EQ(objects({8, 48}), "LINE 8=FIXED");
    EXPECT_EQ(send("LAYER|S|0|"), RTNORM);
    EXPECT_EQ(db::text_variable(doc(), "CLAYER"), "0");
}

TEST_F(editing, WhatLiesOnALockedLayerStays)
{
    send("LAYER|M|FIXED|");
    send("POINT|1,1");
    send("LAYER|S|0|LO|FIXED|");
    send("POINT|2,2");
    db::set_int(doc(), "CMDECHO", 1);
    send("ERASE|ALL|");
    EXPECT_EQ(objects({10}), "POINT 10=1,1,0");
    EXPECT_TRUE(has_shown("1 on a locked layer.")) << shown;
}

TEST_F(editing, SelectMakesThePreviousSelection)
{
    send("POINT|1,1");
    send("POINT|2,2");
    send("SELECT|L|");
    send("ERASE|P|");
    EXPECT_EQ(objects({10}), "POINT 10=1,1,0");
}

TEST_F(editing, EntityNamesAndSetsOfAProgramAreTaken)
{
    send("POINT|1,1");
    send("POINT|2,2");
    ads_name set;
    ASSERT_EQ(acedSSGet("X", nullptr, nullptr, nullptr, set), RTNORM);
    EXPECT_EQ(acedCommand(RTSTR, "_.MOVE", RTPICKS, set, RTSTR, "", RT3DPOINT, point3{0, 0, 0}.data(),
                          RT3DPOINT, point3{10, 0, 0}.data(), 0),
              RTNORM);
    EXPECT_EQ(objects({10}), "POINT 10=11,1,0 / POINT 10=12,2,0");
    acedSSFree(set);
}

} // namespace

} // namespace host::commandline
