// Operation 12: texts and symbols turned to follow a polyline.
#include "tools/rotate_to_chain.h"

#include "tests/drawing/chains.h"
#include "tests/tools/small_tool_case.h"

#include <cmath>
#include <limits>
#include <numbers>

namespace
{

constexpr double PI = std::numbers::pi;

// ---- numbers ---------------------------------------------------------------------------------------------

struct ends_case {
    const char* name;
    std::vector<corner> chain;
    std::vector<corner> expected;
};

TEST(DrawnOutEnds, Cases)
{
    const ends_case cases[] = {
        {"straight", {{0, 0}, {3, 4}, {3, 10}}, {{-600, -800}, {3, 4}, {3, 1010}}},
        {"two vertices", {{0, 0, 5}, {10, 0, 6}}, {{-1000, 0, 5}, {1010, 0, 6}}},
        {"arc at the start", {{0, 0, 0, 0.5}, {10, 0}, {10, 10}}, {{0, 0, 0, 0.5}, {10, 0}, {10, 1010}}},
        {"arc at the end, the last vertex's own bulge 0",
         {{0, 0}, {10, 0, 0, 0.5}, {10, 10}},
         {{-1000, 0}, {10, 0, 0, 0.5}, {10, 1010}}},
        {"straight at the end, the last vertex's own bulge not 0",
         {{0, 0}, {10, 0}, {10, 10, 0, 0.5}},
         {{-1000, 0}, {10, 0}, {10, 10, 0, 0.5}}},
        {"closed",
         {{0, 0}, {10, 0}, {10, 10}, {0, 0}},
         {{-1000, 0}, {10, 0}, {10, 10}, {-707.10678118654755, -707.10678118654755}}},
        {"no length at the start", {{0, 0}, {0, 0}, {10, 0}}, {{0, 0}, {0, 0}, {1010, 0}}},
        {"no length at the end", {{0, 0}, {10, 0}, {10, 0}}, {{-1000, 0}, {10, 0}, {10, 0}}},
        {"height is no length", {{0, 0, 0}, {0, 0, 9}}, {{0, 0, 0}, {0, 0, 9}}},
        {"one vertex", {{3, 4}}, {{3, 4}}},
        {"bulge next to nothing", {{0, 0, 0, 1e-300}, {10, 0}}, {{0, 0, 0, 1e-300}, {1010, 0}}},
    };
    for (const ends_case& c : cases) {
        const vertex_chain chain = make_vertices(c.chain);
        draw_out_ends(chain.get());
        const std::vector<corner> out = corners_of(chain.get());
        ASSERT_EQ(out.size(), c.expected.size()) << c.name;
        for (std::size_t i = 0; i < out.size(); ++i) {
            EXPECT_DOUBLE_EQ(out[i].x, c.expected[i].x) << c.name << i;
            EXPECT_DOUBLE_EQ(out[i].y, c.expected[i].y) << c.name << i;
            EXPECT_EQ(out[i].z, c.expected[i].z) << c.name << i;
            EXPECT_EQ(out[i].bulge, c.expected[i].bulge) << c.name << i;
        }
    }
    draw_out_ends(nullptr);
}

struct angle_case {
    double direction; // degrees
    double view;      // degrees
    double angle;     // degrees
};

TEST(ReadableAngle, Cases)
{
    const angle_case cases[] = {
        {0, 0, 0},
        {30, 0, 30},
        {89.99, 0, 89.99},
        {90.01, 0, 270.01},
        {180, 0, 360},
        {200, 0, 380},
        {269.99, 0, 449.99},
        {270.01, 0, 270.01},
        {300, 0, 300},
        // In a view turned by 90 degrees what points up runs level.
        {90, 90, 90},
        {170, 90, 170},
        {190, 90, 370},
        {0, 90.01, 180},
        {0, 89.99, 0},
        {300, 90, 480},
        {10, 300, 10},
        {10, 200, 190},
        {350, -30, 350},
        // The difference is brought back once.
        {0, 400, 0},
        {0, 500, 0},
        {100, -400, 100},
    };
    for (const angle_case& c : cases) {
        const double d = c.direction * PI / 180.0;
        const double direction[2] = {std::cos(d), std::sin(d)};
        EXPECT_NEAR(readable_angle(direction, c.view * PI / 180.0) * 180.0 / PI, c.angle, 1e-9)
            << c.direction << " seen in " << c.view;
    }
}

TEST(ReadableAngle, LimitsThemselvesStay)
{
    const double up[2] = {0.0, 1.0}, down[2] = {0.0, -1.0};
    EXPECT_EQ(readable_angle(up, 0.0), std::acos(0.0));
    EXPECT_EQ(readable_angle(down, 0.0), 2.0 * PI - std::acos(0.0));
    const double left[2] = {-1.0, -0.0}, beyond[2] = {1.0 + 1e-15, 0.0};
    EXPECT_EQ(readable_angle(left, 0.0), 2.0 * PI);
    EXPECT_EQ(readable_angle(beyond, 0.0), 0.0);
}

// ---- in the drawing ----------------------------------------------------------------------------------------

class RotateToChain : public SmallTool
{
protected:
    RotateToChain()
    {
        session.lisp(R"(
            (defun text (x y) (make (list '(0 . "TEXT") (list 10 x y 0.0) '(40 . 1.0) '(1 . "x") '(50 . 1.0))))
            (defun block (name)
              (entmake (list '(0 . "BLOCK") (cons 2 name) '(70 . 0) '(10 0.0 0.0 0.0)))
              (entmake '((0 . "CIRCLE") (8 . "0") (10 0.0 0.0 0.0) (40 . 1.0)))
              (entmake '((0 . "ENDBLK"))))
            (defun symbol (name x y)
              (block name)
              (make (list '(0 . "INSERT") (cons 2 name) (list 10 x y 4.0) '(50 . 1.0))))
            (defun attrib (tag at height)
              (entmake (list '(0 . "ATTRIB") (cons 10 at) (cons 40 height) '(1 . "v") (cons 2 tag) '(70 . 0) '(50 . 1.0)
                             (list 11 9.0 9.0 9.0))))
            (defun point (name x y)
              (block name)
              (entmake (list '(0 . "INSERT") '(66 . 1) (cons 2 name) (list 10 x y 4.0) '(50 . 1.0)))
              (attrib "PT#" (list (+ x 1.0) y 4.0) 0.8) (attrib "ELEV2" (list (+ x 3.0) (+ y 4.0) 4.0) 0.8)
              (attrib "NOTE" (list (+ x 1.0) y 4.0) 0.8) (attrib "DESC2" (list x y 4.0) 2.0)
              (entmake '((0 . "SEQEND")))
              (entlast))
            (defun places (e / a out)
              (setq a (entnext e))
              (while (= (of a 0) "ATTRIB")
                (setq out (cons (list (of a 2) (deg a) (near (of a 10)) (near (of a 11))) out) a (entnext a)))
              (reverse out))
            (defun near (p) (mapcar '(lambda (x) (/ (fix (+ (* 1000.0 x) (if (< x 0) -0.5 0.5))) 1000.0)) p))
            (defun deg (e) (atoi (rtos (* 1000 (/ (* (of e 50) 180.0) pi)) 2 0))))");
        session.printed();
    }
    // Degrees of the variable t, thousandths, after it was turned along the variable e.
    std::string turned(const std::string& view = "0.0")
    {
        EXPECT_EQ(call("12 e (set-of (list t1)) " + view), "nil");
        return session.lisp("(deg t1)");
    }
};

struct turn_case {
    const char* name;
    const char* chain;
    const char* at;
    const char* angle;
};

constexpr const char* UNTURNED = "57296"; // one radian

const turn_case TURNS[] = {
    // The direction has the object on its left; beside a line to the east what lies south is turned over.
    {"NorthOfTheLine", "(lw 0 '((0.0 0.0 0.0) (100.0 0.0 0.0)))", "50.0 5.0", "0"},
    {"SouthOfTheLine", "(lw 0 '((0.0 0.0 0.0) (100.0 0.0 0.0)))", "50.0 -5.0", "360000"},
    {"OnTheLine", "(lw 0 '((0.0 0.0 0.0) (100.0 0.0 0.0)))", "50.0 0.0", "0"},
    {"BeyondTheEnds", "(lw 0 '((0.0 0.0 0.0) (100.0 0.0 0.0)))", "-990.0 5.0", "0"},
    {"FarBeyondTheEnds", "(lw 0 '((0.0 0.0 0.0) (100.0 0.0 0.0)))", "1101.0 5.0", UNTURNED},
    {"ALongWayToTheSide", "(lw 0 '((0.0 0.0 0.0) (10.0 10.0 0.0)))", "-600000.0 600010.0", "45000"},
    {"SlopingLine", "(lw 0 '((0.0 0.0 0.0) (10.0 10.0 0.0)))", "4.0 6.0", "45000"},
    {"OtherWayRoundStaysReadable", "(lw 0 '((10.0 10.0 0.0) (0.0 0.0 0.0)))", "6.0 4.0", "405000"},
    {"OutsideOfABend", "(lw 0 '((0.0 0.0 0.0) (10.0 0.0 0.0) (10.0 -10.0 0.0)))", "12.0 2.0", UNTURNED},
    {"OutsideOfAnArc", "(lw 0 '((-50.0 0.0 0.0) (0.0 0.0 1.0) (10.0 0.0 0.0) (60.0 0.0 0.0)))", "5.0 -9.0",
     "360000"},
    {"BesideTheSideOfAnArc", "(lw 0 '((-50.0 0.0 0.0) (0.0 0.0 1.0) (10.0 0.0 0.0) (60.0 0.0 0.0)))",
     "9.0 -4.0", "405000"},
    {"InsideOfAnArc", "(lw 0 '((-50.0 0.0 0.0) (0.0 0.0 1.0) (10.0 0.0 0.0) (60.0 0.0 0.0)))", "6.0 -1.0",
     "405000"},
    {"ArcAtTheStartIsNotDrawnOut", "(lw 0 '((0.0 0.0 1.0) (10.0 0.0 0.0) (10.0 -90.0 0.0)))", "-5.0 5.0",
     UNTURNED},
    {"StraightStartIsDrawnOut", "(lw 0 '((0.0 0.0 0.0) (10.0 0.0 0.0) (10.0 -90.0 0.0)))", "-5.0 5.0", "0"},
    // The end of an arc is moved too, and its circle with it: 505 about (505, 0) in place of 5 about (5, 0).
    {"ArcAtTheEndIsDrawnOut", "(lw 0 '((0.0 0.0 1.0) (10.0 0.0 0.0)))", "505.0 -9.0", "360000"},
    {"ClosingSegment", "(lw 1 '((0.0 0.0 0.0) (10.0 0.0 0.0) (10.0 10.0 0.0)))", "4.0 5.0", "45000"},
    {"ClosingSegmentOfAnOldOne", "(old 1 0 '((0.0 0.0 0.0 0.0) (10.0 0.0 0.0 0.0) (10.0 10.0 0.0 0.0)))",
     "4.0 5.0", "45000"},
    {"PolylineInSpace", "(old 8 32 '((0.0 0.0 5.0 0.0) (10.0 10.0 9.0 0.0)))", "4.0 6.0", "45000"},
    {"OneVertex", "(old 0 0 '((0.0 0.0 0.0 0.0)))", "4.0 6.0", UNTURNED},
    {"AChainWithoutLengthIsAPlaceAllTheSame", "(lw 0 '((0.0 0.0 0.0) (0.0 0.0 0.0)))", "5.0 5.0", "315000"},
    {"Line", "(line '(0.0 0.0 0.0) '(10.0 10.0 0.0))", "4.0 6.0", UNTURNED},
};

std::ostream& operator<<(std::ostream& out, const turn_case& c)
{
    return out << c.name;
}

class Turned : public RotateToChain, public testing::WithParamInterface<turn_case>
{
};

TEST_P(Turned, TextsAlongChains)
{
    const turn_case& c = GetParam();
    session.lisp("(setq e " + std::string(c.chain) + " t1 (text " + c.at + ") before (entget e))");
    EXPECT_EQ(turned(), c.angle);
    EXPECT_EQ(session.lisp("(equal before (entget e))"), "T") << "the polyline itself stays";
    EXPECT_EQ(session.printed(), "");
}

INSTANTIATE_TEST_SUITE_P(Cases, Turned, testing::ValuesIn(TURNS),
                         [](const auto& each) { return each.param.name; });

TEST_F(RotateToChain, TextStaysWhereItIs)
{
    session.lisp("(setq e (lw 0 '((0.0 0.0 0.0) (10.0 10.0 0.0))) t1 (text 4.0 6.0))");
    turned();
    EXPECT_EQ(session.lisp("(list (of t1 10) (of t1 11))"), "((4.0 6.0 0.0) (0.0 0.0 0.0))");
}

TEST_F(RotateToChain, TwistOfTheViewDecidesWhichWayIsUp)
{
    session.lisp("(setq e (lw 0 '((0.0 0.0 0.0) (0.0 100.0 0.0))) t1 (text -5.0 50.0))");
    EXPECT_EQ(turned("0.1"), "90000");
    EXPECT_EQ(turned("-0.1"), "270000");
    EXPECT_EQ(turned(""), "90000"); // missing: the view isn't turned
    const double nan = std::nan("");
    ads_name e, t1;
    name_of("e", e);
    name_of("t1", t1);
    session.lisp("(setq s (set-of (list t1)))");
    ads_name set;
    name_of("s", set);
    session.lisp("(setq d (entget t1)) (entmod (subst '(50 . 1.0) (assoc 50 d) d))");
    for (const double bad : {nan, std::numeric_limits<double>::infinity()})
        EXPECT_EQ(called(acutBuildList(RTSTR, "", RTSHORT, 12, RTENAME, e, RTPICKS, set, RTREAL, bad, 0)),
                  "nil");
    EXPECT_EQ(session.lisp("(deg t1)"), UNTURNED);
}

struct kind_case {
    const char* name;
    const char* object;
    const char* angle;
};

const kind_case KINDS[] = {
    {"Paragraphs",
     "(make '((0 . \"MTEXT\") (100 . \"AcDbEntity\") (100 . \"AcDbMText\") (10 4.0 6.0 0.0) (40 . 1.0) (1 . "
     "\"x\") (50 . 1.0)))",
     "45000"},
    {"Symbol", "(symbol \"SPTTREE\" 4.0 6.0)", "45000"},
    {"SymbolInSmallLetters", "(symbol \"spttree\" 4.0 6.0)", "45000"},
    {"SymbolWithTheLettersInside", "(symbol \"MYsPt1\" 4.0 6.0)", "45000"},
    {"SurveyPoint", "(symbol \"SRVPNO1\" 4.0 6.0)", "45000"},
    {"SurveyPointInSmallLetters", "(symbol \"xsrvpno1\" 4.0 6.0)", "45000"},
    {"SurveyPointInMixedLetters", "(symbol \"Srvpno1\" 4.0 6.0)", UNTURNED},
    {"OtherBlock", "(symbol \"HOLE\" 4.0 6.0)", UNTURNED},
    {"Arc", "(make '((0 . \"ARC\") (10 4.0 6.0 0.0) (40 . 1.0) (50 . 1.0) (51 . 2.0)))", UNTURNED},
};

TEST_F(RotateToChain, KindsOfObjects)
{
    session.lisp("(setq e (lw 0 '((0.0 0.0 0.0) (10.0 10.0 0.0))))");
    for (const kind_case& c : KINDS) {
        session.lisp("(setq t1 " + std::string(c.object) + ")");
        EXPECT_EQ(turned(), c.angle) << c.name;
    }
}

// A direction beside the angle would keep the paragraphs as they are.
TEST_F(RotateToChain, ParagraphsWithADirectionGetAnotherDirection)
{
    session.lisp(
        "(setq e (lw 0 '((0.0 0.0 0.0) (0.0 10.0 0.0))) t1 (make '((0 . \"MTEXT\") (100 . \"AcDbEntity\") "
        "(100 . \"AcDbMText\") (10 -4.0 6.0 0.0) (40 . 1.0) (1 . \"x\") (11 1.0 0.0 0.0))))");
    EXPECT_EQ(turned(), "90000");
    EXPECT_EQ(session.lisp("(near (of t1 11))"), "(0.0 1.0 0.0)");
}

TEST_F(RotateToChain, AttributesOfASurveyPointGoWithIt)
{
    session.lisp("(setq e (lw 0 '((0.0 0.0 0.0) (0.0 100.0 0.0))) t1 (point \"SRVPNO1\" -5.0 50.0))");
    EXPECT_EQ(turned(), "90000");
    // Up is west of the point now: PT# 0.75 of its height beyond, DESC2 1.75 of its height below.
    EXPECT_EQ(session.lisp("(places t1)"), "((\"PT#\" 90000 (-5.6 50.0 4.0) (-5.6 50.02 4.0)) "
                                           "(\"ELEV2\" 90000 (-5.0 55.0 4.0) (9.0 9.0 9.0)) "
                                           "(\"NOTE\" 57296 (-4.0 50.0 4.0) (9.0 9.0 9.0)) "
                                           "(\"DESC2\" 90000 (-1.5 50.0 4.0) (-1.5 50.02 4.0)))");
}

TEST_F(RotateToChain, DistanceOfTheElevationIsMeasuredInThePlan)
{
    session.lisp("(setq e (lw 0 '((0.0 0.0 0.0) (100.0 0.0 0.0))) t1 (point \"SRVPNO1\" 50.0 5.0) a (entnext "
                 "(entnext t1))"
                 " d (entget a)) (entmod (subst '(10 53.0 9.0 77.0) (assoc 10 d) d))");
    turned();
    EXPECT_EQ(session.lisp("(near (of a 10))"), "(55.0 5.0 4.0)");
}

TEST_F(RotateToChain, SymbolsAttributesStay)
{
    session.lisp("(setq e (lw 0 '((0.0 0.0 0.0) (0.0 100.0 0.0))) t1 (point \"SPTNO1\" -5.0 50.0))");
    EXPECT_EQ(turned(), "90000");
    EXPECT_EQ(session.lisp("(car (places t1))"), "(\"PT#\" 57296 (-4.0 50.0 4.0) (9.0 9.0 9.0))");
}

TEST_F(RotateToChain, HostCallsToTheLetter)
{
    session.lisp("(setq e (lw 0 '((0.0 0.0 0.0) (0.0 100.0 0.0))) t1 (point \"SRVPNO1\" -5.0 50.0)"
                 " behind (text 0.0 0.0) s (set-of (list t1)))");
    std::string trace = session.traced("(cf:zentutil \"\" 12 e s 0.0)"), calls;
    for (std::size_t at = 0; at < trace.size(); at = trace.find('\n', at) + 1)
        calls += trace.substr(at, trace.find_first_of(" \n", at) - at) + " ";
    EXPECT_EQ(calls, "acedRetNil acdbEntMod acdbEntMod acdbEntMod acdbEntMod acdbEntMod acdbEntUpd ") << trace;
    EXPECT_EQ(session.lisp("(deg behind)"), UNTURNED);
    // A block without attributes: the object behind it is none of its own.
    session.lisp("(setq t1 (symbol \"SRVPNO2\" -5.0 50.0) behind (text 0.0 0.0) s (set-of (list t1)))");
    trace = session.traced("(cf:zentutil \"\" 12 e s 0.0)");
    EXPECT_EQ(session.lisp("(deg behind)"), UNTURNED);
    EXPECT_NE(trace.find("acdbEntUpd"), std::string::npos) << trace;
    EXPECT_EQ(session.traced("(cf:zentutil \"\" 12)"), "acedRetNil\n");
    EXPECT_EQ(session.traced("(cf:zentutil \"\" 12 e)"), "acedRetNil\n");
}

TEST_F(RotateToChain, NothingToTurnIsNoTrap)
{
    session.lisp("(setq e (lw 0 '((0.0 0.0 0.0) (10.0 0.0 0.0))) t1 (text 5.0 5.0) s (set-of (list t1 e)) gone "
                 "(set-of nil)"
                 " t2 (text 5.0 5.0) s2 (set-of (list t2))) (cf:zentutil \"\" 21 gone) (entdel t2)");
    for (const char* values :
         {"e nil 0.0", "e gone 0.0", "e (ssadd) 0.0", "e s2 0.0", "nil s 0.0", "t2 s 0.0", "e e 0.0"}) {
        EXPECT_EQ(call("12 " + std::string(values)), "nil") << values;
        EXPECT_EQ(session.printed(), "");
    }
    EXPECT_EQ(session.lisp("(deg t1)"), UNTURNED);
}

} // namespace
