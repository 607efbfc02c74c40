// Operation 30: arrow heads on lines and polylines that are there.
#include "tests/tools/annotation_case.h"

namespace
{

const std::string ADD = "(cf:zentutil \"\" 30)";

class AddArrow : public Annotation
{
protected:
    AddArrow()
    {
        make("(0 . \"LINE\") (10 0.0 0.0 0.0) (11 100.0 0.0 0.0)");                              // #1
        make("(0 . \"LWPOLYLINE\") (100 . \"AcDbEntity\") (8 . \"0\") (100 . \"AcDbPolyline\") " // #2
             "(90 . 3) (70 . 1) (10 0.0 20.0) (10 100.0 20.0) (10 100.0 80.0)");
        make("(0 . \"POLYLINE\") (66 . 1) (70 . 8) (10 0.0 0.0 0.0)");
        make("(0 . \"VERTEX\") (70 . 32) (10 200.0 0.0 5.0)");
        make("(0 . \"VERTEX\") (70 . 32) (10 300.0 0.0 6.0)");
        make("(0 . \"SEQEND\")");
        make("(0 . \"CIRCLE\") (10 50.0 200.0 0.0) (40 . 10.0)");
        session.lisp("(setq newest (entlast))");
    }
    // Tips among these places, of all heads.
    std::string heads()
    {
        std::string found;
        for (const char* place :
             {"0.0 0.0", "100.0 0.0", "0.0 20.0", "100.0 20.0", "100.0 80.0", "200.0 0.0", "300.0 0.0"})
            if (session.lisp("(progn (setq e newest found nil) (while (setq e (entnext e)) (if (is-tip e " +
                             std::string(place) + ") (setq found t))) found)") == "T")
                found += (found.empty() ? "" : "; ") + std::string(place);
        return found;
    }
    void erase_heads() { session.lisp("(while (not (equal (entlast) newest)) (entdel (entlast)))"); }
};

TEST_F(AddArrow, AsksInThisOrder)
{
    EXPECT_EQ(only(trace_of(ADD, "2\n10,0\n90,0\n\n"),
                   {"acedInitGet", "acedGet", "acedSetVar", "acedEntSel", "acedCommand"}),
              R"(acedGetReal "\nEnter the arrow size <3.00>: " -> RTNORM
acedSetVar "DIMASZ" 2.0 -> RTNORM
acedEntSel "\nPick a line or pline to add arrow: " -> RTNORM
acedSetVar "OSMODE" 0 -> RTNORM
acedCommand ("_.POINT" (100.0 0.0 0.0)) -> RTNORM
acedCommand ("_.DIM1" "_LEADER" (0.0 0.0 0.0) (4.2 0.0 0.0) "" "") -> RTNORM
acedSetVar "OSMODE" 37 -> RTNORM
acedEntSel "\nPick a line or pline to add arrow (Enter to End): " -> RTNORM
acedSetVar "OSMODE" 0 -> RTNORM
acedCommand ("_.POINT" (0.0 0.0 0.0)) -> RTNORM
acedCommand ("_.DIM1" "_LEADER" (100.0 0.0 0.0) (95.8 0.0 0.0) "" "") -> RTNORM
acedSetVar "OSMODE" 37 -> RTNORM
acedEntSel "\nPick a line or pline to add arrow (Enter to End): " -> RTERROR
acedSetVar "DIMASZ" 3.0 -> RTNORM
)");
}

struct pick_case {
    const char* name;
    const char* pick;
    const char* heads;
};

TEST_F(AddArrow, HeadIsAtTheNearerEndOfTheSegment)
{
    const pick_case cases[] = {
        {"start of a line", "10,0", "0.0 0.0"},
        {"end of a line", "90,0", "100.0 0.0"},
        {"the middle belongs to the end", "50,0", "100.0 0.0"},
        {"first segment", "40,20", "0.0 20.0"},
        {"corner from the first segment", "60,20", "100.0 20.0"},
        {"corner from the second segment", "100,40", "100.0 20.0"},
        {"end of the second segment", "100,60", "100.0 80.0"},
        {"a polyline of the other kind", "210,0", "200.0 0.0"},
        {"its end", "290,0", "300.0 0.0"},
    };
    for (const pick_case& c : cases) {
        erase_heads();
        run(ADD, std::string("\n") + c.pick + "\n\n");
        EXPECT_EQ(heads(), c.heads) << c.name;
    }
}

TEST_F(AddArrow, SeveralInOneRun)
{
    run(ADD, "\n10,0\n90,0\n60,20\n\n");
    EXPECT_EQ(heads(), "0.0 0.0; 100.0 0.0; 100.0 20.0");
}

TEST_F(AddArrow, OtherObjectsAreToldAndAnotherIsAskedFor)
{
    const std::string told = run(ADD, "\n60,200\n10,0\n\n");
    EXPECT_NE(told.find("\nError: selection must be a LINE or POLYLINE"), std::string::npos) << told;
    EXPECT_EQ(heads(), "0.0 0.0");
}

TEST_F(AddArrow, PickBesideEverySegmentIsToldAndAnotherIsAskedFor)
{
    // Picked by its handle, the point lies behind the end of both segments.
    const std::string told =
        run(ADD, "\n#" + text_of("(cdr (assoc 5 (entget (entnext (entnext)))))") + " 500,500\n10,0\n\n");
    EXPECT_NE(told.find("\nError: no segment of the polyline at that point"), std::string::npos) << told;
    EXPECT_EQ(heads(), "0.0 0.0");
}

TEST_F(AddArrow, EachWayOutPutsTheSizeBack)
{
    struct out_case {
        const char* name;
        const char* answers;
    };
    const out_case cases[] = {
        {"cancel at the size", "^C\n"},
        {"cancel at the first pick", "2\n^C\n"},
        {"Enter at the first pick", "2\n\n"},
        {"first pick hits nothing", "2\n-500,-500\n"},
        {"cancel behind a pick", "2\n10,0\n^C\n"},
        {"a later pick hits nothing", "2\n10,0\n-500,-500\n"},
    };
    for (const out_case& c : cases) {
        run(ADD, c.answers);
        EXPECT_EQ(value, "nil") << c.name;
        EXPECT_EQ(variable("DIMASZ"), "3.0") << c.name;
    }
}

TEST_F(AddArrow, ScaleOfZeroCountsAsOne)
{
    set("DIMSCALE", "0.0");
    const std::string trace = trace_of(ADD, "2\n10,0\n\n");
    EXPECT_NE(trace.find("acedGetReal \"\\nEnter the arrow size <3.00>: \""), std::string::npos) << trace;
    EXPECT_NE(trace.find("(4.2 0.0 0.0)"), std::string::npos) << trace;
    set("DIMSCALE", "2.0");
    const std::string doubled = trace_of(ADD, "4\n10,0\n\n");
    EXPECT_NE(doubled.find("acedGetReal \"\\nEnter the arrow size <6.00>: \""), std::string::npos) << doubled;
    EXPECT_NE(doubled.find("acedSetVar \"DIMASZ\" 2.0"), std::string::npos) << doubled;
}

TEST_F(AddArrow, HeapThatGivesNoMoreLeavesNothingBehind)
{
    long requests = 0;
    for (bool refused = true; refused; ++requests) {
        const state before = held();
        host::answers_from_text("2\n60,20\n10,0\n\n");
        host::heap_refuse(requests + 1);
        session.lisp(ADD);
        refused = host::heap_refuse(0) == 0;
        EXPECT_TRUE(held() == before) << requests;
        EXPECT_EQ(variable("DIMASZ"), "3.0");
    }
    EXPECT_GT(requests, 3);
}

} // namespace
