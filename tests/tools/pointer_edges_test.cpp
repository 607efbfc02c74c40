// E of the pointer tool: the segment runs to a boundary.
#include <gtest/gtest.h>

#include <string>

#include "tests/tools/pointer_session.h"

namespace
{

constexpr const char* LINE10 = "(line '(0 0 0) '(10 0 0) nil)";
constexpr const char* WALL = "(lw 0 '((20 -5) (20 5)) nil)(line '(0 0 0) '(10 0 0) nil)";
constexpr const char* WALL_TEXT = "LW 20,-5 20,5\n";
constexpr const char* NO_HIT = "Unable to find intersection.";

// The boundary is made first, then a line from the origin to (10,0); it is extended to `end`.
struct boundary {
    const char* name;
    const char* made; // LISP
    const char* pick;
    const char* text; // of the boundary
    const char* end;  // of the line
};

TEST(PointerEdge, FirstPairOfTheChainThatTheRayMeetsIsTheEdge)
{
    static constexpr boundary ROWS[] = {
        {"vertical", "(lw 0 '((20 -5) (20 5)) nil)", "20,3", "LW 20,-5 20,5", "20,0"},
        {"sloping", "(lw 0 '((15 -5) (25 5)) nil)", "24,4", "LW 15,-5 25,5", "20,0"},
        {"sloping the other way", "(lw 0 '((25 -5) (15 5)) nil)", "16,4", "LW 25,-5 15,5", "20,0"},
        {"far away", "(lw 0 '((90000 -5) (90000 5)) nil)", "#last 90000,3", "LW 90000,-5 90000,5", "90000,0"},
        {"short of the end", "(lw 0 '((4 -5) (4 5)) nil)", "4,3", "LW 4,-5 4,5", "4,0"},
        {"begins on the ray", "(lw 0 '((20 0) (20 5)) nil)", "20,3", "LW 20,0 20,5", "20,0"},
        {"ends on the ray", "(lw 0 '((20 5) (20 0)) nil)", "20,3", "LW 20,5 20,0", "20,0"},
        {"sloping, begins on the ray", "(lw 0 '((20 0) (25 5)) nil)", "24,4", "LW 20,0 25,5", "20,0"},
        {"the second pair", "(lw 0 '((15 5) (30 5) (30 -5)) nil)", "30,3", "LW 15,5 30,5 30,-5", "30,0"},
        {"a parallel pair first", "(lw 0 '((12 5) (20 5) (20 -5)) nil)", "20,3", "LW 12,5 20,5 20,-5", "20,0"},
        {"a parallel pair below first", "(lw 0 '((20 -5) (12 -5) (12 5)) nil)", "12,3", "LW 20,-5 12,-5 12,5",
         "12,0"},
        {"the first, not the nearest", "(lw 0 '((30 -5) (30 5) (20 5) (20 -5)) nil)", "30,3",
         "LW 30,-5 30,5 20,5 20,-5", "30,0"},
        {"the first, which is the nearest", "(lw 0 '((20 -5) (20 5) (30 5) (30 -5)) nil)", "30,3",
         "LW 20,-5 20,5 30,5 30,-5", "20,0"},
        {"whichever pair was picked", "(lw 0 '((30 -5) (30 5) (20 5) (20 -5)) nil)", "20,3",
         "LW 30,-5 30,5 20,5 20,-5", "30,0"},
        {"a piece behind the line first", "(lw 0 '((-5 -5) (-5 9) (20 9) (20 -5)) nil)", "20,3",
         "LW -5,-5 -5,9 20,9 20,-5", "20,0"},
        {"closing segment", "(lw 1 '((20 10) (-20 0) (20 -10)) nil)", "20,3", "LW 20,10 -20,0 20,-10 closed",
         "20,0"},
        {"closing segment of an old-style polyline", "(p2d 1 '((20 10) (-20 0) (20 -10)) 0.0 0.0 0.0)", "20,3",
         "P2D 20,10 -20,0 20,-10 closed", "20,0"},
        {"closing segment of a 3D polyline", "(p3d 1 '((20 10 0) (-20 0 0) (20 -10 0)))", "20,3",
         "P3D 20,10 -20,0 20,-10 closed", "20,0"},
        {"old-style polyline", "(p2d 0 '((20 -5) (20 5)) 0.0 0.0 0.0)", "20,3", "P2D 20,-5 20,5", "20,0"},
        {"3D polyline, its height doesn't count", "(p3d 0 '((20 -5 40) (20 5 60)))", "20,3",
         "P3D 20,-5,40 20,5,60", "20,0"},
        {"an arc counts as its chord", "(lw 0 '((20 -5 1.0) (20 5)) nil)", "#last 25,0", "LW 20,-5b1 20,5",
         "20,0"},
    };
    for (const boundary& row : ROWS) {
        SCOPED_TRACE(row.name);
        pointer_session session(std::string(row.made) + "(setq edge (entlast))" + LINE10);
        std::string pick = row.pick;
        if (pick.starts_with("#last "))
            pick = "(list edge (list " + pick.substr(6).replace(pick.find(',') - 6, 1, " ") + "))";
        const std::string printed = session.run("9,0|E|" + pick + "|");
        EXPECT_EQ(objects_text(), std::string(row.text) + "\nLINE 0,0 " + row.end) << printed;
        EXPECT_EQ(messages_of(printed), "");
    }
}

TEST(PointerEdge, VerticalRayMeetsWhatLiesOverIt)
{
    static constexpr pointer_run ROWS[] = {
        {"level boundary", "(lw 0 '((-5 20) (5 20)) nil)(line '(0 0 0) '(0 10 0) nil)", "0,9|E|3,20|",
         "LW -5,20 5,20\nLINE 0,0 0,20", ""},
        {"sloping boundary", "(lw 0 '((-5 15) (5 25)) nil)(line '(0 0 0) '(0 10 0) nil)", "0,9|E|4,24|",
         "LW -5,15 5,25\nLINE 0,0 0,20", ""},
        {"downwards", "(lw 0 '((-5 -20) (5 -20)) nil)(line '(0 0 0) '(0 10 0) nil)", "0,1|E|3,-20|",
         "LW -5,-20 5,-20\nLINE 0,-20 0,10", ""},
        {"boundary behind it", "(lw 0 '((-5 -20) (5 -20)) nil)(line '(0 0 0) '(0 10 0) nil)", "0,9|E|3,-20",
         "LW -5,-20 5,-20\nLINE 0,0 0,10", NO_HIT},
        {"boundary beside it", "(lw 0 '((1 20) (5 20)) nil)(line '(0 0 0) '(0 10 0) nil)", "0,9|E|3,20",
         "LW 1,20 5,20\nLINE 0,0 0,10", NO_HIT},
        {"vertical boundary beside it", "(lw 0 '((3 0) (3 20)) nil)(line '(0 0 0) '(0 10 0) nil)", "0,9|E|3,20",
         "LW 3,0 3,20\nLINE 0,0 0,10", NO_HIT},
        {"vertical pair beside it, then a level one",
         "(lw 0 '((3 0) (3 20) (-5 20)) nil)(line '(0 0 0) '(0 10 0) nil)", "0,9|E|3,19|",
         "LW 3,0 3,20 -5,20\nLINE 0,0 0,20", ""},
    };
    check_runs(ROWS);
}

TEST(PointerEdge, StepsByWhatTheSegmentLacks)
{
    static constexpr pointer_run ROWS[] = {
        {"small letter", WALL, "9,0|e|20,3|", "LW 20,-5 20,5\nLINE 0,0 20,0", ""},
        {"from the start of the line", "(lw 0 '((-20 -5) (-20 5)) nil)(line '(0 0 0) '(10 0 0) nil)",
         "1,0|E|-20,3|", "LW -20,-5 -20,5\nLINE -20,0 10,0", ""},
        {"polyline", "(lw 0 '((0 30) (50 30)) nil)(lw 0 '((0 0) (10 0) (10 10)) nil)", "10,9|E|40,30|",
         "LW 0,30 50,30\nLW 0,0 10,0 10,30", ""},
        {"sloping line", "(lw 0 '((40 0) (40 50)) nil)(line '(0 0 0) '(12 9 0) nil)", "12,9|E|40,40|",
         "LW 40,0 40,50\nLINE 0,0 40,30", ""},
        {"in plan, its slope runs on", "(lw 0 '((20 -5) (20 5)) nil)(p3d 0 '((0 0 0) (10 0 5)))", "9,0|E|20,3|",
         "LW 20,-5 20,5\nP3D 0,0 20,0,10", ""},
        {"a turned pointer draws the lack along itself", WALL, "9,0|R|E|20,3|",
         "LW 20,-5 20,5\nLINE 0,0 10,0\nLINE 10,0 10,-10", ""},
        {"Move mode", WALL, "9,0|M|E|20,3|D|3|", "LW 20,-5 20,5\nLINE 0,0 10,0\nLINE 20,0 23,0",
         "Move mode|Draw mode"},
        {"goes on", WALL, "9,0|E|20,3|5|", "LW 20,-5 20,5\nLINE 0,0 25,0", ""},
    };
    check_runs(ROWS);
}

TEST(PointerEdge, IsAskedForUntilAPolylineIsPicked)
{
    static constexpr const char* LINE_REFUSED =
        "(line '(15 -5 0) '(15 5 0) nil)(lw 0 '((20 -5) (20 5)) nil)(line '(0 0 0) '(10 0 0) nil)";
    static constexpr pointer_run ROWS[] = {
        {"misses", WALL, "9,0|E|500,500|-7,300|20,3|", "LW 20,-5 20,5\nLINE 0,0 20,0", ""},
        {"a line is refused", LINE_REFUSED, "9,0|E|15,3|20,3|", "LINE 15,-5 15,5\nLW 20,-5 20,5\nLINE 0,0 20,0",
         "Selection is not one of 'POLYLINE LWPOLYLINE'."},
    };
    check_runs(ROWS);
}

TEST(PointerEdge, FailureEndsTheTool)
{
    const std::string unchanged = std::string(WALL_TEXT) + "LINE 0,0 10,0";
    struct failure {
        const char* name;
        const char* answers;
        const char* message;
    };
    static constexpr failure FAILURES[] = {
        {"Enter", "9,0|E|", "Nothing selected."},
        {"cancel", "9,0|E|^C", "Nothing selected."},
        {"miss, then Enter", "9,0|E|500,500|", "Nothing selected."},
        {"no hit", "1,0|E|20,3", NO_HIT},
    };
    for (const failure& row : FAILURES) {
        SCOPED_TRACE(row.name);
        pointer_session session(WALL);
        const std::string printed = session.run(row.answers);
        EXPECT_EQ(objects_text(), unchanged);
        EXPECT_EQ(messages_of(printed), row.message);
    }
    static constexpr pointer_run ROWS[] = {
        {"what was drawn stays", WALL, "9,0|3|E|", "LW 20,-5 20,5\nLINE 0,0 13,0", "Nothing selected."},
        {"open where its closing segment would be met",
         "(lw 0 '((20 10) (-20 0) (20 -10)) nil)(line '(0 0 0) '(10 0 0) nil)", "9,0|E|0,5",
         "LW 20,10 -20,0 20,-10\nLINE 0,0 10,0", NO_HIT},
        {"parallel", "(lw 0 '((0 5) (50 5)) nil)(line '(0 0 0) '(10 0 0) nil)", "9,0|E|40,5",
         "LW 0,5 50,5\nLINE 0,0 10,0", NO_HIT},
        {"beside the ray", "(lw 0 '((20 1) (20 5)) nil)(line '(0 0 0) '(10 0 0) nil)", "9,0|E|20,3",
         "LW 20,1 20,5\nLINE 0,0 10,0", NO_HIT},
        {"sloping, beside the ray", "(lw 0 '((20 1) (24 5)) nil)(line '(0 0 0) '(10 0 0) nil)", "9,0|E|22,3",
         "LW 20,1 24,5\nLINE 0,0 10,0", NO_HIT},
        {"boundary of one vertex",
         "(p2d 0 '((20 0)) 0.0 0.0 0.0)(setq edge (entlast))(line '(0 0 0) '(10 0 0) nil)", "9,0|E|!edge",
         "P2D 20,0\nLINE 0,0 10,0", "No boundary edges found."},
    };
    check_runs(ROWS);
}

TEST(PointerEdge, MessagesAreToTheLetter)
{
    struct ending {
        const char* drawing;
        const char* answers;
        const char* end;
    };
    static constexpr ending ROWS[] = {
        {WALL, "9,0|E|", "\nSelect boundary edge: \nNothing selected.\n"},
        {WALL, "1,0|E|20,3", "\nSelect boundary edge: 20,3\n\nUnable to find intersection."},
        {"(p2d 0 '((20 0)) 0.0 0.0 0.0)(setq edge (entlast))(line '(0 0 0) '(10 0 0) nil)", "9,0|E|!edge",
         "\nNo boundary edges found."},
    };
    for (const ending& row : ROWS) {
        pointer_session session(row.drawing);
        const std::string printed = session.run(row.answers);
        EXPECT_TRUE(printed.ends_with(row.end)) << printed;
    }
}

} // namespace
