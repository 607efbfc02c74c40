// Operations 10 and 11: the ends and the direction of a picked segment.
#include "tests/tools/small_tool_case.h"

#include <cmath>
#include <limits>
#include <numbers>

namespace
{

class SegmentQueries : public SmallTool
{
protected:
    // Both values for the object in `e`, the direction in whole thousandths of a degree.
    std::string ends(const std::string& point) { return call("10 e '(" + point + ")"); }
    std::string direction(const std::string& point)
    {
        return session.lisp("(setq a (cf:zentutil \"\" 11 e '(" + point +
                            ")))(if a (atoi (rtos (* 1000 (/ (* a 180.0) pi)) 2 0)))");
    }
};

struct segment_case {
    const char* name;
    const char* object; // a form
    const char* point;
    const char* ends;
    const char* direction;
};

std::ostream& operator<<(std::ostream& out, const segment_case& c)
{
    return out << c.name;
}

constexpr const char* OPEN = "(lw 0 '((0.0 0.0 0.0) (10.0 0.0 0.0) (10.0 10.0 0.0)))";
constexpr const char* CLOSED = "(lw 1 '((0.0 0.0 0.0) (10.0 0.0 0.0) (10.0 10.0 0.0)))";

const segment_case CASES[] = {
    {"NearTheSecondEnd", OPEN, "8.0 1.0 0.0", "((0.0 0.0 7.0) (10.0 0.0 7.0))", "0"},
    {"NearTheFirstEnd", OPEN, "2.0 1.0 0.0", "((0.0 0.0 7.0) (10.0 0.0 7.0))", "180000"},
    {"TheMiddleCountsForTheSecondEnd", OPEN, "5.0 0.0 0.0", "((0.0 0.0 7.0) (10.0 0.0 7.0))", "0"},
    {"BesideTheMiddleTheDistanceFromTheStartDecides", OPEN, "4.0 3.0 0.0", "((0.0 0.0 7.0) (10.0 0.0 7.0))",
     "0"},
    {"SecondSegment", OPEN, "11.0 8.0 0.0", "((10.0 0.0 7.0) (10.0 10.0 7.0))", "90000"},
    {"OnTheSharedVertexTheLaterSegment", OPEN, "10.0 0.0 0.0", "((10.0 0.0 7.0) (10.0 10.0 7.0))", "270000"},
    {"HeightOfThePointDoesNotCount", OPEN, "8.0 1.0 500.0", "((0.0 0.0 7.0) (10.0 0.0 7.0))", "0"},
    {"NoClosingSegmentOfAnOpenOne", OPEN, "3.0 4.0 0.0", "((0.0 0.0 7.0) (10.0 0.0 7.0))", "0"},
    {"ClosingSegmentEndsAtTheFirstVertex", CLOSED, "3.0 4.0 0.0", "((10.0 10.0 7.0) (0.0 0.0 7.0))", "225000"},
    {"ClosingSegmentTowardsItsStart", CLOSED, "7.0 8.0 0.0", "((10.0 10.0 7.0) (0.0 0.0 7.0))", "45000"},
    {"ArcCountsAsItsChord", "(lw 0 '((0.0 0.0 1.0) (10.0 0.0 0.0)))", "8.0 -4.0 0.0",
     "((0.0 0.0 7.0) (10.0 0.0 7.0))", "0"},
    {"OldPolyline", "(old 0 0 '((0.0 0.0 0.0 0.0) (0.0 10.0 0.0 0.0)))", "1.0 9.0 0.0",
     "((0.0 0.0 0.0) (0.0 10.0 0.0))", "90000"},
    {"ClosedOldPolyline", "(old 1 0 '((0.0 0.0 0.0 0.0) (8.0 0.0 0.0 0.0) (8.0 8.0 0.0 0.0)))", "2.0 3.0 0.0",
     "((8.0 8.0 0.0) (0.0 0.0 0.0))", "225000"},
    {"PolylineInSpace", "(old 8 32 '((0.0 0.0 5.0 0.0) (-10.0 0.0 9.0 0.0)))", "-9.0 0.5 0.0",
     "((0.0 0.0 5.0) (-10.0 0.0 9.0))", "180000"},
    {"ClosedPolylineInSpace", "(old 9 32 '((0.0 0.0 5.0 0.0) (8.0 0.0 6.0 0.0) (8.0 8.0 7.0 0.0)))",
     "2.0 3.0 0.0", "((8.0 8.0 7.0) (0.0 0.0 5.0))", "225000"},
    {"SegmentsWithoutLengthAreSkipped", "(lw 0 '((0.0 0.0 0.0) (0.0 0.0 0.0) (10.0 0.0 0.0)))", "1.0 0.0 0.0",
     "((0.0 0.0 7.0) (10.0 0.0 7.0))", "180000"},

    {"OutsideOfTheCorner", OPEN, "12.0 -2.0 0.0", "nil", "nil"},
    {"BeyondTheEnd", OPEN, "10.1 10.1 0.0", "nil", "nil"},
    {"ClosedWithOneVertex", "(old 1 0 '((3.0 3.0 0.0 0.0)))", "3.0 3.0 0.0", "nil", "nil"},
    {"OneVertex", "(old 0 0 '((3.0 3.0 0.0 0.0)))", "3.0 3.0 0.0", "nil", "nil"},
    {"WithoutAnyLength", "(lw 0 '((3.0 3.0 0.0) (3.0 3.0 0.0)))", "3.0 3.0 0.0", "nil", "nil"},
    {"Line", "(line '(0.0 0.0 0.0) '(10.0 0.0 0.0))", "8.0 0.0 0.0", "nil", "nil"},
    {"Circle", "(make '((0 . \"CIRCLE\") (10 0.0 0.0 0.0) (40 . 5.0)))", "5.0 0.0 0.0", "nil", "nil"},
    {"ErasedObject", "(progn (setq e (line '(0.0 0.0 0.0) '(10.0 0.0 0.0))) (entdel e) e)", "8.0 0.0 0.0",
     "nil", "nil"},
};

class SegmentsOf : public SegmentQueries, public testing::WithParamInterface<segment_case>
{
};

TEST_P(SegmentsOf, PickedPoints)
{
    const segment_case& c = GetParam();
    session.lisp("(setq e " + std::string(c.object) + ")");
    EXPECT_EQ(ends(c.point), c.ends);
    EXPECT_EQ(direction(c.point), c.direction);
    EXPECT_EQ(session.printed(), "") << "refuses in silence";
}

INSTANTIATE_TEST_SUITE_P(Cases, SegmentsOf, testing::ValuesIn(CASES),
                         [](const auto& each) { return each.param.name; });

TEST_F(SegmentQueries, FarFromTheOriginTheyAreTheSame)
{
    session.lisp("(setq e (lw 0 '((640000.0 5120000.0 0.0) (640010.0 5120000.0 0.0))))");
    EXPECT_EQ(ends("640008.0 5120001.0 0.0"), "((640000.0 5.12e+06 7.0) (640010.0 5.12e+06 7.0))");
    EXPECT_EQ(direction("640002.0 5120001.0 0.0"), "180000");
}

TEST_F(SegmentQueries, AnswerNilFirst)
{
    session.lisp(std::string("(setq e ") + OPEN + ")");
    std::string trace = session.traced("(cf:zentutil \"\" 10 e '(8.0 1.0 0.0))");
    EXPECT_EQ(trace, "acedRetNil\nacedRetList (((0.0 0.0 7.0) (10.0 0.0 7.0)))\n");
    trace = session.traced("(cf:zentutil \"\" 11 e '(8.0 1.0 0.0))");
    EXPECT_EQ(trace, "acedRetNil\nacedRetReal 0.0\n");
    for (const char* values : {"10 e '(12.0 -2.0 0.0)", "10 e", "10", "10 nil nil", "11 e '(12.0 -2.0 0.0)",
                               "11 e", "11", "11 \"e\" \"p\""})
        EXPECT_EQ(session.traced("(cf:zentutil \"\" " + std::string(values) + ")"), "acedRetNil\n") << values;
}

TEST_F(SegmentQueries, NumbersThatAreNoPlaceAndNamesOfNothingAreNil)
{
    session.lisp(std::string("(setq e ") + OPEN + ")");
    ads_name name;
    name_of("e", name);
    const double inf = std::numeric_limits<double>::infinity(), nan = std::nan("");
    const ads_name nothing = {0, 0}, wild = {123456789, -5};
    const ads_point near = {8.0, 1.0, 0.0};
    for (const int operation : {10, 11}) {
        for (const double bad : {inf, -inf, nan}) {
            const ads_point x = {bad, 0.0, 0.0}, y = {8.0, bad, 0.0}, both = {bad, bad, bad};
            for (const double* point : {x, y, both})
                EXPECT_EQ(
                    called(acutBuildList(RTSTR, "", RTSHORT, operation, RTENAME, name, RT3DPOINT, point, 0)),
                    "nil");
        }
        for (const std::int32_t* bad : {nothing, wild})
            EXPECT_EQ(called(acutBuildList(RTSTR, "", RTSHORT, operation, RTENAME, bad, RT3DPOINT, near, 0)),
                      "nil");
        EXPECT_NE(called(acutBuildList(RTSTR, "", RTSHORT, operation, RTENAME, name, RT3DPOINT, near, 0)),
                  "nil");
    }
}

} // namespace
