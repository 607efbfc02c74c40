// U of the pointer tool: one level back, by the opposite action.
#include <gtest/gtest.h>

#include "tests/tools/pointer_session.h"

namespace
{

constexpr const char* LINE10 = "(line '(0 0 0) '(10 0 0) nil)";
constexpr const char* EAST = "(lw 0 '((0 0) (10 0)) nil)";
constexpr const char* BEND = "(lw 0 '((0 0) (10 0) (10 10)) nil)";
constexpr const char* STEPS = "(lw 0 '((0 0) (10 0) (10 10) (20 10)) nil)";
// So far from the origin that a step of right angles there and back is exact.
constexpr const char* FAR_EAST = "(lw 0 '((1000 1000) (1010 1000)) nil)";
constexpr const char* EDGE_AND_LINE = "(lw 0 '((20 -5) (20 5)) nil)(line '(0 0 0) '(10 0 0) nil)";

constexpr const char* LINE10_TEXT = "LINE 0,0 10,0";
constexpr const char* BEND_TEXT = "LW 0,0 10,0 10,10";
constexpr const char* FAR_TEXT = "LW 1000,1000 1010,1000";
constexpr const char* UNABLE = "Unable to undo.";

TEST(PointerUndo, OfNothingIsToldAndGoesOn)
{
    static constexpr pointer_run ROWS[] = {
        {"at once", LINE10, "9,0|U|5|", "LINE 0,0 15,0", UNABLE},
        {"small letter", LINE10, "9,0|u|5|", "LINE 0,0 15,0", UNABLE},
        {"word", LINE10, "9,0|Undo|", LINE10_TEXT, UNABLE},
        {"and again", LINE10, "9,0|U|U|", LINE10_TEXT, "Unable to undo.|Unable to undo."},
        {"in Move mode", LINE10, "9,0|M|5|U|U|", LINE10_TEXT, "Move mode|Unable to undo."},
    };
    check_runs(ROWS);
}

TEST(PointerUndo, OfADistanceStepsBack)
{
    static constexpr pointer_run ROWS[] = {
        {"line", LINE10, "9,0|5|U|", LINE10_TEXT, ""},
        {"small letter", LINE10, "9,0|5|u|", LINE10_TEXT, ""},
        {"polyline", BEND, "10,9|5|U|", BEND_TEXT, ""},
        {"with plus", LINE10, "9,0|+5|U|", LINE10_TEXT, ""},
        {"with minus", LINE10, "9,0|-5|U|", LINE10_TEXT, ""},
        {"with point", LINE10, "9,0|.5|U|", LINE10_TEXT, ""},
        {"twice", LINE10, "9,0|5|U|U|", LINE10_TEXT, UNABLE},
        {"only the last", LINE10, "9,0|5|3|U|U|", "LINE 0,0 15,0", UNABLE},
        {"then on", LINE10, "9,0|5|U|3|U|2|", "LINE 0,0 12,0", ""},
        {"a bend drops out", EAST, "9,0|L|5|U|", "LW 0,0 10,0", ""},
        {"a bend drops out, and on", EAST, "9,0|L|5|U|5|", "LW 0,0 15,0", ""},
        {"moved", BEND, "10,9|M|5|U|D|3|", "LW 0,0 10,0 10,13", "Move mode|Draw mode"},
    };
    check_runs(ROWS);
}

TEST(PointerUndo, OfAModeIsTheOther)
{
    static constexpr pointer_run ROWS[] = {
        {"move", LINE10, "9,0|M|U|5|", "LINE 0,0 15,0", "Move mode|Draw mode"},
        {"draw", LINE10, "9,0|D|U|5|", LINE10_TEXT, "Draw mode|Move mode"},
        {"small letters", LINE10, "9,0|m|u|5|", "LINE 0,0 15,0", "Move mode|Draw mode"},
        // the key that U ran is itself undone
        {"again and again", LINE10, "9,0|M|U|U|U|5|", "LINE 0,0 15,0",
         "Move mode|Draw mode|Move mode|Draw mode"},
    };
    check_runs(ROWS);
}

TEST(PointerUndo, OfCloseAndOpenIsTheOther)
{
    static constexpr pointer_run ROWS[] = {
        {"close", BEND, "10,9|C|U|", BEND_TEXT, ""},
        {"close, small letters", BEND, "10,9|c|u|", BEND_TEXT, ""},
        {"open", BEND, "10,9|O|U|", "LW 0,0 10,0 10,10 closed", ""},
        {"open, small letters", BEND, "10,9|o|u|", "LW 0,0 10,0 10,10 closed", ""},
        {"again", BEND, "10,9|C|U|U|", "LW 0,0 10,0 10,10 closed", ""},
        {"again and again", BEND, "10,9|C|U|U|U|", BEND_TEXT, ""},
        {"in Move mode", BEND, "10,9|M|C|U|D|5|", "LW 0,0 10,0 10,15", "Move mode|Draw mode"},
        {"close of a line", LINE10, "9,0|C|U|", LINE10_TEXT,
         "Error: unable to close line|Error: unable to close line|Error: unable to open line"},
        {"open of a line", LINE10, "9,0|O|U|", LINE10_TEXT,
         "Error: unable to open line|Error: unable to open line|Error: unable to close line"},
        {"close of a line, again", LINE10, "9,0|C|U|U|", LINE10_TEXT,
         "Error: unable to close line|Error: unable to close line|Error: unable to open line|"
         "Error: unable to open line|Error: unable to close line"},
    };
    check_runs(ROWS);
}

TEST(PointerUndo, OfAWalkIsTheOtherWay)
{
    static constexpr pointer_run ROWS[] = {
        {"switch", LINE10, "9,0|S|U|5|", "LINE 0,0 15,0", ""},
        {"switch, small letters", LINE10, "9,0|s|u|5|", "LINE 0,0 15,0", ""},
        {"switch, twice", LINE10, "9,0|S|U|U|5|", "LINE -5,0 10,0", ""},
        {"next", STEPS, "10,6|N|U|5|", "LW 0,0 10,0 10,10 20,10\nLW 10,10 10,15", "New Polyline"},
        {"previous", STEPS, "10,6|P|U|5|", "LW 0,0 10,0 10,10 20,10\nLW 10,10 10,15", "New Polyline"},
        {"small letters", STEPS, "10,6|n|u|u|5|", "LW 0,0 10,0 10,10 25,10", ""},
        {"next, twice", STEPS, "10,6|N|U|U|5|", "LW 0,0 10,0 10,10 25,10", ""},
        {"previous, twice", STEPS, "10,6|P|U|U|5|", "LW 0,0 10,0 10,10 20,10\nLW 10,0 15,0", "New Polyline"},
    };
    check_runs(ROWS);
}

TEST(PointerUndo, OfATurnIsTheOtherTurn)
{
    static constexpr pointer_run ROWS[] = {
        {"left", EAST, "9,0|L|U|5|", "LW 0,0 15,0", ""},
        {"left, small letters", EAST, "9,0|l|u|5|", "LW 0,0 15,0", ""},
        // right and back is 360, which counts as a turn
        {"right", EAST, "9,0|R|U|5|", "LW 0,0 10,0 15,0", ""},
        {"right, small letters", EAST, "9,0|r|u|5|", "LW 0,0 10,0 15,0", ""},
        {"right after another", EAST, "9,0|R|R|U|5|", "LW 0,0 10,0 10,-5", ""},
        {"left after another", EAST, "9,0|L|L|U|5|", "LW 0,0 10,0 10,5", ""},
        {"twice", EAST, "9,0|L|L|U|U|5|", "LW 0,0 10,0 10,5", UNABLE},
        {"right of a line", LINE10, "9,0|R|U|5|", "LINE 0,0 10,0\nLINE 10,0 15,0", ""},
        {"left of a line", LINE10, "9,0|L|U|5|", "LINE 0,0 15,0", ""},
        {"a distance below 0 was no step", EAST, "9,0|L-5|U|5|", "LW 0,0 15,0", ""},
    };
    check_runs(ROWS);
}

TEST(PointerUndo, OfATurnWithADistanceStepsBackAndLeavesTheTurn)
{
    static constexpr pointer_run ROWS[] = {
        {"right", FAR_EAST, "1009,1000|R5|U|", FAR_TEXT, ""},
        {"left", FAR_EAST, "1009,1000|L5|U|", FAR_TEXT, ""},
        {"small letters", FAR_EAST, "1009,1000|r5|u|", FAR_TEXT, ""},
        {"right, and on", FAR_EAST, "1009,1000|R5|U|3|", "LW 1000,1000 1013,1000", ""},
        {"twice", FAR_EAST, "1009,1000|L5|U|U|", FAR_TEXT, UNABLE},
        {"moved: the turn is left", FAR_EAST, "1009,1000|M|R5|U|D|3|", "LW 1000,1000 1010,1000 1010,997",
         "Move mode|Draw mode"},
        {"moved left: the turn is left", FAR_EAST, "1009,1000|M|L5|U|D|3|", "LW 1000,1000 1010,1000 1010,1003",
         "Move mode|Draw mode"},
    };
    check_runs(ROWS);
}

TEST(PointerUndo, OfATotalOrAnEdgeStepsBack)
{
    static constexpr pointer_run ROWS[] = {
        {"total", LINE10, "9,0|T12|U|", LINE10_TEXT, ""},
        {"total, small letters", LINE10, "9,0|t4|u|", LINE10_TEXT, ""},
        {"total asked for", LINE10, "9,0|T|12|U|", LINE10_TEXT, ""},
        {"total, twice", LINE10, "9,0|T12|U|U|", LINE10_TEXT, UNABLE},
        {"edge", EDGE_AND_LINE, "9,0|E|20,3|U|", "LW 20,-5 20,5\nLINE 0,0 10,0", ""},
        {"edge, small letters", EDGE_AND_LINE, "9,0|e|20,3|u|", "LW 20,-5 20,5\nLINE 0,0 10,0", ""},
        {"edge, twice", EDGE_AND_LINE, "9,0|E|20,3|U|U|", "LW 20,-5 20,5\nLINE 0,0 10,0", UNABLE},
    };
    check_runs(ROWS);
}

// The length of the target, 30, is what the pointer is turned back by, in degrees.
TEST(PointerUndo, OfAnAlignmentTurnsByTheLengthOfTheTarget)
{
    static constexpr pointer_run ROWS[] = {
        {"align", "(line '(30 0 0) '(60 0 0) nil)(lw 0 '((0 0) (10 0) (10 10)) nil)", "10,9|A|31,0|U|10|",
         "LINE 30,0 60,0\nLW 0,0 10,0 10,10 1.3397,15", ""},
        {"small letters", "(line '(30 0 0) '(60 0 0) nil)(lw 0 '((0 0) (10 0) (10 10)) nil)",
         "10,9|a|31,0|u|10|", "LINE 30,0 60,0\nLW 0,0 10,0 10,10 1.3397,15", ""},
        {"nothing picked", BEND, "10,9|A|^C|U|5|", "LW 0,0 10,0 10,15", ""},
        {"twice", BEND, "10,9|A||U|U|5|", "LW 0,0 10,0 10,15", UNABLE},
    };
    check_runs(ROWS);
}

// These leave digits behind, so that U takes them for a distance: the last one, once more.
TEST(PointerUndo, OfAnAngleOrABearingStepsBackByTheLastDistance)
{
    static constexpr pointer_run ROWS[] = {
        {"angle", BEND, "10,9|5|A30|U|", "LW 0,0 10,0 10,15 7.5,10.6699", ""},
        {"angle, small letters", BEND, "10,9|5|a30|u|", "LW 0,0 10,0 10,15 7.5,10.6699", ""},
        {"angle below 0", BEND, "10,9|5|A-30|U|", "LW 0,0 10,0 10,15 12.5,10.6699", ""},
        {"angle of minutes", BEND, "10,9|5|A0.3|U|", "LW 0,0 10,0 10,15 9.9564,10.0002", ""},
        {"angle, no distance yet", BEND, "10,9|A30|U|5|", "LW 0,0 10,0 10,15", ""},
        {"angle, twice", BEND, "10,9|5|A30|U|U|", "LW 0,0 10,0 10,15 7.5,10.6699", UNABLE},
        {"bearing", BEND, "10,9|5|B190|U|", "LW 0,0 10,0 10,15 5,15", ""},
        {"bearing, small letters", BEND, "10,9|5|b190|u|", "LW 0,0 10,0 10,15 5,15", ""},
        {"bearing asked for", BEND, "10,9|5|B|190|U|", "LW 0,0 10,0 10,15 5,15", ""},
        {"bearing with a letter for its digit", BEND, "10,9|5|BN90|U|", "LW 0,0 10,0 10,15 5,15", ""},
        {"bearing that was too short", BEND, "10,9|5|B1|U|", BEND_TEXT, ""},
        {"bearing, twice", BEND, "10,9|5|B190|U|U|", "LW 0,0 10,0 10,15 5,15", UNABLE},
        {"bearing that was left empty", BEND, "10,9|5|B||U|", "LW 0,0 10,0 10,15", UNABLE},
        {"bearing that was cancelled", BEND, "10,9|5|B|^C|U|", "LW 0,0 10,0 10,15", UNABLE},
    };
    check_runs(ROWS);
}

TEST(PointerUndo, StopsAtANewChain)
{
    static constexpr pointer_run ROWS[] = {
        {"distance", BEND, "10,9|M|5|D|5|U|", "LW 0,0 10,0 10,10\nLW 10,15 10,20",
         "Move mode|Draw mode|New Polyline|Unable to undo."},
        {"turn with a distance", BEND, "9,0|R5|U|", "LW 0,0 10,0 10,10\nLW 10,0 10,-5",
         "New Polyline|Unable to undo."},
        {"total", BEND, "10,9|M|5|D|T15|U|", "LW 0,0 10,0 10,10\nLW 10,15 10,20",
         "Move mode|Draw mode|New Polyline|Unable to undo."},
        {"line that is turned", LINE10, "9,0|R5|U|", "LINE 0,0 10,0\nLINE 10,0 10,-5", UNABLE},
        {"line that is turned, by a distance", LINE10, "9,0|L|5|U|", "LINE 0,0 10,0\nLINE 10,0 10,5", UNABLE},
        {"edge", EDGE_AND_LINE, "9,0|R|E|20,3|U|", "LW 20,-5 20,5\nLINE 0,0 10,0\nLINE 10,0 10,-10", UNABLE},
        {"one more step is undone", BEND, "10,9|M|5|D|5|3|U|", "LW 0,0 10,0 10,10\nLW 10,15 10,20",
         "Move mode|Draw mode|New Polyline"},
    };
    check_runs(ROWS);
}

// A text of no key takes the place of the last command; nothing undoes it, and nothing is told.
TEST(PointerUndo, OfATextOfNoKeyDoesNothing)
{
    static constexpr pointer_run ROWS[] = {
        {"once", LINE10, "9,0|5|X|U|", "LINE 0,0 15,0", ""},
        {"twice", LINE10, "9,0|5|X|U|U|", "LINE 0,0 15,0", UNABLE},
    };
    check_runs(ROWS);
}

} // namespace
