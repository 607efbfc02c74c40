// Drawing commands: each is sent by a program and typed by a user, and must draw the same.
#include "tests/host/commandline/session.h"

namespace host::commandline
{

namespace
{

class commands : public session
{
};

struct command_case {
    const char* name;
    const char* line; // command and answers
    std::vector<int> codes;
    const char* expected;
};

const command_case CASES[] = {
    {"Line", "LINE|0,0|5,0|@0,5|", {10, 11}, "LINE 10=0,0,0 11=5,0,0 / LINE 10=5,0,0 11=5,5,0"},
    {"LineClose",
     "_.LINE|0,0|5,0|5,5|C",
     {10, 11},
     "LINE 10=0,0,0 11=5,0,0 / LINE 10=5,0,0 11=5,5,0 / LINE 10=5,5,0 11=0,0,0"},
    {"LineUndo", "line|0,0|5,0|9,9|U|5,5|", {10, 11}, "LINE 10=0,0,0 11=5,0,0 / LINE 10=5,0,0 11=5,5,0"},
    {"LineWrongAnswer", "LINE|0,0|nonsense|5,0|", {10, 11}, "LINE 10=0,0,0 11=5,0,0"},
    {"Point", "'_-.POINT|1,2,3", {10}, "POINT 10=1,2,3"},
    {"Pline",
     "PLINE|0,0|10,0|10,10|",
     {10, 42, 43, 70, 90},
     "LWPOLYLINE 90=3 70=0 43=0 10=0,0 42=0 10=10,0 42=0 10=10,10 42=0"},
    {"PlineClose", "PLINE|0,0|10,0|10,10|C", {10, 70}, "LWPOLYLINE 70=1 10=0,0 10=10,0 10=10,10"},
    {"PlineWidth",
     "PLINE|0,0|W|2|1|10,0|20,0|",
     {10, 40, 41},
     "LWPOLYLINE 10=0,0 40=2 41=1 10=10,0 40=1 41=1 10=20,0 40=1 41=1"},
    {"PlineHalfwidth", "PLINE|0,0|H|1||10,0|", {43}, "LWPOLYLINE 43=2"},
    {"PlineUndo", "PLINE|0,0|10,0|99,99|U|10,10|", {10}, "LWPOLYLINE 10=0,0 10=10,0 10=10,10"},
    {"PlineTangentArc",
     "PLINE|0,0|10,0|A|10,10|L|0,10|C",
     {10, 42, 70},
     "LWPOLYLINE 70=1 10=0,0 42=0 10=10,0 42=1 10=10,10 42=0 10=0,10 42=0"},
    {"PlineArcClose",
     "PLINE|0,0|10,0|A|10,10|CL",
     {10, 42, 70},
     "LWPOLYLINE 70=1 10=0,0 42=0 10=10,0 42=1 10=10,10 42=0.414214"},
    {"PlineArcSecond", "PLINE|0,0|A|S|5,5|10,0|", {10, 42}, "LWPOLYLINE 10=0,0 42=-1 10=10,0 42=0"},
    {"PlineArcCenter", "PLINE|10,0|A|CE|0,0|0,10|", {10, 42}, "LWPOLYLINE 10=10,0 42=0.414214 10=0,10 42=0"},
    {"PlineArcAngle", "PLINE|0,0|A|A|-180|10,0|", {10, 42}, "LWPOLYLINE 10=0,0 42=-1 10=10,0 42=0"},
    {"PlineLength", "PLINE|0,0|10,0|Length|5|", {10}, "LWPOLYLINE 10=0,0 10=10,0 10=15,0"},
    {"PlineElevation", "PLINE|0,0,7|10,0|", {10, 38}, "LWPOLYLINE 38=7 10=0,0 10=10,0"},
    {"ThreeDPoly",
     "3DPOLY|0,0,1|10,0,2|10,10,3|C",
     {10, 70},
     "POLYLINE 10=0,0,0 70=9 (VERTEX 10=0,0,1 70=32) (VERTEX 10=10,0,2 70=32) (VERTEX 10=10,10,3 70=32)"},
    {"ThreeDPolyUndo",
     "3DPOLY|0,0,1|9,9,9|U|10,0,2|",
     {10},
     "POLYLINE 10=0,0,0 (VERTEX 10=0,0,1) (VERTEX 10=10,0,2)"},
    {"Circle", "CIRCLE|5,5|2.5", {10, 40}, "CIRCLE 10=5,5,0 40=2.5"},
    {"CircleByPoint", "CIRCLE|5,5|8,9", {10, 40}, "CIRCLE 10=5,5,0 40=5"},
    {"CircleDiameter", "CIRCLE|5,5|D|3", {10, 40}, "CIRCLE 10=5,5,0 40=1.5"},
    {"Circle2P", "CIRCLE|2P|0,0|4,0", {10, 40}, "CIRCLE 10=2,0,0 40=2"},
    {"Circle3P", "CIRCLE|3P|1,0|0,1|-1,0", {10, 40}, "CIRCLE 10=0,0,0 40=1"},
    {"Arc3P", "ARC|1,0|0,1|-1,0", {10, 40, 50, 51}, "ARC 10=0,0,0 40=1 50=0 51=3.14159"},
    {"Arc3PClockwise", "ARC|-1,0|0,1|1,0", {10, 40, 50, 51}, "ARC 10=0,0,0 40=1 50=0 51=3.14159"},
    {"ArcStartCenterEnd", "ARC|2,0|C|0,0|0,5", {10, 40, 50, 51}, "ARC 10=0,0,0 40=2 50=0 51=1.5708"},
    {"ArcCenterFirst", "ARC|C|0,0|2,0|0,5", {10, 40, 50, 51}, "ARC 10=0,0,0 40=2 50=0 51=1.5708"},
    {"ArcAngle", "ARC|2,0|C|0,0|A|90", {40, 50, 51}, "ARC 40=2 50=0 51=1.5708"},
    {"ArcChord", "ARC|2,0|C|0,0|L|2", {40, 50, 51}, "ARC 40=2 50=0 51=1.0472"},
    {"ArcEndAngle", "ARC|1,0|E|-1,0|A|180", {10, 40, 50, 51}, "ARC 10=0,0,0 40=1 50=0 51=3.14159"},
    {"ArcEndDirection", "ARC|1,0|E|-1,0|D|90", {10, 40, 50, 51}, "ARC 10=0,0,0 40=1 50=0 51=3.14159"},
    {"ArcEndRadius", "ARC|1,0|E|0,1|R|1", {10, 40, 50, 51}, "ARC 10=0,0,0 40=1 50=0 51=1.5708"},
    {"ArcEndCenter", "ARC|1,0|E|0,1|0,0", {10, 40, 50, 51}, "ARC 10=0,0,0 40=1 50=0 51=1.5708"},
    {"Text",
     "TEXT|1,2|2.5|90|Hello there|",
     {10, 40, 1, 50, 72},
     "TEXT 10=1,2,0 40=2.5 1=Hello there 50=1.5708 72=0"},
    {"TextByPoint", "TEXT|0,0|1|0,5|Up|", {1, 50}, "TEXT 1=Up 50=1.5708"},
    {"TextJustified", "TEXT|J|MC|5,5|1|0|X|", {11, 72, 73}, "TEXT 72=1 11=5,5,0 73=2"},
    {"TextJustifiedAtOnce", "TEXT|BRight|5,5|1|0|X|", {11, 72, 73}, "TEXT 72=2 11=5,5,0 73=1"},
    {"TextCenter", "TEXT|C|5,5|1|0|X|", {11, 72, 73}, "TEXT 72=1 11=5,5,0 73=0"},
    {"TextAligned", "TEXT|A|0,0|0,10|X|", {10, 11, 50, 72}, "TEXT 10=0,0,0 50=1.5708 72=3 11=0,10,0"},
    {"TextFit", "TEXT|J|F|0,0|10,0|2|X|", {10, 11, 40, 72}, "TEXT 10=0,0,0 40=2 72=5 11=10,0,0"},
};

class command_cases : public session, public testing::WithParamInterface<command_case>
{
};

TEST_P(command_cases, SentByAProgram)
{
    send(GetParam().line);
    EXPECT_EQ(objects(GetParam().codes), GetParam().expected);
    EXPECT_EQ(send("REGEN"), RTNORM);
    EXPECT_EQ(shown, "") << "with CMDECHO 0 nothing is shown";
}

TEST_P(command_cases, TypedByAUser)
{
    type(GetParam().line);
    EXPECT_EQ(objects(GetParam().codes), GetParam().expected);
    EXPECT_NE(shown, "");
    EXPECT_FALSE(answers_ended()) << shown;
}

TEST_P(command_cases, IsOneStepOfUndo)
{
    send("POINT|77,77");
    send(GetParam().line);
    send("U");
    EXPECT_EQ(objects({10}), "POINT 10=77,77,0");
}

INSTANTIATE_TEST_SUITE_P(Drawing, command_cases, testing::ValuesIn(CASES), name_of_case());

TEST_F(commands, ObjectsGetTheCurrentProperties)
{
    send("LAYER|M|FENCE||");
    send("COLOR|red");
    send("LINETYPE|L|HIDDEN|acad.lin|S|HIDDEN|");
    db::set_real(doc(), "CELTSCALE", 2.0);
    db::set_real(doc(), "THICKNESS", 3.0);
    send("LINE|0,0|1,0|");
    EXPECT_EQ(objects({8, 6, 62, 48, 39}), "LINE 8=FENCE 62=1 6=HIDDEN 48=2 39=3");
}

TEST_F(commands, LineGoesOnFromTheLastOne)
{
    send("LINE|0,0|5,5|");
    send("LINE||9,9|");
    EXPECT_EQ(objects({10, 11}), "LINE 10=0,0,0 11=5,5,0 / LINE 10=5,5,0 11=9,9,0");
}

TEST_F(commands, ArcGoesOnSmoothlyFromALine)
{
    send("LINE|0,0|5,0|");
    send("ARC||5,4");
    EXPECT_EQ(objects({10, 40}), "LINE 10=0,0,0 / ARC 10=5,2,0 40=2");
}

TEST_F(commands, PointsInLineMakeNoArc)
{
    EXPECT_EQ(send("ARC|0,0|1,0|2,0"), RTERROR);
    EXPECT_EQ(count(), 0);
    EXPECT_TRUE(has_shown("Invalid arc")) << shown;
}

TEST_F(commands, TextGoesOnUnderTheLastOne)
{
    send("TEXT|10,20|3|0|first");
    send("TEXT||second");
    send("TEXT||"); // a blank line takes its place
    send("TEXT||fourth");
    EXPECT_EQ(objects({10, 40, 1}), "TEXT 10=10,20,0 40=3 1=first / TEXT 10=10,15,0 40=3 1=second / "
                                    "TEXT 10=10,5,0 40=3 1=fourth");
}

TEST_F(commands, ATextStyleOfFixedHeightAsksForNone)
{
    send("STYLE|FIXED||2.5|1|0|N|N|N");
    send("TEXT|0,0|0|words");
    EXPECT_EQ(objects({40, 1, 7}), "TEXT 40=2.5 1=words 7=FIXED");
}

TEST_F(commands, TextFittedWithARotationPointTakesTheLineBehindIt)
{
    list_builder list;
    for (const char* word : {"_.TEXT", "Fit"})
        list.add(rb_text(RTSTR, word));
    const double a[] = {0, 0, 0}, b[] = {10, 0, 0}, r[] = {1, 0, 0};
    list.add(rb_point(RT3DPOINT, a)).add(rb_point(RT3DPOINT, b)).add(rb_real(RTREAL, 2.0));
    list.add(rb_point(RT3DPOINT, r)).add(rb_text(RTSTR, "line"));
    const list_ptr all(list.take());
    EXPECT_EQ(acedCmd(all.get()), RTNORM);
    EXPECT_EQ(objects({1, 40, 72}), "TEXT 40=2 1=line 72=5");
}

TEST_F(commands, TypedTextTakesLinesUntilAnEmptyOne)
{
    type("TEXT|0,0|3|0|one|two||");
    EXPECT_EQ(objects({10, 1}), "TEXT 10=0,0,0 1=one / TEXT 10=0,-5,0 1=two");
}

TEST_F(commands, RealsAreAnglesInTheDrawingsUnit)
{
    EXPECT_EQ(acedCommand(RTSTR, "_.TEXT", RT3DPOINT, point3{0, 0, 0}.data(), RTREAL, 1.0, RTREAL, 1.5, RTSTR,
                          "x", 0),
              RTNORM);
    EXPECT_EQ(objects({50}), "TEXT 50=0.0261799");
}

TEST_F(commands, StyleWithEachAnswerOfItsPrompts)
{
    EXPECT_EQ(send(".style|ROMAN|romans.shx|0.0|0.8|15|||"), RTNORM);
    const db::object_id id = data().record("STYLE", "ROMAN");
    ASSERT_NE(id, 0u);
    EXPECT_EQ(described(id, {3, 40, 41, 50, 70, 71}), "STYLE 70=0 40=0 41=0.8 50=0.261799 71=0 3=romans.shx");
    EXPECT_EQ(db::text_variable(doc(), "TEXTSTYLE"), "ROMAN");
}

TEST_F(commands, StyleThatStopsAtTheUpsideDownAnswerIsMade)
{
    EXPECT_EQ(send(".style|ROMAN||0.0|1|0||_Y"), RTNORM);
    EXPECT_EQ(send(".text|0,0|1|0|x"), RTNORM) << shown;
    EXPECT_EQ(objects({1, 7, 71}), "TEXT 1=x 7=ROMAN 71=4");
}

TEST_F(commands, InsertWithScalesAndRotation)
{
    db::add_block(data(), "MARK");
    send("INSERT|MARK|5,6|2|3|90");
    send("INSERT|mark|1,1||| ");
    EXPECT_EQ(objects({2, 10, 41, 42, 43, 50}), "INSERT 2=MARK 10=5,6,0 41=2 42=3 43=2 50=1.5708 / "
                                                "INSERT 2=MARK 10=1,1,0 41=1 42=1 43=1 50=0");
}

TEST_F(commands, InsertWithScaleAndRotationGivenFirst)
{
    db::add_block(data(), "MARK");
    send("INSERT|MARK|S|2|R|90|5,6");
    EXPECT_EQ(objects({2, 10, 41, 42, 43, 50}), "INSERT 2=MARK 10=5,6,0 41=2 42=2 43=2 50=1.5708");
}

class attributed : public session
{
protected:
    void SetUp() override
    {
        session::SetUp();
        const db::object_id block = db::add_block(data(), "TAGGED");
        db::database& d = data();
        std::string error;
        const db::group_list groups{d.text_group(0, "ATTDEF"),  db::point_group(10, 1, 0, 0),
                                    db::real_group(40, 0.5),    d.text_group(1, "default"),
                                    d.text_group(3, "Number?"), d.text_group(2, "NO"),
                                    db::int_group(70, 0),       db::real_group(50, 0.0)};
        ASSERT_NE(db::append_entity(d, block, groups, &error), 0u) << error;
    }
    void TearDown() override
    {
        db::set_int(doc(), "ATTREQ", 1); // outlives the drawing
        session::TearDown();
    }
};

TEST_F(attributed, AttributesAreAskedForAndFollowTheInsertion)
{
    send("INSERT|TAGGED|10,10|2||90|P-7");
    EXPECT_EQ(objects({2, 10, 1, 40, 50}),
              "INSERT 2=TAGGED 10=10,10,0 50=1.5708 (ATTRIB 10=10,12,0 40=1 1=P-7 50=1.5708 2=NO)");
}

TEST_F(attributed, EnterTakesTheDefault)
{
    type("INSERT|TAGGED|10,10||||");
    EXPECT_EQ(objects({1}), "INSERT (ATTRIB 1=default)");
    EXPECT_TRUE(has_shown("Number? <default>: ")) << shown;
}

TEST_F(attributed, WithAttreqZeroNothingIsAsked)
{
    db::set_int(doc(), "ATTREQ", 0);
    EXPECT_EQ(send("INSERT|TAGGED|10,10|1|1|0"), RTNORM);
    EXPECT_EQ(objects({1}), "INSERT (ATTRIB 1=default)");
}

TEST_F(commands, InsertOfAnUnknownBlockFails)
{
    EXPECT_EQ(send("INSERT|NOWHERE|0,0|1|1|0"), RTERROR);
    EXPECT_EQ(count(), 0);
    EXPECT_TRUE(has_shown("NOWHERE")) << shown;
}

TEST_F(commands, BlockTakesItsObjectsOutOfTheDrawing)
{
    send("LINE|0,0|1,0|");
    send("LINE|0,0|0,1|");
    send("BLOCK|CROSS|0,0|ALL|");
    EXPECT_EQ(count(), 0);
    const db::object_id block = data().record("BLOCK_RECORD", "CROSS");
    ASSERT_NE(block, 0u);
    const db::object_id first = db::first_entity(data(), block);
    EXPECT_EQ(described(first, {11}), "LINE 11=1,0,0");
    EXPECT_EQ(described(db::next_entity(data(), first), {11}), "LINE 11=0,1,0");
}

TEST_F(commands, AnUnknownCommandIsToldInOneLine)
{
    EXPECT_EQ(send("FOO"), RTERROR);
    EXPECT_EQ(shown, "Unknown command \"FOO\".  Press F1 for help.\n");
    shown.clear();
    type("bar");
    EXPECT_EQ(shown, "Unknown command \"BAR\".  Press F1 for help.\n");
}

TEST_F(commands, VariablesAreSetByName)
{
    send("OSMODE|33");
    EXPECT_EQ(db::int_variable(doc(), "OSMODE"), 33);
    send("SETVAR|TEXTSIZE|4.5");
    EXPECT_EQ(db::real_variable(doc(), "TEXTSIZE"), 4.5);
    type("SETVAR|nosuch|cmdecho|1");
    EXPECT_EQ(db::int_variable(doc(), "CMDECHO"), 1);
    EXPECT_TRUE(has_shown("Unknown variable name \"nosuch\".")) << shown;
}

TEST_F(commands, WithCmdechoThePromptsOfAProgramsCommandsAreShown)
{
    db::set_int(doc(), "CMDECHO", 1);
    send("POINT|1,2");
    EXPECT_EQ(shown, "Specify a point: 1,2\n");
}

TEST_F(commands, ASessionRunsUntilItsAnswersEnd)
{
    answer("line|0,0|1,0|||1,0|2,0||foo|(setq a 5)|!a");
    run_session(doc());
    EXPECT_EQ(count(), 2);
    EXPECT_TRUE(has_shown("Command: line\n")) << shown;
    EXPECT_TRUE(has_shown("Unknown command \"FOO\"")) << shown;
    EXPECT_TRUE(has_shown("Command: !a\n5\n")) << shown;
}

} // namespace

} // namespace host::commandline
