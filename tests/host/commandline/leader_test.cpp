// The dimensioning mode and its LEADER: typed, sent by programs, cancelled, and with odd values.
#include <limits>
#include <numbers>

#include "host/commandline/leader_shape.h"
#include "tests/host/commandline/session.h"

namespace host::commandline
{

namespace
{

const std::vector<int> PLACES = {10, 11, 12, 13, 1, 40, 72, 73};

class leaders : public session
{
protected:
    void SetUp() override
    {
        session::SetUp();
        db::set_real(doc(), "DIMASZ", 3.0);
        db::set_real(doc(), "DIMTXT", 2.0);
        db::set_real(doc(), "DIMGAP", 1.0);
    }
    std::string types()
    {
        std::string out;
        for (db::object_id id = db::first_entity(data(), data().current_space()); id;
             id = db::next_entity(data(), id))
            out += (out.empty() ? "" : " ") + std::string(data().type_of(id));
        return out;
    }
    int set(const char* name, double value)
    {
        const list_ptr node(rb_real(RTREAL, value));
        return acedSetVar(name, node.get());
    }
    int set(const char* name, const char* value)
    {
        const list_ptr node(rb_text(RTSTR, value));
        return acedSetVar(name, node.get());
    }
};

struct leader_case {
    const char* name;
    const char* answers;
    const char* expected;
};

// DIMASZ 3, DIMTXT 2, DIMGAP 1: the head is 3 long and 1 wide.
const leader_case CASES[] = {
    {"Horizontal", "0,0|10,0||",
     "SOLID 10=3,-0.5,0 11=3,0.5,0 12=0,0,0 13=0,0,0 / LINE 10=3,0,0 11=10,0,0 / "
     "TEXT 10=11,-1,0 40=2 1=0.0000 72=0 11=11,0,0 73=2"},
    {"ToTheLeft", "0,0|-10,0||A",
     "SOLID 10=-3,0.5,0 11=-3,-0.5,0 12=0,0,0 13=0,0,0 / LINE 10=-3,0,0 11=-10,0,0 / "
     "TEXT 10=-12.3333,-1,0 40=2 1=A 72=2 11=-11,0,0 73=2"},
    {"SteepWithHook", "0,0|0,10||A",
     "SOLID 10=0.5,3,0 11=-0.5,3,0 12=0,0,0 13=0,0,0 / LINE 10=0,3,0 11=0,10,0 / LINE 10=0,10,0 11=3,10,0 / "
     "TEXT 10=4,9,0 40=2 1=A 72=0 11=4,10,0 73=2"},
    {"SteepToTheLeft", "0,0|-6,8||A",
     "SOLID 10=-1.4,2.7,0 11=-2.2,2.1,0 12=0,0,0 13=0,0,0 / LINE 10=-1.8,2.4,0 11=-6,8,0 / "
     "LINE 10=-6,8,0 11=-9,8,0 / TEXT 10=-11.3333,7,0 40=2 1=A 72=2 11=-10,8,0 73=2"},
    {"SteepWithoutText", "0,0|0,10|| ",
     "SOLID 10=0.5,3,0 11=-0.5,3,0 12=0,0,0 13=0,0,0 / LINE 10=0,3,0 11=0,10,0"},
    {"ManyPoints", "0,0|10,0|10,20|30,20||A",
     "SOLID 10=3,-0.5,0 11=3,0.5,0 12=0,0,0 13=0,0,0 / LINE 10=3,0,0 11=10,0,0 / LINE 10=10,0,0 11=10,20,0 / "
     "LINE 10=10,20,0 11=30,20,0 / TEXT 10=31,19,0 40=2 1=A 72=0 11=31,20,0 73=2"},
    {"Undo", "0,0|99,99|U|10,0||A",
     "SOLID 10=3,-0.5,0 11=3,0.5,0 12=0,0,0 13=0,0,0 / LINE 10=3,0,0 11=10,0,0 / "
     "TEXT 10=11,-1,0 40=2 1=A 72=0 11=11,0,0 73=2"},
    {"UndoAtTheStart", "0,0|U|10,0||A",
     "SOLID 10=3,-0.5,0 11=3,0.5,0 12=0,0,0 13=0,0,0 / LINE 10=3,0,0 11=10,0,0 / "
     "TEXT 10=11,-1,0 40=2 1=A 72=0 11=11,0,0 73=2"},
    {"JustRoomForTheHead", "0,0|6,0|| ",
     "SOLID 10=3,-0.5,0 11=3,0.5,0 12=0,0,0 13=0,0,0 / LINE 10=3,0,0 11=6,0,0"},
    {"TooShortForTheHead", "0,0|5.999,0|| ", "LINE 10=0,0,0 11=5.999,0,0"},
    {"RoomInTheFirstSegmentOnly", "0,0|5,0|50,0|| ", "LINE 10=0,0,0 11=5,0,0 / LINE 10=5,0,0 11=50,0,0"},
    {"AtTheHeightOfItsStart", "0,0,7|10,0,9|| ",
     "SOLID 10=3,-0.5,7 11=3,0.5,7 12=0,0,7 13=0,0,7 / LINE 10=3,0,7 11=10,0,7"},
    {"SamePointIsPassedOver", "0,0|0,0|10,0|10,0|| ",
     "SOLID 10=3,-0.5,0 11=3,0.5,0 12=0,0,0 13=0,0,0 / LINE 10=3,0,0 11=10,0,0"},
    {"MeasuredTextInText", "0,0|4,0||R <> m",
     "LINE 10=0,0,0 11=4,0,0 / TEXT 10=5,-1,0 40=2 1=R 0.0000 m 72=0 "
     "11=5,0,0 73=2"},
};

class leader_cases : public leaders, public testing::WithParamInterface<leader_case>
{
};

TEST_P(leader_cases, SentByAProgram)
{
    EXPECT_EQ(send(std::string("_.DIM1|_LEADER|") + GetParam().answers), RTNORM);
    EXPECT_EQ(objects(PLACES), GetParam().expected);
    EXPECT_EQ(shown, "") << "with CMDECHO 0 nothing is shown";
    EXPECT_EQ(send("U"), RTNORM);
    EXPECT_EQ(count(), 0) << "a leader is one step of undo";
}

TEST_P(leader_cases, TypedByAUser)
{
    type(std::string("dim1|lea|") + GetParam().answers);
    EXPECT_EQ(objects(PLACES), GetParam().expected);
    EXPECT_FALSE(answers_ended()) << shown;
}

INSTANTIATE_TEST_SUITE_P(Points, leader_cases, testing::ValuesIn(CASES), name_of_case());

TEST_F(leaders, PromptsComeInOrder)
{
    type("DIM1|LEADER|0,0|10,0||");
    EXPECT_EQ(shown, "Dim: LEADER\nLeader start: 0,0\nTo point: 10,0\nTo point: \nDimension text <0.0000>: \n");
}

TEST_F(leaders, DefaultTextIsInTheDrawingsUnits)
{
    db::set_int(doc(), "LUPREC", 2);
    type("DIM1|L|0,0|10,0||");
    EXPECT_TRUE(has_shown("Dimension text <0.00>: ")) << shown;
    EXPECT_EQ(described(nth(2), {1}), "TEXT 1=0.00");
}

// What a program does that wants the head alone.
TEST_F(leaders, ErasingTextAndLinesFromTheEndLeavesTheHead)
{
    send("_.POINT|50,50");
    const ads_point tip = {1, 2, 0}, second = {1, 8.3, 0};
    ASSERT_EQ(acedCommand(RTSTR, "_.DIM1", RTSTR, "_LEADER", RT3DPOINT, tip, RT3DPOINT, second, RTSTR, "",
                          RTSTR, "", RTNONE),
              RTNORM);
    EXPECT_EQ(types(), "POINT SOLID LINE LINE TEXT");
    ads_name last;
    while (acdbEntLast(last) == RTNORM) {
        const list_ptr groups(acdbEntGet(last));
        const std::string type = groups->rbnext->resval.rstring;
        if (type != "TEXT" && type != "MTEXT" && type != "LINE")
            break;
        acdbEntDel(last);
    }
    EXPECT_EQ(types(), "POINT SOLID");
    EXPECT_EQ(described(nth(1), {12}), "SOLID 12=1,2,0");
}

TEST_F(leaders, ScaleCountsForEverything)
{
    db::set_real(doc(), "DIMSCALE", 2.0);
    send("DIM1|LEADER|0,0|0,20||A");
    EXPECT_EQ(objects(PLACES), "SOLID 10=1,6,0 11=-1,6,0 12=0,0,0 13=0,0,0 / LINE 10=0,6,0 11=0,20,0 / "
                               "LINE 10=0,20,0 11=6,20,0 / TEXT 10=8,18,0 40=4 1=A 72=0 11=8,20,0 73=2");
}

TEST_F(leaders, ScaleOfZeroCountsAsOne)
{
    db::set_real(doc(), "DIMSCALE", 0.0);
    send("DIM1|LEADER|0,0|10,0||A");
    EXPECT_EQ(described(nth(0), {10}), "SOLID 10=3,-0.5,0");
    EXPECT_EQ(described(nth(2), {40}), "TEXT 40=2");
}

TEST_F(leaders, SizeOfZeroDrawsNoHeadAndNoHook)
{
    db::set_real(doc(), "DIMASZ", 0.0);
    send("DIM1|LEADER|0,0|0,10||A");
    EXPECT_EQ(objects({10, 11}), "LINE 10=0,0,0 11=0,10,0 / TEXT 10=1,9,0 11=1,10,0");
}

TEST_F(leaders, PartsHaveTheCurrentPropertiesAndColoursOfTheirOwn)
{
    send("LAYER|M|NOTES||");
    send("COLOR|green");
    db::set_real(doc(), "THICKNESS", 5.0);
    send("DIM1|LEADER|0,0|10,0||A");
    EXPECT_EQ(objects({8, 62, 39}), "SOLID 8=NOTES 62=3 / LINE 8=NOTES 62=3 / TEXT 8=NOTES 62=3");
    send("U");
    db::set_int(doc(), "DIMCLRD", 1);
    db::set_int(doc(), "DIMCLRT", 256);
    send("DIM1|LEADER|0,0|10,0||A");
    EXPECT_EQ(objects({8, 62}), "SOLID 8=NOTES 62=1 / LINE 8=NOTES 62=1 / TEXT 8=NOTES");
}

TEST_F(leaders, TextHasTheCurrentStyleAndItsFixedHeight)
{
    send("STYLE|TALL|txt|5|0.5|15|N|N|N");
    send("DIM1|LEADER|0,0|-10,0||A");
    EXPECT_EQ(described(nth(2), {7, 10, 11, 40, 41, 51}),
              "TEXT 10=-12.6667,-2.5,0 40=5 41=0.5 51=0.261799 7=TALL "
              "11=-11,0,0");
}

TEST_F(leaders, ABlankIsNoText)
{
    send("DIM1|LEADER|0,0|0,10||  ");
    EXPECT_EQ(types(), "SOLID LINE");
}

// ---- heads

TEST_F(leaders, HeadOfABlockOfTheDrawing)
{
    send("LINE|0,0|-1,0|");
    send("BLOCK|MARK|0,0|last|");
    ASSERT_EQ(set("DIMBLK", "MARK"), RTNORM);
    send("DIM1|LEADER|0,0|0,10|| ");
    EXPECT_EQ(objects({2, 10, 11, 41, 42, 43, 50}),
              "INSERT 2=MARK 10=0,0,0 41=3 42=3 43=3 50=4.71239 / LINE 10=0,3,0 11=0,10,0");
}

TEST_F(leaders, LeaderBlockGoesBeforeTheBlockOfDimensions)
{
    set("DIMBLK", "_Oblique");
    set("DIMLDRBLK", "_OPEN");
    send("DIM1|LEADER|10,0|0,0|| ");
    EXPECT_EQ(objects({2, 10, 50}), "INSERT 2=_Open 10=10,0,0 50=0 / LINE 10=7,0,0");
    set("DIMLDRBLK", ".");
    send("DIM1|LEADER|10,0|0,0|| ");
    EXPECT_EQ(described(nth(2), {2}), "INSERT 2=_Oblique");
    EXPECT_EQ(described(nth(3), {10}), "LINE 10=10,0,0") << "a tick leaves the line its way to the tip";
}

TEST_F(leaders, ADotTakesTheNameOfAHeadAway)
{
    set("DIMBLK", "_OPEN");
    EXPECT_EQ(set("DIMBLK", "."), RTNORM);
    EXPECT_EQ(db::text_variable(doc(), "DIMBLK"), "");
    send("DIM1|LEADER|0,0|10,0|| ");
    EXPECT_EQ(types(), "SOLID LINE");
}

TEST_F(leaders, StandardHeadsAreMadeOnce)
{
    for (const char* name :
         {"_CLOSED", "_DOT", "_DOTBLANK", "_OPEN", "_OPEN30", "_OPEN90", "_OBLIQUE", "_ARCHTICK"}) {
        ASSERT_EQ(set("DIMLDRBLK", name), RTNORM);
        ASSERT_EQ(send("DIM1|LEADER|0,0|10,0|| "), RTNORM);
        ASSERT_EQ(send("DIM1|LEADER|0,0|10,0|| "), RTNORM);
        const db::object_id block = data().record("BLOCK_RECORD", name);
        ASSERT_NE(block, 0u) << name;
        int parts = 0;
        for (db::object_id id = db::first_entity(data(), block); id; id = db::next_entity(data(), id)) {
            ++parts;
            EXPECT_EQ(db::int_of(data().at(id).groups, 62, -1), 0) << "of the colour of the reference";
        }
        EXPECT_GE(parts, 1) << name;
        EXPECT_LE(parts, 4) << name;
    }
    EXPECT_EQ(count(), 32);
}

TEST_F(leaders, NoHeadWhenNoneIsWanted)
{
    set("DIMLDRBLK", "_NONE");
    send("DIM1|LEADER|0,0|10,0|| ");
    EXPECT_EQ(objects({10, 11}), "LINE 10=0,0,0 11=10,0,0");
}

TEST_F(leaders, UnknownBlockIsToldAndTheFilledHeadDrawn)
{
    set("DIMBLK", "MISSING");
    type("DIM1|LEADER|0,0|10,0|| ");
    EXPECT_TRUE(has_shown("There is no block \"MISSING\" for the arrow head: the filled head is drawn."))
        << shown;
    EXPECT_EQ(types(), "SOLID LINE");
    set("DIMBLK", "_ClosedFilled");
    send("DIM1|LEADER|0,0|10,0|| ");
    EXPECT_EQ(types(), "SOLID LINE SOLID LINE");
}

// ---- ends of the command

TEST_F(leaders, CancelAtAnyPromptLeavesNothing)
{
    for (const char* answers :
         {"^C", "LEADER|^C", "LEADER|0,0|^C", "LEADER|0,0|10,0|^C", "LEADER|0,0|10,0||^C"}) {
        for (const char* name : {"DIM1|", "DIM|"}) {
            shown.clear();
            type(std::string(name) + answers);
            EXPECT_EQ(count(), 0) << name << answers;
            EXPECT_TRUE(has_shown("*Cancel*")) << name << answers;
            EXPECT_FALSE(answers_ended()) << name << answers;
        }
    }
}

TEST_F(leaders, AnswersThatRunOutEndTheMode)
{
    answers_from_text("LEADER\n0,0\n10,0\n");
    run_typed(doc(), "DIM");
    EXPECT_EQ(count(), 0);
    EXPECT_EQ(answers_ended_at(), "To point:");
}

TEST_F(leaders, ModeGoesOnUntilItIsLeft)
{
    for (const char* leaving : {"EXIT", "_exit", "", "e"}) {
        send("ERASE|all|");
        type(std::string("DIM|L|0,0|10,0||A|LEA|0,5|10,5||B|") + leaving);
        EXPECT_EQ(types(), "SOLID LINE TEXT SOLID LINE TEXT") << leaving;
        EXPECT_FALSE(answers_ended()) << leaving;
    }
}

TEST_F(leaders, APauseAsksTheUserForTheText)
{
    answer("by hand");
    EXPECT_EQ(send("DIM1|LEADER|0,0|10,0||\\"), RTNORM);
    EXPECT_EQ(described(nth(2), {1}), "TEXT 1=by hand");
}

TEST_F(leaders, WhatWasDrawnBeforeACancelStays)
{
    type("DIM|L|0,0|10,0||A|L|0,5|10,5|^C");
    EXPECT_EQ(types(), "SOLID LINE TEXT");
    send("U");
    EXPECT_EQ(count(), 0);
}

TEST_F(leaders, ModeGoesOnWithTheProgramsNextCall)
{
    EXPECT_EQ(send("DIM"), RTNORM);
    EXPECT_EQ(send("_LEADER|0,0"), RTNORM);
    EXPECT_EQ(send("10,0||A"), RTNORM);
    EXPECT_EQ(send("_EXIT"), RTNORM) << "the word of the mode, not the command that ends the session";
    EXPECT_FALSE(quit_requested());
    EXPECT_EQ(types(), "SOLID LINE TEXT");
    EXPECT_EQ(send("POINT|1,1"), RTNORM);
    EXPECT_EQ(types(), "SOLID LINE TEXT POINT");
}

TEST_F(leaders, UndoInTheModeTakesTheLastLeaderBack)
{
    type("DIM|L|0,0|10,0||A|L|0,5|10,5||B|U|");
    EXPECT_EQ(types(), "SOLID LINE TEXT");
    type("DIM|U|");
    EXPECT_EQ(types(), "SOLID LINE TEXT");
    EXPECT_TRUE(has_shown("Everything has been undone.")) << shown;
}

TEST_F(leaders, StyleInTheMode)
{
    send("STYLE|NOTE|txt|0|1|0|N|N|N");
    send("STYLE|OTHER|txt|0|1|0|N|N|N");
    type("DIM|STYLE|NOTE|L|0,0|10,0||A|STYLE|MISSING|REDRAW|");
    EXPECT_EQ(described(nth(2), {7}), "TEXT 7=NOTE");
    EXPECT_EQ(db::text_variable(doc(), "TEXTSTYLE"), "NOTE");
    EXPECT_TRUE(has_shown("Cannot find text style \"MISSING\".")) << shown;
}

TEST_F(leaders, UnknownWordIsToldAndAskedAgain)
{
    type("DIM1|HORIZONTAL|L|0,0|10,0||A");
    EXPECT_TRUE(has_shown("Unknown dimensioning command \"HORIZONTAL\".")) << shown;
    EXPECT_EQ(types(), "SOLID LINE TEXT");
}

TEST_F(leaders, UnknownWordOfAProgramDropsTheRestOfTheCall)
{
    EXPECT_EQ(send("DIM1|HORIZONTAL|0,0|10,0|POINT|1,1"), RTERROR);
    EXPECT_TRUE(has_shown("Unknown dimensioning command \"HORIZONTAL\".")) << shown;
    EXPECT_EQ(count(), 0);
}

TEST_F(leaders, LeaderWithoutASecondPointDropsTheRestOfTheCall)
{
    EXPECT_EQ(send("DIM1|LEADER|0,0|0,0||POINT|1,1"), RTERROR);
    EXPECT_EQ(count(), 0);
    type("DIM1|LEADER|0,0||");
    EXPECT_EQ(count(), 0);
    EXPECT_FALSE(answers_ended()) << shown;
}

// ---- odd numbers

TEST_F(leaders, NumbersThatAreNoneAreNoPoints)
{
    const double bad = std::numeric_limits<double>::quiet_NaN(), far = std::numeric_limits<double>::infinity();
    const ads_point zero = {0, 0, 0}, ten = {10, 0, 0}, none = {bad, 0, 0}, away = {far, 0, 0};
    EXPECT_EQ(acedCommand(RTSTR, "DIM1", RTSTR, "LEADER", RT3DPOINT, none, RT3DPOINT, zero, RT3DPOINT, away,
                          RT3DPOINT, ten, RTSTR, "", RTSTR, "A", RTNONE),
              RTERROR);
    EXPECT_EQ(types(), "SOLID LINE TEXT") << "what was right is taken";
    EXPECT_EQ(described(nth(1), {10, 11}), "LINE 10=3,0,0 11=10,0,0");
}

TEST_F(leaders, HugeCoordinatesAreDrawnOrRefusedWhole)
{
    EXPECT_EQ(send("DIM1|LEADER|0,0|1e300,0||A"), RTNORM);
    EXPECT_EQ(types(), "SOLID LINE TEXT");
    EXPECT_EQ(send("DIM1|LEADER|-1.7e308,0|1.7e308,1e308||A"), RTERROR);
    EXPECT_EQ(types(), "SOLID LINE TEXT");
    db::set_real(doc(), "DIMASZ", 1e308);
    db::set_real(doc(), "DIMSCALE", 1e308);
    EXPECT_EQ(send("DIM1|LEADER|0,0|0,10||A"), RTERROR);
    EXPECT_EQ(types(), "SOLID LINE TEXT");
}

TEST_F(leaders, SizesOutOfRangeAreRefusedByTheirVariables)
{
    EXPECT_EQ(set("DIMTXT", 0.0), RTERROR);
    EXPECT_EQ(set("DIMTXT", -1.0), RTERROR);
    EXPECT_EQ(set("DIMTXT", std::numeric_limits<double>::quiet_NaN()), RTERROR);
    EXPECT_EQ(set("DIMTXT", 1e-9), RTNORM);
    EXPECT_EQ(set("DIMASZ", -1.0), RTERROR);
    EXPECT_EQ(set("DIMASZ", 0.0), RTNORM);
    EXPECT_EQ(set("DIMSCALE", -1.0), RTERROR);
    EXPECT_EQ(set("DIMSCALE", 0.0), RTNORM);
    EXPECT_EQ(set("DIMGAP", -1.0), RTNORM);
}

// Files may hold what the variable would refuse.
TEST_F(leaders, BadTextHeightOfAFileRefusesTheText)
{
    db::set_real(doc(), "DIMTXT", 0.0);
    EXPECT_EQ(send("DIM1|LEADER|0,0|10,0||A"), RTERROR);
    EXPECT_EQ(count(), 0);
    EXPECT_EQ(send("DIM1|LEADER|0,0|10,0|| "), RTNORM);
    EXPECT_EQ(types(), "SOLID LINE");
}

TEST_F(leaders, BadArrowSizeOfAFileDrawsNoHead)
{
    db::set_real(doc(), "DIMASZ", -3.0);
    EXPECT_EQ(send("DIM1|LEADER|0,0|0,10||A"), RTNORM);
    EXPECT_EQ(types(), "LINE TEXT");
}

// ---- the shape alone

TEST(LeaderShape, HookBeginsAboveFifteenDegrees)
{
    const leader_sizes sizes{1.0, 0.5, 1.0, false};
    for (const double degrees : {0.0, 14.99, -14.99, 165.01, 180.0}) {
        const double a = degrees * std::numbers::pi / 180.0;
        EXPECT_EQ(shape_of_leader({{}, {10 * std::cos(a), 10 * std::sin(a), 0}}, sizes, true).lines.size(), 1u)
            << degrees;
    }
    for (const double degrees : {15.01, -15.01, 90.0, 164.99}) {
        const double a = degrees * std::numbers::pi / 180.0;
        EXPECT_EQ(shape_of_leader({{}, {10 * std::cos(a), 10 * std::sin(a), 0}}, sizes, true).lines.size(), 2u)
            << degrees;
    }
}

TEST(LeaderShape, HeadAlongTheAxisHasNoNegativeZero)
{
    const double direction =
        shape_of_leader({{10, 0, 0}, {0, 0, 0}}, {1.0, 0.5, 1.0, false}, false).head_direction;
    EXPECT_EQ(direction, 0.0);
    EXPECT_FALSE(std::signbit(direction));
}

TEST(LeaderShape, HeadIsAThirdAsWideAsLongInAnyDirection)
{
    for (int i = 0; i < 12; ++i) {
        const head_corners c = corners_of_head({640000, 5120000, 3}, i * 0.5, 6.0);
        EXPECT_NEAR(std::hypot(c.left.x - c.right.x, c.left.y - c.right.y), 2.0, 1e-8);
        EXPECT_NEAR(std::hypot((c.left.x + c.right.x) / 2 - c.tip.x, (c.left.y + c.right.y) / 2 - c.tip.y), 6.0,
                    1e-8);
        EXPECT_EQ(c.left.z, 3.0);
    }
}

} // namespace

} // namespace host::commandline
