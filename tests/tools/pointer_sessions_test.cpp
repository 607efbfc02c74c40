// The pointer tool as a user has it: the pick, distances, turns, modes, walking along the chain, closing.
#include <gtest/gtest.h>

#include "tests/tools/pointer_session.h"

namespace
{

constexpr const char* LINE10 = "(line '(0 0 0) '(10 0 0) nil)";
constexpr const char* EAST = "(lw 0 '((0 0) (10 0)) nil)";
// Its end looks north.
constexpr const char* BEND = "(lw 0 '((0 0) (10 0) (10 10)) nil)";
constexpr const char* STEPS = "(lw 0 '((0 0) (10 0) (10 10) (20 10)) nil)";
constexpr const char* SQUARE = "(lw 1 '((0 0) (10 0) (10 10) (0 10)) nil)";
constexpr const char* CIRCLE = "(entmake '((0 . \"CIRCLE\") (10 50.0 0.0 0.0) (40 . 5.0)))";

constexpr const char* LINE10_TEXT = "LINE 0,0 10,0";
constexpr const char* BEND_TEXT = "LW 0,0 10,0 10,10";
constexpr const char* CIRCLE_TEXT = "CIRCLE 50,0"; // its centre
constexpr const char* NOT_ONE = "Error: selection must be a LINE or POLYLINE";

// ---- the pick ------------------------------------------------------------------------------------

TEST(PointerStart, StandsAtTheEndThatIsNearerToThePick)
{
    static constexpr pointer_run ROWS[] = {
        {"line, near its end", LINE10, "9,0|5|", "LINE 0,0 15,0", ""},
        {"line, near its start", LINE10, "1,0|5|", "LINE -5,0 10,0", ""},
        {"line, exactly in the middle", LINE10, "5,0|5|", "LINE -5,0 10,0", ""},
        {"line, just behind the middle", LINE10, "5.001,0|5|", "LINE 0,0 15,0", ""},
        {"line, far beyond its end", LINE10, "#last 70,3|5|", "LINE 0,0 15,0", ""},
        {"polyline, near its end", BEND, "10,9|5|", "LW 0,0 10,0 10,15", ""},
        {"polyline, near its start", BEND, "1,0|5|", "LW -5,0 10,0 10,10", ""},
        {"polyline, exactly in the middle", EAST, "5,0|5|", "LW -5,0 10,0", ""},
        {"polyline, just behind the middle", EAST, "5.001,0|5|", "LW 0,0 15,0", ""},
        {"middle vertex, picked on the segment behind it", BEND, "10,1|5|", "LW 0,0 10,0 10,10\nLW 10,0 10,-5",
         "New Polyline"},
        {"middle vertex, picked on the segment before it", BEND, "9,0|5|", "LW 0,0 10,0 10,10\nLW 10,0 15,0",
         "New Polyline"},
        {"old-style polyline", "(p2d 0 '((0 0) (10 0)) 0.0 0.0 0.0)", "9,0|5|", "P2D 0,0 15,0", ""},
        {"3D polyline", "(p3d 0 '((0 0 1) (10 0 1)))", "9,0|5|", "P3D 0,0,1 15,0,1", ""},
    };
    check_runs(ROWS);
}

TEST(PointerStart, ClosedPolylineHasItsClosingSegmentAndKeepsItsClosingVertex)
{
    static constexpr pointer_run ROWS[] = {
        {"nothing drawn", SQUARE, "0,1|", "LW 0,0 10,0 10,10 0,10 closed", ""},
        {"end of the closing segment, by nothing", SQUARE, "0,1|0|", "LW 0,0 10,0 10,10 0,10 0,0 closed", ""},
        {"end of the closing segment", SQUARE, "0,1|5|", "LW 0,0 10,0 10,10 0,10 0,-5 closed", ""},
        {"start of the closing segment", SQUARE, "0,9|5|", "LW 0,0 10,0 10,10 0,10 closed\nLW 0,10 0,15 closed",
         "New Polyline"},
        {"start of the first segment", SQUARE, "1,0|5|", "LW -5,0 10,0 10,10 0,10 0,0 closed", ""},
        {"old-style", "(p2d 1 '((0 0) (10 0) (10 10)) 0.0 0.0 0.0)", "1,0|0|", "P2D 0,0 10,0 10,10 0,0 closed",
         ""},
        {"3D", "(p3d 1 '((0 0 0) (10 0 0) (10 10 0)))", "1,0|0|", "P3D 0,0 10,0 10,10 0,0 closed", ""},
        {"opened", SQUARE, "0,1|O|", "LW 0,0 10,0 10,10 0,10 0,0", ""},
    };
    check_runs(ROWS);
}

TEST(PointerStart, AnythingElseEndsTheTool)
{
    static constexpr pointer_run ROWS[] = {
        {"circle", CIRCLE, "45,0", CIRCLE_TEXT, NOT_ONE},
        {"text", "(entmake '((0 . \"TEXT\") (10 0.0 0.0 0.0) (40 . 2.0) (1 . \"LOT 7\")))", "#last 0,0",
         "TEXT 0,0", NOT_ONE},
        {"miss", LINE10, "500,500", LINE10_TEXT, ""},
        {"Enter", LINE10, "", LINE10_TEXT, ""},
        {"cancel", LINE10, "^C", LINE10_TEXT, ""},
        {"beside no segment of the polyline", BEND, "#last 20,-5", BEND_TEXT,
         "Error: no segment of the polyline at that point"},
    };
    check_runs(ROWS);
}

TEST(PointerStart, EachRunStartsAfresh)
{
    pointer_session session(BEND);
    session.run("10,9|M|R|5|7|");
    EXPECT_EQ(messages_of(session.run("10,9|U|5|")), "Unable to undo.");
    EXPECT_EQ(objects_text(), "LW 0,0 10,0 10,15");
    // the last distance of the run before isn't undone either: a turn leaves digits, and steps back by nothing
    session.run("10,14|A30|U|5|");
    EXPECT_EQ(objects_text(), "LW 0,0 10,0 10,20");
}

TEST(PointerStart, WhatWasDrawnStaysAtEnterAndAtCancel)
{
    static constexpr pointer_run ROWS[] = {
        {"Enter", BEND, "10,9|R5|", "LW 0,0 10,0 10,10 15,10", ""},
        {"cancel", BEND, "10,9|R5|^C", "LW 0,0 10,0 10,10 15,10", ""},
        {"cancel after a move", BEND, "10,9|R5|M|5|^C", "LW 0,0 10,0 10,10 15,10", "Move mode"},
        {"nothing drawn", BEND, "10,9|", BEND_TEXT, ""},
    };
    check_runs(ROWS);
}

// ---- distances -----------------------------------------------------------------------------------

TEST(PointerDistance, IsReadInAllItsForms)
{
    static constexpr pointer_run ROWS[] = {
        {"whole", LINE10, "9,0|5|", "LINE 0,0 15,0", ""},
        {"with plus", LINE10, "9,0|+5|", "LINE 0,0 15,0", ""},
        {"with minus", LINE10, "9,0|-5|", "LINE 0,0 5,0", ""},
        {"point in front", LINE10, "9,0|.5|", "LINE 0,0 10.5,0", ""},
        {"point behind", LINE10, "9,0|5.|", "LINE 0,0 15,0", ""},
        {"plus and point", LINE10, "9,0|+.25|", "LINE 0,0 10.25,0", ""},
        {"minus and point", LINE10, "9,0|-.25|", "LINE 0,0 9.75,0", ""},
        {"decimals", LINE10, "9,0|123.456|", "LINE 0,0 133.456,0", ""},
        {"one behind the other", LINE10, "9,0|5|2.5|-1|", "LINE 0,0 16.5,0", ""},
    };
    check_runs(ROWS);
}

TEST(PointerDistance, OfAPickIsThatFromThePointerInPlan)
{
    static constexpr pointer_run ROWS[] = {
        {"3, 4 and 5", LINE10, "9,0|13,4|", "LINE 0,0 15,0", ""},
        {"straight behind", LINE10, "9,0|4,0|", "LINE 0,0 16,0", ""},
        {"at another height", LINE10, "9,0|10,5,99|", "LINE 0,0 15,0", ""},
        {"on the pointer", LINE10, "9,0|10,0|", LINE10_TEXT, ""},
        {"from where the pointer has moved to", BEND, "10,9|M|5|D|13,19|", "LW 0,0 10,0 10,10\nLW 10,15 10,20",
         "Move mode|Draw mode|New Polyline"},
        {"in Move mode", BEND, "10,9|M|13,14|D|1|", "LW 0,0 10,0 10,10\nLW 10,15 10,16",
         "Move mode|Draw mode|New Polyline"},
        {"is undone as typed ones are", LINE10, "9,0|13,4|U|", LINE10_TEXT, ""},
    };
    check_runs(ROWS);
}

TEST(PointerDistance, OfNothingMakesTheObjectAnewInItsShape)
{
    for (const char* pick : {"9,0|0|", "1,0|0|"}) {
        pointer_session session(LINE10);
        const std::string before = session.lisp("(cdr (assoc 5 (entget (entlast))))");
        session.run(pick);
        EXPECT_EQ(objects_text(), LINE10_TEXT);
        EXPECT_NE(session.lisp("(cdr (assoc 5 (entget (entlast))))"), before);
    }
    static constexpr pointer_run ROWS[] = {
        {"end", BEND, "10,9|0|", BEND_TEXT, ""},
        {"start", BEND, "1,0|0|", BEND_TEXT, ""},
    };
    check_runs(ROWS);
}

TEST(PointerDistance, BelowZeroRunsBackAlongTheSegment)
{
    static constexpr pointer_run ROWS[] = {
        {"shorter", BEND, "10,9|-4|", "LW 0,0 10,0 10,6", ""},
        {"past the other end", BEND, "10,9|-15|", "LW 0,0 10,0 10,-5", ""},
        {"past the other end, which turns the pointer", BEND, "10,9|-15|3|", "LW 0,0 10,0 10,-8", ""},
        {"exactly to the other end, which drops out", BEND, "10,9|-10|", "LW 0,0 10,0", ""},
        {"exactly to the other end, and on", BEND, "10,9|-10|5|", "LW 0,0 15,0", ""},
        {"at the start", "(lw 0 '((10 0) (0 0) (0 10)) nil)", "9,0|-4|", "LW 6,0 0,0 0,10", ""},
        {"at the start, to the other end", "(lw 0 '((10 0) (0 0) (0 10)) nil)", "9,0|-10|", "LW 0,0 0,10", ""},
        {"at the start, to the other end, and on", "(lw 0 '((10 0) (0 0) (0 10)) nil)", "9,0|-10|5|",
         "LW 0,-5 0,10", ""},
        {"line past its other end", LINE10, "9,0|-15|", "LINE 0,0 -5,0", ""},
        {"line past its other end, and on", LINE10, "9,0|-15|5|", "LINE 0,0 -10,0", ""},
    };
    check_runs(ROWS);
}

// A line of no length can't be made: the object is gone, and the tool goes on.
TEST(PointerDistance, ThatLeavesNoLengthDoesNoHarm)
{
    for (const char* drawing : {LINE10, EAST})
        for (const char* answers :
             {"9,0|-10|", "9,0|-10|5|", "9,0|-10|R5|N|P|S|2|", "9,0|T0|", "9,0|-10|U|U|"}) {
            SCOPED_TRACE(std::string(drawing) + answers);
            pointer_session session(drawing);
            session.run(answers);
            EXPECT_EQ(objects_text().find("nan"), std::string::npos) << objects_text();
            EXPECT_EQ(objects_text().find("inf"), std::string::npos) << objects_text();
        }
}

TEST(PointerDistance, ThatLeavesNoLengthCanBeFollowedByAnother)
{
    static constexpr pointer_run ROWS[] = {
        {"gone", LINE10, "9,0|-10|", "", ""},
        {"gone by a total of nothing", LINE10, "9,0|T0|", "", ""},
        // no direction is left: east
        {"line, then on", LINE10, "9,0|-10|5|", "LINE 0,0 5,0", ""},
        {"line, then taken back", LINE10, "9,0|-10|U|", LINE10_TEXT, ""},
        {"polyline, then on", EAST, "9,0|-10|5|", "LW 0,0 5,0", ""},
        {"polyline, then nothing", EAST, "9,0|-10|0|0|", "", ""},
    };
    check_runs(ROWS);
}

// ---- turns ---------------------------------------------------------------------------------------

TEST(PointerTurn, RightAndLeftBendTheLine)
{
    static constexpr pointer_run ROWS[] = {
        {"right", BEND, "10,9|R|5|", "LW 0,0 10,0 10,10 15,10", ""},
        {"left", BEND, "10,9|L|5|", "LW 0,0 10,0 10,10 5,10", ""},
        {"small letters", BEND, "10,9|r|5|l|5|", "LW 0,0 10,0 10,10 15,10 15,15", ""},
        {"with a distance", BEND, "10,9|R5|", "LW 0,0 10,0 10,10 15,10", ""},
        {"left with a distance", BEND, "10,9|L5|", "LW 0,0 10,0 10,10 5,10", ""},
        {"small letters with a distance", BEND, "10,9|r5|l2.5|", "LW 0,0 10,0 10,10 15,10 15,12.5", ""},
        {"a distance of 0 is none", BEND, "10,9|R0|5|", "LW 0,0 10,0 10,10 15,10", ""},
        {"a distance below 0 is none", BEND, "10,9|R-5|", BEND_TEXT, ""},
        {"a distance below 0 turns", BEND, "10,9|R-5|4|", "LW 0,0 10,0 10,10 14,10", ""},
        {"left, a distance below 0 is none", BEND, "10,9|L-5|4|", "LW 0,0 10,0 10,10 6,10", ""},
        {"the pointer then looks along the new segment", BEND, "10,9|R5|5|", "LW 0,0 10,0 10,10 20,10", ""},
        {"two right are back", BEND, "10,9|R|R|5|", "LW 0,0 10,0 10,10 10,5", ""},
        {"right and left are none", BEND, "10,9|L|R|5|", "LW 0,0 10,0 10,15", ""},
        {"four right are none", BEND, "10,9|R|R|R|R|5|", "LW 0,0 10,0 10,15", ""},
        // 360 isn't brought back to 0, so it is a turn
        {"four left are a turn", BEND, "10,9|L|L|L|L|5|", "LW 0,0 10,0 10,10 10,15", ""},
        {"at the start", BEND, "1,0|R5|", "LW 0,5 0,0 10,0 10,10", ""},
        {"left at the start", BEND, "1,0|L5|", "LW 0,-5 0,0 10,0 10,10", ""},
        {"at the start, and on", BEND, "1,0|R5|2|", "LW 0,7 0,0 10,0 10,10", ""},
        {"turned by nothing drawn", BEND, "10,9|R|", BEND_TEXT, ""},
        {"a new chain at a middle vertex", BEND, "9,0|R5|", "LW 0,0 10,0 10,10\nLW 10,0 10,-5", "New Polyline"},
    };
    check_runs(ROWS);
}

TEST(PointerTurn, MakesANewLineOfALine)
{
    static constexpr pointer_run ROWS[] = {
        {"right", LINE10, "9,0|R5|", "LINE 0,0 10,0\nLINE 10,0 10,-5", ""},
        {"on", LINE10, "9,0|R5|5|", "LINE 0,0 10,0\nLINE 10,0 10,-10", ""},
        {"and again", LINE10, "9,0|L5|L|5|", "LINE 0,0 10,0\nLINE 10,0 10,5\nLINE 10,5 5,5", ""},
        {"at its start", LINE10, "1,0|R5|", "LINE 0,0 10,0\nLINE 0,0 0,5", ""},
        {"longer first", LINE10, "9,0|5|R5|", "LINE 0,0 15,0\nLINE 15,0 15,-5", ""},
        {"four left are a turn", LINE10, "9,0|L|L|L|L|5|", "LINE 0,0 10,0\nLINE 10,0 15,0", ""},
        {"keys then work on the new one", LINE10, "9,0|R5|S|3|", "LINE 0,0 10,0\nLINE 10,3 10,-5", ""},
    };
    check_runs(ROWS);
}

// ---- modes ---------------------------------------------------------------------------------------

TEST(PointerMode, MoveOnlyMovesThePointer)
{
    static constexpr pointer_run ROWS[] = {
        {"nothing changes", BEND, "10,9|M|5|R5|-3|", BEND_TEXT, "Move mode"},
        {"small letter", BEND, "10,9|m|5|", BEND_TEXT, "Move mode"},
        {"draws from there", BEND, "10,9|M|5|D|5|", "LW 0,0 10,0 10,10\nLW 10,15 10,20",
         "Move mode|Draw mode|New Polyline"},
        {"small letters", BEND, "10,9|m|5|d|5|", "LW 0,0 10,0 10,10\nLW 10,15 10,20",
         "Move mode|Draw mode|New Polyline"},
        {"then goes on with the new one", BEND, "10,9|M|5|D|5|R5|", "LW 0,0 10,0 10,10\nLW 10,15 10,20 15,20",
         "Move mode|Draw mode|New Polyline"},
        {"the turn stays", BEND, "10,9|M|R5|D|3|", "LW 0,0 10,0 10,10\nLW 15,10 18,10",
         "Move mode|Draw mode|New Polyline"},
        {"there and back goes on", BEND, "10,9|M|5|-5|D|7|", "LW 0,0 10,0 10,17", "Move mode|Draw mode"},
        {"by nothing goes on", BEND, "10,9|M|0|D|7|", "LW 0,0 10,0 10,17", "Move mode|Draw mode"},
        {"a line tells nothing of the new one", LINE10, "9,0|M|5|D|5|", "LINE 0,0 10,0\nLINE 15,0 20,0",
         "Move mode|Draw mode"},
        {"at a middle vertex", BEND, "9,0|M|5|D|5|", "LW 0,0 10,0 10,10\nLW 15,0 20,0",
         "Move mode|Draw mode|New Polyline"},
        {"to a total", BEND, "10,9|M|T15|D|1|", "LW 0,0 10,0 10,10\nLW 10,15 10,16",
         "Move mode|Draw mode|New Polyline"},
        {"switching brings the pointer back", BEND, "10,9|M|5|S|S|D|7|", "LW 0,0 10,0 10,17",
         "Move mode|Draw mode"},
        {"next brings the pointer back", BEND, "10,9|M|5|N|N|D|7|", "LW -7,0 10,0 10,10",
         "Move mode|Draw mode"},
        {"two new ones", EAST, "9,0|M|5|D|5|M|5|D|5|", "LW 0,0 10,0\nLW 15,0 20,0\nLW 25,0 30,0",
         "Move mode|Draw mode|New Polyline|Move mode|Draw mode|New Polyline"},
        {"cancel", BEND, "10,9|M|5|^C", BEND_TEXT, "Move mode"},
    };
    check_runs(ROWS);
}

TEST(PointerMode, IsToldAlsoWhenItIsTheSame)
{
    static constexpr pointer_run ROWS[] = {
        {"draw", LINE10, "9,0|D|D|5|", "LINE 0,0 15,0", "Draw mode|Draw mode"},
        {"move", LINE10, "9,0|M|M|5|", LINE10_TEXT, "Move mode|Move mode"},
    };
    check_runs(ROWS);
}

TEST(PointerMode, HasItsPrompt)
{
    pointer_session session(LINE10);
    EXPECT_EQ(session.run("9,0|M|D|"), "Pick line or pline to extend: 9,0\n"
                                       "Enter or pick distance to Draw (A,B,C,E,L,M,N,O,P,R,S,T,U,Help): M\n"
                                       "\nMove mode"
                                       "\nEnter or pick distance to Move (A,B,D,E,L,N,O,P,R,S,T,U,Help): D\n"
                                       "\nDraw mode"
                                       "\nEnter or pick distance to Draw (A,B,C,E,L,M,N,O,P,R,S,T,U,Help): \n");
}

// ---- walking along the chain ---------------------------------------------------------------------

TEST(PointerWalk, SwitchLooksTheOtherWay)
{
    static constexpr pointer_run ROWS[] = {
        {"line", LINE10, "9,0|S|5|", "LINE -5,0 10,0", ""},
        {"small letter", LINE10, "9,0|s|5|", "LINE -5,0 10,0", ""},
        {"twice", LINE10, "9,0|S|S|5|", "LINE 0,0 15,0", ""},
        {"to the start", EAST, "9,0|S|5|", "LW -5,0 10,0", ""},
        {"to a middle vertex", BEND, "10,9|S|5|", "LW 0,0 10,0 10,10\nLW 10,0 10,-5", "New Polyline"},
        {"a turn stays", LINE10, "9,0|R|S|5|", "LINE 0,0 10,0\nLINE 0,0 0,5", ""},
        {"both ends", EAST, "9,0|5|S|5|", "LW -5,0 15,0", ""},
        {"both ends, bent", EAST, "9,0|R5|S|S|5|", "LW 0,0 10,0 10,-10", ""},
    };
    check_runs(ROWS);
}

TEST(PointerWalk, NextGoesForwardAndTurnsAboutAtTheEnd)
{
    // Where each step stands and looks is seen by what is drawn from there.
    static constexpr pointer_run ROWS[] = {
        {"forward", STEPS, "10,6|N|5|", "LW 0,0 10,0 10,10 25,10", ""},
        {"small letter", STEPS, "10,6|n|5|", "LW 0,0 10,0 10,10 25,10", ""},
        {"about at the end", STEPS, "10,6|N|N|5|", "LW 0,0 10,0 10,10 20,10\nLW 10,10 5,10", "New Polyline"},
        {"back", STEPS, "10,6|N|N|N|5|", "LW 0,0 10,0 10,10 20,10\nLW 10,0 10,-5", "New Polyline"},
        {"back to the start", STEPS, "10,6|N|N|N|N|5|", "LW -5,0 10,0 10,10 20,10", ""},
        {"about at the start", STEPS, "10,6|N|N|N|N|N|5|", "LW 0,0 10,0 10,10 20,10\nLW 10,0 15,0",
         "New Polyline"},
        {"line", LINE10, "9,0|N|5|", "LINE -5,0 10,0", ""},
        {"round a closed one ends at its closing vertex", SQUARE, "1,0|N|N|N|N|N|5|",
         "LW 0,0 10,0 10,10 0,10 closed\nLW 0,10 0,15 closed", "New Polyline"},
    };
    check_runs(ROWS);
}

TEST(PointerWalk, PreviousGoesBackwardAndTurnsAboutAtTheEnd)
{
    static constexpr pointer_run ROWS[] = {
        {"backward", STEPS, "10,6|P|5|", "LW 0,0 10,0 10,10 20,10\nLW 10,0 15,0", "New Polyline"},
        {"small letter", STEPS, "10,6|p|5|", "LW 0,0 10,0 10,10 20,10\nLW 10,0 15,0", "New Polyline"},
        {"about at the start", STEPS, "10,6|P|P|5|", "LW -5,0 10,0 10,10 20,10", ""},
        {"back", STEPS, "10,6|P|P|P|5|", "LW 0,0 10,0 10,10 20,10\nLW 10,0 10,-5", "New Polyline"},
        {"on", STEPS, "10,6|P|P|P|P|5|", "LW 0,0 10,0 10,10 20,10\nLW 10,10 5,10", "New Polyline"},
        {"about at the end", STEPS, "10,6|P|P|P|P|P|5|", "LW 0,0 10,0 10,10 25,10", ""},
        {"line", LINE10, "9,0|P|5|", "LINE -5,0 10,0", ""},
        {"next and previous", STEPS, "10,6|N|P|5|", "LW 0,0 10,0 10,10 20,10\nLW 10,10 10,15", "New Polyline"},
    };
    check_runs(ROWS);
}

TEST(PointerWalk, StaysInTheNewChain)
{
    static constexpr pointer_run ROWS[] = {
        {"next", BEND, "10,9|M|5|D|5|N|5|", "LW 0,0 10,0 10,10\nLW 10,10 10,20",
         "Move mode|Draw mode|New Polyline"},
        {"previous", BEND, "10,9|M|5|D|5|P|P|2|", "LW 0,0 10,0 10,10\nLW 10,15 10,22",
         "Move mode|Draw mode|New Polyline"},
    };
    check_runs(ROWS);
}

// ---- total distance ------------------------------------------------------------------------------

TEST(PointerTotal, GivesTheSegmentItsLength)
{
    static constexpr pointer_run ROWS[] = {
        {"longer", LINE10, "9,0|T15|", "LINE 0,0 15,0", ""},
        {"shorter", LINE10, "9,0|T4|", "LINE 0,0 4,0", ""},
        {"small letter", LINE10, "9,0|t12.5|", "LINE 0,0 12.5,0", ""},
        {"below 0", LINE10, "9,0|T-5|", "LINE 0,0 -5,0", ""},
        {"last segment of a polyline", BEND, "10,9|T3|", "LW 0,0 10,0 10,3", ""},
        {"first segment of a polyline", BEND, "1,0|T3|", "LW 7,0 10,0 10,10", ""},
        {"along the pointer", BEND, "10,9|R|T13|", "LW 0,0 10,0 10,10 13,10", ""},
        {"asked for", LINE10, "9,0|T|12.5|", "LINE 0,0 12.5,0", ""},
        {"asked for with a small letter", LINE10, "9,0|t|12.5|", "LINE 0,0 12.5,0", ""},
        {"Enter keeps it", LINE10, "9,0|T||5|", "LINE 0,0 15,0", ""},
        {"Enter keeps it, the object is made anew", LINE10, "9,0|T||", LINE10_TEXT, ""},
        {"cancel ends the tool", LINE10, "9,0|3|T|^C", "LINE 0,0 13,0", ""},
        {"cancel ends the tool in Move mode", LINE10, "9,0|M|T|^C", LINE10_TEXT, "Move mode"},
        {"in plan", "(line '(0 0 0) '(10 0 10) nil)", "9,0|T20|", "LINE 0,0 20,0,20", ""},
    };
    check_runs(ROWS);
}

TEST(PointerTotal, PromptShowsTheLength)
{
    pointer_session session("(line '(0 0 0) '(3.0 4.006 0) nil)");
    const std::string printed = session.run("3,4.006|T|12|");
    EXPECT_NE(printed.find("\nEnter the total distance <5.00>: 12\n"), std::string::npos) << printed;
}

// ---- close and open ------------------------------------------------------------------------------

TEST(PointerClose, SwitchesTheClosedFlag)
{
    static constexpr pointer_run ROWS[] = {
        {"close", BEND, "10,9|C|", "LW 0,0 10,0 10,10 closed", ""},
        {"small letter", BEND, "10,9|c|", "LW 0,0 10,0 10,10 closed", ""},
        {"word", BEND, "10,9|Close|", "LW 0,0 10,0 10,10 closed", ""},
        {"at the start", BEND, "1,0|C|", "LW 0,0 10,0 10,10 closed", ""},
        {"open", BEND, "10,9|C|O|", BEND_TEXT, ""},
        {"small letters", BEND, "10,9|c|o|", BEND_TEXT, ""},
        {"open what is open", BEND, "10,9|O|", BEND_TEXT, ""},
        {"goes on", BEND, "10,9|C|5|", "LW 0,0 10,0 10,15 closed", ""},
        {"takes the turn away", BEND, "10,9|R|C|5|", "LW 0,0 10,0 10,15 closed", ""},
        {"old-style", "(p2d 0 '((0 0) (10 0) (10 10)) 0.0 0.0 0.0)", "10,9|C|", "P2D 0,0 10,0 10,10 closed",
         ""},
        {"3D", "(p3d 0 '((0 0 0) (10 0 0) (10 10 0)))", "10,9|C|", "P3D 0,0 10,0 10,10 closed", ""},
        {"3D opened", "(p3d 0 '((0 0 0) (10 0 0) (10 10 0)))", "10,9|C|O|", "P3D 0,0 10,0 10,10", ""},
        {"other flags stay", "(lw 128 '((0 0) (10 0) (10 10)) nil)", "10,9|C|O|", "LW 0,0 10,0 10,10 gen", ""},
        {"new chains are closed too", BEND, "10,9|C|M|5|D|5|",
         "LW 0,0 10,0 10,10 closed\nLW 10,15 10,20 closed", "Move mode|Draw mode|New Polyline"},
    };
    check_runs(ROWS);
}

TEST(PointerClose, InMoveModeShowsWithTheNextStep)
{
    static constexpr pointer_run ROWS[] = {
        {"close", BEND, "10,9|M|C|", BEND_TEXT, "Move mode"},
        {"close, then draw", BEND, "10,9|M|C|D|5|", "LW 0,0 10,0 10,15 closed", "Move mode|Draw mode"},
        {"takes the turn away", BEND, "10,9|M|R|C|D|5|", "LW 0,0 10,0 10,15 closed", "Move mode|Draw mode"},
        {"open", SQUARE, "0,1|M|O|", "LW 0,0 10,0 10,10 0,10 closed", "Move mode"},
        {"open, then draw", SQUARE, "0,1|M|O|D|5|", "LW 0,0 10,0 10,10 0,10 0,-5", "Move mode|Draw mode"},
        {"close at a middle vertex", BEND, "9,0|M|C|", BEND_TEXT, "Move mode"},
        {"line", LINE10, "9,0|M|C|O|", LINE10_TEXT,
         "Move mode|Error: unable to close line|Error: unable to open line"},
    };
    check_runs(ROWS);
}

TEST(PointerClose, IsRefusedForALine)
{
    static constexpr pointer_run ROWS[] = {
        {"close", LINE10, "9,0|C|5|", "LINE 0,0 15,0", "Error: unable to close line"},
        {"open", LINE10, "9,0|O|5|", "LINE 0,0 15,0", "Error: unable to open line"},
        {"small letters", LINE10, "9,0|c|o|", LINE10_TEXT,
         "Error: unable to close line|Error: unable to open line"},
        {"the turn stays", LINE10, "9,0|R|C|5|", "LINE 0,0 10,0\nLINE 10,0 10,-5",
         "Error: unable to close line"},
    };
    check_runs(ROWS);
}

TEST(PointerClose, AtAMiddleVertexStartsAChainThatIsNotDrawn)
{
    static constexpr pointer_run ROWS[] = {
        {"close", BEND, "9,0|C|", BEND_TEXT, "New Polyline"},
        {"open", BEND, "10,1|O|", BEND_TEXT, "New Polyline"},
        // it has no direction yet, so it goes east; the polyline that it began on stays
        {"close, then drawn", BEND, "10,1|C|5|", "LW 0,0 10,0 10,10\nLW 10,0 15,0 closed", "New Polyline"},
        {"close, then a bend", BEND, "10,1|C|L5|", "LW 0,0 10,0 10,10\nLW 10,0 10,5 closed", "New Polyline"},
    };
    check_runs(ROWS);
}

// ---- short pieces --------------------------------------------------------------------------------

// 1/500 of the arrow: a segment that is shorter goes with the next step.
TEST(PointerStub, ShortSegmentIsDroppedAtTheNextStep)
{
    static constexpr pointer_run ROWS[] = {
        {"bend at the end", "(lw 0 '((0 0) (10 0) (10 0.0015)) nil)", "#last 10,0.0015|R5|",
         "LW 0,0 10,0 15,0.0015", ""},
        {"slide at the end", "(lw 0 '((0 0) (10 0) (10 0.0015)) nil)", "#last 10,0.0015|5|", "LW 0,0 10,5.0015",
         ""},
        {"bend at the start", "(lw 0 '((10 0.0015) (10 0) (0 0)) nil)", "#last 10,0.0015|R5|",
         "LW 15,0.0015 10,0 0,0", ""},
        {"slide at the start", "(lw 0 '((10 0.0015) (10 0) (0 0)) nil)", "#last 10,0.0015|5|",
         "LW 10,5.0015 0,0", ""},
        {"a longer one stays", "(lw 0 '((0 0) (10 0) (10 0.0025)) nil)", "#last 10,0.0025|R5|",
         "LW 0,0 10,0 10,0.0025 15,0.0025", ""},
        {"a longer one stays, slid", "(lw 0 '((0 0) (10 0) (10 0.0025)) nil)", "#last 10,0.0025|5|",
         "LW 0,0 10,0 10,5.0025", ""},
        {"nothing in front of it", "(lw 0 '((10 0) (10 0.0015)) nil)", "#last 10,0.0015|5|",
         "LW 10,0 10,5.0015", ""},
        {"nothing in front of it, bent", "(lw 0 '((10 0) (10 0.0015)) nil)", "#last 10,0.0015|R5|",
         "LW 10,0 15,0.0015", ""},
        {"goes on along the new one", "(lw 0 '((0 0) (10 0) (10 0.0015)) nil)", "#last 10,0.0015|R5|R5|",
         "LW 0,0 10,0 15,0.0015 15.0015,-4.9985", ""},
        {"not while the pointer is moved", "(lw 0 '((0 0) (10 0) (10 0.0015)) nil)", "#last 10,0.0015|M|5|",
         "LW 0,0 10,0 10,0.0015", "Move mode"},
    };
    check_runs(ROWS);
}

TEST(PointerStub, LimitIsThatOfTheViewAtTheStart)
{
    pointer_session session("(lw 0 '((0 0) (10 0) (10 0.0015)) nil)");
    session.lisp("(command \"_.ZOOM\" \"_C\" '(0.0 0.0) 9.5)"); // now 0.001
    session.run("#last 10,0.0015|R5|");
    EXPECT_EQ(objects_text(), "LW 0,0 10,0 10,0.0015 15,0.0015");
}

TEST(PointerStub, LeftoverOfAnUndoneStepGoesWithTheNext)
{
    static constexpr pointer_run ROWS[] = {
        {"right", EAST, "9,0|R5|U|B145|10|", "LW 0,0 10,0 17.0711,7.0711", ""},
        {"at the start", EAST, "1,0|R5|U|B345|10|", "LW -7.0711,-7.0711 0,0 10,0", ""},
        {"off the axes", "(lw 0 '((0 0) (10 0) (13 7)) nil)", "13,7|A12.3456|5|U|B145|10|",
         "LW 0,0 10,0 13,7 20.0711,14.0711", ""},
    };
    check_runs(ROWS);
}

// ---- help and other texts ------------------------------------------------------------------------

constexpr const char* HELP_TEXT =
    "D  - Draw mode        Actions draw or extend the line or polyline\n"
    "M  - Move mode        Actions only move the pointer\n"
    "#  - Number           Distance to draw or move\n"
    "R  - Right rotate     Rotates clockwise 90 degrees\n"
    "L  - Left rotate      Rotates counter-clockwise 90 degrees\n"
    "E  - Extend to Edge   Extends to a boundary edge\n"
    "T# - Total distance   Sets current segement to specified distance\n"
    "A# - Angle change     Rotates pointer by specified # of degrees (dd.mmss)\n"
    "A  - Align            Rotates pointer to align with line or polyline segment\n"
    "B  - Bearing          Sets pointer direction by bearing in format:\n"
    "                      Qdd.mmss with Q-quadrant, d-degrees, m-minutes and\n"
    "                      s-seconds. (e.g. 130.1005 is NE 30 deg, 10 min, 5 sec)\n"
    "S  - Switch direction Reverses the pointer direction\n"
    "N  - Next             Moves pointer forward to next point\n"
    "P  - Previous         Moves pointer backward to previous point\n"
    "C  - Close            Close the polyline\n"
    "O  - Open             Open the polyline\n"
    "U  - Undo\n"
    "Press <Enter>         Ends the routine\n"
    "\n\nPress Enter to continue";

TEST(PointerHelp, ShowsTheKeysOnTheTextPage)
{
    for (const char* word : {"H", "h", "Help", "help", "HELP", "hx"}) {
        pointer_session session(LINE10);
        const std::string printed = session.run(std::string("9,0|") + word + "||5|");
        EXPECT_NE(printed.find(HELP_TEXT), std::string::npos) << word << ": " << printed;
        EXPECT_EQ(objects_text(), "LINE 0,0 15,0") << word;
        std::string screens;
        for (const std::string& line : session.trace(std::string("14,0|") + word + "||"))
            if (line.starts_with("acedText") || line.starts_with("acedGraph") || line.starts_with("acedGetS"))
                screens += line.substr(0, line.find(' ')) + " ";
        EXPECT_EQ(screens, "acedTextPage acedGetString acedGraphScr ") << word;
    }
}

TEST(PointerHelp, LeavesWhatUndoUndoes)
{
    pointer_session session(LINE10);
    session.run("9,0|5|Help||U|");
    EXPECT_EQ(objects_text(), LINE10_TEXT);
    session.run("9,0|5|H||h||U|");
    EXPECT_EQ(objects_text(), LINE10_TEXT);
}

TEST(PointerHelp, CancelledPauseGoesOn)
{
    pointer_session session(LINE10);
    session.run("9,0|H|^C|5|");
    EXPECT_EQ(objects_text(), "LINE 0,0 15,0");
}

TEST(PointerText, OfNoKeyDoesNothing)
{
    static constexpr pointer_run ROWS[] = {
        {"letters", LINE10, "9,0|X|Q5|?|*|5|", "LINE 0,0 15,0", ""},
        {"turn stays", LINE10, "9,0|R|X|5|", "LINE 0,0 10,0\nLINE 10,0 10,-5", ""},
    };
    check_runs(ROWS);
}

} // namespace
