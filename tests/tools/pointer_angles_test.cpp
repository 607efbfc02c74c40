// Where the pointer tool's pointer looks: angle changes, alignment, bearings, and its arrow.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>

#include "tests/tools/pointer_session.h"

namespace
{

constexpr const char* LINE10 = "(line '(0 0 0) '(10 0 0) nil)";
constexpr const char* EAST = "(lw 0 '((0 0) (10 0)) nil)";
constexpr const char* BEND = "(lw 0 '((0 0) (10 0) (10 10)) nil)";
constexpr const char* BEND_TEXT = "LW 0,0 10,0 10,10";
constexpr const char* NOT_ONE = "Error: selection must be a LINE or POLYLINE";

// ---- angle change --------------------------------------------------------------------------------

// From north, at (10,10): the number is degrees, minutes and seconds, clockwise.
TEST(PointerAngle, TurnsClockwiseByDegreesMinutesSeconds)
{
    static constexpr pointer_run ROWS[] = {
        {"degrees", BEND, "10,9|A30|10|", "LW 0,0 10,0 10,10 15,18.6603", ""},
        {"small letter", BEND, "10,9|a30|10|", "LW 0,0 10,0 10,10 15,18.6603", ""},
        {"seconds", BEND, "10,9|A30.1005|10|", "LW 0,0 10,0 10,10 15.0254,18.6456", ""},
        {"counter-clockwise", BEND, "10,9|A-30|10|", "LW 0,0 10,0 10,10 5,18.6603", ""},
        {"counter-clockwise seconds", BEND, "10,9|A-30.1005|10|", "LW 0,0 10,0 10,10 4.9746,18.6456", ""},
        {"with plus", BEND, "10,9|A+30|10|", "LW 0,0 10,0 10,10 15,18.6603", ""},
        {"right angle", BEND, "10,9|A90|10|", "LW 0,0 10,0 10,10 20,10", ""},
        {"minutes alone", BEND, "10,9|A.3|10|", "LW 0,0 10,0 10,10 10.0873,19.9996", ""},
        {"seconds alone, many steps", BEND, "10,9|A0.0030|10000|", "LW 0,0 10,0 10,10 11.4544,10009.9999", ""},
        {"59 minutes 59 seconds", BEND, "10,9|A59.5959|10|", "LW 0,0 10,0 10,10 18.6602,15", ""},
        // 30.29 is a little less than 30 degrees 29 minutes in binary
        {"minutes at the edge of a number", BEND, "10,9|A30.29|10000|", "LW 0,0 10,0 10,10 5082.877,8627.7676",
         ""},
        {"more than a turn", BEND, "10,9|A400|10|", "LW 0,0 10,0 10,10 16.4279,17.6604", ""},
        {"twice", BEND, "10,9|A30|A60|10|", "LW 0,0 10,0 10,10 20,10", ""},
        {"on top of a turn", BEND, "10,9|R|A30|10|", "LW 0,0 10,0 10,10 18.6603,5", ""},
        {"line", LINE10, "9,0|A30|10|", "LINE 0,0 10,0\nLINE 10,0 18.6603,-5", ""},
        {"nothing is drawn by it", BEND, "10,9|A30|", BEND_TEXT, ""},
        {"at the start", BEND, "1,0|A30|10|", "LW -8.6603,5 0,0 10,0 10,10", ""},
        {"by nothing", BEND, "10,9|A0|5|", "LW 0,0 10,0 10,15", ""},
        {"moved", BEND, "10,9|M|A90|5|D|1|", "LW 0,0 10,0 10,10\nLW 15,10 16,10",
         "Move mode|Draw mode|New Polyline"},
    };
    check_runs(ROWS);
}

TEST(PointerAngle, BlanksInFrontOfANumberDontCount)
{
    static constexpr pointer_run ROWS[] = {
        {"angle", BEND, "10,9|A 30|10|", "LW 0,0 10,0 10,10 15,18.6603", ""},
        {"angle, backward", BEND, "10,9|a  -30|10|", "LW 0,0 10,0 10,10 5,18.6603", ""},
        {"bearing", BEND, "10,9|B 130|10|", "LW 0,0 10,0 10,10 15,18.6603", ""},
        {"bearing to be asked for", BEND, "10,9|B |130|10|", "LW 0,0 10,0 10,10 15,18.6603", ""},
        {"right", BEND, "10,9|R 5|", "LW 0,0 10,0 10,10 15,10", ""},
        {"left", BEND, "10,9|L 5|", "LW 0,0 10,0 10,10 5,10", ""},
        {"total", BEND, "10,9|T 25|", "LW 0,0 10,0 10,25", ""},
        {"total to be asked for", BEND, "10,9|T |25|", "LW 0,0 10,0 10,25", ""},
    };
    check_runs(ROWS);
}

// ---- alignment -----------------------------------------------------------------------------------

// The pointer stands at (10,10); the targets run up to the right from (30,0).
TEST(PointerAlign, AimsAlongTheTargetAtItsEndNearerToThePick)
{
    static constexpr const char* LINE_AND_BEND =
        "(line '(30 0 0) '(40 10 0) nil)(lw 0 '((0 0) (10 0) (10 10)) nil)";
    static constexpr const char* LW_AND_BEND =
        "(lw 0 '((30 0) (40 10) (40 30)) nil)(lw 0 '((0 0) (10 0) (10 10)) nil)";
    static constexpr const char* P2D_AND_BEND =
        "(p2d 0 '((30 0) (40 10)) 0.0 0.0 0.0)(lw 0 '((0 0) (10 0) (10 10)) nil)";
    static constexpr const char* P3D_AND_BEND =
        "(p3d 0 '((30 0 0) (40 10 70)))(lw 0 '((0 0) (10 0) (10 10)) nil)";
    static constexpr pointer_run ROWS[] = {
        {"line, first half", LINE_AND_BEND, "10,9|A|31,1|10|",
         "LINE 30,0 40,10\nLW 0,0 10,0 10,10 2.9289,2.9289", ""},
        {"line, second half", LINE_AND_BEND, "10,9|A|39,9|10|",
         "LINE 30,0 40,10\nLW 0,0 10,0 10,10 17.0711,17.0711", ""},
        {"line, middle", LINE_AND_BEND, "10,9|A|35,5|10|", "LINE 30,0 40,10\nLW 0,0 10,0 10,10 17.0711,17.0711",
         ""},
        {"small letter", LINE_AND_BEND, "10,9|a|31,1|10|", "LINE 30,0 40,10\nLW 0,0 10,0 10,10 2.9289,2.9289",
         ""},
        {"polyline, first half", LW_AND_BEND, "10,9|A|31,1|10|",
         "LW 30,0 40,10 40,30\nLW 0,0 10,0 10,10 2.9289,2.9289", ""},
        {"polyline, second half", LW_AND_BEND, "10,9|A|39,9|10|",
         "LW 30,0 40,10 40,30\nLW 0,0 10,0 10,10 17.0711,17.0711", ""},
        {"polyline, last segment, first half", LW_AND_BEND, "10,9|L|A|40,12|10|",
         "LW 30,0 40,10 40,30\nLW 0,0 10,0 10,10 10,0", ""},
        {"polyline, last segment, second half", LW_AND_BEND, "10,9|R|A|40,28|10|",
         "LW 30,0 40,10 40,30\nLW 0,0 10,0 10,20", ""},
        // the closing side isn't one of the chain's; of the two beside it the later one counts
        {"closing side of a closed polyline",
         "(lw 1 '((30 0) (40 0) (40 10) (30 10)) nil)(lw 0 '((0 0) (10 0) (10 10)) nil)", "10,9|A|30,5|10|",
         "LW 30,0 40,0 40,10 30,10 closed\nLW 0,0 10,0 10,10 0,10", ""},
        {"old-style polyline", P2D_AND_BEND, "10,9|A|31,1|10|",
         "P2D 30,0 40,10\nLW 0,0 10,0 10,10 2.9289,2.9289", ""},
        {"3D polyline", P3D_AND_BEND, "10,9|A|39,9|10|", "P3D 30,0 40,10,70\nLW 0,0 10,0 10,10 17.0711,17.0711",
         ""},
        {"from the start of the chain", LINE_AND_BEND, "1,0|A|39,9|10|",
         "LINE 30,0 40,10\nLW 7.0711,7.0711 0,0 10,0 10,10", ""},
        {"on its own object", BEND, "10,9|A|1,0|10|", "LW 0,0 10,0 10,10 0,10", ""},
        {"a turn before it is gone", LINE_AND_BEND, "10,9|R|A|31,1|10|",
         "LINE 30,0 40,10\nLW 0,0 10,0 10,10 2.9289,2.9289", ""},
        {"a turn behind it counts", LINE_AND_BEND, "10,9|A|39,9|R|10|",
         "LINE 30,0 40,10\nLW 0,0 10,0 10,10 17.0711,2.9289", ""},
        {"nothing is drawn by it", LINE_AND_BEND, "10,9|A|39,9|", "LINE 30,0 40,10\nLW 0,0 10,0 10,10", ""},
    };
    check_runs(ROWS);
}

TEST(PointerAlign, IsMeantByALetterWithoutANumber)
{
    for (const char* key : {"A", "a", "A ", "Ax", "Align", "A x30", "A+", "A-", "A."}) {
        SCOPED_TRACE(key);
        pointer_session session("(line '(30 0 0) '(40 0 0) nil)(lw 0 '((0 0) (10 0) (10 10)) nil)");
        session.run(std::string("10,9|") + key + "|39,0|5|");
        EXPECT_EQ(objects_text(), "LINE 30,0 40,0\nLW 0,0 10,0 10,10 15,10");
    }
}

TEST(PointerAlign, WithoutATargetTakesTheTurnAwayAndGoesOn)
{
    static constexpr const char* CIRCLE_AND_BEND =
        "(entmake '((0 . \"CIRCLE\") (10 50.0 0.0 0.0) (40 . 5.0)))(lw 0 '((0 0) (10 0) (10 10)) nil)";
    static constexpr pointer_run ROWS[] = {
        {"miss", BEND, "10,9|R|A|500,500|5|", "LW 0,0 10,0 10,15", ""},
        {"Enter", BEND, "10,9|R|A||5|", "LW 0,0 10,0 10,15", ""},
        {"cancel", BEND, "10,9|R|A|^C|5|", "LW 0,0 10,0 10,15", ""},
        {"circle", CIRCLE_AND_BEND, "10,9|R|A|45,0|5|", "CIRCLE 50,0\nLW 0,0 10,0 10,15", NOT_ONE},
        {"beside no segment", BEND, "10,9|R|A|#last 20,-5|5|", "LW 0,0 10,0 10,15",
         "Error: no segment of the polyline at that point"},
    };
    check_runs(ROWS);
}

// ---- bearing -------------------------------------------------------------------------------------

// From (10,0), looking east; 30 degrees 10 minutes 5 seconds.
TEST(PointerBearing, LooksWhereItsCodeSays)
{
    static constexpr pointer_run ROWS[] = {
        {"1 north east", EAST, "9,0|B130.1005|10|", "LW 0,0 10,0 15.0254,8.6456", ""},
        {"2 south east", EAST, "9,0|B230.1005|10|", "LW 0,0 10,0 15.0254,-8.6456", ""},
        {"3 south west", EAST, "9,0|B330.1005|10|", "LW 0,0 10,0 4.9746,-8.6456", ""},
        {"4 north west", EAST, "9,0|B430.1005|10|", "LW 0,0 10,0 4.9746,8.6456", ""},
        {"5 azimuth", EAST, "9,0|B530.1005|10|", "LW 0,0 10,0 15.0254,8.6456", ""},
        {"5 azimuth to the west", EAST, "9,0|B5270|10|", "LW 0,0 10,0 0,0", ""},
        {"5 azimuth of a full turn", EAST, "9,0|B5360|10|", "LW 0,0 10,0 10,10", ""},
        {"6 counter-clockwise from the backsight", EAST, "9,0|B630.1005|10|", "LW 0,0 10,0 1.3544,-5.0254", ""},
        {"7 clockwise from the backsight", EAST, "9,0|B730.1005|10|", "LW 0,0 10,0 1.3544,5.0254", ""},
        {"8 deflection counter-clockwise", EAST, "9,0|B830.1005|10|", "LW 0,0 10,0 18.6456,5.0254", ""},
        {"9 deflection clockwise", EAST, "9,0|B930.1005|10|", "LW 0,0 10,0 18.6456,-5.0254", ""},
        {"0 is taken for 5", EAST, "9,0|B030.1005|10|", "LW 0,0 10,0 15.0254,8.6456", ""},
        {"0 is taken for 5, to the west", EAST, "9,0|B0270|10|", "LW 0,0 10,0 0,0", ""},
        {"a letter is taken for 5", EAST, "9,0|BN270|10|", "LW 0,0 10,0 0,0", ""},
        {"small letter of the key", EAST, "9,0|b245|10|", "LW 0,0 10,0 17.0711,-7.0711", ""},
        {"minutes without their second digit", EAST, "9,0|B130.3|10|", "LW 0,0 10,0 15.0754,8.6163", ""},
        {"two characters", EAST, "9,0|B45|100000|", "LW 0,0 10,0 -8705.5743,99619.4698", ""},
        // whichever way the segment runs, 1 to 5 are those of the map and 6 to 9 those of the segment
        {"1 from a segment to the north", BEND, "10,9|B130.1005|10|", "LW 0,0 10,0 10,10 15.0254,18.6456", ""},
        {"2 from a segment to the north", BEND, "10,9|B230.1005|10|", "LW 0,0 10,0 10,10 15.0254,1.3544", ""},
        {"3 from a segment to the north", BEND, "10,9|B330.1005|10|", "LW 0,0 10,0 10,10 4.9746,1.3544", ""},
        {"4 from a segment to the north", BEND, "10,9|B430.1005|10|", "LW 0,0 10,0 10,10 4.9746,18.6456", ""},
        {"6 from a segment to the west", EAST, "1,0|B630|10|", "LW 8.6603,5 0,0 10,0", ""},
        {"7 from a segment to the west", EAST, "1,0|B730|10|", "LW 8.6603,-5 0,0 10,0", ""},
        {"8 from a segment to the west", EAST, "1,0|B830|10|", "LW -8.6603,-5 0,0 10,0", ""},
        {"9 from a segment to the west", EAST, "1,0|B930|10|", "LW -8.6603,5 0,0 10,0", ""},
        {"a turn before it doesn't count", EAST, "9,0|R|B145|10|", "LW 0,0 10,0 17.0711,7.0711", ""},
        {"nothing is drawn by it", EAST, "9,0|B145|", "LW 0,0 10,0", ""},
        {"line", LINE10, "9,0|B145|10|", "LINE 0,0 10,0\nLINE 10,0 17.0711,7.0711", ""},
        {"along the line", LINE10, "9,0|B190|10|", "LINE 0,0 20,0", ""},
        {"traverse", EAST, "9,0|B145|10|B245|10|B345|10|B445|10|",
         "LW 0,0 10,0 17.0711,7.0711 24.1421,0 17.0711,-7.0711 10,0", ""},
    };
    check_runs(ROWS);
}

TEST(PointerBearing, IsAskedForWhenNoneStandsBehindTheLetter)
{
    static constexpr pointer_run ROWS[] = {
        {"given", EAST, "9,0|B|145|10|", "LW 0,0 10,0 17.0711,7.0711", ""},
        {"small letter", EAST, "9,0|b|145|10|", "LW 0,0 10,0 17.0711,7.0711", ""},
        {"Enter leaves the pointer", EAST, "9,0|B||10|", "LW 0,0 20,0", ""},
        {"cancel leaves the pointer", EAST, "9,0|B|^C|10|", "LW 0,0 20,0", ""},
        {"one character leaves the pointer", EAST, "9,0|B|1|10|", "LW 0,0 20,0", ""},
        {"one character behind the letter leaves the pointer", EAST, "9,0|B1|10|", "LW 0,0 20,0", ""},
        {"Enter leaves a turn", EAST, "9,0|L|B||10|", "LW 0,0 10,0 10,10", ""},
    };
    check_runs(ROWS);
    pointer_session session(EAST);
    const std::string printed = session.run("9,0|B|145|");
    EXPECT_NE(printed.find("\nEnter Angle (Qdd.mmss): 145\n"), std::string::npos) << printed;
}

TEST(PointerBearing, AngleVariablesArePutBack)
{
    for (const char* answers : {"9,0|B|145|5|", "9,0|B|^C|", "9,0|B||", "9,0|B145|5|", "9,0|B1|", "9,0|BX|"}) {
        pointer_session session(EAST);
        session.lisp("(setvar \"ANGBASE\" 1.25)(setvar \"ANGDIR\" 1)");
        session.run(answers);
        EXPECT_EQ(session.lisp("(list (getvar \"ANGBASE\") (getvar \"ANGDIR\"))"), "(1.25 1)") << answers;
    }
}

TEST(PointerBearing, AngleVariablesAreStandardWhileItIsAskedFor)
{
    pointer_session session(EAST);
    session.lisp("(setvar \"ANGBASE\" 1.25)(setvar \"ANGDIR\" 1)");
    std::vector<std::string> around;
    for (const std::string& line : session.trace("9,0|B|145|"))
        if (line.starts_with("acedSetVar") || line.starts_with("acedGetString"))
            around.push_back(line);
    ASSERT_EQ(around.size(), 5u);
    EXPECT_EQ(around[0], "acedSetVar \"ANGDIR\" 0 -> RTNORM");
    EXPECT_EQ(around[1], "acedSetVar \"ANGBASE\" 0.0 -> RTNORM");
    EXPECT_TRUE(around[2].ends_with("\"\\nEnter Angle (Qdd.mmss): \" -> RTNORM")) << around[2];
    for (const char* back : {"acedSetVar \"ANGDIR\" 1 -> RTNORM", "acedSetVar \"ANGBASE\" 1.25 -> RTNORM"})
        EXPECT_TRUE(around[3] == back || around[4] == back) << back;
}

// A pointer's directions are those of the map, whatever the drawing counts its angles from.
TEST(PointerBearing, DoesNotDependOnTheAngleVariables)
{
    pointer_session session(EAST);
    session.lisp("(setvar \"ANGBASE\" 1.25)(setvar \"ANGDIR\" 1)");
    session.run("9,0|B145|10|R5|A45|5|");
    EXPECT_EQ(objects_text(), "LW 0,0 10,0 17.0711,7.0711 20.6066,3.5355 20.6066,-1.4645");
}

// ---- the arrow -----------------------------------------------------------------------------------

constexpr double SHOWN = 6e-5; // a trace shows six digits

struct vector2 {
    double from[2], to[2];
};

std::vector<vector2> drawn_vectors(const std::vector<std::string>& trace)
{
    std::vector<vector2> all;
    for (const std::string& line : trace) {
        vector2 v;
        double z;
        int color = 0, highlight = 1;
        if (std::sscanf(line.c_str(), "acedGrDraw (%lf %lf %lf) (%lf %lf %lf) %d %d", &v.from[0], &v.from[1],
                        &z, &v.to[0], &v.to[1], &z, &color, &highlight) != 8)
            continue;
        EXPECT_EQ(color, -1) << line;
        EXPECT_EQ(highlight, 0) << line;
        all.push_back(v);
    }
    return all;
}

struct arrow {
    double x, y, degrees;
};

// A triangle one unit high, its tip at the pointer, and the base 2 / 2.7 wide.
void expect_arrow(const arrow& expected, const vector2* drawn)
{
    const double along[2] = {std::cos(expected.degrees * M_PI / 180), std::sin(expected.degrees * M_PI / 180)};
    double corners[4][2];
    for (int i = 0; i < 2; ++i) {
        const double across = (i == 0 ? -along[1] : along[0]) / 2.7, tip = i == 0 ? expected.x : expected.y;
        corners[0][i] = corners[3][i] = tip;
        corners[1][i] = tip - along[i] + across;
        corners[2][i] = tip - along[i] - across;
    }
    for (int side = 0; side < 3; ++side)
        for (int i = 0; i < 2; ++i) {
            EXPECT_NEAR(drawn[side].from[i], corners[side][i], SHOWN) << side;
            EXPECT_NEAR(drawn[side].to[i], corners[side + 1][i], SHOWN) << side;
        }
}

void expect_arrows(const char* drawing, const char* answers, const std::vector<arrow>& arrows)
{
    SCOPED_TRACE(answers);
    pointer_session session(drawing);
    const std::vector<vector2> drawn = drawn_vectors(session.trace(answers));
    ASSERT_EQ(drawn.size(), arrows.size() * 6); // three sides, drawn and wiped
    for (std::size_t i = 0; i < arrows.size(); ++i) {
        SCOPED_TRACE(i);
        expect_arrow(arrows[i], &drawn[i * 6]);
        expect_arrow(arrows[i], &drawn[i * 6 + 3]);
    }
}

TEST(PointerArrow, StandsAtThePointerAndLooksWhereItLooks)
{
    expect_arrows(LINE10, "9,0|", {{10, 0, 0}});
    expect_arrows(LINE10, "1,0|", {{0, 0, 180}});
    expect_arrows(LINE10, "9,0|^C", {{10, 0, 0}});
    expect_arrows(LINE10, "9,0|R|L|L|5|", {{10, 0, 0}, {10, 0, 270}, {10, 0, 0}, {10, 0, 90}, {10, 5, 90}});
    expect_arrows(LINE10, "9,0|M|4|A30|2|S|N|",
                  {{10, 0, 0},
                   {10, 0, 0},
                   {14, 0, 0},
                   {14, 0, -30},
                   {14 + std::sqrt(3.0), -1, -30},
                   {0, 0, 150},
                   {10, 0, -30}});
    expect_arrows(BEND, "10,9|B145|B345|P|5|5|",
                  {{10, 10, 90},
                   {10, 10, 45},
                   {10, 10, 225},
                   {10, 0, 135},
                   {10 - std::sqrt(12.5), std::sqrt(12.5), 135},
                   {10 - std::sqrt(50.0), std::sqrt(50.0), 135}});
    expect_arrows(LINE10, "9,0|T|^C", {{10, 0, 0}});
    expect_arrows(LINE10, "9,0|E|^C", {{10, 0, 0}});
    expect_arrows(LINE10, "9,0|H||U|X|", {{10, 0, 0}, {10, 0, 0}, {10, 0, 0}, {10, 0, 0}});
}

TEST(PointerArrow, KeepsTheSizeOfTheViewAtTheStart)
{
    pointer_session session(LINE10);
    session.lisp("(command \"_.ZOOM\" \"_C\" '(0.0 0.0) 190.0)");
    const std::vector<vector2> drawn = drawn_vectors(session.trace("9,0|"));
    ASSERT_EQ(drawn.size(), 6u);
    EXPECT_NEAR(drawn[0].to[0], 0.0, SHOWN); // ten units long
    EXPECT_NEAR(drawn[0].to[1], 10 / 2.7, SHOWN);
}

} // namespace
