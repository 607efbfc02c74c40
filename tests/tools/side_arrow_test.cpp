// Operation 5: arrows along a short, bowed line, for programs.
#include <cmath>
#include <cstdio>

#include "tests/tools/annotation_case.h"

namespace
{

// side 1, offset 8, from (20,0) to the tip at (0,0): the start moves by the right-hand normal of the line from
// end to start, (0,-1) here but for the tilt of a line along x, and the middle by a quarter more.
constexpr const char* BOW = "1.0 8.0 '(20.0 0.0 3.0) '(0.0 0.0 4.0) 25.0 ";

class SideArrow : public Annotation
{
protected:
    std::string call(const std::string& args) { return "(setq set (cf:zentutil \"\" 5 " + args + "))"; }
    // The members of the set that was answered.
    std::string arrow(const std::string& args)
    {
        run(call(args), "");
        return value == "nil" ? "nil" : text_of("(members set)");
    }
    std::string commands(const std::string& args) { return only(trace_of(call(args)), {"acedCommand"}); }
    void layer(const std::string& name)
    {
        make("(0 . \"LAYER\") (100 . \"AcDbSymbolTableRecord\") (100 . \"AcDbLayerTableRecord\") (2 . \"" +
             name + "\") (70 . 0) (62 . 3) (6 . \"Continuous\")");
    }
};

// ---- the styles ---------------------------------------------------------------------------------------

TEST_F(SideArrow, Style0IsAHeadAtTheEndAndAnArc)
{
    EXPECT_EQ(arrow(std::string(BOW) + "0"), "SOLID; ARC");
    EXPECT_EQ(drawn(), "SOLID; ARC");
    EXPECT_TRUE(is_tip("(ssname set 0)", "0.0 0.0"));
    const std::string sent = commands(std::string(BOW) + "0");
    EXPECT_EQ(sent.find("acedCommand (\"_.POINT\" "), 0u) << sent;
    EXPECT_NE(sent.find("\nacedCommand (\"_.DIM1\" \"_LEADER\" (0.0 0.0 0.0) "), std::string::npos) << sent;
    EXPECT_NE(
        sent.find("\nacedCommand (\"_.ARC\" (20.0 -8.0 0.0) (9.25722 -5.85695 0.0) (0.0 0.0 0.0)) -> RTNORM\n"),
        std::string::npos)
        << sent;
}

TEST_F(SideArrow, Style3TakesTheLastObjectOfTheDrawingWhicheverItIs)
{
    EXPECT_EQ(arrow(std::string(BOW) + "3"), "ARC") << "an empty drawing has none";
    erase_all();
    make("(0 . \"CIRCLE\") (10 0.0 0.0 0.0) (40 . 5.0)");
    EXPECT_EQ(arrow(std::string(BOW) + "3"), "CIRCLE; ARC");
    EXPECT_EQ(drawn(), "CIRCLE; ARC");
    EXPECT_EQ(commands(std::string(BOW) + "3"),
              "acedCommand (\"_.ARC\" (20.0 -8.0 0.0) (9.25722 -5.85695 0.0) (0.0 0.0 0.0)) -> RTNORM\n");
}

TEST_F(SideArrow, Style1IsTwoCurvesWithAPointBetween)
{
    // Thinned as one curve and then cut: the bends on its two sides needn't match.
    EXPECT_EQ(arrow("1.0 20.0 '(20.0 0.0) '(0.0 0.0) 25.0 1"),
              "LWPOLYLINE 5: 0.00,0.00 4.43,-11.07; POINT 6.46,-13.54; LWPOLYLINE 5: 8.07,-14.94 20.00,-20.00");
    EXPECT_EQ(drawn(), text_of("(members set)"));
    EXPECT_EQ(arrow("1.0 10.0 '(20.0 0.0) '(0.0 0.0) 25.0 1"),
              "LWPOLYLINE 3: 0.00,0.00 6.76,-6.00; POINT 8.88,-7.24; LWPOLYLINE 3: 12.68,-8.70 20.00,-10.00");
}

TEST_F(SideArrow, Style1IsCutAtItsMiddleHoweverFlatItIs)
{
    // Thinning takes the middle of a flat bow away; the line is cut there all the same.
    EXPECT_EQ(arrow("1.0 0.0 '(20.0 10.0) '(0.0 0.0) 25.0 1"),
              "LWPOLYLINE 2: 0.00,0.00 7.84,3.92; POINT 10.00,5.00; LWPOLYLINE 2: 11.44,5.72 20.00,10.00");
    EXPECT_EQ(arrow("1.0 1.0 '(20.0 0.0) '(0.0 0.0) 25.0 1"),
              "LWPOLYLINE 2: 0.00,0.00 7.83,-0.63; POINT 9.99,-0.75; LWPOLYLINE 2: 11.43,-0.81 20.00,-1.00");
    EXPECT_EQ(arrow(std::string(BOW) + "1"),
              "LWPOLYLINE 3: 0.00,0.00 7.12,-4.87; POINT 9.26,-5.86; LWPOLYLINE 3: 10.73,-6.39 20.00,-8.00");
}

TEST_F(SideArrow, OtherStylesAreThreeDashes)
{
    // A straight one: up to a quarter, from three to five eighths, from three quarters on.
    for (const char* style : {"2", "4", "-1", "99"}) {
        erase_all();
        EXPECT_EQ(arrow("1.0 0.0 '(16.0 0.0) '(0.0 0.0) 25.0 " + std::string(style)),
                  "LWPOLYLINE 2: 0.00,0.00 4.00,0.00; LWPOLYLINE 2: 6.00,0.00 10.00,0.00; "
                  "LWPOLYLINE 2: 12.00,0.00 16.00,0.00")
            << style;
        EXPECT_EQ(drawn(), text_of("(members set)"));
    }
    EXPECT_EQ(arrow(std::string(BOW) + "2"),
              "LWPOLYLINE 3: 0.00,0.00 4.43,-3.24; LWPOLYLINE 4: 6.78,-4.67 11.88,-6.66; "
              "LWPOLYLINE 3: 14.55,-7.31 20.00,-8.00");
    EXPECT_EQ(arrow("1.0 20.0 '(20.0 0.0) '(0.0 0.0) 25.0 2"),
              "LWPOLYLINE 4: 0.00,0.00 2.32,-7.22; LWPOLYLINE 5: 4.12,-10.55 9.46,-15.86; "
              "LWPOLYLINE 4: 12.78,-17.69 20.00,-20.00");
}

TEST_F(SideArrow, HeadOfAFlatBowLiesAlongItsChord)
{
    // A middle that lies 0.05 off the chord is thinned away before the head is drawn; one at 0.25 is not.
    const auto leader_end = [&](const char* offset) {
        const std::string sent = commands("1.0 " + std::string(offset) + " '(0.0 20.0) '(0.0 0.0) 25.0 0");
        const std::string start = "\"_LEADER\" (0.0 0.0 0.0) (";
        double x = 0.0, y = 0.0;
        const std::size_t at = sent.find(start);
        EXPECT_NE(at, std::string::npos) << sent;
        if (at != std::string::npos) {
            EXPECT_EQ(std::sscanf(sent.c_str() + at + start.size(), "%lf %lf", &x, &y), 2) << sent;
        }
        return std::atan2(x, y);
    };
    EXPECT_NEAR(leader_end("0.2"), std::atan2(0.2, 20.0), 1e-6);
    EXPECT_GT(leader_end("1.0"), std::atan2(1.0, 20.0) + 0.001);
}

TEST_F(SideArrow, ArcThatIsNoneLeavesOnlyTheHead)
{
    make("(0 . \"CIRCLE\") (10 0.0 0.0 0.0) (40 . 5.0)");
    EXPECT_EQ(arrow("1.0 0.0 '(16.0 0.0) '(0.0 0.0) 25.0 0"), "SOLID") << "the points are in line";
}

// ---- where it lies --------------------------------------------------------------------------------------

TEST_F(SideArrow, ArcsOfEachSideAndLength)
{
    struct place_case {
        const char* name;
        const char* args;
        const char* arc;
    };
    const place_case cases[] = {
        {"the other side", "-1.0 8.0 '(20.0 0.0) '(0.0 0.0) 25.0 3",
         "(20.0 8.0 0.0) (9.25722 5.85695 0.0) (0.0 0.0 0.0)"},
        {"from left to right", "1.0 8.0 '(0.0 0.0) '(20.0 0.0) 25.0 3",
         "(0.0 8.0 0.0) (10.7428 5.85695 0.0) (20.0 0.0 0.0)"},
        {"at most as long as its size", "1.0 0.0 '(300.0 400.0) '(0.0 0.0) 25.0 3",
         "(15.0 20.0 0.0) (7.5 10.0 0.0) (0.0 0.0 0.0)"},
        {"exactly as long", "1.0 0.0 '(15.0 20.0) '(0.0 0.0) 25.0 3",
         "(15.0 20.0 0.0) (7.5 10.0 0.0) (0.0 0.0 0.0)"},
        {"heights are left out", "1.0 0.0 '(3.0 4.0 500.0) '(0.0 0.0 9.0) 5.0 3",
         "(3.0 4.0 0.0) (1.5 2.0 0.0) (0.0 0.0 0.0)"},
        {"up", "1.0 4.0 '(0.0 20.0) '(0.0 0.0) 25.0 3", "(4.0 20.0 0.0) (2.98058 9.80388 0.0) (0.0 0.0 0.0)"},
    };
    for (const place_case& c : cases)
        EXPECT_EQ(commands(c.args).substr(0, std::string(c.arc).size() + 21),
                  "acedCommand (\"_.ARC\" " + std::string(c.arc))
            << c.name;
}

TEST_F(SideArrow, LineShorterThanAQuarterOfItsSizeIsRefused)
{
    layer("NOTES");
    EXPECT_EQ(arrow("1.0 8.0 '(6.24 0.0) '(0.0 0.0) 25.0 0 \"NOTES\""), "nil");
    EXPECT_EQ(drawn(), "");
    EXPECT_EQ(variable("DIMASZ"), "5.0") << "left as it was set";
    EXPECT_EQ(variable("CLAYER"), "NOTES") << "left as it was set";
    set("DIMASZ", "3.0");
    set("CLAYER", "\"0\"");
    EXPECT_EQ(arrow("1.0 8.0 '(6.25 0.0) '(0.0 0.0) 25.0 0 \"NOTES\""), "SOLID; ARC");
    EXPECT_EQ(variable("DIMASZ"), "3.0");
    EXPECT_EQ(variable("CLAYER"), "0");
}

// ---- values and variables --------------------------------------------------------------------------------

TEST_F(SideArrow, HeadHasAFifthOfTheSize)
{
    struct size_case {
        const char* dimscale;
        const char* args;
        const char* dimasz;
    };
    const size_case cases[] = {
        {"1.0", "1.0 8.0 '(20.0 0.0) '(0.0 0.0) 50.0", "10.0"},
        {"4.0", "1.0 8.0 '(20.0 0.0) '(0.0 0.0) 50.0", "2.5"},
        {"0.0", "1.0 8.0 '(20.0 0.0) '(0.0 0.0) 50.0", "10.0"},
        {"1.0", "1.0 8.0 '(20.0 0.0) '(0.0 0.0)", "5.0"}, // 25 without one
    };
    for (const size_case& c : cases) {
        set("DIMSCALE", c.dimscale);
        const std::string trace = trace_of(call(c.args));
        EXPECT_EQ(only(trace, {"acedSetVar \"DIMASZ\""}),
                  "acedSetVar \"DIMASZ\" " + std::string(c.dimasz) +
                      " -> RTNORM\nacedSetVar \"DIMASZ\" 3.0 -> RTNORM\n");
    }
}

TEST_F(SideArrow, LayerIsMadeCurrentAndPutBack)
{
    EXPECT_EQ(arrow(std::string(BOW) + "0 \"Arrows\""), "SOLID; ARC");
    EXPECT_EQ(session.lisp("(cdr (assoc 8 (entget (ssname set 1))))"), "\"ARROWS\"");
    EXPECT_EQ(session.lisp("(cdr (assoc 62 (tblsearch \"LAYER\" \"ARROWS\")))"), "1");
    EXPECT_EQ(variable("CLAYER"), "0");
    const std::string sent = commands(std::string(BOW) + "3 \"Arrows\"");
    EXPECT_TRUE(sent.starts_with("acedCommand (\"_.LAYER\" \"_T\" \"ARROWS\" \"_S\" \"ARROWS\" \"\") "))
        << sent;
    EXPECT_EQ(variable("CLAYER"), "0");
    EXPECT_EQ(commands(std::string(BOW) + "3 \"\"").find("LAYER"), std::string::npos);
}

TEST_F(SideArrow, GivenSetIsFreedAndANewOneAnswered)
{
    session.lisp("(setq old (ssadd))");
    const std::size_t sets = host::db::live_sets();
    EXPECT_EQ(arrow(std::string(BOW) + "0 \"\" old"), "SOLID; ARC");
    EXPECT_EQ(host::db::live_sets(), sets) << "one freed, one new";
    EXPECT_EQ(session.lisp("(setq old (ssadd) set nil)").substr(0, 6), "nil");
    const std::string trace = trace_of(call("1.0 8.0 '(1.0 0.0) '(0.0 0.0) 25.0 0 \"\" old"));
    EXPECT_TRUE(trace.starts_with("acedSSFree <Selection set: ")) << trace;
    EXPECT_EQ(trace.find("acedRet"), std::string::npos) << trace;
}

TEST_F(SideArrow, ValuesMayStopEarly)
{
    const char* const stops[] = {"", "1.0", "1.0 8.0", "1.0 8.0 '(20.0 0.0)"};
    for (const char* args : stops) {
        erase_all();
        set("DIMASZ", "3.0");
        const std::string members = arrow(args);
        const bool has_line = std::string(args).find('(') != std::string::npos;
        EXPECT_EQ(members, has_line ? "SOLID; ARC" : "nil") << args;
        EXPECT_EQ(drawn(), members == "nil" ? "" : members);
    }
}

TEST_F(SideArrow, OddNumbersDrawWhatTheyCanAndLeaveTheVariables)
{
    struct odd_case {
        const char* name;
        const char* args;
    };
    const odd_case cases[] = {
        {"no size, no length", "1.0 8.0 '(0.0 0.0) '(0.0 0.0) 0.0 "},
        {"negative size, no length", "1.0 8.0 '(0.0 0.0) '(0.0 0.0) -5.0 "},
        {"negative size", "1.0 8.0 '(20.0 0.0) '(0.0 0.0) -5.0 "},
        {"huge points", "1.0 8.0 '(1e308 0.0) '(-1e308 0.0) 25.0 "},
        {"huge size", "1.0 8.0 '(1e308 1e308) '(0.0 0.0) 1e308 "},
        {"huge offset", "1e200 1e200 '(20.0 0.0) '(0.0 0.0) 25.0 "},
    };
    for (const odd_case& c : cases)
        for (const char* style : {"0", "1", "2", "3"}) {
            erase_all();
            set("DIMASZ", "3.0");
            const std::string members = arrow(c.args + std::string(style));
            EXPECT_EQ(variable("DIMASZ"), "3.0") << c.name << style;
            EXPECT_EQ(members, drawn()) << c.name << style;
        }
}

TEST_F(SideArrow, HeapThatGivesNoMoreLeavesNothingBehindAndNoOtherObjectInTheSet)
{
    make("(0 . \"CIRCLE\") (10 0.0 0.0 0.0) (40 . 5.0)");
    session.lisp("(setq newest (entlast))");
    for (const char* style : {"0", "1", "2"}) {
        session.lisp("(while (not (equal (entlast) newest)) (entdel (entlast)))");
        const std::string whole = arrow(std::string(BOW) + style);
        long requests = 0;
        for (bool refused = true; refused; ++requests) {
            SCOPED_TRACE(std::string("style ") + style + ", request " + std::to_string(requests + 1));
            session.lisp("(setq set nil) (while (not (equal (entlast) newest)) (entdel (entlast)))");
            const state before = held();
            host::heap_refuse(requests + 1);
            session.lisp(call(std::string(BOW) + style));
            refused = host::heap_refuse(0) == 0;
            EXPECT_EQ(held().blocks, before.blocks);
            EXPECT_EQ(held().views, before.views);
            EXPECT_EQ(variable("DIMASZ"), "3.0");
            const std::string members = text_of("(if set (members set) \"\")");
            EXPECT_EQ(members.find("CIRCLE"), std::string::npos) << members;
            EXPECT_EQ(drawn(), members.empty() ? "CIRCLE" : "CIRCLE; " + members);
            if (!refused) {
                EXPECT_EQ(members, whole);
            }
        }
        EXPECT_GT(requests, 5);
    }
}

} // namespace
