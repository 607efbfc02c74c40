// Arcs made longer: the numbers, and the tool as a user has it.
#include "tools/extend_arc.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "host/core/console.h"
#include "host/core/document.h"
#include "host/core/heap.h"
#include "hostapi/ads.h"
#include "tests/shell/module_session.h"

namespace
{

constexpr double PI = std::numbers::pi;

// ---- numbers ---------------------------------------------------------------------------------------------

double sweep_of(const arc_angles& arc)
{
    const double sweep = std::remainder(arc.end - arc.start, 2 * PI);
    return sweep < 0.0 ? sweep + 2 * PI : sweep;
}

TEST(ArcPart, OfTheCircle)
{
    EXPECT_DOUBLE_EQ(circle_part(PI, 1.0, 1.0), 0.5);
    EXPECT_DOUBLE_EQ(circle_part(-PI, 1.0, 1.0), -0.5);
    EXPECT_EQ(circle_part(0.0, 5.0, 1.0), 0.0);
    EXPECT_EQ(circle_part(1000.0, 1.0, 1.0), 1.0);
    EXPECT_EQ(circle_part(1000.0, 1.0, 0.999), 0.999);
    // Between the two a total isn't cut.
    EXPECT_DOUBLE_EQ(circle_part(2 * PI * 0.9995, 1.0, 0.999), 0.9995);
    EXPECT_EQ(circle_part(2 * PI, 1.0, 0.999), 1.0);
    EXPECT_DOUBLE_EQ(circle_part(-2000.0 * PI, 1.0, 1.0), -1000.0);
    EXPECT_EQ(circle_part(1.0, 0.0, 1.0), 1.0);
    EXPECT_FALSE(std::isfinite(circle_part(0.0, 0.0, 1.0)));
    EXPECT_FALSE(std::isfinite(circle_part(-1.0, 0.0, 1.0)));
}

struct angles_case {
    const char* name;
    arc_angles (*change)(const arc_angles&, double, bool);
    arc_angles arc;
    double part;
    bool at_start;
    arc_angles expected;
};

TEST(ArcAngles, Cases)
{
    const angles_case cases[] = {
        {"longer at the end", extended_angles, {0.5, 1.0}, 0.25, false, {0.5, 1.0 + PI / 2}},
        {"longer at the end, over angle 0", extended_angles, {0.5, 6.0}, 0.25, false, {0.5, 6.0 - 1.5 * PI}},
        {"end of a whole turn stays", extended_angles, {0.0, PI}, 0.5, false, {0.0, 2 * PI}},
        {"longer at the start", extended_angles, {2.0, 3.0}, 0.25, true, {2.0 - PI / 2, 3.0}},
        {"longer at the start, over angle 0", extended_angles, {0.5, 3.0}, 0.25, true, {0.5 + 1.5 * PI, 3.0}},
        {"start at angle 0 stays", extended_angles, {PI, 4.0}, 0.5, true, {0.0, 4.0}},
        {"shorter at the end", extended_angles, {0.5, 3.0}, -0.25, false, {0.5, 3.0 - PI / 2}},
        {"shorter at the end, below angle 0", extended_angles, {6.0, 0.5}, -0.25, false, {6.0, 0.5 - PI / 2}},
        {"shorter at the start", extended_angles, {0.5, 3.0}, -0.25, true, {0.5 + PI / 2, 3.0}},
        {"shorter at the start, above a turn", extended_angles, {6.0, 3.0}, -0.25, true, {6.0 + PI / 2, 3.0}},
        {"not at all", extended_angles, {0.5, 3.0}, 0.0, false, {0.5, 3.0}},
        {"whole circle at the end", extended_angles, {0.5, 3.0}, 1.0, false, {0.5, 0.49}},
        {"whole circle at an end below 0", extended_angles, {0.0, 3.0}, 1.0, false, {0.0, -0.01}},
        {"whole circle at the start", extended_angles, {0.5, 3.0}, 1.0, true, {3.01, 3.0}},
        {"a negative whole circle is none", extended_angles, {0.5, 3.0}, -1.0, false, {0.5, 3.0 - 2 * PI}},
        {"nearly the whole circle", extended_angles, {0.0, 0.0}, 0.999, false, {0.0, 1.998 * PI}},
        {"total at the end", total_angles, {0.5, 3.0}, 0.25, false, {0.5, 0.5 + PI / 2}},
        {"total at the end, over angle 0", total_angles, {6.0, 0.5}, 0.25, false, {6.0, 6.0 - 1.5 * PI}},
        {"total at the start", total_angles, {0.5, 3.0}, 0.25, true, {3.0 - PI / 2, 3.0}},
        {"total at the start, over angle 0", total_angles, {0.5, 1.0}, 0.25, true, {1.0 + 1.5 * PI, 1.0}},
        {"total of the whole circle", total_angles, {0.5, 3.0}, 1.0, false, {0.5, 0.5}},
        {"total of the whole circle at the start", total_angles, {0.5, 3.0}, 1.0, true, {3.0, 3.0}},
        {"negative total at the start", total_angles, {0.5, 6.0}, -0.25, true, {6.0 + PI / 2, 6.0}},
        {"longest total", total_angles, {0.5, 3.0}, 0.999, false, {0.5, 0.5 - 0.002 * PI}},
    };
    for (const angles_case& c : cases) {
        const arc_angles arc = c.change(c.arc, c.part, c.at_start);
        EXPECT_NEAR(arc.start, c.expected.start, 1e-12) << c.name;
        EXPECT_NEAR(arc.end, c.expected.end, 1e-12) << c.name;
    }
}

TEST(ArcAngles, GrowByTheLengthAndKeepTheOtherEnd)
{
    std::mt19937 random(52);
    std::uniform_real_distribution<double> angle(0, 2 * PI), share(0.001, 0.999);
    for (int i = 0; i < 5000; ++i) {
        const arc_angles arc = {angle(random), angle(random)};
        const double sweep = sweep_of(arc), radius = 1 + 1000 * share(random);
        const bool at_start = i % 2;
        const double length = share(random) * (2 * PI - sweep) * radius;
        const arc_angles longer = extended_angles(arc, circle_part(length, radius, 1.0), at_start);
        ASSERT_NEAR(sweep_of(longer) * radius, sweep * radius + length, 1e-8) << i;
        ASSERT_EQ(at_start ? longer.end : longer.start, at_start ? arc.end : arc.start) << i;
        const arc_angles back = extended_angles(longer, circle_part(-length, radius, 1.0), at_start);
        ASSERT_NEAR(std::remainder(back.start - arc.start, 2 * PI), 0.0, 1e-11) << i;
        ASSERT_NEAR(std::remainder(back.end - arc.end, 2 * PI), 0.0, 1e-11) << i;
        const arc_angles total = total_angles(arc, circle_part(length, radius, 0.999), at_start);
        ASSERT_NEAR(sweep_of(total) * radius, length, 1e-8) << i;
        ASSERT_EQ(at_start ? total.end : total.start, at_start ? arc.end : arc.start) << i;
    }
}

// ---- the tool ----------------------------------------------------------------------------------------------

const std::string PICK = "\nPick arc to extend: ";
const std::string BREAK = "\nBreak Arc at Extension [Yes/<No>]? ";
const std::string FIRST = "\nEnter or pick the distance to extend: ";
const std::string NEXT = "\nEnter or pick the distance to extend ('U' to Undo): ";

class ExtendArc : public testing::Test
{
protected:
    module_session session;

    // A radius of 100 / 2 pi makes lengths percents of the circle.
    ExtendArc()
    {
        session.lisp(
            "(setq whole (* 2 pi) r (/ 50 pi))"
            "(defun arc (from to) (entmake (list '(0 . \"ARC\") '(8 . \"0\") (list 10 200.0 100.0 7.0) "
            "(cons 40 r) (cons 50 from) (cons 51 to))))"
            // Percents of the circle at which all arcs begin and end, oldest first.
            "(defun arcs (/ e all d) (setq e (entnext))"
            " (while e (setq d (entget e) e (entnext e))"
            "  (if (= (cdr (assoc 0 d)) \"ARC\") (setq all (cons (list (pc 50 d) (pc 51 d)) all))))"
            " (reverse all))"
            "(defun pc (group d) (rtos (/ (* 100 (cdr (assoc group d))) whole) 2 4))");
        session.lisp("(setvar \"DIMZIN\" 8)"); // no zeros behind
        session.printed();
    }

    // Runs the tool on an arc from one percent to the other; the pick is on its end or on its start.
    std::string run(double from, double to, bool at_start, const std::string& answers)
    {
        std::ostringstream make;
        make << "(arc (/ (* " << from << " whole) 100) (/ (* " << to << " whole) 100))";
        session.lisp(make.str());
        const double at = (at_start ? from : to) * PI / 50, r = 50 / PI;
        std::ostringstream pick;
        pick.precision(17);
        pick << "#last " << 200 + r * std::cos(at) << "," << 100 + r * std::sin(at) << "\n";
        return run(pick.str() + answers);
    }
    std::string run(const std::string& answers)
    {
        host::answers_from_text(answers + "next\n");
        session.printed();
        EXPECT_EQ(session.lisp("(cf:zentutil \"\" 2)"), "nil");
        const std::string told = session.printed();
        EXPECT_EQ(host::next_answer("").value_or("none"), "next") << answers;
        return told;
    }
    std::string arcs() { return session.lisp("(arcs)"); }
};

struct extend_case {
    const char* name;
    double from, to;
    bool at_start;
    const char* answers;  // behind the pick
    const char* expected; // percents
};

std::ostream& operator<<(std::ostream& out, const extend_case& c)
{
    return out << c.name;
}

const extend_case CASES[] = {
    {"NothingAsked", 10, 30, false, "\n\n", "((\"10\" \"30\"))"},
    {"CancelAtTheBreakQuestion", 10, 30, false, "^C\n", "((\"10\" \"30\"))"},
    {"CancelAtTheDistance", 10, 30, false, "No\n^C\n", "((\"10\" \"30\"))"},
    {"CancelKeepsWhatIsDrawn", 10, 30, false, "\n5\n^C\n", "((\"10\" \"35\"))"},
    {"LongerAtTheEnd", 10, 30, false, "No\n5\n\n", "((\"10\" \"35\"))"},
    {"LongerAtTheStart", 10, 30, true, "No\n5\n\n", "((\"5\" \"30\"))"},
    {"LongerOverAngleZero", 60, 90, false, "\n25\n\n", "((\"60\" \"15\"))"},
    {"LongerOverAngleZeroAtTheStart", 10, 30, true, "\n25\n\n", "((\"85\" \"30\"))"},
    {"StepsAddUp", 10, 30, false, "\n5\n2.5\n-1\n\n", "((\"10\" \"36.5\"))"},
    {"Shorter", 10, 30, true, "\n-5\n\n", "((\"15\" \"30\"))"},
    {"LongerThanTheCircle", 10, 30, false, "\n101\n\n", "((\"10\" \"9.8408\"))"},
    {"LongerThanTheCircleAtTheStart", 10, 30, true, "\n1e9\n\n", "((\"30.1592\" \"30\"))"},
    {"FarLongerThanAnyNumber", 10, 30, false, "\n1e400\n\n", "((\"10\" \"30\"))"},
    {"SignsAndBlanks", 10, 30, false, "\n+5 \n\n", "((\"10\" \"35\"))"},

    {"BlanksInFront", 10, 30, false, "\n 5\n T50\n 0\n  u\n u\n\n", "((\"10\" \"35\"))"},

    {"UndoOne", 10, 30, false, "\n5\n7\nU\n\n", "((\"10\" \"35\"))"},
    {"UndoAll", 10, 30, true, "\n5\n7\nu\nu\n\n", "((\"10\" \"30\"))"},
    {"UndoByItsWord", 10, 30, true, "\n5\nUndo\n\n", "((\"10\" \"30\"))"},
    {"UndoMoreThanThereIs", 10, 30, false, "\n5\nU\nU\n3\n\n", "((\"10\" \"33\"))"},
    {"UndoGoesOn", 10, 30, false, "\n5\nU\n7\nU\n9\n\n", "((\"10\" \"39\"))"},
    {"UndoTheWholeCircle", 10, 30, false, "\n200\nU\n\n", "((\"10\" \"30\"))"},

    {"TotalWaitsForTheNextLength", 10, 30, false, "\nT50\n\n", "((\"10\" \"30\"))"},
    {"TotalCountsWithTheNextLength", 10, 30, false, "\nT50\n5\n\n", "((\"10\" \"65\"))"},
    {"TotalComesWithALengthOfNothing", 10, 30, false, "\nt 50\n0\n\n", "((\"10\" \"60\"))"},
    {"TotalAtTheStart", 10, 30, true, "\nT50\n0\n\n", "((\"80\" \"30\"))"},
    {"TotalOfMoreThanTheCircle", 10, 30, false, "\nT101\n0\n\n", "((\"10\" \"9.9\"))"},
    {"TotalTakenBack", 10, 30, false, "\nT50\nU\n5\n\n", "((\"10\" \"35\"))"},
    {"TotalAndLengthTakenBack", 10, 30, false, "\n2\nT50\n5\nU\nU\n\n", "((\"10\" \"32\"))"},
    {"LengthAfterATotalTakenBackShowsTheTotal", 10, 30, false, "\nT50\n5\nU\n\n", "((\"10\" \"60\"))"},

    {"Break", 10, 30, false, "Yes\n5\n\n", "((\"10\" \"30\") (\"30\" \"35\"))"},
    {"BreakByItsLetter", 10, 30, false, "y\n5\n\n", "((\"10\" \"30\") (\"30\" \"35\"))"},
    {"BreakAtTheStart", 10, 30, true, "Yes\n5\n\n", "((\"10\" \"30\") (\"5\" \"10\"))"},
    {"BreakTwice", 10, 30, false, "Yes\n5\n7\n\n", "((\"10\" \"30\") (\"30\" \"35\") (\"35\" \"42\"))"},
    {"BreakCutsInTwo", 10, 30, false, "Yes\n-5\n\n", "((\"10\" \"25\") (\"25\" \"30\"))"},
    {"BreakCutsInTwoAtTheStart", 10, 30, true, "Yes\n-5\n\n", "((\"15\" \"30\") (\"10\" \"15\"))"},
    {"BreakCutsTwice", 10, 30, false, "Yes\n-5\n-4\n\n", "((\"10\" \"21\") (\"25\" \"30\") (\"21\" \"25\"))"},
    {"BreakOfTheWholeCircle", 10, 30, false, "Yes\n500\n\n", "((\"10\" \"30\") (\"30\" \"9.8408\"))"},
    {"BreakTakesNothingBack", 10, 30, false, "Yes\n5\nU\n\n", "((\"10\" \"30\") (\"30\" \"35\"))"},
    {"BreakAfterATotal", 10, 30, false, "Yes\nT50\n5\n\n", "((\"10\" \"30\") (\"60\" \"65\"))"},
    {"CutAfterATotal", 10, 30, false, "Yes\nT50\n-5\n\n", "((\"10\" \"55\") (\"55\" \"60\"))"},

    {"BreakByNothingAddsAnArcOfNoLength", 10, 30, false, "Yes\n0\n\n", "((\"10\" \"30\") (\"30\" \"30\"))"},

    {"TextThatIsNoNumber", 10, 30, false, "\nabc\n\n", "((\"10\" \"30\"))"},
    {"NumberWithATail", 10, 30, false, "\n5abc\n\n", "((\"10\" \"30\"))"},
    {"TotalThatIsNoNumber", 10, 30, false, "\nTabc\nT\n\n", "((\"10\" \"30\"))"},
    {"NumberThatIsNotFinite", 10, 30, false, "\ninf\nnan\n-inf\nTnan\nTinf\n\n", "((\"10\" \"30\"))"},
    {"PointFarAway", 10, 30, false, "\n1e308,0\n\n", "((\"10\" \"9.8408\"))"},
    {"NumberOfLisp", 10, 30, false, "\n(+ 2 3.0)\n\n", "((\"10\" \"35\"))"},
};

class Extended : public ExtendArc, public testing::WithParamInterface<extend_case>
{
};

TEST_P(Extended, ArcsAtTheEnd)
{
    const extend_case& c = GetParam();
    const std::string told = run(c.from, c.to, c.at_start, c.answers);
    EXPECT_EQ(arcs(), c.expected) << told;
}

INSTANTIATE_TEST_SUITE_P(Cases, Extended, testing::ValuesIn(CASES),
                         [](const auto& each) { return each.param.name; });

// Prompts as they come out, with the answers behind them.
TEST_F(ExtendArc, PromptsToTheLetter)
{
    std::string told = run(10, 30, false, "No\n5\nU\n\n");
    const auto at = told.find('\n', told.find(PICK.substr(1)));
    ASSERT_NE(at, std::string::npos) << told;
    EXPECT_EQ(told.find(PICK.substr(1)), 0u) << told;
    EXPECT_EQ(told.substr(at), BREAK + "No" + FIRST + "5" + NEXT + "U" + FIRST + "\n") << told;
    told = run("^C\n");
    EXPECT_EQ(told, PICK.substr(1) + "^C\n\nFunction cancelled.") << told;
    told = run("\n");
    EXPECT_EQ(told, PICK.substr(1) + "\n\nFunction cancelled.") << told;
}

TEST_F(ExtendArc, MessagesToTheLetter)
{
    std::string told = run(10, 30, false, "\nU\nabc\nT\n\n");
    EXPECT_NE(told.find(FIRST + "U\n\nUnable to UNDO anymore." + FIRST +
                        "abc\n\nError: 'abc' is not a length "
                        "along this arc." +
                        FIRST + "T\n\nError: 'T' is not a length along this arc." + FIRST),
              std::string::npos)
        << told;
    told = run(40, 50, false, "Yes\n5\nU\n\n"); // nothing can be taken back, and the prompt says so
    EXPECT_NE(told.find(FIRST + "5" + FIRST + "U\n\nUnable to UNDO anymore." + FIRST), std::string::npos)
        << told;
}

TEST_F(ExtendArc, TakesArcsOnly)
{
    session.lisp("(entmake '((0 . \"LINE\") (10 0.0 0.0 0.0) (11 9.0 0.0 0.0)))");
    const std::string told = run("#last 5,0\n^C\n");
    EXPECT_NE(told.find("\nSelection is not one of 'ARC'."), std::string::npos) << told;
    EXPECT_NE(told.find("\nFunction cancelled."), std::string::npos) << told;
}

TEST_F(ExtendArc, RefusesWhatIsNoArcWhenItIsHandedOne)
{
    session.lisp("(entmake '((0 . \"LINE\") (10 0.0 0.0 0.0) (11 9.0 0.0 0.0)))");
    ads_name line;
    const ads_point pick = {0, 0, 0};
    const std::size_t blocks = host::heap_live_blocks();
    ASSERT_EQ(acdbEntLast(line), RTNORM);
    session.printed();
    host::answers_from_text("No\n");
    extend_arc(line, pick);
    EXPECT_EQ(session.printed(), BREAK.substr(1) + "No\n\nError: selection must be an ARC");
    const ads_name nothing = {0, 0};
    host::answers_from_text("No\n");
    extend_arc(nothing, pick);
    EXPECT_EQ(session.printed(), BREAK + "No\n\nError: selection must be an ARC");
    EXPECT_EQ(host::heap_live_blocks(), blocks);
}

// Symmetric about x, so that the two distances are the same to the bit.
TEST_F(ExtendArc, PickEquallyFarFromBothEndsTakesTheEnd)
{
    session.lisp("(entmake '((0 . \"ARC\") (10 0.0 0.0 0.0) (40 . 50.0) (50 . -1.0) (51 . 1.0)))");
    run("#last 50,0\n\n25\n\n");
    EXPECT_EQ(session.lisp("(list (cdr (assoc 50 (entget (entlast)))) (cdr (assoc 51 (entget (entlast)))))"),
              "(-1.0 1.5)");
}

TEST_F(ExtendArc, PickedPointGivesItsPlanDistanceWithNineDecimals)
{
    session.lisp("(arc 0 (/ pi 2))"); // its end is at (200, 100 + r)
    host::answers_from_text(
        "#last 200,120\nNo\n(list 203.0 (+ 104.0 r) 99.0)\n(list 200.00000000012 (+ 100 r))\n\n");
    const std::string trace = session.traced("(cf:zentutil \"\" 2)");
    EXPECT_NE(trace.find("acedInitGet 128 \"\"\nacedGetPoint (200.0 115.915 0.0)"), std::string::npos) << trace;
    // 5 of 100 longer; the second point is away by the chord of that.
    EXPECT_EQ(session.lisp("(car (car (arcs)))"), "\"0\"");
    host::answers_from_text("#last 200,120\nYes\n(list 203.0 (+ 104.0 r) 99.0)\n\n");
    session.lisp("(entdel (entlast)) (arc 0 (/ pi 2)) (cf:zentutil \"\" 2)");
    EXPECT_EQ(arcs(), "((\"0\" \"25\") (\"25\" \"30\"))");
}

// What a text of nine decimals can't hold is nothing.
TEST_F(ExtendArc, PickedDistanceIsRoundedByItsText)
{
    session.lisp("(arc 0 (/ pi 2))");
    host::answers_from_text("#last 200,120\n\n(list 200.0000000004 (+ 100 r))\n\n");
    session.lisp("(cf:zentutil \"\" 2)");
    EXPECT_EQ(session.lisp("(equal (cdr (assoc 51 (entget (entlast)))) (/ pi 2) 0)"), "T");
    host::answers_from_text("#last 200,120\n\n(list 200.0000000006 (+ 100 r))\n\n");
    session.lisp("(cf:zentutil \"\" 2)");
    EXPECT_EQ(session.lisp("(equal (cdr (assoc 51 (entget (entlast)))) (/ pi 2) 0)"), "nil");
}

TEST_F(ExtendArc, BasePointFollowsTheEndAtHeightZero)
{
    session.lisp("(arc 0 (/ pi 2))");
    host::answers_from_text("#last 200,120\n\n25\nT25\nU\nU\nU\n\n");
    const std::string trace = session.traced("(cf:zentutil \"\" 2)");
    std::vector<std::string> bases;
    for (std::size_t at = 0; (at = trace.find("acedGetPoint ", at)) != std::string::npos; ++at)
        bases.push_back(trace.substr(at + 13, trace.find(')', at) - at - 12));
    const std::string quarter = "(200.0 115.915 0.0)", half = "(184.085 100.0 0.0)";
    EXPECT_EQ(bases, (std::vector<std::string>{quarter, half, quarter, half, quarter, quarter})) << trace;
}

// The drawing hears of an object that goes and one that comes, never of a change in place.
TEST_F(ExtendArc, ErasesAndMakesAnew)
{
    session.lisp("(arc 0 (/ pi 2))");
    host::answers_from_text("#last 200,120\nNo\n25\nT10\nU\n\n");
    const std::string trace = session.traced("(cf:zentutil \"\" 2)");
    std::string calls;
    std::istringstream lines(trace);
    for (std::string line; std::getline(lines, line);)
        if (line.starts_with("acdbEnt"))
            calls += line.substr(7, 4) == "Make" ? "make " : line.substr(7, 3) == "Del" ? "erase " : "change ";
    EXPECT_EQ(calls, "erase make erase make erase make ") << trace;
    EXPECT_EQ(trace.find("(-1 ."), std::string::npos) << trace;
    EXPECT_EQ(arcs(), "((\"0\" \"50\"))");
}

TEST_F(ExtendArc, BreakingChangesInPlaceAndAddsPieces)
{
    session.lisp("(arc 0 (/ pi 2))");
    host::answers_from_text("#last 200,120\nYes\n-10\n20\n\n");
    const std::string trace = session.traced("(cf:zentutil \"\" 2)");
    EXPECT_EQ(trace.find("acdbEntDel"), std::string::npos) << trace;
    const auto change = trace.find("acdbEntMod ((-1 . ");
    const auto make = trace.find("acdbEntMake ((0 . \"ARC\")");
    EXPECT_LT(change, make) << trace;
    EXPECT_NE(make, std::string::npos) << trace;
    EXPECT_EQ(arcs(), "((\"0\" \"15\") (\"15\" \"25\") (\"15\" \"35\"))");
}

TEST_F(ExtendArc, BreakingByNothingChangesNothingInPlace)
{
    session.lisp("(arc 0 (/ pi 2))");
    host::answers_from_text("#last 200,120\nYes\n0\n\n");
    EXPECT_EQ(session.traced("(cf:zentutil \"\" 2)").find("acdbEntMod"), std::string::npos);
}

TEST_F(ExtendArc, KeepsAllProperties)
{
    session.lisp(
        "(entmake '((0 . \"LAYER\") (100 . \"AcDbSymbolTableRecord\") (100 . \"AcDbLayerTableRecord\") "
        "(2 . \"KERB\") (70 . 0) (62 . 3) (6 . \"Continuous\")))"
        "(entmake '((0 . \"LTYPE\") (100 . \"AcDbSymbolTableRecord\") (100 . \"AcDbLinetypeTableRecord\") "
        "(2 . \"DASHED\") (70 . 0) (3 . \"\") (72 . 65) (73 . 2) (40 . 2.0) (49 . 1.0) (74 . 0) "
        "(49 . -1.0) (74 . 0)))"
        "(setq shown '(0 8 6 62 48 39 370 210 10 40))"
        "(defun shown-of (e) (mapcar '(lambda (g) (assoc g (entget e))) shown))");
    for (const char* how : {"No\n5\n-2\nT30\n1\nU\n\n", "Yes\n5\n\n", "Yes\n-5\n\n"}) {
        session.lisp("(entmake '((0 . \"ARC\") (8 . \"KERB\") (6 . \"DASHED\") (62 . 5) (48 . 2.5) (39 . 1.5) "
                     "(370 . 30) (10 20.0 30.0 4.0) (40 . 50.0) (50 . 0.0) (51 . 1.0) (210 0.0 0.0 1.0)))"
                     "(setq before (shown-of (entlast)))");
        run(std::string("#last 47,72\n") + how);
        EXPECT_EQ(session.lisp("(equal before (shown-of (entlast)))"), "T") << how;
        EXPECT_EQ(session.lisp("(cdr (assoc 39 before))"), "1.5");
    }
}

TEST_F(ExtendArc, RadiusOfNothingIsNoTrap)
{
    session.lisp("(entmake '((0 . \"ARC\") (10 5.0 5.0 0.0) (40 . 1.0) (50 . 0.0) (51 . 1.0)))"
                 "(setq d (entget (entlast))) (entmod (subst (cons 40 1e-300) (assoc 40 d) d))");
    const std::string told = run("#last 5,5\n\n0\n-1e308\n5\nT5\nU\n5,5\n\n");
    EXPECT_NE(told.find("\nError: '-1e308' is not a length along this arc."), std::string::npos) << told;
}

// Left at each of its prompts, the tool gives back the steps that it keeps.
TEST_F(ExtendArc, GivesBackItsStepsOnEveryWayOut)
{
    const std::vector<std::string> answers = {"No", "1", "T30", "2", "U", "3", "abc", "-1"};
    for (std::size_t count = 0; count <= answers.size(); ++count) {
        std::string text;
        for (std::size_t i = 0; i < count; ++i)
            text += answers[i] + "\n";
        const std::size_t bytes = host::heap_live_bytes();
        run(10, 30, false, text + "^C\n");
        EXPECT_EQ(host::heap_live_bytes(), bytes) << count;
    }
}

TEST_F(ExtendArc, WithoutMemoryForAStepTheArcStays)
{
    bool refused = true;
    for (long nth = 1; refused && nth < 50; ++nth) {
        session.lisp("(while (entlast) (entdel (entlast)))");
        const std::size_t bytes = host::heap_live_bytes();
        host::heap_refuse(nth);
        const std::string told = run(10, 30, false, nth == 1 ? "\n1\n" : nth == 2 ? "\n1\n2\n" : "\n1\n2\n\n");
        refused = host::heap_refuse(0) == 0;
        EXPECT_EQ(host::heap_live_bytes(), bytes) << nth;
        const bool said = told.find("\nError: no memory for another step.") != std::string::npos;
        EXPECT_EQ(said, refused) << nth << told;
        if (said) {
            EXPECT_EQ(arcs(), nth == 1 ? "((\"10\" \"30\"))" : "((\"10\" \"31\"))") << told;
        }
    }
    EXPECT_FALSE(refused);
    EXPECT_EQ(arcs(), "((\"10\" \"33\"))");
}

// A sequence that a program has left open at a prompt swallows the new arc: the old one comes back.
TEST_F(ExtendArc, ArcThatCantBeMadeStays)
{
    const std::string told =
        run(10, 30, false, "\n2\n(progn (entmake '((0 . \"POLYLINE\") (66 . 1) (10 0.0 0.0 0.0))) \"5\")\n");
    EXPECT_NE(told.find("\nError: the arc can't be made."), std::string::npos) << told;
    EXPECT_EQ(arcs(), "((\"10\" \"32\"))");
}

// The same at a cut: no piece is lost. The list has been given other angles by the steps before.
TEST_F(ExtendArc, ArcWhoseOtherPieceCantBeMadeIsWholeAgain)
{
    const std::string told =
        run(10, 30, false,
            "Yes\n-5\n9\n(progn (entmake '((0 . \"POLYLINE\") (66 . 1) (10 0.0 0.0 0.0))) \"-20\")\n");
    EXPECT_NE(told.find("\nError: the arc can't be made."), std::string::npos) << told;
    EXPECT_EQ(arcs(), "((\"10\" \"25\") (\"25\" \"30\") (\"25\" \"34\"))");
}

TEST_F(ExtendArc, ArcThatIsGoneDoesNotComeBack)
{
    for (const char* answer : {"5", "T50", "U"}) {
        session.lisp("(while (entlast) (entdel (entlast)))");
        const std::string told =
            run(10, 30, false, std::string("\n2\n(progn (entdel (entlast)) \"") + answer + "\")\n");
        EXPECT_TRUE(told.ends_with("\nError: the arc can't be changed.")) << told;
        EXPECT_EQ(arcs(), "nil") << answer;
    }
}

TEST_F(ExtendArc, ArcThatIsGoneCantBeCut)
{
    const std::string told = run(10, 30, false, "Yes\n(progn (entdel (entlast)) \"-5\")\n");
    EXPECT_NE(told.find("\nError: the arc can't be changed."), std::string::npos) << told;
    EXPECT_EQ(arcs(), "nil");
}

} // namespace
