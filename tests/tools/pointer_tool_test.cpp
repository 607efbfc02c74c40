// The pointer tool in the real host: what its keys draw, and what it keeps.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "common/names.h"
#include "drawing/picked_segment.h"
#include "drawing/read.h"
#include "host/core/console.h"
#include "hostapi/ads.h"
#include "tests/drawing/chains.h"
#include "tests/growth.h"
#include "tests/shell/module_session.h"
#include "tools/pointer_step.h"

namespace
{

using shape = std::vector<corner>;

struct object {
    std::string type;
    int flags;
    shape corners;
};

std::string text_group(const resbuf* list, int code)
{
    const resbuf* node = rb_find(list, code);
    return node ? node->resval.rstring : "";
}

// All main objects of the drawing, oldest first.
std::vector<object> objects()
{
    std::vector<object> all;
    ads_name name;
    for (int status = acdbEntNext(nullptr, name); status == RTNORM; status = acdbEntNext(name, name)) {
        resbuf* list = acdbEntGet(name);
        object o{text_group(list, 0), 0, {}};
        if (is_line_list(list)) {
            o.corners = corners_of(vertex_chain(pl_read_line(list)).get());
        } else if (is_polyline_list(list)) {
            o.flags = pl_get_props(name).flags;
            o.corners = corners_of(vertex_chain(pl_read_vertices(name)).get());
        }
        if (o.type != "VERTEX" && o.type != "SEQEND")
            all.push_back(o);
        acutRelRb(list);
    }
    return all;
}

std::string written(const shape& corners)
{
    std::string text;
    char one[128];
    for (const corner& c : corners) {
        snprintf(one, sizeof one, "(%.9g %.9g %.9g %.9g)", c.x, c.y, c.z, c.bulge);
        text += one;
    }
    return text;
}

bool alike(const shape& a, const shape& b)
{
    const auto near = [](double u, double v) { return std::abs(u - v) < 1e-7; };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [&](const corner& p, const corner& q) {
        return near(p.x, q.x) && near(p.y, q.y) && near(p.z, q.z) && near(p.bulge, q.bulge);
    });
}

std::string as_lisp(const shape& corners)
{
    std::string text;
    char one[128];
    for (const corner& c : corners) {
        snprintf(one, sizeof one, "(10 %.17g %.17g)(42 . %.17g)", c.x, c.y, c.bulge);
        text += one;
    }
    return text;
}

class Pointer : public testing::Test
{
protected:
    module_session session;
    std::string told;

    Pointer() { session.lisp("(setvar \"CMDECHO\" 0)(setvar \"ELEVATION\" 0.0)"); }
    void line(const shape& ends)
    {
        char text[256];
        snprintf(text, sizeof text,
                 "(entmake '((0 . \"LINE\") (8 . \"EDGE\") (62 . 3) (10 %g %g %g) (11 %g %g %g)))", ends[0].x,
                 ends[0].y, ends[0].z, ends[1].x, ends[1].y, ends[1].z);
        session.lisp(text);
    }
    void polyline(const shape& corners, int flags = 0, const std::string& groups = "")
    {
        session.lisp("(entmake '((0 . \"LWPOLYLINE\") (100 . \"AcDbEntity\") (8 . \"ROAD\") " + groups +
                     "(100 . \"AcDbPolyline\") (90 . " + std::to_string(corners.size()) + ") (70 . " +
                     std::to_string(flags) + ")" + as_lisp(corners) + "))");
    }
    void old_polyline(const shape& corners, int flags)
    {
        char one[128]; // a flat one lies at the height of its first corner
        snprintf(one, sizeof one,
                 "(entmake '((0 . \"POLYLINE\") (8 . \"ROAD\") (66 . 1) (70 . %d) (10 0.0 0.0 %g)))", flags,
                 flags & PLINE_3D ? 0.0 : corners[0].z);
        std::string text = one;
        for (const corner& c : corners) {
            snprintf(one, sizeof one, "(entmake '((0 . \"VERTEX\") (10 %g %g %g) (42 . %g)%s))", c.x, c.y, c.z,
                     c.bulge, flags & PLINE_3D ? "(70 . 32)" : "");
            text += one;
        }
        session.lisp(text + "(entmake '((0 . \"SEQEND\")))");
    }
    // Answers split by blanks, Enter at the end; "_" is Enter.
    void run(std::string answers)
    {
        std::replace(answers.begin(), answers.end(), ' ', '\n');
        std::replace(answers.begin(), answers.end(), '_', ' ');
        host::answers_from_text(answers + "\n\nleft over\n");
        session.printed();
        EXPECT_EQ(session.lisp("(cf:zentutil \"\" 1)"), "nil");
        told = session.printed();
        left = host::next_answer("").value_or("none");
    }
    std::string left; // first answer that the tool didn't take: "" when it ended by itself

    void expect(const std::vector<shape>& shapes, const std::string& why)
    {
        const std::vector<object> all = objects();
        ASSERT_EQ(all.size(), shapes.size()) << why << told;
        for (std::size_t i = 0; i < all.size(); ++i)
            EXPECT_TRUE(alike(all[i].corners, shapes[i]))
                << why << ": " << i << " is " << written(all[i].corners) << " not " << written(shapes[i]);
    }
    bool says(const std::string& text) const { return told.find(text) != std::string::npos; }
};

struct run_case {
    const char* name;
    const char* answers; // after the pick
    std::vector<shape> expected;
};

void erase_all(module_session& session)
{
    session.lisp("(while (entlast) (entdel (entlast)))");
}

// ---- an open polyline from (0,0) by (10,0) to (10,10), picked at its end --------------------------------

class OpenPolyline : public Pointer
{
protected:
    void check(const std::vector<run_case>& cases, const char* pick, const shape& corners, int flags = 0)
    {
        for (const run_case& c : cases) {
            erase_all(session);
            polyline(corners, flags);
            run(std::string(pick) + (c.answers[0] ? " " : "") + c.answers);
            EXPECT_EQ(left, "left over") << c.name;
            expect(c.expected, c.name);
        }
    }
};

const shape BENT = {{0, 0}, {10, 0}, {10, 10}};

TEST_F(OpenPolyline, KeysAtItsTail)
{
    const std::vector<run_case> cases = {
        {"nothing", "", {BENT}},
        {"distance", "5", {{{0, 0}, {10, 0}, {10, 15}}}},
        {"two distances", "5 2.5", {{{0, 0}, {10, 0}, {10, 17.5}}}},
        {"zero", "0", {BENT}},
        {"a point counts as its distance", "13,14", {{{0, 0}, {10, 0}, {10, 15}}}},
        {"other starts of numbers", "+1 .5 -.25", {{{0, 0}, {10, 0}, {10, 11.25}}}},
        {"backward", "-4", {{{0, 0}, {10, 0}, {10, 6}}}},
        {"backward past the bend", "-14", {{{0, 0}, {10, 0}, {10, -4}}}},
        {"right", "R 5", {{{0, 0}, {10, 0}, {10, 10}, {15, 10}}}},
        {"right at once", "R5", {{{0, 0}, {10, 0}, {10, 10}, {15, 10}}}},
        {"left", "l5", {{{0, 0}, {10, 0}, {10, 10}, {5, 10}}}},
        {"left and on", "L5 5", {{{0, 0}, {10, 0}, {10, 10}, {0, 10}}}},
        {"turns add up", "R R 5", {{{0, 0}, {10, 0}, {10, 10}, {10, 5}}}},
        {"right with zero turns only", "R0 5", {{{0, 0}, {10, 0}, {10, 10}, {15, 10}}}},
        {"right with less turns only", "R-3 5", {{{0, 0}, {10, 0}, {10, 10}, {15, 10}}}},
        {"a full turn to the right is none", "R R R R 5", {{{0, 0}, {10, 0}, {10, 15}}}},
        {"a full turn to the left bends", "L L L L 5", {{{0, 0}, {10, 0}, {10, 10}, {10, 15}}}},
        {"bend of no length", "R 0", {BENT}},
        {"total", "T25", {{{0, 0}, {10, 0}, {10, 25}}}},
        {"total, asked", "T 4", {{{0, 0}, {10, 0}, {10, 4}}}},
        {"total, Enter keeps it", "T _ 5", {{{0, 0}, {10, 0}, {10, 15}}}},
        {"total in the pointer's direction", "R T13", {{{0, 0}, {10, 0}, {10, 10}, {13, 10}}}},
        {"angle", "A90 5", {{{0, 0}, {10, 0}, {10, 10}, {15, 10}}}},
        {"angle of minutes and seconds", "A29.5960 A60 5", {{{0, 0}, {10, 0}, {10, 10}, {15, 10}}}},
        {"angle, counter-clockwise", "A-90 5", {{{0, 0}, {10, 0}, {10, 10}, {5, 10}}}},
        {"bearing", "B190 5", {{{0, 0}, {10, 0}, {10, 10}, {15, 10}}}},
        {"bearing, asked", "B 590 5", {{{0, 0}, {10, 0}, {10, 10}, {15, 10}}}},
        {"bearing, south", "b30 4", {{{0, 0}, {10, 0}, {10, 10}, {10, 6}}}},
        {"deflection", "B990 5", {{{0, 0}, {10, 0}, {10, 10}, {15, 10}}}},
        {"backsight", "B690 5", {{{0, 0}, {10, 0}, {10, 10}, {15, 10}}}},
        {"no digit is an azimuth", "BN90 5", {{{0, 0}, {10, 0}, {10, 10}, {15, 10}}}},
        {"bearing of one character", "R B1 5", {{{0, 0}, {10, 0}, {10, 10}, {15, 10}}}},
        {"bearing of nothing", "R B _ 5", {{{0, 0}, {10, 0}, {10, 10}, {15, 10}}}},
        {"switched: from a middle vertex", "S 3", {BENT, {{10, 0}, {10, -3}}}},
        {"switched twice", "S S 3", {{{0, 0}, {10, 0}, {10, 13}}}},
        {"next at the tail turns about", "N 3", {BENT, {{10, 0}, {10, -3}}}},
        {"next, on to the head", "N N 3", {{{-3, 0}, {10, 0}, {10, 10}}}},
        {"next, all the way round", "N N N N 3", {{{0, 0}, {10, 0}, {10, 13}}}},
        {"back, a middle vertex", "P 3", {BENT, {{10, 0}, {13, 0}}}},
        {"back to the head turns about", "P P 3", {{{-3, 0}, {10, 0}, {10, 10}}}},
        {"back all the way round", "P P P P 3", {{{0, 0}, {10, 0}, {10, 13}}}},
        {"lower case", "r s s 5", {{{0, 0}, {10, 0}, {10, 10}, {15, 10}}}},
        {"unknown", "X ?? 5", {{{0, 0}, {10, 0}, {10, 15}}}},
        {"move, then draw elsewhere", "M 5 D 2", {BENT, {{10, 15}, {10, 17}}}},
        {"moved and moved back", "M 5 -5 D 2", {{{0, 0}, {10, 0}, {10, 12}}}},
        {"moved and switched: the tip returns", "M 5 S S D 2", {{{0, 0}, {10, 0}, {10, 12}}}},
        {"moved, left and enter", "M 5 R5 5", {BENT}},
        {"turn in move mode stays", "M R5 D 2", {BENT, {{15, 10}, {17, 10}}}},
    };
    check(cases, "10,9", BENT);
}

TEST_F(OpenPolyline, KeysAtItsHead)
{
    const std::vector<run_case> cases = {
        {"distance", "5", {{{-5, 0}, {10, 0}, {10, 10}}}},
        {"backward", "-5", {{{5, 0}, {10, 0}, {10, 10}}}},
        {"right", "R5", {{{0, 5}, {0, 0}, {10, 0}, {10, 10}}}},
        {"right and on", "R5 5", {{{0, 10}, {0, 0}, {10, 0}, {10, 10}}}},
        {"back onto the next vertex", "-10 3", {{{10, -3}, {10, 10}}}},
        {"bend of no length", "R0 R 0", {BENT}},
    };
    check(cases, "1,0", BENT);
}

TEST_F(OpenPolyline, BackOntoTheVertexInFrontTakesItOut)
{
    const std::vector<run_case> cases = {
        {"straight", "-10", {{{0, 0}, {10, 0}}}},
        {"and on along what is left", "-10 5", {{{0, 0}, {15, 0}}}},
        {"all of it", "-10 -10", {}},
    };
    check(cases, "10,9", BENT);
}

TEST_F(OpenPolyline, ChainThatShrankToNothingIsDrawnAgain)
{
    polyline({{0, 0}, {10, 0}});
    run("9,0 -10 5"); // with no length the pointer looks along x
    expect({{{0, 0}, {5, 0}}}, "");
    EXPECT_FALSE(says("New Polyline"));
}

TEST_F(OpenPolyline, PickChoosesTheEnd)
{
    struct {
        const char* pick;
        shape expected;
    } const cases[] = {
        {"4.9,0", {{-1, 0}, {10, 0}}}, {"5,0", {{-1, 0}, {10, 0}}}, // the very middle keeps the start
        {"5.1,0", {{0, 0}, {11, 0}}},  {"10,0", {{0, 0}, {11, 0}}}, {"0,0", {{-1, 0}, {10, 0}}},
    };
    for (const auto& c : cases) {
        erase_all(session);
        polyline({{0, 0}, {10, 0}});
        run(std::string(c.pick) + " 1");
        expect({c.expected}, c.pick);
    }
}

// ---- leftovers ---------------------------------------------------------------------------------------------

TEST_F(OpenPolyline, StubGoesWithTheNextStep)
{
    session.lisp("(command \"_.ZOOM\" \"_C\" '(5.0 5.0) 100.0)"); // the limit is 100 / 19 / 500
    const std::vector<run_case> cases = {
        {"stub at the tail", "5", {{{0, 0}, {10, 5.01}}}},
        {"bent stub", "R5", {{{0, 0}, {10, 0}, {15, 0.01}}}},
        {"moving leaves it", "M 5", {{{0, 0}, {10, 0}, {10, 0.01}}}},
    };
    check(cases, "#last_10,0.01", {{0, 0}, {10, 0}, {10, 0.01}});
    const std::vector<run_case> head_cases = {
        {"stub at the head", "5", {{{10, 5.01}, {0, 0}}}},
        {"bent stub", "R5", {{{15, 0.01}, {10, 0}, {0, 0}}}},
    };
    check(head_cases, "#last_10,0.01", {{10, 0.01}, {10, 0}, {0, 0}});
    const std::vector<run_case> pairs = {
        {"no vertex beyond", "5", {{{0, 0}, {0, 5.01}}}},
    };
    check(pairs, "#last_0,0.01", {{0, 0}, {0, 0.01}});
    const std::vector<run_case> longer = {
        {"a little too long for a stub", "5", {{{0, 0}, {10, 0}, {10, 5.011}}}},
    };
    check(longer, "#last_10,0.011", {{0, 0}, {10, 0}, {10, 0.011}});
}

TEST_F(OpenPolyline, UndoneBendIsGone)
{
    check({{"exactly", "R5 U", {BENT}}, {"and on", "R5 U U 2", {{{0, 0}, {10, 0}, {10, 12}}}}}, "10,9", BENT);
    // Where rounding leaves something, it is next to nothing.
    erase_all(session);
    polyline(BENT);
    run("10,9 A33.3 7 U");
    const std::vector<object> all = objects();
    ASSERT_EQ(all.size(), 1u);
    EXPECT_NEAR(all[0].corners.back().x, 10.0, 1e-9);
    EXPECT_NEAR(all[0].corners.back().y, 10.0, 1e-9);
}

TEST_F(OpenPolyline, DoubledHeadIsTidied)
{
    const std::vector<run_case> cases = {
        {"at the tail", "5", {{{0, 0}, {15, 0}}}},
        {"and on", "5 5 R5", {{{0, 0}, {20, 0}, {20, -5}}}},
        {"standing on it", "P P -5", {{{-5, 0}, {10, 0}}}},
        {"standing on it, turned", "P P R5 5", {{{0, -10}, {0, 0}, {10, 0}}}},
    };
    check(cases, "10,0", {{0, 0}, {0, 0}, {10, 0}});
}

TEST_F(OpenPolyline, ArcsOfTheRestStay)
{
    const shape arcs = {{0, 0, 0, 0.5}, {10, 0, 0, -0.25}, {20, 0, 0, 0}, {30, 0, 0, 0}};
    const std::vector<run_case> cases = {
        {"slide", "5", {{{0, 0, 0, 0.5}, {10, 0, 0, -0.25}, {20, 0}, {35, 0}}}},
        {"bend", "R5", {{{0, 0, 0, 0.5}, {10, 0, 0, -0.25}, {20, 0}, {30, 0}, {30, -5}}}},
        {"back onto the vertex in front", "-10", {{{0, 0, 0, 0.5}, {10, 0, 0, -0.25}, {20, 0}}}},
    };
    check(cases, "29,0", arcs);
}

// ---- closed polylines --------------------------------------------------------------------------------------

TEST_F(OpenPolyline, ClosedOneIsDrawnWithItsClosingVertex)
{
    const shape triangle = {{0, 0}, {10, 0}, {0, 10}};
    const std::vector<run_case> cases = {
        {"untouched", "", {triangle}},
        {"closing segment of no length", "0", {{{0, 0}, {10, 0}, {0, 10}, {0, 0}}}},
        {"on from the closing vertex", "5", {{{0, 0}, {10, 0}, {0, 10}, {0, -5}}}},
        {"opened", "O", {{{0, 0}, {10, 0}, {0, 10}, {0, 0}}}},
        {"closed again", "o C", {{{0, 0}, {10, 0}, {0, 10}, {0, 0}}}},
        {"a new one", "M 5 D 2", {triangle, {{0, -5}, {0, -7}}}},
    };
    check(cases, "0,1", triangle, 1);
    const std::vector<std::pair<const char*, int>> closed = {
        {"0", 1}, {"5", 1}, {"O", 0}, {"o C", 1}, {"C U", 0}};
    for (const auto& [answers, flags] : closed) {
        erase_all(session);
        polyline(triangle, 1);
        run(std::string("0,1 ") + answers);
        EXPECT_EQ(objects().at(0).flags & 1, flags) << answers;
    }
}

TEST_F(OpenPolyline, ClosingInMoveModeWaitsForADrawnStep)
{
    polyline(BENT);
    run("10,9 M C 3");
    expect({BENT}, "");
    EXPECT_EQ(objects()[0].flags, 0);
    erase_all(session);
    polyline(BENT);
    run("10,9 M C D 0");
    EXPECT_EQ(objects().at(0).flags, 1);
    expect({BENT}, "");
}

TEST_F(OpenPolyline, ClosingAtAMiddleVertexDrawsNothingAndLosesNothing)
{
    polyline(BENT);
    run("10,9 P C");
    expect({BENT}, "");
    EXPECT_EQ(objects()[0].flags, 0);
    EXPECT_TRUE(says("\nNew Polyline"));
    erase_all(session);
    polyline(BENT);
    run("10,9 P C 5 R5"); // along x, since the new chain has no length
    expect({BENT, {{10, 0}, {15, 0}, {15, -5}}}, "");
    EXPECT_EQ(objects()[1].flags, 1);
}

// ---- undo -------------------------------------------------------------------------------------------------

TEST_F(OpenPolyline, UndoDoesTheOppositeOfTheLastCommand)
{
    const std::vector<run_case> cases = {
        {"nothing", "U 1", {{{0, 0}, {10, 0}, {10, 11}}}},
        {"distance", "5 U", {BENT}},
        {"distance once only", "5 5 U U", {{{0, 0}, {10, 0}, {10, 15}}}},
        {"move", "M U 5", {{{0, 0}, {10, 0}, {10, 15}}}},
        {"draw", "M D U 5", {BENT}},
        {"and again", "M U U 5", {BENT}},
        {"switch", "S U 5", {{{0, 0}, {10, 0}, {10, 15}}}},
        {"next", "N U 5", {{{0, 0}, {10, 0}, {10, 15}}}},
        {"previous", "P U 5", {{{0, 0}, {10, 0}, {10, 15}}}},
        {"right", "R U 5", {{{0, 0}, {10, 0}, {10, 10}, {10, 15}}}}, // a full turn, not none
        {"left", "L U 5", {{{0, 0}, {10, 0}, {10, 15}}}},
        {"right with a step", "R5 U 5", {{{0, 0}, {10, 0}, {10, 15}}}},
        {"left with a step", "L5 u 5", {{{0, 0}, {10, 0}, {10, 15}}}},
        {"a moved turn stays turned", "M R5 U D 5", {{{0, 0}, {10, 0}, {10, 10}, {15, 10}}}},
        {"total", "T25 U", {BENT}},
        {"angle: a step back, still turned", "5 A90 U", {{{0, 0}, {10, 0}, {10, 15}, {5, 15}}}},
        {"bearing: a step back, still turned", "5 B190 U", {{{0, 0}, {10, 0}, {10, 15}, {5, 15}}}},
        {"a bearing of one character that is a letter", "A90 B A U 5", {{{0, 0}, {10, 0}, {10, 10}, {10, 5}}}},
        {"unknown", "5 X U U", {{{0, 0}, {10, 0}, {10, 15}}}},
        {"not across the beginning of a chain", "M 5 D 2 U", {BENT, {{10, 15}, {10, 17}}}},
        {"help is passed over", "5 H _ U", {BENT}},
        {"a number that is none is passed over", "5 1e999 U", {BENT}},
    };
    check(cases, "10,9", BENT);
}

TEST_F(OpenPolyline, UndoneCloseOpensAndTheOtherWayRound)
{
    const std::vector<std::pair<const char*, int>> cases = {
        {"C", 1}, {"C U", 0}, {"C U U", 1}, {"O U", 1}, {"O U U", 0}};
    for (const auto& [answers, flags] : cases) {
        erase_all(session);
        polyline(BENT);
        run(std::string("10,9 ") + answers);
        EXPECT_EQ(objects().at(0).flags & 1, flags) << answers;
        expect({BENT}, answers);
    }
}

TEST_F(OpenPolyline, UndoThatCantIsTold)
{
    const std::vector<std::pair<const char*, int>> cases = {
        {"U", 1},         {"U U", 2}, {"5 U", 0},   {"5 U U", 1},
        {"M 5 D 2 U", 1}, {"X U", 0}, {"B _ U", 1}, {"H _ U", 1},
    };
    for (const auto& [answers, count] : cases) {
        erase_all(session);
        polyline(BENT);
        run(std::string("10,9 ") + answers);
        int times = 0;
        for (std::size_t at = told.find("\nUnable to undo."); at != std::string::npos;
             at = told.find("\nUnable to undo.", at + 1))
            ++times;
        EXPECT_EQ(times, count) << answers;
    }
}

// An align leaves the length of the segment that it went to, and undo turns by that number.
TEST_F(OpenPolyline, UndoneAlignTurnsByTheLengthOfTheOther)
{
    polyline({{100, 0}, {100, 90}});
    polyline(BENT);
    run("10,9 A 100,89 U 5");
    // The align looks up, rel_angle is 0; 90 to the right is 270.
    expect({{{100, 0}, {100, 90}}, {{0, 0}, {10, 0}, {10, 10}, {15, 10}}}, "");
}

// ---- lines
// ---------------------------------------------------------------------------------------------------

TEST_F(Pointer, LineIsLengthenedOrLeftForANewOne)
{
    const shape ends = {{0, 0, 5}, {10, 0, 6}};
    const std::vector<run_case> cases = {
        {"on its slope", "10", {{{0, 0, 5}, {20, 0, 7}}}},
        {"shorter", "-5", {{{0, 0, 5}, {5, 0, 5.5}}}},
        {"turned", "R5", {ends, {{10, 0, 6}, {10, -5, 6.5}}}},
        {"turned, then on", "R5 5", {ends, {{10, 0, 6}, {10, -10, 7}}}},
        {"a full turn is a turn", "L L L L 5", {ends, {{10, 0, 6}, {15, 0, 6.5}}}},
        {"the other end", "S 10", {{{-10, 0, 4}, {10, 0, 6}}}},
        {"undo", "10 U", {ends}},
        {"no undo of a turn", "R5 U", {ends, {{10, 0, 6}, {10, -5, 6.5}}}},
        {"closed and opened: not", "C O U", {ends}},
    };
    for (const run_case& c : cases) {
        erase_all(session);
        line(ends);
        run(std::string("9,0 ") + c.answers);
        expect(c.expected, c.name);
        EXPECT_FALSE(says("New Polyline")) << c.name;
    }
}

TEST_F(Pointer, NewLineKeepsAllProperties)
{
    session.lisp("(entmake '((0 . \"LINE\") (8 . \"EDGE\") (62 . 3) (48 . 2.5) (39 . 1.5) (10 0.0 0.0 0.0) (11 "
                 "10.0 0.0 0.0)))");
    run("9,0 R5");
    EXPECT_EQ(session.lisp("(mapcar '(lambda (c) (cdr (assoc c (entget (entlast))))) '(8 62 48 39))"),
              "(\"EDGE\" 3 2.5 1.5)");
    EXPECT_EQ(session.lisp("(equal (cdr (assoc 5 (entget (entlast)))) (cdr (assoc 5 (entget (entnext)))))"),
              "nil");
}

TEST_F(Pointer, LineCantBeClosedOrOpened)
{
    line({{0, 0}, {10, 0}});
    run("9,0 C O c o");
    EXPECT_TRUE(says("\nError: unable to close line"));
    EXPECT_TRUE(says("\nError: unable to open line"));
    expect({{{0, 0}, {10, 0}}}, "");
}

TEST_F(Pointer, LineWithoutLengthIsPulledAlongX)
{
    line({{5, 5}, {5, 5}});
    run("#last 5");
    line({{5, 5}, {5, 5}});
    EXPECT_EQ(objects().size(), 2u);
    expect({{{10, 5}, {5, 5}}, {{5, 5}, {5, 5}}}, "");
}

// ---- other kinds
// -----------------------------------------------------------------------------------------------

TEST_F(Pointer, OldPolylinesKeepKindAndHeights)
{
    old_polyline({{0, 0, 2}, {10, 0, 2}}, 0);
    run("9,0 5 R5");
    expect({{{0, 0, 2}, {15, 0, 2}, {15, -5, 2}}}, "2D");
    EXPECT_EQ(objects()[0].type, "POLYLINE");
    erase_all(session);
    old_polyline({{0, 0, 1}, {10, 0, 2}}, 8);
    run("9,0 5 R5");
    expect({{{0, 0, 1}, {15, 0, 2.5}, {15, -5, 3}}}, "3D");
    EXPECT_EQ(objects()[0].type, "POLYLINE");
    EXPECT_EQ(objects()[0].flags, 8);
}

TEST_F(Pointer, PolylineKeepsAllProperties)
{
    session.lisp("(command \"_.LINETYPE\" \"_L\" \"DASHED\" \"\" \"\")");
    polyline({{0, 0}, {10, 0}}, 128, "(62 . 3) (48 . 2.5) (39 . 1.5) (43 . 0.2) (38 . 7.0) ");
    const char* all = "(mapcar '(lambda (c) (cdr (assoc c (entget (entlast))))) '(0 8 62 48 39 43 38 70 90))";
    const std::string before = session.lisp(all);
    EXPECT_EQ(before, "(\"LWPOLYLINE\" \"ROAD\" 3 2.5 1.5 0.2 7.0 128 2)");
    run("9,0 5");
    EXPECT_EQ(session.lisp(all), before);
    run("9,0 M 5 D 5");
    EXPECT_EQ(objects().size(), 2u);
    EXPECT_EQ(session.lisp(all), before);
}

TEST_F(Pointer, LinetypeScaleIsGivenBackByCommand)
{
    polyline({{0, 0}, {10, 0}}, 0, "(48 . 2.5) ");
    host::answers_from_text("9,0\n5\nR5\n\n");
    const std::string trace = session.traced("(cf:zentutil \"\" 1)");
    std::size_t times = 0;
    for (std::size_t at = trace.find("acedCommand (\"_.CHPROP\" <Entity name: "); at != std::string::npos;
         at = trace.find("acedCommand", at + 1), ++times)
        EXPECT_NE(trace.find("> \"\" \"_SCALE\" 2.5 \"\") -> RTNORM", at), std::string::npos);
    EXPECT_EQ(times, 2u) << trace;
    erase_all(session);
    polyline({{0, 0}, {10, 0}});
    host::answers_from_text("9,0\n5\n\n");
    EXPECT_EQ(session.traced("(cf:zentutil \"\" 1)").find("acedCommand"), std::string::npos);
}

// ---- edges and aligning
// ------------------------------------------------------------------------------------------

TEST_F(Pointer, ExtendsToAnEdge)
{
    const shape edge = {{30, -10}, {30, 10}};
    struct {
        const char* answers;
        shape expected;
    } const cases[] = {
        {"E 30,5", {{0, 0}, {30, 0}}},
        {"E 30,5 U", {{0, 0}, {10, 0}}},
        {"25 E 30,5", {{0, 0}, {30, 0}}},           // back from beyond
        {"R E 30,5", {{0, 0}, {10, 0}, {10, -20}}}, // by that distance, where the pointer looks
    };
    for (const auto& c : cases) {
        erase_all(session);
        polyline(edge);
        polyline({{0, 0}, {10, 0}});
        run(std::string("9,0 ") + c.answers);
        expect({edge, c.expected}, c.answers);
    }
    erase_all(session);
    polyline({{30, 10}, {50, 10}, {50, -20}, {30, -20}}, 1);
    polyline({{0, 0}, {10, 0}});
    run("9,0 S S E 40,10"); // the first segment of the chain, not the nearest: the closing one comes last
    EXPECT_EQ(objects().at(1).corners.at(1), (corner{50, 0}));
}

TEST_F(Pointer, EdgeThatFailsEndsTheTool)
{
    struct {
        const char* answers;
        const char* message;
    } const cases[] = {
        {"E _", "Nothing selected.\n"},
        {"E ^C", "Nothing selected.\n"},
        {"E 30,100", "\nUnable to find intersection."},
    };
    for (const auto& c : cases) {
        erase_all(session);
        polyline({{30, 90}, {30, 110}});
        polyline({{0, 0}, {10, 0}});
        run(std::string("9,0 5 ") + c.answers);
        EXPECT_EQ(left, "") << c.answers; // nothing more was asked
        EXPECT_TRUE(says(c.message)) << told;
        expect({{{30, 90}, {30, 110}}, {{0, 0}, {15, 0}}}, c.answers);
    }
}

TEST_F(Pointer, LineIsNoEdgeAtThePrompt)
{
    line({{30, -10}, {30, 10}});
    polyline({{0, 0}, {10, 0}});
    run("9,0 E 30,5 ^C");
    EXPECT_TRUE(says("\nSelection is not one of 'POLYLINE LWPOLYLINE'."));
    EXPECT_TRUE(says("Nothing selected.\n"));
}

TEST_F(Pointer, AlignsToTheEndNearerToThePick)
{
    struct {
        const char* pick;
        shape expected;
    } const cases[] = {
        {"100,1", {{0, 0}, {10, 0}, {10, -5}}},
        {"100,89", {{0, 0}, {10, 0}, {10, 5}}},
        {"100,45", {{0, 0}, {10, 0}, {10, 5}}}, // the very middle goes to the end
        {"500,500", {{0, 0}, {15, 0}}},         // nothing there: not turned at all
        {"_", {{0, 0}, {15, 0}}},
        {"^C", {{0, 0}, {15, 0}}},
    };
    for (const bool of_line : {false, true})
        for (const auto& c : cases) {
            erase_all(session);
            const shape target = {{100, 0}, {100, 90}};
            of_line ? line(target) : polyline(target);
            polyline({{0, 0}, {10, 0}});
            run(std::string("9,0 R A ") + c.pick + " 5");
            expect({target, c.expected}, c.pick);
        }
}

TEST_F(Pointer, AlignToAnythingElseIsToldAndTheToolGoesOn)
{
    session.lisp("(entmake '((0 . \"CIRCLE\") (10 50.0 0.0 0.0) (40 . 5.0)))");
    polyline({{0, 0}, {10, 0}});
    run("9,0 A 55,0 5");
    EXPECT_TRUE(says("\nError: selection must be a LINE or POLYLINE"));
    EXPECT_EQ(objects().at(1).corners.at(1), (corner{15, 0}));
    polyline({{100, 0}, {110, 0}, {100, 1}});
    run("9,0 A #last_200,-50 5"); // beside every segment
    EXPECT_TRUE(says(NO_SEGMENT_THERE)) << told;
    EXPECT_EQ(objects().at(2).corners.at(1), (corner{20, 0}));
}

// ---- starting and ending
// ----------------------------------------------------------------------------------------

TEST_F(Pointer, WrongStartsAreTold)
{
    session.lisp("(entmake '((0 . \"CIRCLE\") (10 50.0 0.0 0.0) (40 . 5.0)))");
    run("55,0");
    EXPECT_TRUE(says("\nError: selection must be a LINE or POLYLINE"));
    EXPECT_EQ(left, "");
    polyline({{100, 0}, {110, 0}, {100, 1}});
    run("#last_200,-50");
    EXPECT_TRUE(says(NO_SEGMENT_THERE)) << told;
    EXPECT_EQ(left, "");
    run("500,500");
    EXPECT_EQ(told, "Pick line or pline to extend: 500,500\n");
    EXPECT_EQ(left, "");
    run("^C");
    EXPECT_EQ(left, "");
    EXPECT_EQ(objects().size(), 2u);
}

TEST_F(Pointer, CancelKeepsWhatIsDrawn)
{
    for (const char* ending : {"^C", "", "T ^C", "B ^C ^C", "H ^C ^C"}) {
        erase_all(session);
        polyline({{0, 0}, {10, 0}});
        run(std::string("9,0 5 ") + ending);
        expect({{{0, 0}, {15, 0}}}, ending);
    }
}

TEST_F(Pointer, ArrowIsWipedAtEveryEnding)
{
    for (const char* answers :
         {"", "^C", "5\n", "R\nR5\n", "M\n7\nD\n3\n", "T\n^C", "E\n^C", "E\n30,100", "H\n\n", "1e999\n"}) {
        erase_all(session);
        polyline({{30, 90}, {30, 110}});
        polyline({{0, 0}, {10, 0}});
        host::answers_from_text(std::string("9,0\n") + answers + "\n\n");
        const std::string trace = session.traced("(cf:zentutil \"\" 1)");
        std::vector<std::string> open;
        for (std::size_t at = trace.find("acedGrDraw"); at != std::string::npos;
             at = trace.find("acedGrDraw", at + 1)) {
            const std::string vector = trace.substr(at, trace.find('\n', at) - at);
            const auto drawn = std::find(open.begin(), open.end(), vector);
            if (drawn == open.end())
                open.push_back(vector);
            else
                open.erase(drawn);
        }
        EXPECT_TRUE(open.empty()) << answers << trace;
        EXPECT_NE(trace.find(" -1 0\n"), std::string::npos);
    }
}

TEST_F(Pointer, BearingPutsTheAnglesOfTheHostBack)
{
    session.lisp("(setvar \"ANGDIR\" 1)(setvar \"ANGBASE\" 0.5)");
    polyline({{0, 0}, {10, 0}});
    for (const char* bearing : {"B145", "B\n145", "B\n^C", "B1", "B1nan"}) {
        host::answers_from_text(std::string("9,0\n") + bearing + "\n\n");
        const std::string trace = session.traced("(cf:zentutil \"\" 1)");
        EXPECT_NE(trace.find("acedSetVar \"ANGDIR\" 0 -> RTNORM\nacedSetVar \"ANGBASE\" 0.0 -> RTNORM\n"),
                  std::string::npos)
            << trace;
        EXPECT_NE(trace.find("acedSetVar \"ANGBASE\" 0.5 -> RTNORM\nacedSetVar \"ANGDIR\" 1 -> RTNORM\n"),
                  std::string::npos)
            << trace;
        EXPECT_EQ(session.lisp("(list (getvar \"ANGDIR\") (getvar \"ANGBASE\"))"), "(1 0.5)");
    }
}

TEST_F(Pointer, NumbersOutOfAllBoundsChangeNothing)
{
    const shape ends = {{0, 0}, {10, 0}};
    for (const char* answers : {"1e999", "-1e999", "+inf", "+nan", "-nan(1)", "R1e999", "Linf", "Tnan",
                                "T1e999", "A1e999", "B11e999", "B1nan", "M 1e999"}) {
        erase_all(session);
        polyline(ends);
        run(std::string("9,0 ") + answers);
        expect({ends}, answers);
        EXPECT_TRUE(says("\nError: ") || says("Requires numeric value")) << answers << told;
    }
    // Where the drawing would leave all numbers, the step is refused.
    polyline(ends);
    run("9,0 1e308 1e308 1e308");
    EXPECT_TRUE(says("\nError: the pointer can't go that far"));
}

TEST_F(Pointer, CommandsOfAnyLengthAreTaken)
{
    polyline({{0, 0}, {10, 0}});
    run("9,0 " + std::string(600, 'R') + " B" + std::string(400, '9') + " " + std::string(500, '0') + "5");
    EXPECT_EQ(objects().size(), 1u);
    run("9,0 M -1e300 9,9");
    run("9,0 M 1e200 9,9 9,9 D 1e307");
}

// Many sessions of keys at random, with short and long legs, arcs and doubled vertices in the chains: the tool
// ends when told to, gives all back, wipes its arrow, and what it leaves is drawn in numbers.
TEST_F(Pointer, KeysInAnyOrderLeaveSoundObjects)
{
    const char* const keys[] = {"5",     "-5",   "0",    "-10",  "10",    "0.001",  "-0.001", "R",   "L",
                                "R5",    "L10",  "T10",  "T0",   "S",     "N",      "P",      "N",   "P",
                                "C",     "O",    "M",    "D",    "D",     "U",      "U",      "A90", "A0.30",
                                "A_0,9", "B145", "B790", "B690", "B_1",   "E_0,40", "20,3",   "H_",  "?",
                                "T_4",   "A_",   "-20",  "10,0", "1e308", "-1e308"};
    const shape shapes[] = {
        BENT,
        {{0, 0}, {10, 0}},
        {{0, 0, 0, 1.0}, {10, 0, 0, -0.5}, {10, 10}, {0, 10}},
        {{0, 0}, {0, 0}, {10, 0}, {10, 0}, {10, 0.002}, {10, 10}, {10, 10}},
    };
    std::mt19937 random(51);
    const auto below = [&](std::size_t count) { return random() % count; };
    for (int round = 0; round < 400; ++round) {
        erase_all(session);
        polyline({{-50, 40}, {50, 40}});
        const shape& corners = shapes[below(std::size(shapes))];
        const int kind = static_cast<int>(below(4));
        if (kind == 0)
            line({{0, 0, 1}, {10, 0, 2}});
        else if (kind == 1)
            old_polyline(corners, below(2) ? PLINE_3D : PLINE_CLOSED);
        else
            polyline(corners, kind == 2);
        std::string answers = below(2) ? "#last 1,0\n" : "#last 9,0\n";
        for (std::size_t i = 5 + below(30); i > 0; --i)
            answers += std::string(keys[below(std::size(keys))]) + "\n";
        std::replace(answers.begin(), answers.end(), '_', '\n');
        // E may end the tool early, and what follows is then not asked for.
        host::answers_from_text(answers + std::string(4, '\n') + "^C\n^C\n");
        EXPECT_EQ(session.lisp("(cf:zentutil \"\" 1)"), "nil") << answers;
        session.printed();
        for (const object& o : objects()) {
            EXPECT_GE(o.corners.size(), 2u) << round << answers;
            for (const corner& c : o.corners)
                EXPECT_TRUE(std::isfinite(c.x) && std::isfinite(c.y) && std::isfinite(c.z)) << round << answers;
        }
    }
}

// ---- the step by itself
// ---------------------------------------------------------------------------------------------

TEST_F(Pointer, StepOfNothingIsNothing)
{
    pointer_state state{};
    EXPECT_EQ(pointer_step(state, 5.0, 90.0, DRAW_MODE, state.last_cmd), 0.0);
    ptr_chain lone{pl_vertex_new(1, 2, 3), nullptr};
    state.chain_entry = &lone;
    EXPECT_EQ(pointer_step(state, 5.0, 90.0, DRAW_MODE, state.last_cmd), 0.0);
    pl_free_vertices(lone.head);
    EXPECT_TRUE(objects().empty());
}

TEST_F(Pointer, ListWithoutATypeIsToldAndKeepsTheTurn)
{
    polyline({{0, 0}, {10, 0}});
    pointer_state state{};
    ASSERT_EQ(acdbEntLast(state.ent_name), RTNORM);
    state.drawn = true;
    state.name_group = acutNewRb(RTENAME);
    ASSERT_TRUE(add_chain(state, pl_read_vertices(state.ent_name)));
    pl_link_back(state.chain_entry->head);
    stand_on(state, state.chain_entry->head->next, state.chain_entry->head);
    EXPECT_EQ(pointer_step(state, 5.0, 90.0, DRAW_MODE, state.last_cmd), 90.0);
    EXPECT_TRUE(session.printed().ends_with("\nError 1 remaking polyline."));
    EXPECT_TRUE(objects().empty()); // erased already
    EXPECT_EQ(pointer_step(state, 5.0, 0.0, DRAW_MODE, state.last_cmd), 0.0);
    EXPECT_TRUE(objects().empty()); // and not brought back
    EXPECT_EQ(corners_of(state.chain_entry->head).size(), 3u);
    release_pointer(state);
}

TEST_F(Pointer, StepsGrowWithTheChain)
{
    EXPECT_TRUE(grows_in_proportion(
        [&](int count) {
            const auto corner_at = [](int i) { return corner{double(i), i % 7 + 0.5}; };
            shape corners;
            for (int i = 0; i < count; ++i)
                corners.push_back(corner_at(i));
            erase_all(session);
            polyline(corners);
            const corner last = corners.back();
            run("#last_" + std::to_string(last.x) + "," + std::to_string(last.y) + " 5 R5 L5 U 5 S N N P 0");
            EXPECT_GE(objects().at(0).corners.size(), corners.size());
        },
        100000));
}

} // namespace
