// Operation 23: the vertices of a polyline as a list.
#include "tests/tools/small_tool_case.h"

namespace
{

class PolylineVertices : public SmallTool
{
};

struct vertices_case {
    const char* name;
    const char* object; // a form
    const char* allow;  // behind the entity name
    const char* value;
    const char* told;
};

std::ostream& operator<<(std::ostream& out, const vertices_case& c)
{
    return out << c.name;
}

const char* const NO_POLYLINE = "Error: selection not a Polyline\n";
const char* const HAS_ARC = "\nError: unable to handle a polyline with an arc.";

const vertices_case CASES[] = {
    {"Open", "(lw 0 '((1.0 2.0 0.0) (3.0 4.0 0.0)))", "1", "((0.0 1.0 2.0 7.0) (0.0 3.0 4.0 7.0))", ""},
    {"ClosedOneHasItsFirstVertexAgain", "(lw 1 '((1.0 2.0 0.5) (3.0 4.0 0.25) (5.0 0.0 -1.0)))", "1",
     "((0.5 1.0 2.0 7.0) (0.25 3.0 4.0 7.0) (-1.0 5.0 0.0 7.0) (0.0 1.0 2.0 7.0))", ""},
    {"ClosedOneThatEndsWhereItBegins", "(lw 1 '((1.0 2.0 0.5) (3.0 4.0 0.25) (1.0 2.0 0.75)))", "1",
     "((0.5 1.0 2.0 7.0) (0.25 3.0 4.0 7.0) (0.75 1.0 2.0 7.0) (0.0 1.0 2.0 7.0))", ""},
    {"RepeatedVertexLeavesItsBulge", "(lw 0 '((1.0 2.0 0.5) (1.0 2.0 0.25) (3.0 4.0 0.0)))", "1",
     "((0.25 1.0 2.0 7.0) (0.0 3.0 4.0 7.0))", ""},
    {"VertexRepeatedTwice", "(lw 0 '((1.0 2.0 0.5) (1.0 2.0 0.25) (1.0 2.0 0.125) (3.0 4.0 0.0)))", "1",
     "((0.125 1.0 2.0 7.0) (0.0 3.0 4.0 7.0))", ""},
    {"NearlyRepeatedVertexStays", "(lw 0 '((0.0 0.0 0.0) (0.0 1e-300 0.0)))", "1",
     "((0.0 0.0 0.0 7.0) (0.0 0.0 1.0e-300 7.0))", ""},
    {"AllInOnePlaceIsAListOfOne", "(lw 0 '((1.0 2.0 0.0) (1.0 2.0 0.5)))", "1", "((0.5 1.0 2.0 7.0))", ""},
    {"ClosedAllInOnePlace", "(lw 1 '((1.0 2.0 0.0) (1.0 2.0 0.5)))", "1",
     "((0.5 1.0 2.0 7.0) (0.0 1.0 2.0 7.0))", ""},
    {"OneVertex", "(old 0 0 '((1.0 2.0 0.0 0.0)))", "1", "((0.0 1.0 2.0 0.0))", ""},
    {"OldPolyline", "(old 1 0 '((1.0 2.0 0.0 0.5) (3.0 4.0 0.0 0.0)))", "1",
     "((0.5 1.0 2.0 0.0) (0.0 3.0 4.0 0.0) (0.0 1.0 2.0 0.0))", ""},
    {"PolylineInSpace", "(old 8 32 '((1.0 2.0 3.0 0.0) (3.0 4.0 5.0 0.0)))", "0",
     "((0.0 1.0 2.0 3.0) (0.0 3.0 4.0 5.0))", ""},
    {"VertexAboveTheOneInFrontIsDropped", "(old 8 32 '((1.0 2.0 3.0 0.0) (1.0 2.0 9.0 0.0) (3.0 4.0 5.0 0.0)))",
     "0", "((0.0 1.0 2.0 3.0) (0.0 3.0 4.0 5.0))", ""},

    {"ArcsNotAllowed", "(lw 0 '((1.0 2.0 0.5) (3.0 4.0 0.0)))", "0", "nil", HAS_ARC},
    {"ArcsAllowedBy1Alone", "(lw 0 '((1.0 2.0 0.5) (3.0 4.0 0.0)))", "2", "nil", HAS_ARC},
    {"ArcsAllowedNeitherByNothing", "(lw 0 '((1.0 2.0 0.5) (3.0 4.0 0.0)))", "", "nil", HAS_ARC},
    {"NoArcsToAllow", "(lw 0 '((1.0 2.0 0.0) (3.0 4.0 0.0)))", "0", "((0.0 1.0 2.0 7.0) (0.0 3.0 4.0 7.0))",
     ""},
    {"Line", "(line '(0.0 0.0 0.0) '(1.0 0.0 0.0))", "1", "nil", NO_POLYLINE},
    {"Erased", "(progn (setq e (lw 0 '((1.0 2.0 0.0) (3.0 4.0 0.0)))) (entdel e) e)", "1", "nil", NO_POLYLINE},
};

class VerticesOf : public PolylineVertices, public testing::WithParamInterface<vertices_case>
{
};

TEST_P(VerticesOf, Polylines)
{
    const vertices_case& c = GetParam();
    session.lisp("(setq e " + std::string(c.object) + ")");
    EXPECT_EQ(call("23 e " + std::string(c.allow)), c.value);
    EXPECT_EQ(session.printed(), c.told);
}

INSTANTIATE_TEST_SUITE_P(Cases, VerticesOf, testing::ValuesIn(CASES),
                         [](const auto& each) { return each.param.name; });

TEST_F(PolylineVertices, AnswersNilFirst)
{
    session.lisp("(setq e (lw 0 '((1.0 2.0 0.0) (3.0 4.0 0.0))))");
    EXPECT_EQ(session.traced("(cf:zentutil \"\" 23 e 1)"),
              "acedRetNil\nacedRetList ((0.0 1.0 2.0 7.0) (0.0 3.0 4.0 7.0))\n");
    EXPECT_EQ(session.traced("(cf:zentutil \"\" 23)"), "acedRetNil\n");
    EXPECT_EQ(session.printed(), "");
    EXPECT_EQ(session.traced("(cf:zentutil \"\" 23 nil)"), "acedRetNil\n");
    EXPECT_EQ(session.printed(), NO_POLYLINE);
}

TEST_F(PolylineVertices, TakesLongPolylines)
{
    session.lisp("(setq n 0 all nil)(repeat 20000 (setq all (cons (list (float n) 0.0 0.0) all) n (1+ n)))"
                 "(setq e (lw 0 all))");
    EXPECT_EQ(session.lisp("(setq v (cf:zentutil \"\" 23 e 1)) (list (length v) (car v) (last v))"),
              "(20000 (0.0 19999.0 0.0 7.0) (0.0 0.0 0.0 7.0))");
}

TEST_F(PolylineVertices, HeapThatGivesNoMoreAnswersNilAndKeepsNothing)
{
    session.lisp("(setq e (lw 1 '((1.0 2.0 0.5) (1.0 2.0 0.25) (3.0 4.0 0.0))))");
    const std::string whole = "((0.25 1.0 2.0 7.0) (0.0 3.0 4.0 7.0) (0.0 1.0 2.0 7.0))";
    bool refused = true;
    int nils = 0;
    for (long request = 1; refused; ++request) {
        SCOPED_TRACE("request " + std::to_string(request) + " refused");
        const std::size_t bytes = host::heap_live_bytes();
        host::heap_refuse(request);
        const std::string value = call("23 e 1");
        refused = host::heap_refuse(0) == 0;
        EXPECT_EQ(host::heap_live_bytes(), bytes);
        EXPECT_TRUE(value == whole || (refused && value == "nil")) << value;
        nils += value == "nil";
    }
    EXPECT_GT(nils, 5);
}

} // namespace
