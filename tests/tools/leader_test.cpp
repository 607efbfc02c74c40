// Operation 4: curved leaders and zorro lines.
#include "tests/tools/annotation_case.h"

namespace
{

const std::string LEADER = "(cf:zentutil \"\" 4)";
const std::string HEADLESS = "\nNo\n0,0\n100,0\n"; // no zorro, no arrow, a line

class Leader : public Annotation
{
protected:
    // x and y of the vertices of the newest object.
    std::string vertices()
    {
        return text_of("(apply 'strcat (mapcar '(lambda (p) (strcat (place p) \" \")) (codes 10 (entget "
                       "(entlast)))))");
    }
    // The points that the user gave, of a curve that stands at step 0.15: each seventh vertex.
    std::string users_points()
    {
        return text_of(R"((progn (setq i 0 out "")
            (foreach p (codes 10 (entget (entlast)))
              (if (= 0 (rem i 7)) (setq out (strcat out (place p) " ")))
              (setq i (1+ i)))
            out))");
    }
};

TEST_F(Leader, AsksAndDrawsInThisOrder)
{
    const std::string trace = trace_of(LEADER, "no\nyes\n2\n0,0\n100,0\n50,30\n\nno\n");
    EXPECT_EQ(only(trace, {"acedInitGet", "acedGet", "acedSetVar"}),
              R"(acedInitGet 0 "Yes No"
acedGetKword "\nCreate a Zorro [Yes/<No>]? " -> RTNORM
acedInitGet 0 "Yes No"
acedGetKword "Include an arrow [<Yes>/No]? " -> RTNORM
acedGetReal "\nEnter the arrow size <3.00>: " -> RTNORM
acedSetVar "DIMASZ" 2.0 -> RTNORM
acedGetPoint nil "\nPick a starting point:" -> RTNORM
acedGetPoint (0.0 0.0 0.0) "\nPick an ending point:" -> RTNORM
acedInitGet 0 "Undo"
acedGetPoint nil "\nPick an intermediate point (U to Undo):" -> RTNORM
acedInitGet 0 "Undo"
acedGetPoint nil "\nPick an intermediate point (U to Undo):" -> RTNONE
acedSetVar "OSMODE" 0 -> RTNORM
acedSetVar "OSMODE" 37 -> RTNORM
acedInitGet 0 "Yes No"
acedGetKword "\nDraw another to match [<Yes>/No]? " -> RTNORM
acedSetVar "DIMASZ" 3.0 -> RTNORM
)");
    EXPECT_EQ(only(trace, {"acedCommand"}),
              "acedCommand (\"_.POINT\" (1.4444 1.8225 0.0)) -> RTNORM\n"
              "acedCommand (\"_.DIM1\" \"_LEADER\" (0.0 0.0 0.0) (2.60872 3.2916 0.0) \"\" \"\") -> RTNORM\n");
    EXPECT_EQ(drawn(), "LWPOLYLINE 15: 0.00,0.00 100.00,0.00; SOLID");
    EXPECT_TRUE(is_tip("(entlast)", "0.0 0.0"));
}

struct leader_case {
    const char* name;
    const char* answers;
    const char* dimasz; // afterwards; it is 3 before
    const char* told;   // at the end
    const char* drawn;
};

TEST_F(Leader, EachWayOut)
{
    const char* const CANCELLED = "\nFunction cancelled.";
    const leader_case cases[] = {
        {"cancel at the zorro", "^C\n", "3.0", "", ""},
        {"cancel at the arrow", "\n^C\n", "3.0", "", ""},
        {"cancel at the size", "\n\n^C\n", "3.0", "", ""},
        {"cancel at the size of a zorro", "Yes\n^C\n", "3.0", "", ""},
        {"cancel at the start", "\n\n2\n^C\n", "2.0", CANCELLED, ""},
        {"Enter at the start", "\n\n2\n\n", "2.0", CANCELLED, ""},
        {"cancel at the end", "\n\n2\n0,0\n^C\n", "2.0", CANCELLED, ""},
        {"Enter at the end", "\n\n2\n0,0\n\n", "2.0", CANCELLED, ""},
        {"cancel at the start of a zorro", "Yes\n2\n^C\n", "2.0", CANCELLED, ""},
        {"cancel at an intermediate point", "\n\n2\n0,0\n100,0\n^C\nNo\n", "3.0", "No\n", ""},
        {"cancel behind an intermediate point", "\n\n2\n0,0\n100,0\n50,30\n^C\nNo\n", "3.0", "No\n", ""},
        {"cancel with no arrow", "\nNo\n0,0\n100,0\n^C\nNo\n", "3.0", "No\n", ""},
        {"cancel at another", "\n\n2\n0,0\n100,0\n\n^C\n", "3.0", "^C\n",
         "LWPOLYLINE 2: 0.00,0.00 100.00,0.00; SOLID"},
        {"Enter keeps the size", "\n\n\n0,0\n100,0\n\nNo\n", "3.0", "No\n",
         "LWPOLYLINE 2: 0.00,0.00 100.00,0.00; SOLID"},
        {"no arrow, no question for its size", "no\nno\n0,0\n100,0\n50,30\n\nno\n", "3.0", "no\n",
         "LWPOLYLINE 15: 0.00,0.00 100.00,0.00"},
        {"a zorro always has an arrow", "Yes\n2\n0,0\n100,0\nNo\n", "3.0", "No\n",
         "LWPOLYLINE 40: 0.00,0.00 100.00,0.00; SOLID"},
        {"another two", "\n\n2\n0,0\n100,0\n\n\n0,10\n100,10\n\nYes\n0,20\n100,20\n\nNo\n", "3.0", "No\n",
         "LWPOLYLINE 2: 0.00,0.00 100.00,0.00; SOLID; LWPOLYLINE 2: 0.00,10.00 100.00,10.00; SOLID; "
         "LWPOLYLINE 2: 0.00,20.00 100.00,20.00; SOLID"},
        {"another zorro", "Yes\n2\n0,0\n100,0\nYes\n0,10\n100,10\nNo\n", "3.0", "No\n",
         "LWPOLYLINE 40: 0.00,0.00 100.00,0.00; SOLID; LWPOLYLINE 40: 0.00,10.00 100.00,10.00; SOLID"},
        {"another that is left at its start", "\n\n2\n0,0\n100,0\n\n\n\n", "2.0", CANCELLED,
         "LWPOLYLINE 2: 0.00,0.00 100.00,0.00; SOLID"},
        {"another behind a cancelled one", "\n\n2\n0,0\n100,0\n^C\n\n0,10\n100,10\n\nNo\n", "3.0", "No\n",
         "LWPOLYLINE 2: 0.00,10.00 100.00,10.00; SOLID"},
    };
    for (const leader_case& c : cases) {
        set("DIMASZ", "3.0");
        erase_all();
        const std::string told = run(LEADER, c.answers);
        EXPECT_EQ(value, "nil") << c.name;
        EXPECT_TRUE(told.ends_with(c.told)) << c.name << ": " << told;
        EXPECT_EQ(variable("DIMASZ"), c.dimasz) << c.name;
        EXPECT_EQ(drawn(), c.drawn) << c.name;
    }
}

TEST_F(Leader, SizeIsInDrawingUnitsAndAScaleOfZeroCountsAsOne)
{
    struct scale_case {
        const char* dimscale;
        const char* prompt;
        const char* dimasz;
    };
    const scale_case cases[] = {{"1.0", "<3.00>", "2.0"}, {"4.0", "<12.00>", "0.5"}, {"0.0", "<3.00>", "2.0"}};
    for (const scale_case& c : cases) {
        set("DIMASZ", "3.0");
        set("DIMSCALE", c.dimscale);
        const std::string told = run(LEADER, "\n\n2\n^C\n");
        EXPECT_NE(told.find(std::string("\nEnter the arrow size ") + c.prompt + ": 2"), std::string::npos)
            << told;
        EXPECT_EQ(variable("DIMASZ"), c.dimasz);
    }
}

TEST_F(Leader, SizeOfManyDigitsIsShownWhole)
{
    set("DIMASZ", "1e200");
    const std::string told = run(LEADER, "\n\n^C\n");
    EXPECT_NE(told.find(".00>: ^C"), std::string::npos) << told;
}

TEST_F(Leader, HeadOfACurveLiesAlongItsStart)
{
    run(LEADER, "\n\n2\n10,20\n110,20\n60,50\n\nNo\n");
    EXPECT_TRUE(is_tip("(entlast)", "10.0 20.0"));
    // All of the head lies on the side to which the curve sets out.
    EXPECT_EQ(
        session.lisp("(vl-every '(lambda (n) (>= (caddr (assoc n (entget (entlast)))) 19.0)) '(10 11 12 13))"),
        "T");
}

TEST_F(Leader, PointsGoBetweenTheirNeighbours)
{
    struct place_case {
        const char* name;
        const char* points;
        const char* expected;
    };
    const place_case cases[] = {
        {"nearer the start", "10,5\n", "0.00,0.00 10.00,5.00 100.00,0.00 "},
        {"nearer the end", "90,5\n", "0.00,0.00 90.00,5.00 100.00,0.00 "},
        {"as near to both", "50,30\n", "0.00,0.00 50.00,30.00 100.00,0.00 "},
        {"before the start, but behind it in the line", "-10,0\n", "0.00,0.00 -10.00,0.00 100.00,0.00 "},
        {"behind the end, but before it in the line", "120,0\n", "0.00,0.00 120.00,0.00 100.00,0.00 "},
        {"beside an intermediate one, on its far side", "50,30\n60,25\n",
         "0.00,0.00 50.00,30.00 60.00,25.00 100.00,0.00 "},
        {"beside an intermediate one, on its near side", "50,30\n40,25\n",
         "0.00,0.00 40.00,25.00 50.00,30.00 100.00,0.00 "},
        {"square on to an intermediate one", "50,30\n50,40\n",
         "0.00,0.00 50.00,30.00 50.00,40.00 100.00,0.00 "},
        {"on an intermediate one", "50,30\n50,30\n", "0.00,0.00 50.00,30.00 50.00,30.00 100.00,0.00 "},
        {"four in a mess", "50,30\n20,20\n80,20\n35,28\n",
         "0.00,0.00 20.00,20.00 35.00,28.00 50.00,30.00 80.00,20.00 100.00,0.00 "},
        {"farther than any drawing is wide", "9e9,0\n", "0.00,0.00 9000000000.00,0.00 100.00,0.00 "},
    };
    for (const place_case& c : cases) {
        erase_all();
        run(LEADER, HEADLESS + c.points + "\nNo\n");
        EXPECT_EQ(users_points(), c.expected) << c.name;
    }
}

TEST_F(Leader, OnlyTheNewestShapeOfALineStays)
{
    run(LEADER, HEADLESS + "20,10\n40,30\n70,5\n\nNo\n");
    EXPECT_EQ(drawn(), "LWPOLYLINE 29: 0.00,0.00 100.00,0.00");
}

TEST_F(Leader, UndoTakesBackThePointThatWasGivenLast)
{
    struct undo_case {
        const char* name;
        const char* points;
        const char* expected;
    };
    const undo_case cases[] = {
        {"the last of two", "60,20\n30,20\nU\n", "0.00,0.00 60.00,20.00 100.00,0.00 "},
        {"both", "60,20\n30,20\nu\nUndo\n", "0.00,0.00 100.00,0.00 "},
        {"one that stands before an older one, and another in its place", "60,20\n30,20\nu\n20,-5\n",
         "0.00,0.00 20.00,-5.00 60.00,20.00 100.00,0.00 "},
        {"the number goes on behind one that was taken back", "60,20\n30,20\nu\n80,20\nu\n",
         "0.00,0.00 60.00,20.00 100.00,0.00 "},
    };
    for (const undo_case& c : cases) {
        erase_all();
        run(LEADER, HEADLESS + c.points + "\nNo\n");
        EXPECT_EQ(users_points(), c.expected) << c.name;
    }
}

TEST_F(Leader, UndoWithoutAPointIsToldAndAsksAgain)
{
    const std::string told = run(LEADER, HEADLESS + "U\n50,30\nU\nU\n\nNo\n");
    const std::string words = "Unable to UNDO anymore\n";
    const std::size_t first = told.find(words);
    ASSERT_NE(first, std::string::npos) << told;
    EXPECT_NE(told.find(words, first + 1), std::string::npos) << told;
    EXPECT_EQ(told.find(words + words), std::string::npos) << told;
    EXPECT_EQ(drawn(), "LWPOLYLINE 8: 0.00,0.00 100.00,0.00") << "drawn anew, as a curve";
}

TEST_F(Leader, BreakEndsItAndTheSizeStays)
{
    press_break(2);
    EXPECT_TRUE(
        run(LEADER, "\n\n2\n0,0\n100,0\n20,10\n60,10\n").ends_with("\nFunction cancelled at user request."));
    EXPECT_EQ(drawn(), "LWPOLYLINE 15: 0.00,0.00 100.00,0.00") << "as it was before that point, without a head";
    EXPECT_EQ(variable("DIMASZ"), "2.0");
    run(LEADER, "\n\n2\n0,0\n100,0\n20,10\n\nNo\n"); // a break doesn't last into the next call
}

TEST_F(Leader, BreakIsLookedForBehindPointsOnly)
{
    press_break(2);
    EXPECT_TRUE(run(LEADER, "\nNo\n0,0\n100,0\nU\n20,10\nU\nU\n60,10\n")
                    .ends_with("\nFunction cancelled at user request."));
    EXPECT_EQ(drawn(), "LWPOLYLINE 8: 0.00,0.00 100.00,0.00") << "as the last undo left it";
    EXPECT_EQ(variable("DIMASZ"), "3.0");
}

TEST_F(Leader, BreakOfAProgramInAnAnswerIsThatProgramsAlone)
{
    press_break(1);
    const std::string told = run(LEADER, HEADLESS + "(progn (cf:zentutil \"\" 4) '(50.0 30.0 0.0))\n" +
                                             "\nNo\n0,50\n100,50\n20,60\n" + "\nNo\n");
    const std::string words = "\nFunction cancelled at user request.";
    const std::size_t first = told.find(words);
    ASSERT_NE(first, std::string::npos) << told;
    EXPECT_EQ(told.find(words, first + 1), std::string::npos) << told;
    EXPECT_EQ(drawn(), "LWPOLYLINE 2: 0.00,50.00 100.00,50.00; LWPOLYLINE 15: 0.00,0.00 100.00,0.00");
}

TEST_F(Leader, AnotherToMatchHasTheChosenSizeAndArrow)
{
    struct match_case {
        const char* name;
        const char* answers;
        const char* drawn;
        const char* leaders; // lengths of the host's leaders, 2.1 sizes
    };
    const match_case cases[] = {
        {"arrow of 4", "\n\n4\n0,0\n0,100\n\n\n5,0\n5,100\n\nNo\n",
         "LWPOLYLINE 2: 0.00,0.00 0.00,100.00; SOLID; LWPOLYLINE 2: 5.00,0.00 5.00,100.00; SOLID",
         "acedCommand (\"_.DIM1\" \"_LEADER\" (0.0 0.0 0.0) (0.0 8.4 0.0) \"\" \"\") -> RTNORM\n"
         "acedCommand (\"_.DIM1\" \"_LEADER\" (5.0 0.0 0.0) (5.0 8.4 0.0) \"\" \"\") -> RTNORM\n"},
        {"no arrow", "\nNo\n0,0\n0,100\n\n\n5,0\n5,100\n\nNo\n",
         "LWPOLYLINE 2: 0.00,0.00 0.00,100.00; LWPOLYLINE 2: 5.00,0.00 5.00,100.00", ""},
        {"zorro", "Yes\n4\n0,0\n0,100\n\n5,0\n5,100\nNo\n",
         "LWPOLYLINE 40: 0.00,0.00 0.00,100.00; SOLID; LWPOLYLINE 40: 5.00,0.00 5.00,100.00; SOLID", nullptr},
    };
    for (const match_case& c : cases) {
        erase_all();
        const std::string trace = trace_of(LEADER, c.answers);
        EXPECT_EQ(drawn(), c.drawn) << c.name;
        if (c.leaders) {
            EXPECT_EQ(only(trace, {"acedCommand (\"_.DIM1\""}), c.leaders) << c.name;
        }
        EXPECT_NE(trace.find("acedSetVar \"DIMASZ\" 3.0"), std::string::npos) << c.name;
    }
}

TEST_F(Leader, HeightsMakeItA3dPolyline)
{
    run(LEADER, "\nNo\n0,0,5\n100,0,5\n50,30,5\n\nNo\n");
    EXPECT_EQ(drawn(), "LWPOLYLINE z 5.00 15: 0.00,0.00 100.00,0.00");
    erase_all();
    run(LEADER, "\nNo\n0,0,5\n100,0,6\n50,30,5\n\nNo\n");
    EXPECT_EQ(drawn(), "POLYLINE");
}

TEST_F(Leader, GoesOnTheCurrentLayer)
{
    make(R"((0 . "LAYER") (100 . "AcDbSymbolTableRecord") (100 . "AcDbLayerTableRecord") (2 . "NOTES") (70 . 0)
            (62 . 3) (6 . "Continuous"))");
    set("CLAYER", "\"NOTES\"");
    run(LEADER, "\n\n2\n0,0\n100,0\n\nNo\n");
    EXPECT_EQ(session.lisp("(cdr (assoc 8 (entget (entnext))))"), "\"NOTES\"");
    EXPECT_EQ(variable("CLAYER"), "NOTES");
}

TEST_F(Leader, StartAndEndInOnePlaceDrawsALineWithoutLength)
{
    run(LEADER, "\n\n2\n5,5\n5,5\n5,5\n\nNo\n");
    EXPECT_EQ(drawn(), "LWPOLYLINE 15: 5.00,5.00 5.00,5.00; SOLID");
    erase_all();
    run(LEADER, "Yes\n2\n5,5\n5,5\nNo\n");
    EXPECT_EQ(drawn(), "LWPOLYLINE 40: 5.00,5.00 5.00,5.00; SOLID");
}

TEST_F(Leader, HugeAndOddSizesLeaveTheLine)
{
    for (const char* size : {"0", "-2", "1e300", "1e308"}) {
        erase_all();
        run(LEADER, std::string("\n\n") + size + "\n0,0\n100,0\n50,30\n\nNo\n");
        EXPECT_TRUE(drawn().starts_with("LWPOLYLINE 15: 0.00,0.00 100.00,0.00")) << size << ": " << drawn();
        EXPECT_EQ(drawn().find("LINE;"), std::string::npos) << drawn();
        EXPECT_EQ(variable("DIMASZ"), "3.0") << size;
    }
}

TEST_F(Leader, ZorroIsALightning)
{
    struct zorro_case {
        const char* name;
        const char* ends;
        const char* bends; // vertices 14 and 27, where the points of the line are
    };
    // The zigzag leans: up a vertical run its direction is (5, 1) / sqrt 26.
    const zorro_case cases[] = {
        {"to the right", "0,0\n100,0\n", "58.00,7.50 42.00,-7.50 "},
        {"to the left", "100,0\n0,0\n", "42.00,-7.50 58.00,7.50 "},
        {"up", "0,0\n0,100\n", "-7.35,56.53 7.35,43.47 "},
        {"down", "0,100\n0,0\n", "-7.35,43.47 7.35,56.53 "},
        {"hardly up", "0,0\n100,1e-200\n", "58.00,7.50 42.00,-7.50 "},
        {"hardly down", "0,0\n100,-1e-200\n", "58.00,-7.50 42.00,7.50 "},
    };
    for (const zorro_case& c : cases) {
        erase_all();
        run(LEADER, std::string("Yes\n2\n") + c.ends + "No\n");
        EXPECT_EQ(text_of(R"((progn (setq p (codes 10 (entget (entnext))))
                                (strcat (place (nth 13 p)) " " (place (nth 26 p)) " ")))"),
                  c.bends)
            << c.name;
    }
}

TEST_F(Leader, ZorroTakesTheHeightOfItsStartForItsBends)
{
    run(LEADER, "Yes\n2\n0,0,5\n100,0,9\nNo\n");
    EXPECT_EQ(text_of(R"((progn (setq e (entnext) i 0)
        (repeat 14 (setq e (entnext e)))
        (place (cdr (assoc 10 (entget e))))))"),
              "58.00,7.50,5.00");
}

TEST_F(Leader, IsDrawnAndRedrawnOnALockedLayerToo)
{
    make(R"((0 . "LAYER") (100 . "AcDbSymbolTableRecord") (100 . "AcDbLayerTableRecord") (2 . "SHUT") (70 . 4)
            (62 . 3) (6 . "Continuous"))");
    set("CLAYER", "\"SHUT\"");
    run(LEADER, "\n\n2\n0,0\n100,0\n50,30\n\nNo\n");
    EXPECT_EQ(drawn(), "LWPOLYLINE 15: 0.00,0.00 100.00,0.00; SOLID");
    EXPECT_EQ(variable("DIMASZ"), "3.0");
}

TEST_F(Leader, LineThatAnAnswerHasErasedStaysErased)
{
    run(LEADER, HEADLESS + "(progn (entdel (entlast)) '(50.0 30.0 0.0))\n\nNo\n");
    EXPECT_EQ(drawn(), "LWPOLYLINE 15: 0.00,0.00 100.00,0.00");
    erase_all();
    run(LEADER, HEADLESS + "50,30\n(progn (entdel (entlast)) '(20.0 30.0 0.0))\n^C\nNo\n");
    EXPECT_EQ(drawn(), "");
}

TEST_F(Leader, HeapThatGivesNoMoreLeavesNothingBehindAndNoOtherLine)
{
    const std::string answers = "\n\n2\n0,0\n100,0\n50,30\nU\n20,10\n\n\n0,50\n100,50\n^C\nNo\n";
    run(LEADER, answers);
    const std::string whole = drawn();
    long requests = 0;
    for (bool refused = true; refused; ++requests) {
        SCOPED_TRACE("request " + std::to_string(requests + 1) + " refused");
        erase_all();
        make("(0 . \"LINE\") (10 0.0 0.0 0.0) (11 1.0 1.0 0.0)");
        const state before = held();
        host::answers_from_text(answers);
        host::heap_refuse(requests + 1);
        session.lisp(LEADER);
        refused = host::heap_refuse(0) == 0;
        EXPECT_TRUE(held() == before);
        EXPECT_TRUE(drawn().starts_with("LINE")) << "an older line was taken for one of the leader's";
        if (!refused) {
            EXPECT_EQ(drawn(), "LINE; " + whole);
        }
    }
    EXPECT_GT(requests, 40);
}

TEST_F(Leader, EndOfTheAnswersEndsItAnywhere)
{
    std::string answers;
    for (const char* answer :
         {"", "\n", "\n", "2\n", "0,0\n", "100,0\n", "50,30\n", "U\n", "20,10\n", "\n", "\n"}) {
        answers += answer;
        host::answers_from_text(answers);
        EXPECT_EQ(session.lisp(LEADER), "error: Function cancelled") << answers;
    }
}

} // namespace
