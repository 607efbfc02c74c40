// The view is turned level with a picked line: the twist as a number, what is sent, and how the view lies then.
#include "tools/horizontal_view.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <set>
#include <string>
#include <vector>

#include "host/core/console.h"
#include "host/core/document.h"
#include "host/core/heap.h"
#include "host/database/sysvars.h"
#include "hostapi/ads.h"
#include "tests/drawing/chains.h"
#include "tests/shell/module_session.h"
#include "tools/extend_tools.h"

// The linker leads the module's questions for variables here, so that the host can seem to lack some.
static std::set<std::string> lacking;
extern "C" int __real_acedGetVar(const char* name, resbuf* value);
extern "C" int __wrap_acedGetVar(const char* name, resbuf* value)
{
    return lacking.count(name) ? RTERROR : __real_acedGetVar(name, value);
}

namespace
{

constexpr double PI = std::numbers::pi;
constexpr double TWO_PI = 6.283185307179586;
constexpr const char* PROMPT = "Pick a line or pline to make horizontal:";

// ---- the twist ------------------------------------------------------------------------------------------

double twist_of(const corner& a, const corner& b, double x, double y)
{
    const vertex_chain chain = make_vertices({a, b});
    const ads_point pick = {x, y, 0};
    return level_twist({chain.get(), chain.get(), chain->next}, pick);
}

TEST(LevelTwist, TurnsTheEndNearerToThePickToTheRight)
{
    EXPECT_EQ(twist_of({0, 0}, {0, 10}, 0, 9), TWO_PI - PI / 2);
    EXPECT_EQ(twist_of({0, 0}, {0, 10}, 0, 1), TWO_PI - 3 * PI / 2);
    EXPECT_EQ(twist_of({0, 0}, {10, 0}, 9, 0), TWO_PI);
    EXPECT_EQ(twist_of({0, 0}, {10, 0}, 1, 0), TWO_PI - PI);
    EXPECT_NEAR(twist_of({640000, 5120000}, {640007, 5120007}, 640007, 5120007), TWO_PI - PI / 4, 1e-9);
}

TEST(LevelTwist, OfAPickInTheMiddleTurnsTheSecondEndToTheRight)
{
    EXPECT_EQ(twist_of({0, 0}, {0, 10}, 0, 5), TWO_PI - PI / 2);
    EXPECT_EQ(twist_of({0, 0}, {0, 10}, 0, 4.999), TWO_PI - 3 * PI / 2);
    EXPECT_EQ(twist_of({0, 0}, {0, 10}, 3, 4), TWO_PI - PI / 2); // 5 off as the crow flies
}

TEST(LevelTwist, OfASegmentWithoutLengthIsTwoPi)
{
    EXPECT_EQ(twist_of({7, 7}, {7, 7}, 7, 7), TWO_PI);
    EXPECT_EQ(twist_of({7, 7}, {7, 7}, 8, 7), TWO_PI);
    EXPECT_EQ(twist_of({7, 7}, {7, 7 - 1e-7}, 7, 7), TWO_PI);
}

TEST(LevelTwist, LooksAtThePlanOnly)
{
    EXPECT_EQ(twist_of({0, 0, -500}, {0, 10, 900}, 0, 9), TWO_PI - PI / 2);
}

// ---- the tool -------------------------------------------------------------------------------------------

class HorizontalView : public testing::Test
{
protected:
    module_session session;

    ~HorizontalView() override { lacking.clear(); }
    void line(const char* from, const char* to)
    {
        session.lisp("(entmake '((0 . \"LINE\") (10 " + std::string(from) + ") (11 " + to + ")))");
    }
    std::string light(const char* flags, const char* corners)
    {
        return session.lisp("(entmake '((0 . \"LWPOLYLINE\") (100 . \"AcDbEntity\") (100 . \"AcDbPolyline\") " +
                            std::string(flags) + corners + "))");
    }
    void heavy(const char* flags)
    {
        session.lisp("(entmake '((0 . \"POLYLINE\") (66 . 1) (70 . " + std::string(flags) +
                     ")))"
                     "(foreach p '((0.0 0.0 3.0) (0.0 10.0 3.0) (10.0 20.0 3.0))"
                     " (entmake (list '(0 . \"VERTEX\") (cons 70 (if (= " +
                     flags + " 8) 32 0)) (cons 10 p)))) (entmake '((0 . \"SEQEND\")))");
    }
    // Picks as the answer says; what is printed behind the pick.
    std::string run(const std::string& answer)
    {
        host::answers_from_text(answer + "\nnext\n");
        session.printed();
        EXPECT_EQ(session.lisp("(cf:zentutil \"\" 0)"), "nil");
        const std::string told = session.printed();
        EXPECT_EQ(host::next_answer("").value_or("none"), "next");
        const std::size_t at = told.find(PROMPT + answer);
        EXPECT_NE(at, std::string::npos) << told;
        return at == std::string::npos ? told : told.substr(at + (PROMPT + answer).size());
    }
    double twist_deg() { return host::db::real_variable(host::current_document(), "VIEWTWIST") * 180 / PI; }
    // Turns of the view against an angle, in degrees, -180 to 180.
    double off(double deg) { return std::remainder(twist_deg() - deg, 360.0); }
    std::string traced(const std::string& answer)
    {
        host::answers_from_text(answer + "\n");
        return session.traced("(cf:zentutil \"\" 0)");
    }
    bool is_untouched() { return session.traced("(princ)").empty() && twist_deg() == 0.0; }
};

TEST_F(HorizontalView, SendsOneCommandOverTheWholeDrawing)
{
    line("-3.0 2.0 0.0", "0.0 5.0 0.0");
    line("20.0 30.0 7.0", "20.0 40.0 7.0");
    EXPECT_EQ(
        traced("#last 20,39"),
        "acedEntSel \"\\nPick a line or pline to make horizontal:\" -> RTNORM\n"
        "acedCommand (\"_.DVIEW\" \"_C\" (-3.0 2.0 0.0) (20.0 40.0 7.0) \"\" \"_TW\" \"270.000000000\" \"\")"
        " -> RTNORM\n");
    EXPECT_NEAR(off(-90), 0, 1e-7);
}

TEST_F(HorizontalView, TurnsTheEndNearerToThePickToTheRight)
{
    line("0.0 0.0 0.0", "3.0 4.0 0.0");
    const double direction = std::atan2(4, 3) * 180 / PI;
    run("#last 3,4");
    EXPECT_NEAR(off(-direction), 0, 1e-7);
    run("#last 0,0");
    EXPECT_NEAR(off(180 - direction), 0, 1e-7);
    run("#last 1.5,2"); // the middle: the second end
    EXPECT_NEAR(off(-direction), 0, 1e-7);
}

TEST_F(HorizontalView, TakesTheLegOfAPolyline)
{
    const auto up_then_aslant = [this] {
        EXPECT_EQ(run("#last 0,9").find("Error"), std::string::npos);
        EXPECT_NEAR(off(-90), 0, 1e-7);
        run("#last 0,1");
        EXPECT_NEAR(off(90), 0, 1e-7);
        run("#last 9,19");
        EXPECT_NEAR(off(-45), 0, 1e-7);
        run("#last 1,11");
        EXPECT_NEAR(off(135), 0, 1e-7);
    };
    light("(90 . 3) (70 . 0)", "(10 0.0 0.0) (10 0.0 10.0) (10 10.0 20.0)");
    up_then_aslant();
    light("(90 . 3) (70 . 1)", "(10 0.0 0.0) (10 0.0 10.0) (10 10.0 20.0)");
    up_then_aslant();
    for (const char* flags : {"0", "1", "8", "9"}) {
        heavy(flags);
        up_then_aslant();
    }
}

TEST_F(HorizontalView, LegOfAnArcLiesLevelByItsChord)
{
    light("(90 . 2) (70 . 0)", "(10 0.0 0.0) (42 . 1.0) (10 0.0 10.0)");
    run("#last 5,5.5");
    EXPECT_NEAR(off(-90), 0, 1e-7);
}

// The text of the twist is the drawing's own, and the host reads back what was meant.
TEST_F(HorizontalView, LiesLevelInEachAngleUnit)
{
    const char* const unit_texts[] = {"45.000000000", "45d0'0.00000\"", "50.000000000g", "0.785398163r",
                                      nullptr};
    for (int unit = 0; unit < 5; ++unit)
        for (const int sense : {0, 1})
            for (const char* base : {"0.0", "(/ pi 2)", "0.3", "(* 1.75 pi)"}) {
                session.lisp("(setvar \"AUNITS\" " + std::to_string(unit) + ") (setvar \"ANGDIR\" " +
                             std::to_string(sense) + ") (setvar \"ANGBASE\" " + base + ")");
                for (int deg = 0; deg < 360; deg += 15) {
                    const std::string d = std::to_string(deg);
                    session.lisp(
                        "(setq p (polar '(7.0 8.0 0.0) (* pi (/ " + d +
                        " 180.0)) 10.0)) (entmake (list '(0 . \"LINE\") '(10 7.0 8.0 0.0) (cons 11 p)))");
                    session.lisp("(setq dir (angle '(7.0 8.0) p))");
                    const std::string told = run("#last 7,8");
                    EXPECT_NEAR(off(180 - deg), 0, 2e-7) << unit << ' ' << sense << ' ' << base << ' ' << told;
                    session.lisp("(entdel (entlast))");
                }
            }
    session.lisp("(setvar \"ANGDIR\" 0) (setvar \"ANGBASE\" 0.0)");
    line("0.0 0.0 0.0", "-5.0 5.0 0.0");
    for (int unit = 0; unit < 4; ++unit) {
        session.lisp("(setvar \"AUNITS\" " + std::to_string(unit) + ")");
        const std::string trace = traced("#last 0,0");
        std::string text;
        for (const char* c = unit_texts[unit]; *c; ++c)
            text += *c == '"' ? std::string("\\\"") : std::string(1, *c);
        EXPECT_NE(trace.find("\"_TW\" \"" + text + "\""), std::string::npos) << trace;
    }
    session.lisp("(setvar \"AUNITS\" 4)");
    EXPECT_NE(traced("#last 0,0").find("\"_TW\" \"N 45d0'0.00000\\\" E\""), std::string::npos);
}

TEST_F(HorizontalView, RunAgainGivesTheSameView)
{
    line("0.0 0.0 0.0", "3.0 4.0 0.0");
    run("#last 3,4");
    const double once = twist_deg();
    run("#last 3,4");
    EXPECT_NEAR(twist_deg(), once, 1e-7);
}

TEST_F(HorizontalView, LeavesTheObjectsAlone)
{
    line("0.0 0.0 0.0", "3.0 4.0 0.0");
    const std::string before = session.lisp("(entget (entlast))");
    run("#last 3,4");
    EXPECT_EQ(session.lisp("(entget (entlast))"), before);
}

TEST_F(HorizontalView, LineWithoutLengthSendsTwoPi)
{
    line("2.0 2.0 0.0", "2.0 2.0 0.0");
    session.lisp("(setvar \"AUNITS\" 3)");
    const std::string trace = traced("#last 2,2");
    EXPECT_NE(trace.find("acedCommand (\"_.DVIEW\""), std::string::npos) << trace;
    EXPECT_NEAR(off(0), 0, 1e-7);
}

TEST_F(HorizontalView, NothingPickedIsACancel)
{
    line("0.0 0.0 0.0", "3.0 4.0 0.0");
    for (const char* answer : {"^C", "", "500,500"}) {
        const std::string told = run(answer);
        EXPECT_NE(told.find("\nFunction cancelled."), std::string::npos) << told;
        EXPECT_EQ(told.find("DVIEW"), std::string::npos) << told;
        EXPECT_TRUE(is_untouched()) << answer;
    }
}

TEST_F(HorizontalView, AnotherTypeIsTold)
{
    session.lisp("(entmake '((0 . \"CIRCLE\") (10 0.0 0.0 0.0) (40 . 5.0)))");
    EXPECT_EQ(run("#last 5,0"), "\n\nError: selection must be a LINE or POLYLINE");
    session.lisp("(entmake '((0 . \"TEXT\") (10 0.0 0.0 0.0) (40 . 5.0) (1 . \"LINE\")))");
    EXPECT_EQ(run("#last 0,0"), "\n\nError: selection must be a LINE or POLYLINE");
    EXPECT_TRUE(is_untouched());
}

TEST_F(HorizontalView, PickBesideNoLegIsTold)
{
    light("(90 . 2) (70 . 0)", "(10 0.0 0.0) (10 0.0 10.0)");
    EXPECT_EQ(run("#last 0,11"), "\n\nError: no segment of the polyline at that point");
    EXPECT_TRUE(is_untouched());
}

TEST_F(HorizontalView, ExhaustedHeapTurnsNothingAndGivesAllBack)
{
    const auto refuse_each = [this](long least) {
        long nth = 0;
        for (bool is_refused = true; is_refused;) {
            host::heap_refuse(++nth);
            const std::string told = run("#last 0,9"); // lisp() compares the heap
            is_refused = host::heap_refuse(0) == 0;
            EXPECT_EQ(told.find("Error") != std::string::npos, is_refused) << told;
            EXPECT_NEAR(off(is_refused ? 0 : -90), 0, 1e-7);
        }
        EXPECT_GT(nth, least);
        session.lisp("(command \"_.U\")");
    };
    line("0.0 0.0 0.0", "0.0 10.0 0.0");
    refuse_each(2);
    light("(90 . 2) (70 . 0)", "(10 0.0 0.0) (10 0.0 10.0)");
    refuse_each(2);
    heavy("8");
    refuse_each(3);
}

TEST_F(HorizontalView, IsOneStepOfUndo)
{
    line("0.0 0.0 0.0", "0.0 10.0 0.0");
    run("#last 0,9");
    EXPECT_NEAR(off(-90), 0, 1e-7);
    session.lisp("(command \"_.U\")");
    EXPECT_EQ(twist_deg(), 0.0);
    EXPECT_EQ(session.lisp("(cdr (assoc 0 (entget (entlast))))"), "\"LINE\"");
}

TEST_F(HorizontalView, ExtentsThatTheHostLacksAreReplacedWithAWarning)
{
    line("-3.0 2.0 0.0", "0.0 5.0 0.0");
    struct extents_case {
        std::set<std::string> lacking;
        const char *told, *corners;
    };
    const extents_case cases[] = {
        {{"EXTMIN"}, "\nWarning: unable to find EXTMIN", "(0.0 0.0 0.0) (0.0 5.0 0.0)"},
        {{"EXTMAX"}, "\nWarning: unable to find EXTMAX", "(-3.0 2.0 0.0) (1.0e+08 1.0e+08 1.0e+08)"},
        {{"EXTMIN", "EXTMAX"},
         "\nWarning: unable to find EXTMIN\nWarning: unable to find EXTMAX",
         "(0.0 0.0 0.0) (1.0e+08 1.0e+08 1.0e+08)"}};
    for (const extents_case& c : cases) {
        lacking = c.lacking;
        session.lisp("(princ \"before\")");
        session.printed();
        const std::string trace = traced("#last 0,5");
        EXPECT_NE(trace.find("\"_C\" " + std::string(c.corners)), std::string::npos) << trace;
        const std::string told = session.printed();
        EXPECT_EQ(told.substr(0, told.find(PROMPT) - 1), c.told);
        EXPECT_NEAR(off(-45), 0, 1e-7);
    }
}

TEST_F(HorizontalView, IsWhatEveryModeButTwoRuns)
{
    for (const int mode : {0, 1, 3, -1, 100}) {
        host::answers_from_text("^C\n");
        session.printed();
        EXPECT_EQ(extend_tools(mode), RTNORM);
        EXPECT_NE(session.printed().find(PROMPT), std::string::npos) << mode;
    }
    host::answers_from_text("^C\n");
    EXPECT_EQ(extend_tools(2), RTNORM);
    EXPECT_EQ(session.printed().find(PROMPT), std::string::npos);
}

} // namespace
