// Words along arcs: where letters go, and the tool as a user has it.
#include "tools/curved_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "host/core/console.h"
#include "host/core/heap.h"
#include "hostapi/ads.h"
#include "tests/shell/module_session.h"

namespace
{

constexpr double PI = std::numbers::pi;

// ---- numbers ---------------------------------------------------------------------------------------------

TEST(LetterAngle, Cases)
{
    const struct {
        const char* name;
        double x, y, expected;
    } cases[] = {
        {"along x", 5, 0, 0.0},
        {"first quadrant", 3, 3, PI / 4},
        {"second quadrant", -3, 3, 3 * PI / 4},
        {"against x", -5, 0, PI},
        {"third quadrant", -3, -3, 5 * PI / 4},
        {"fourth quadrant", 3, -3, -PI / 4},
        // Above and below the centre the angle is short of a right one.
        {"exactly above", 0, 5, std::atan(5e6)},
        {"exactly below", 0, -5, -std::atan(5e6)},
        {"on the centre", 0, 0, 0.0},
    };
    for (const auto& c : cases) {
        const text_circle circle = {{640000.0, 5120000.0}, 50.0};
        const ads_point pick = {circle.centre[0] + c.x, circle.centre[1] + c.y, 12.0};
        EXPECT_NEAR(letter_angle(circle, pick), c.expected, 1e-12) << c.name;
    }
}

TEST(BaseLine, StandsOnTheSideThatIsAskedFor)
{
    const text_circle circle = {{0, 0}, 50.0};
    EXPECT_DOUBLE_EQ(base_line_radius(circle, {2.0, 3.0, true, -1.0}), 50.0 - 3.0);
    EXPECT_DOUBLE_EQ(base_line_radius(circle, {2.0, 3.0, true, 1.0}), 50.0 - 3.0 - 2.0);
    EXPECT_DOUBLE_EQ(base_line_radius(circle, {2.0, 3.0, false, -1.0}), 50.0 + 3.0 + 2.0);
    EXPECT_DOUBLE_EQ(base_line_radius(circle, {2.0, 3.0, false, 1.0}), 50.0 + 3.0);
}

TEST(PlaceLetter, OnItsCircleAlongTheTangent)
{
    std::mt19937 random(55);
    std::uniform_real_distribution<double> any(-20, 20), size(0.1, 10);
    for (int i = 0; i < 4000; ++i) {
        const text_circle circle = {{any(random), any(random)}, 10 * size(random)};
        const letter_style style = {size(random), any(random), i % 2 != 0, i % 4 < 2 ? 1.0 : -1.0};
        const double angle = any(random), distance = base_line_radius(circle, style);
        const letter_place place = place_letter(circle, style, angle);
        const double rx = place.at[0] - circle.centre[0], ry = place.at[1] - circle.centre[1];
        const double tx = place.toward[0] - place.at[0], ty = place.toward[1] - place.at[1];
        ASSERT_NEAR(rx * std::cos(angle) + ry * std::sin(angle), distance, 1e-10) << i;
        ASSERT_NEAR(rx * std::sin(angle) - ry * std::cos(angle), 0.0, 1e-10) << i;
        ASSERT_NEAR(std::hypot(tx, ty), 3.0, 1e-12) << i;
        if (std::fabs(distance) < 1e-3)
            continue;
        // Seen from the centre the base line runs clockwise or not, as asked for.
        ASSERT_NEAR((rx * ty - ry * tx) / std::hypot(rx, ry), -3.0 * style.turn, 1e-9) << i;
        ASSERT_EQ(place.at[2], 0.0);
        ASSERT_EQ(place.toward[2], 0.0);
    }
}

// Straight to the right of the centre the outward direction is tilted upwards by 1e-7, so that its normal leans
// right.
TEST(PlaceLetter, OutwardAlongXIsTiltedUpwards)
{
    const text_circle circle = {{0, 0}, 50.0};
    const letter_place place = place_letter(circle, {2.0, 0.0, false, 1.0}, 0.0);
    EXPECT_EQ(place.at[0], 50.0);
    EXPECT_EQ(place.at[1], 0.0);
    EXPECT_NEAR(place.toward[0] - 50.0, 3e-7, 1e-12);
    EXPECT_NEAR(place.toward[1], -3.0, 1e-12);
}

TEST(PlaceLetter, OnTheCentreItselfHasADirection)
{
    const text_circle circle = {{7, 8}, 50.0};
    const letter_place place = place_letter(circle, {2.0, 50.0, true, -1.0}, 1.0);
    EXPECT_EQ(place.at[0], 7.0);
    EXPECT_EQ(place.at[1], 8.0);
    EXPECT_NEAR(std::hypot(place.toward[0] - 7.0, place.toward[1] - 8.0), 3.0, 1e-12);
}

// ---- the tool ----------------------------------------------------------------------------------------------

const std::string SIZE_PROMPT = "\nText size <2.00>: ";
const std::string OFFSET_PROMPT = "\nOffset from arc <1.00>: ";
const std::string SIDE_PROMPT = "\nDraw text inside or outside arc [Inside/<Outside>]? ";
const std::string TURN_PROMPT = "\nDraw text clockwise [<Yes>/No]? ";
const std::string PICK_PROMPT = "\nPick arc at point to start text (Enter to end): ";
const std::string NEXT_PROMPT = "\nEnter text (Blank to end): ";

struct letter {
    std::string text;
    double x, y, size, rotation;
};

class CurvedText : public testing::Test
{
protected:
    module_session session;
    std::string arc; // how an answer names the arc about (100, 200) with radius 50

    CurvedText()
    {
        session.lisp("(defun texts (/ e all d) (setq e (entnext))"
                     " (while e (setq d (entget e) e (entnext e))"
                     "  (if (= (cdr (assoc 0 d)) \"TEXT\")"
                     "   (setq all (cons (list (cdr (assoc 1 d)) (cdr (assoc 10 d)) (cdr (assoc 40 d)) "
                     "(cdr (assoc 50 d))) all)))) (reverse all))"
                     // Code, place, height and rotation of a letter.
                     "(defun digits (l) (strcat (itoa (ascii (car l))) \" \" (rtos (car (cadr l)) 2 8) \" \""
                     " (rtos (cadr (cadr l)) 2 8) \" \" (rtos (caddr l) 2 8) \" \" (rtos (cadddr l) 2 8)))"
                     "(defun arc () (entmake '((0 . \"ARC\") (8 . \"0\") (10 100.0 200.0 9.0) (40 . 50.0)"
                     " (50 . 0.0) (51 . 2.0))))"
                     "(defun lw (closed vertices) (entmake (append (list '(0 . \"LWPOLYLINE\") "
                     "'(100 . \"AcDbEntity\") '(8 . \"0\") '(100 . \"AcDbPolyline\") "
                     "(cons 90 (length vertices)) (cons 70 closed)) (apply 'append (mapcar '(lambda (v) "
                     "(list (list 10 (float (car v)) (float (cadr v))) (cons 42 (float (caddr v))))) "
                     "vertices)))))"
                     "(arc) (setq arc-handle (cdr (assoc 5 (entget (entlast)))))"
                     "(setvar \"CMDECHO\" 0)");
        const std::string handle = session.lisp("arc-handle");
        arc = "#" + handle.substr(1, handle.size() - 2);
        session.printed();
    }

    // "@" in the answers stands for the arc.
    std::string run(std::string answers, const std::string& arguments = "2.0")
    {
        for (std::size_t at; (at = answers.find('@')) != std::string::npos;)
            answers.replace(at, 1, arc);
        host::answers_from_text(answers + "next\n");
        session.printed();
        EXPECT_EQ(session.lisp("(cf:zentutil \"\" 6 " + arguments + ")"), "nil");
        const std::string told = session.printed();
        EXPECT_EQ(host::next_answer("").value_or("none"), "next") << answers;
        return told;
    }
    std::string traced(const std::string& answers)
    {
        host::answers_from_text(answers);
        return session.traced("(cf:zentutil \"\" 6 2.0)");
    }
    std::vector<letter> letters()
    {
        session.printed();
        session.lisp("(foreach l (texts) (princ (digits l)) (terpri))");
        std::istringstream lines(session.printed());
        std::vector<letter> all;
        letter each;
        for (int code = 0; lines >> code >> each.x >> each.y >> each.size >> each.rotation;) {
            each.text = std::string(1, static_cast<char>(code));
            all.push_back(each);
        }
        return all;
    }
    // All letters as one word.
    std::string word()
    {
        std::string all;
        for (const letter& each : letters())
            all += each.text;
        return all;
    }
};

struct side_case {
    const char* name;
    const char* answers; // to the questions of side and turn
    double distance, turn;
};

TEST_F(CurvedText, EachSideAndTurn)
{
    const side_case cases[] = {
        {"inside, counter-clockwise", "Inside\nNo\n", 50 - 3, -1},
        {"inside, clockwise", "Inside\nYes\n", 50 - 3 - 2.5, 1},
        {"outside, counter-clockwise", "Outside\nNo\n", 50 + 3 + 2.5, -1},
        {"outside, clockwise", "Outside\nYes\n", 50 + 3, 1},
        {"as it stands: outside, clockwise", "\n\n", 50 + 3, 1},
        {"by letters", "i\nn\n", 50 - 3, -1},
    };
    for (const side_case& c : cases) {
        session.lisp("(while (/= (cdr (assoc 0 (entget (entlast)))) \"ARC\") (entdel (entlast)))");
        run(std::string("ABCD\n2.5\n3\n") + c.answers + "#last 130,240\n\n");
        const std::vector<letter> all = letters();
        ASSERT_EQ(all.size(), 4u) << c.name;
        double angle = std::atan2(40, 30);
        for (std::size_t i = 0; i < all.size(); ++i) {
            EXPECT_EQ(all[i].text, std::string(1, static_cast<char>('A' + i))) << c.name;
            EXPECT_NEAR(all[i].x, 100 + c.distance * std::cos(angle), 1e-7) << c.name;
            EXPECT_NEAR(all[i].y, 200 + c.distance * std::sin(angle), 1e-7) << c.name;
            EXPECT_EQ(all[i].size, 2.5) << c.name;
            EXPECT_NEAR(std::remainder(all[i].rotation - (angle - c.turn * PI / 2), 2 * PI), 0.0, 1e-7)
                << c.name;
            angle -= c.turn * 2.5 / 50; // each takes its height of arc
        }
    }
}

// Prompts in their order, with the standard values and the answers behind them.
TEST_F(CurvedText, PromptsToTheLetter)
{
    EXPECT_EQ(run("AB\n\n\n\n\n#last 130,240\nC\n@ 130,240\n\n"),
              "Enter text: AB" + SIZE_PROMPT + OFFSET_PROMPT + SIDE_PROMPT + TURN_PROMPT + PICK_PROMPT +
                  "#last 130,240" + NEXT_PROMPT + "C" + PICK_PROMPT + arc + " 130,240" + NEXT_PROMPT + "\n");
    EXPECT_EQ(word(), "ABC");
}

TEST_F(CurvedText, KeyWordsOfItsQuestions)
{
    const std::string trace = traced("AB\n\n\n\n\n\n");
    EXPECT_EQ(trace, "acedGetString 1 \"\\nEnter text: \" -> RTNORM\n"
                     "acedGetReal \"\\nText size <2.00>: \" -> RTNONE\n"
                     "acedGetReal \"\\nOffset from arc <1.00>: \" -> RTNONE\n"
                     "acedInitGet 0 \"Inside Outside\"\n"
                     "acedGetKword \"\\nDraw text inside or outside arc [Inside/<Outside>]? \" -> RTNONE\n"
                     "acedInitGet 0 \"Yes No\"\n"
                     "acedGetKword \"\\nDraw text clockwise [<Yes>/No]? \" -> RTNONE\n"
                     "acedEntSel \"\\nPick arc at point to start text (Enter to end): \" -> RTERROR\n");
}

// One command a letter: the name, the insertion point, the height, a point along the base line, the letter.
TEST_F(CurvedText, SendsOneCommandALetter)
{
    const std::string trace = traced("A \n2.5\n0\n\n\n#last 100,250\n\n");
    const auto first = trace.find("acedCommand"), second = trace.find("acedCommand", first + 1);
    ASSERT_NE(second, std::string::npos) << trace;
    EXPECT_EQ(trace.find("acedCommand", second + 1), std::string::npos) << trace;
    EXPECT_EQ(trace.substr(first, trace.find('\n', first) - first),
              "acedCommand (\"_.TEXT\" (100.0 250.0 0.0) 2.5 (103.0 250.0 0.0) \"A\") -> RTNORM");
    EXPECT_EQ(trace.substr(second, trace.find('\n', second) - second),
              "acedCommand (\"_.TEXT\" (102.499 249.938 0.0) 2.5 (105.495 249.788 0.0) \" \") -> RTNORM");
}

TEST_F(CurvedText, StandardSizeIsTheCallsAndTheOffsetHalfOfWhatIsGiven)
{
    EXPECT_NE(run("A\n5\n^C\n", "7.125").find("\nText size <7.12>: 5\nOffset from arc <2.50>: ^C"),
              std::string::npos);
    EXPECT_NE(run("A\n\n^C\n", "0.5").find("\nText size <0.50>: \nOffset from arc <0.25>: ^C"),
              std::string::npos);
}

TEST_F(CurvedText, SizeMustBeAboveZero)
{
    const std::string told = run("AB\n\n0\n-2\n4\n\n\n\n#last 130,240\n\n", "");
    const std::string again = "\n\nError: the text size must be above zero\nText size <0.00>: ";
    EXPECT_NE(
        told.find("\nText size <0.00>: " + again + "0" + again + "-2" + again + "4\nOffset from arc <2.00>: "),
        std::string::npos)
        << told;
    EXPECT_EQ(letters().at(1).size, 4.0);
}

TEST_F(CurvedText, OffsetMayBeOfEitherSign)
{
    run("A\n2\n-10\n\n\n#last 100,250\n\n");
    EXPECT_NEAR(letters().at(0).y, 240.0, 1e-7);
}

TEST_F(CurvedText, NextWordsHaveTheSameSettings)
{
    run("A\n3\n1\nInside\nNo\n#last 130,240\nB\n@ 70,240\nC\n@ 100,250\n\n");
    const std::vector<letter> all = letters();
    ASSERT_EQ(all.size(), 3u);
    for (const letter& each : all) {
        EXPECT_NEAR(std::hypot(each.x - 100, each.y - 200), 49.0, 1e-7);
        EXPECT_EQ(each.size, 3.0);
    }
    EXPECT_NEAR(std::atan2(all[1].y - 200, all[1].x - 100), std::atan2(40, -30), 1e-7);
}

TEST_F(CurvedText, BlanksAreLetters)
{
    run("A B \n\n\n\n\n#last 130,240\n \n@ 130,240\n\n");
    EXPECT_EQ(word(), "A B  ");
}

TEST_F(CurvedText, LettersAreBytesOfTheCodePage)
{
    run("\u00C4\u00DF\u00B0\u20AC\n\n\n\n\n#last 130,240\n\n");
    EXPECT_EQ(letters().size(), 4u);
    EXPECT_EQ(session.lisp("(mapcar '(lambda (l) (ascii (car l))) (texts))"), "(196 223 176 128)");
}

TEST_F(CurvedText, LettersThatMeanSomethingElsewhere)
{
    run("1;#\"_.L(!^C%\n\n\n\n\n#last 130,240\n\n");
    EXPECT_EQ(session.lisp("(mapcar '(lambda (l) (ascii (car l))) (texts))"),
              "(49 59 35 34 95 46 76 40 33 94 67 37)");
}

TEST_F(CurvedText, BackslashIsALetter)
{
    run("A\\B\n\n\n\n\n#last 130,240\n\n");
    EXPECT_EQ(word(), "A\\B");
}

// With TEXTEVAL a lone backslash has the command ask its user; his answer stands in its place.
TEST_F(CurvedText, BackslashIsAskedForWhereTextsAreEvaluated)
{
    session.lisp("(setvar \"TEXTEVAL\" 1)");
    run("A\\B\n\n\n\n\n#last 130,240\nC\n\n");
    EXPECT_EQ(word(), "ACB");
}

TEST_F(CurvedText, CancelWithinAWordEndsTheTool)
{
    session.lisp("(setvar \"TEXTEVAL\" 1)");
    run("A\\B\n\n\n\n\n#last 130,240\n^C\n");
    EXPECT_EQ(word(), "A");
}

// The size is then of the steps only.
TEST_F(CurvedText, StyleOfAFixedHeightKeepsPlacesAndDirections)
{
    session.lisp("(command \"_.STYLE\" \"FIXED\" \"txt\" 3.0 1.0 0.0 \"_N\" \"_N\" \"_N\")");
    run("AB\n2\n1\n\n\n#last 130,240\n\n");
    const std::vector<letter> all = letters();
    ASSERT_EQ(all.size(), 2u);
    for (std::size_t i = 0; i < 2; ++i) {
        const double angle = std::atan2(40, 30) - static_cast<double>(i) * 2.0 / 50.0;
        EXPECT_EQ(all[i].size, 3.0);
        EXPECT_NEAR(all[i].x, 100 + 51 * std::cos(angle), 1e-7);
        EXPECT_NEAR(all[i].y, 200 + 51 * std::sin(angle), 1e-7);
        EXPECT_NEAR(std::remainder(all[i].rotation - (angle - PI / 2), 2 * PI), 0.0, 1e-7);
    }
}

TEST_F(CurvedText, RunningObjectSnapsMoveNoLetter)
{
    session.lisp("(setvar \"OSMODE\" 1)");
    run("A\n2\n0\n\nNo\n#last 149.9,203\n\n");
    const letter all = letters().at(0);
    EXPECT_NEAR(std::hypot(all.x - 100, all.y - 200), 52.0, 1e-7);
    EXPECT_NEAR(std::remainder(all.rotation - std::atan2(all.y - 200, all.x - 100) - PI / 2, 2 * PI), 0.0,
                1e-7);
}

TEST_F(CurvedText, LongWordRunsPastTheArcAndOnAroundTheCircle)
{
    const std::string text(200, 'X'); // 200 times 2 on a circle of 314
    run(text + "\n2\n0\n\nNo\n#last 150,200\n\n");
    const std::vector<letter> all = letters();
    ASSERT_EQ(all.size(), text.size());
    for (std::size_t i = 0; i < all.size(); ++i) {
        const double angle = static_cast<double>(i) * 2.0 / 50.0;
        EXPECT_NEAR(all[i].x, 100 + 52 * std::cos(angle), 1e-7) << i;
        EXPECT_NEAR(all[i].y, 200 + 52 * std::sin(angle), 1e-7) << i;
    }
}

TEST_F(CurvedText, LongestTextIsThatOfAPrompt)
{
    run(std::string(300, 'X') + "\n0.5\n0\n\nNo\n#last 150,200\n\n");
    EXPECT_EQ(letters().size(), static_cast<std::size_t>(ADS_TEXT_SIZE - 1));
}

TEST_F(CurvedText, PickAboveTheCentre)
{
    run("A\n2\n0\n\nNo\n(list (entlast) (list 100.0 260.0 0.0))\n\n");
    const letter up = letters().at(0);
    EXPECT_NEAR(up.x, 100 + 52e-6 / 60, 1e-7);
    EXPECT_NEAR(up.y, 252.0, 1e-7);
    EXPECT_NEAR(up.rotation, PI, 1e-6);
    session.lisp("(entdel (entlast))");
    run("A\n2\n0\n\nNo\n(list (entlast) (list 100.0 140.0 0.0))\n\n");
    const letter down = letters().at(0);
    EXPECT_NEAR(down.x, 100 + 52e-6 / 60, 1e-7);
    EXPECT_NEAR(down.y, 148.0, 1e-7);
    EXPECT_NEAR(std::remainder(down.rotation, 2 * PI), 0.0, 1e-6);
}

// ---- arcs of polylines
// ------------------------------------------------------------------------------------------

struct polyline_case {
    const char* name;
    double bulge; // of the segment from (0, -10) to (0, 10)
    double x, y;  // pick
    double centre, radius;
};

TEST_F(CurvedText, ArcsOfPolylines)
{
    const double t8 = std::tan(PI / 8), r2 = 10 * std::sqrt(2.0);
    const polyline_case cases[] = {
        {"quarter circle", t8, r2 - 10, 0, -10, r2},
        {"clockwise", -t8, 10 - r2, 0, 10, r2},
        {"half circle", 1, 10, 0, 0, 10},
        {"half circle clockwise", -1, -10, 0, 0, 10},
        {"three quarters", 1 / t8, 10 + r2, 0, 10, r2},
        {"three quarters clockwise", -1 / t8, -10 - r2, 0, -10, r2},
    };
    for (const bool lightweight : {true, false})
        for (const polyline_case& c : cases) {
            session.lisp("(while (entlast) (entdel (entlast)))");
            std::ostringstream make;
            make.precision(17);
            if (lightweight)
                make << "(lw 0 '((-30 -10 0) (0 -10 " << c.bulge << ") (0 10 0) (-30 10 0)))";
            else
                make << "(entmake '((0 . \"POLYLINE\") (66 . 1) (10 0.0 0.0 3.0)))"
                     << "(entmake '((0 . \"VERTEX\") (10 -30.0 -10.0 3.0)))"
                     << "(entmake '((0 . \"VERTEX\") (10 0.0 -10.0 3.0) (42 . " << c.bulge << ")))"
                     << "(entmake '((0 . \"VERTEX\") (10 0.0 10.0 3.0)))(entmake '((0 . \"SEQEND\")))";
            session.lisp(make.str());
            std::ostringstream pick;
            pick.precision(17);
            pick << "(list (entlast) (list " << c.x << " " << c.y << " 0.0))";
            run("AB\n0.5\n1\n\nNo\n" + pick.str() + "\n\n");
            const std::vector<letter> all = letters();
            ASSERT_EQ(all.size(), 2u) << c.name;
            const double from = c.x < c.centre ? PI : 0.0;
            for (std::size_t i = 0; i < 2; ++i) {
                const double angle = from + static_cast<double>(i) * 0.5 / c.radius, r = c.radius + 1.5;
                EXPECT_NEAR(all[i].x, c.centre + r * std::cos(angle), 1e-6) << c.name;
                EXPECT_NEAR(all[i].y, r * std::sin(angle), 1e-6) << c.name;
                EXPECT_NEAR(std::remainder(all[i].rotation - angle - PI / 2, 2 * PI), 0.0, 1e-6) << c.name;
            }
        }
}

// Exactly on a vertex the segment that begins there counts, whichever it ends.
TEST_F(CurvedText, PickOnTheVertexThatBeginsAnArc)
{
    session.lisp("(lw 0 '((-30 -10 0) (0 -10 1) (0 10 -1) (0 30 0))) (setq line (entlast))");
    run("A\n0.5\n1\n\nNo\n(list line (list 0.0 -10.0 0.0))\nB\n(list line (list 0.0 10.0 0.0))\n\n");
    const std::vector<letter> all = letters();
    ASSERT_EQ(all.size(), 2u);
    EXPECT_NEAR(std::hypot(all[0].x, all[0].y), 11.5, 1e-6);
    EXPECT_NEAR(std::hypot(all[1].x, all[1].y - 20), 11.5, 1e-6);
}

struct refused_case {
    const char* name;
    const char* object;
    const char* pick;
    const char* message;
};

TEST_F(CurvedText, WhatHasNoArcEndsTheTool)
{
    const char* const wrong = "\nError: selection must be an ARC or POLYLINE";
    const char* const no_arc = "\nError: unable to locate arc on polyline";
    const char* const polyline = "(lw 0 '((0 0 0) (20 0 1) (20 40 0) (0 40 0)))";
    const refused_case cases[] = {
        {"line", "(entmake '((0 . \"LINE\") (10 0.0 0.0 0.0) (11 9.0 0.0 0.0)))", "#last 5,0", wrong},
        {"circle", "(entmake '((0 . \"CIRCLE\") (10 0.0 0.0 0.0) (40 . 9.0)))", "#last 9,0", wrong},
        {"straight segment", polyline, "#last 10,0", no_arc},
        {"vertex behind an arc", polyline, "#last 20,40", no_arc},
        {"last vertex", polyline, "#last 0,40", no_arc},
        {"last vertex of an arc", "(lw 0 '((0 0 1) (20 0 1)))", "#last 20,0", no_arc},
        {"beside all segments", polyline, "#last -10,60", no_arc},
        {"closing segment", "(lw 1 '((0 0 0) (20 0 0) (20 40 1)))", "#last 30,45", no_arc},
        {"arc without length", "(lw 0 '((0 0 1) (0 0 0) (0 9 0)))", "#last 5,0", no_arc},
        {"arc far too small",
         "(progn (entmake '((0 . \"ARC\") (10 0.0 0.0 0.0) (40 . 9.0) (50 . 0.0) (51 . 1.0))) (setq d (entget "
         "(entlast)))"
         " (entmod (subst (cons 40 1e-320) (assoc 40 d) d)))",
         "#last 9,0", "\nError: text of this size and offset can't follow an arc of this radius"},
    };
    for (const refused_case& c : cases) {
        session.lisp(c.object);
        const std::string told = run(std::string("AB\n\n\n\n\n") + c.pick + "\n");
        EXPECT_TRUE(told.ends_with(PICK_PROMPT + c.pick + "\n" + c.message)) << c.name << told;
        EXPECT_EQ(word(), "") << c.name;
    }
}

TEST_F(CurvedText, LettersStayWhenALaterPickIsWrong)
{
    session.lisp("(lw 0 '((0 0 0) (20 0 0))) (setq line (entlast))");
    run("AB\n\n\n\n\n@ 130,240\nCD\n(list line (list 10.0 0.0 0.0))\n");
    EXPECT_EQ(word(), "AB");
}

// Each end, with what is drawn by then.
TEST_F(CurvedText, EndsAtEachQuestion)
{
    const struct {
        const char* answers;
        const char* drawn;
    } cases[] = {
        {"^C\n", ""},
        {"\n", ""},
        {"AB\n^C\n", ""},
        {"AB\n\n^C\n", ""},
        {"AB\n\n\n^C\n", ""},
        {"AB\n\n\n\n^C\n", ""},
        {"AB\n\n\n\n\n^C\n", ""},
        {"AB\n\n\n\n\n\n", ""},
        {"AB\n\n\n\n\n5000,5000\n", ""},
        {"AB\n\n\n\n\n@ 130,240\n^C\n", "AB"},
        {"AB\n\n\n\n\n@ 130,240\n\n", "AB"},
        {"AB\n\n\n\n\n@ 130,240\nCD\n\n", "AB"},
        {"AB\n\n\n\n\n@ 130,240\nCD\n@ 130,240\n^C\n", "ABCD"},
    };
    for (const auto& c : cases) {
        session.lisp("(while (/= (cdr (assoc 0 (entget (entlast)))) \"ARC\") (entdel (entlast)))");
        const std::size_t bytes = host::heap_live_bytes();
        run(c.answers);
        EXPECT_EQ(word(), c.drawn) << c.answers;
        EXPECT_EQ(host::heap_live_bytes(), bytes) << c.answers;
    }
}

TEST_F(CurvedText, WithoutMemoryForThePolylineNothingIsDrawn)
{
    session.lisp("(lw 0 '((-30 -10 0) (0 -10 1) (0 10 0) (-30 10 0)))");
    bool refused = true;
    int rounds = 0;
    for (long nth = 1; refused && nth < 50; ++nth, ++rounds) {
        host::heap_refuse(nth);
        const std::string told = run(nth <= 8 ? "A\n\n\n\n\n#last 10,0\n" : "A\n\n\n\n\n#last 10,0\n\n");
        refused = host::heap_refuse(0) == 0;
        EXPECT_EQ(word(), refused ? "" : "A") << nth << told;
    }
    EXPECT_FALSE(refused);
    EXPECT_EQ(rounds, 9); // a node and a vertex for each of the four
}

TEST_F(CurvedText, ArgumentOfAnotherTypeOrNone)
{
    EXPECT_NE(run("A\n^C\n", "").find("\nText size <0.00>: "), std::string::npos);
    EXPECT_NE(run("A\n^C\n", "\"5\"").find("\nText size <0.00>: "), std::string::npos);
    EXPECT_NE(run("A\n^C\n", "1e300").find(".00>: ^C"), std::string::npos);
}

} // namespace
