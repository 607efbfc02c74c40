// Operation 9: an arrow head with its line, for programs.
#include "tests/tools/annotation_case.h"

namespace
{

class ArrowPair : public Annotation
{
protected:
    std::string pair(const std::string& args)
    {
        run("(setq set (cf:zentutil \"\" 9 " + args + "))", "");
        return value == "nil" ? "nil" : text_of("(members set)");
    }
};

TEST_F(ArrowPair, AnswersTheHeadAndTheLine)
{
    EXPECT_EQ(pair("0.0 0.0 '(10.0 20.0 5.0) '(110.0 20.0 6.0) 8.0"),
              "SOLID; LWPOLYLINE 8: 10.00,20.00 110.00,20.00");
    EXPECT_TRUE(is_tip("(ssname set 0)", "10.0 20.0"));
    EXPECT_EQ(drawn(), "SOLID; LWPOLYLINE 8: 10.00,20.00 110.00,20.00");
    EXPECT_EQ(variable("DIMASZ"), "3.0");
}

TEST_F(ArrowPair, SendsTheseCommands)
{
    const std::string trace = trace_of("(cf:zentutil \"\" 9 1.0 7.0 '(0.0 0.0 0.0) '(100.0 0.0 0.0) 8.0)");
    EXPECT_EQ(only(trace, {"acedSetVar", "acedCommand", "acedSSAdd"}),
              R"(acedSetVar "DIMASZ" 4.0 -> RTNORM
acedSSAdd nil nil -> RTNORM
acedSetVar "OSMODE" 0 -> RTNORM
acedCommand ("_.POINT" (6.075 0.0 0.0)) -> RTNORM
acedCommand ("_.DIM1" "_LEADER" (0.0 0.0 0.0) (8.4 0.0 0.0) "" "") -> RTNORM
acedSetVar "OSMODE" 37 -> RTNORM
acedSetVar "DIMASZ" 3.0 -> RTNORM
)");
    EXPECT_NE(trace.find("acedRetName <Selection set: "), std::string::npos) << trace;
}

TEST_F(ArrowPair, SizeIsHalvedAndScaled)
{
    struct size_case {
        const char* dimscale;
        const char* args;
        const char* dimasz;
    };
    const size_case cases[] = {
        {"1.0", "0.0 0.0 '(0.0 0.0) '(100.0 0.0) 8.0", "4.0"},
        {"4.0", "0.0 0.0 '(0.0 0.0) '(100.0 0.0) 8.0", "1.0"},
        {"0.0", "0.0 0.0 '(0.0 0.0) '(100.0 0.0) 8.0", "4.0"},
        {"1.0", "0.0 0.0 '(0.0 0.0) '(100.0 0.0)", "12.5"}, // 25 without one
        {"1.0", "", "12.5"},
    };
    for (const size_case& c : cases) {
        set("DIMSCALE", c.dimscale);
        const std::string trace = trace_of("(cf:zentutil \"\" 9 " + std::string(c.args) + ")");
        EXPECT_TRUE(trace.starts_with("acedSetVar \"DIMASZ\" " + std::string(c.dimasz) + " ->"))
            << c.args << ": " << trace;
        EXPECT_EQ(variable("DIMASZ"), "3.0");
    }
}

TEST_F(ArrowPair, MissingPointsAreTheOrigin)
{
    EXPECT_EQ(pair(""), "SOLID; LWPOLYLINE 8: 0.00,0.00 0.00,0.00");
    EXPECT_EQ(pair("0.0 0.0 '(30.0 40.0 1.0)"), "SOLID; LWPOLYLINE 8: 30.00,40.00 0.00,0.00");
}

TEST_F(ArrowPair, HeadIsThatOfTheDrawingsDimensions)
{
    set("DIMBLK", "\"_DOT\"");
    EXPECT_EQ(pair("0.0 0.0 '(10.0 20.0) '(110.0 20.0) 8.0"), "INSERT; LWPOLYLINE 8: 10.00,20.00 110.00,20.00");
    erase_all();
    set("DIMBLK", "\"_NONE\"");
    EXPECT_EQ(pair("0.0 0.0 '(10.0 20.0) '(110.0 20.0) 8.0"), "LWPOLYLINE 8: 10.00,20.00 110.00,20.00");
    EXPECT_EQ(drawn(), "LWPOLYLINE 8: 10.00,20.00 110.00,20.00");
}

TEST_F(ArrowPair, SizeWithoutAHeadAnswersTheLineAlone)
{
    make("(0 . \"CIRCLE\") (10 0.0 0.0 0.0) (40 . 5.0)");
    EXPECT_EQ(pair("0.0 0.0 '(0.0 0.0) '(100.0 0.0) 0.0"), "LWPOLYLINE 8: 0.00,0.00 100.00,0.00")
        << "and not the circle that was there";
}

TEST_F(ArrowPair, PointsAreReadWhateverTheTypeSays)
{
    // Three nodes for the first two reals and the start: a whole number for a real is read as its bytes.
    EXPECT_EQ(pair("1 2 '(0.0 0.0) '(100.0 0.0) 8.0"), "SOLID; LWPOLYLINE 8: 0.00,0.00 100.00,0.00");
}

TEST_F(ArrowPair, HeapThatGivesNoMoreLeavesNothingBehindAndNoOtherObjectInTheSet)
{
    const std::string call = "(setq set (cf:zentutil \"\" 9 0.0 0.0 '(0.0 0.0) '(100.0 0.0) 8.0))";
    make("(0 . \"LINE\") (10 0.0 0.0 0.0) (11 1.0 1.0 0.0)");
    long requests = 0;
    for (bool refused = true; refused; ++requests) {
        SCOPED_TRACE("request " + std::to_string(requests + 1) + " refused");
        session.lisp("(setq set nil)");
        const state before = held();
        host::heap_refuse(requests + 1);
        session.lisp(call);
        refused = host::heap_refuse(0) == 0;
        EXPECT_EQ(held().blocks, before.blocks);
        EXPECT_EQ(held().views, before.views);
        EXPECT_EQ(variable("DIMASZ"), "3.0");
        const std::string members = text_of("(if set (members set) \"\")");
        EXPECT_EQ(members.find("LINE;"), std::string::npos) << members;
        EXPECT_FALSE(members.ends_with("; LINE") || members == "LINE") << members;
        if (!refused) {
            EXPECT_EQ(members, "SOLID; LWPOLYLINE 8: 0.00,0.00 100.00,0.00");
        }
    }
    EXPECT_GT(requests, 10);
}

TEST_F(ArrowPair, NumbersThatNoDrawingHoldsDrawNothing)
{
    for (const char* args :
         {"0.0 0.0 '(1e308 0.0) '(-1e308 0.0) 8.0", "0.0 0.0 '(0.0 0.0) '(1e308 1e308) 1e308"}) {
        erase_all();
        const std::string members = pair(args);
        EXPECT_EQ(members.find("nan"), std::string::npos) << members;
        EXPECT_EQ(members.find("inf"), std::string::npos) << members;
        EXPECT_EQ(variable("DIMASZ"), "3.0");
    }
}

} // namespace
