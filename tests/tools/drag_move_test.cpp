// Operations 16 and 29: dragging a selection set.
#include "tests/tools/small_tool_case.h"

#include <cmath>
#include <limits>

#include <vector>

// The drag of these tests also shows the callback to a test that wants to see what it does.
namespace
{
struct followed {
    ads_point point;
    int status;
    ads_matrix matrix;
};
std::vector<followed>* seen = nullptr;
} // namespace

extern "C" {
int __real_acedDragGen(const ads_name set, const char* prompt, int cursor,
                       int (*follow)(ads_point point, ads_matrix matrix), ads_point dropped);
int __wrap_acedDragGen(const ads_name set, const char* prompt, int cursor,
                       int (*follow)(ads_point point, ads_matrix matrix), ads_point dropped);
int __wrap_acedDragGen(const ads_name set, const char* prompt, int cursor,
                       int (*follow)(ads_point point, ads_matrix matrix), ads_point dropped)
{
    for (const double x : {10.0, -4.5}) {
        if (!seen)
            break;
        followed step{{x, 20.0, 30.0}, 0, {{9, 9, 9, 9}, {9, 9, 9, 9}, {9, 9, 9, 9}, {9, 9, 9, 9}}};
        step.status = follow(step.point, step.matrix);
        seen->push_back(step);
    }
    return __real_acedDragGen(set, prompt, cursor, follow, dropped);
}
}

namespace
{

class Drag : public SmallTool
{
protected:
    // Drags the objects of the variable s, a set, from (1, 2, 3).
    std::string drag(const std::string& answers)
    {
        return call("16 s '(1.0 2.0 3.0) \"\\nDrop it: \"", answers);
    }
};

TEST_F(Drag, MovesWhatItDrops)
{
    session.lisp(
        "(setq a (line '(0.0 0.0 0.0) '(10.0 0.0 1.0)) b (make '((0 . \"CIRCLE\") (10 5.0 5.0 0.0) (40 . 2.0)))"
        " s (set-of (list a b)))");
    EXPECT_EQ(drag("101,202,303\n"), "1");
    EXPECT_EQ(session.lisp("(list (of a 10) (of a 11) (of b 10) (of b 40))"),
              "((100.0 200.0 300.0) (110.0 200.0 301.0) (105.0 205.0 300.0) 2.0)");
    EXPECT_EQ(told, "Drop it: 101,202,303\n");
}

TEST_F(Drag, MovesTheFourPointGroupsThatThereAre)
{
    session.lisp(
        "(setq a (make '((0 . \"SOLID\") (10 0.0 0.0 0.0) (11 1.0 0.0 0.0) (12 0.0 1.0 0.0) (13 1.0 1.0 0.0)))"
        " b (make '((0 . \"TEXT\") (10 0.0 0.0 0.0) (40 . 1.0) (1 . \"x\") (72 . 1) (11 4.0 0.0 0.0)))"
        " s (set-of (list a b)))");
    EXPECT_EQ(drag("2,2,3\n"), "1");
    EXPECT_EQ(session.lisp("(mapcar '(lambda (g) (of a g)) '(10 11 12 13))"),
              "((1.0 0.0 0.0) (2.0 0.0 0.0) (1.0 1.0 0.0) (2.0 1.0 0.0))");
    EXPECT_EQ(session.lisp("(list (of b 10) (of b 11))"), "((4.66667 0.0 0.0) (5.0 0.0 0.0))");
}

TEST_F(Drag, LightweightPolylineMovesWithAllItsVertices)
{
    session.lisp("(setq a (lw 0 '((0.0 0.0 0.5) (10.0 0.0 0.0) (10.0 10.0 0.0))) s (set-of (list a)))");
    EXPECT_EQ(drag("2,4,3\n"), "1");
    EXPECT_EQ(call("23 a 1"), "((0.5 1.0 2.0 7.0) (0.0 11.0 2.0 7.0) (0.0 11.0 12.0 7.0))");
}

TEST_F(Drag, EnterThrowsTheObjectsAway)
{
    session.lisp("(setq a (line '(0.0 0.0 0.0) '(10.0 0.0 1.0)) b (line '(0.0 0.0 0.0) '(10.0 0.0 1.0))"
                 " other (line '(0.0 5.0 0.0) '(10.0 5.0 1.0)) s (set-of (list a b)))");
    EXPECT_EQ(drag("\n"), "1");
    EXPECT_EQ(session.lisp("(list (entget a) (entget b) (null (entget other)))"), "(nil nil nil)");
}

TEST_F(Drag, CancelThrowsThemAwayAndAnswers0)
{
    session.lisp("(setq a (line '(0.0 0.0 0.0) '(10.0 0.0 1.0)) s (set-of (list a)))");
    EXPECT_EQ(drag("^C\n"), "0");
    EXPECT_EQ(session.lisp("(entget a)"), "nil");
}

TEST_F(Drag, HostCallsToTheLetter)
{
    session.lisp("(setq a (line '(0.0 0.0 0.0) '(10.0 0.0 1.0)) s (set-of (list a)))");
    host::answers_from_text("2,2,3\n");
    std::string trace = session.traced("(cf:zentutil \"\" 16 s '(1.0 2.0 3.0) \"\\nDrop it: \")");
    const char* lines[] = {"acedDragGen <Selection set: ", "\"\\nDrop it: \" 0 -> RTNORM\n",
                           "acdbEntMod ((-1 . ", "acdbEntUpd <Entity name: ", "acedRetInt 1\n"};
    std::size_t at = 0;
    for (const char* line : lines) {
        at = trace.find(line, at);
        ASSERT_NE(at, std::string::npos) << line << trace;
    }
    EXPECT_EQ(trace.find("acedRetNil"), std::string::npos) << trace;
    EXPECT_EQ(trace.find("acedSSFree"), std::string::npos) << trace;
    host::answers_from_text("\n");
    trace = session.traced("(cf:zentutil \"\" 16 s '(1.0 2.0 3.0) \"\\nDrop it: \")");
    EXPECT_NE(trace.find("acdbEntDel <Entity name: "), std::string::npos) << trace;
    EXPECT_TRUE(trace.ends_with("acedRetInt 1\n")) << trace;
}

TEST_F(Drag, MatrixMovesByTheWayFromTheBasePoint)
{
    session.lisp("(setq a (line '(0.0 0.0 0.0) '(10.0 0.0 1.0)) s (set-of (list a)))");
    for (const char* values : {"16 s '(1.0 2.0 3.0) \"x\"", "29 s '(1.0 2.0 3.0)"}) {
        std::vector<followed> steps;
        seen = &steps;
        host::answers_from_text("2,2,3\n");
        call(values);
        seen = nullptr;
        ASSERT_EQ(steps.size(), 2u);
        for (const followed& step : steps) {
            EXPECT_EQ(step.status, RTNORM);
            for (int row = 0; row < 4; ++row)
                for (int column = 0; column < 3; ++column)
                    EXPECT_EQ(step.matrix[row][column], 9.0) << "only the last column is filled";
            EXPECT_EQ(step.matrix[1][3], 18.0);
            EXPECT_EQ(step.matrix[2][3], 27.0);
            EXPECT_EQ(step.matrix[3][3], 9.0);
        }
        EXPECT_EQ(steps[0].matrix[0][3], 9.0);
        EXPECT_EQ(steps[1].matrix[0][3], -5.5);
    }
}

TEST_F(Drag, ErasedObjectsOfTheSetDontComeBack)
{
    session.lisp("(setq a (line '(0.0 0.0 0.0) '(10.0 0.0 1.0)) b (line '(0.0 0.0 0.0) '(10.0 0.0 1.0))"
                 " s (set-of (list a b))) (entdel a)");
    EXPECT_EQ(drag("\n"), "1");
    EXPECT_EQ(session.lisp("(list (entget a) (entget b))"), "(nil nil)");
    session.lisp("(setq a (line '(0.0 0.0 0.0) '(10.0 0.0 1.0)) s (set-of (list a)))");
    EXPECT_EQ(drag("(progn (entdel a) '(2.0 2.0 3.0))\n"), "1");
    EXPECT_EQ(session.lisp("(entget a)"), "nil");
}

TEST_F(Drag, MissingAndWrongValuesAreNilAndAskNothing)
{
    session.lisp("(setq a (line '(0.0 0.0 0.0) '(10.0 0.0 1.0)) s (set-of (list a)) gone (set-of (list a)))"
                 "(cf:zentutil \"\" 21 gone)");
    for (const char* values :
         {"16", "16 s", "16 s \"p\"", "16 nil '(0.0 0.0 0.0) \"x\"", "16 gone '(0.0 0.0 0.0) \"x\"",
          "16 a '(0.0 0.0 0.0) \"x\"", "29", "29 s", "29 s \"p\""}) {
        EXPECT_EQ(call(values, ""), "nil") << values;
    }
    EXPECT_EQ(session.lisp("(of a 10)"), "(0.0 0.0 0.0)");
    ads_name set;
    name_of("s", set);
    for (const double bad : {std::numeric_limits<double>::infinity(), std::nan("")}) {
        const ads_point at = {0.0, 0.0, bad};
        host::answers_from_text("1,1\n");
        EXPECT_EQ(called(acutBuildList(RTSTR, "", RTSHORT, 16, RTPICKS, set, RT3DPOINT, at, RTSTR, "x", 0)),
                  "nil");
        EXPECT_EQ(called(acutBuildList(RTSTR, "", RTSHORT, 29, RTPICKS, set, RT3DPOINT, at, 0)), "nil");
        EXPECT_TRUE(host::next_answer("").has_value());
    }
}

TEST_F(Drag, PlaceThatNoDrawingHoldsLeavesTheObject)
{
    session.lisp("(setq a (line '(1e308 0.0 0.0) '(10.0 0.0 1.0)) s (set-of (list a)))");
    EXPECT_EQ(drag("1.7e308,0\n"), "1");
    EXPECT_EQ(session.lisp("(of a 10)"), "(1.0e+308 0.0 0.0)");
}

TEST_F(Drag, WithoutAPromptItAsksAllTheSame)
{
    session.lisp("(setq a (line '(0.0 0.0 0.0) '(10.0 0.0 1.0)) s (set-of (list a)))");
    EXPECT_EQ(call("16 s '(1.0 2.0 3.0)", "2,2,3\n"), "1");
    EXPECT_EQ(session.lisp("(of a 10)"), "(1.0 0.0 0.0)");
}

TEST_F(Drag, EmptySetIsNoTrap)
{
    session.lisp("(setq s (ssadd))");
    EXPECT_EQ(drag("2,2,3\n"), "1");
    EXPECT_EQ(drag("\n"), "1");
    EXPECT_EQ(drag("^C\n"), "0");
}

// An answer that drags something else itself has a base point of its own.
TEST_F(Drag, DragInsideOfADrag)
{
    session.lisp("(setq a (line '(0.0 0.0 0.0) '(10.0 0.0 1.0)) s (set-of (list a)))");
    EXPECT_EQ(drag("(cf:zentutil \"\" 29 s '(500.0 500.0 0.0))\n2,2,3\n"), "1");
    EXPECT_EQ(session.lisp("(of a 10)"), "(1.0 0.0 0.0)");
}

TEST_F(Drag, ManyObjectsAreMovedOnceEach)
{
    session.lisp("(setq s (ssadd)) (repeat 20000 (ssadd (line '(0.0 0.0 0.0) '(1.0 0.0 0.0)) s))");
    EXPECT_EQ(drag("2,2,3\n"), "1");
    EXPECT_EQ(session.lisp("(list (of (ssname s 0) 10) (of (ssname s 19999) 11))"),
              "((1.0 0.0 0.0) (2.0 0.0 0.0))");
}

// ---- second point -----------------------------------------------------------------------------------------

TEST_F(Drag, SecondPointIsAnsweredAndNothingMoves)
{
    session.lisp("(setq a (line '(0.0 0.0 0.0) '(10.0 0.0 1.0)) s (set-of (list a)))");
    EXPECT_EQ(call("29 s '(1.0 2.0 3.0)", "@10,0\n"), "(11.0 2.0 0.0)"); // from a point in the plan
    EXPECT_EQ(session.lisp("(of a 10)"), "(0.0 0.0 0.0)");
    EXPECT_EQ(told, "Select Second Point: @10,0\n");
}

TEST_F(Drag, SecondPointCallsToTheLetter)
{
    session.lisp("(setq a (line '(0.0 0.0 0.0) '(10.0 0.0 1.0)) s (set-of (list a)))");
    host::answers_from_text("5,6,7\n");
    const std::string trace = session.traced("(cf:zentutil \"\" 29 s '(1.0 2.0 3.0))");
    EXPECT_TRUE(trace.starts_with(
        "acedRetNil\nacedSetVar \"LASTPOINT\" (1.0 2.0) -> RTNORM\nacedDragGen <Selection set: "))
        << trace;
    EXPECT_TRUE(trace.ends_with("\"\\nSelect Second Point: \" 0 -> RTNORM\nacedRetPoint (5.0 6.0 7.0)\n"))
        << trace;
}

TEST_F(Drag, SecondPointThatIsNotGivenIsNilAndErasesNothing)
{
    session.lisp("(setq a (line '(0.0 0.0 0.0) '(10.0 0.0 1.0)) s (set-of (list a)))");
    for (const char* answers : {"\n", "^C\n"}) {
        EXPECT_EQ(call("29 s '(1.0 2.0 3.0)", answers), "nil");
        EXPECT_NE(session.lisp("(entget a)"), "nil");
    }
    EXPECT_EQ(session.lisp("(getvar \"LASTPOINT\")"), "(1.0 2.0 0.0)");
}

TEST_F(Drag, SecondPointNeedsNoSet)
{
    EXPECT_EQ(call("29 nil '(1.0 2.0 3.0)", "5,6\n"), "(5.0 6.0 0.0)");
}

} // namespace
