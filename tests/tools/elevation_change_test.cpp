// cf:chgpnts: what it sends to the host, what it leaves alone, and what is left when it is broken off.
#include "common/held_list.h"
#include "hostapi/ads.h"
#include "tests/tools/elevation_case.h"
#include "tools/elevation_objects.h"

namespace
{

bool sets_seem_empty = false;

} // namespace

extern "C" int __real_acedSSLength(const ads_name set, std::int32_t* length);
extern "C" int __wrap_acedSSLength(const ads_name set, std::int32_t* length)
{
    const int status = __real_acedSSLength(set, length);
    if (sets_seem_empty)
        *length = 0;
    return status;
}

namespace
{

// ---- what is sent to the host ------------------------------------------------------------------------

TEST_F(ElevationChange, FlatPolylinesGoByTheMoveCommand)
{
    begin_with(std::string(LIGHT) + OLD_FLAT);
    std::string trace =
        only(trace_of(CALL, ABSOLUTE + ALL), {"acedCommand", "acdbEnt", "append", "acedSetVar"});
    for (std::size_t at = 0; (at = trace.find("<Entity name: ", at)) != std::string::npos;)
        trace.replace(at, trace.find('>', at) + 1 - at, "NAME");
    EXPECT_EQ(trace, "acedCommand (\"_.MOVE\" NAME \"\" (0.0 -9.0 7.0) (0.0 -9.0 5.0)) -> RTNORM\n"
                     "acedCommand (\"_.MOVE\" NAME \"\" (0.0 10.0 4.0) (0.0 10.0 5.0)) -> RTNORM\n"
                     "acedCommand (\"_.REDRAW\") -> RTNORM\n");
}

TEST_F(ElevationChange, PolylinesOfOtherPlanesMoveInTheWorld)
{
    begin_with(R"((foreach plane '((-4.0 0.0 0.0 -1.0) (2.0 0.0 -1.0 0.0))
        (entmake (list '(0 . "LWPOLYLINE") '(100 . "AcDbEntity") '(8 . "0") '(100 . "AcDbPolyline") '(90 . 2) '(70 . 0)
          (cons 38 (car plane)) '(10 0.0 3.0) '(10 5.0 3.0) (cons 210 (cdr plane))))))");
    EXPECT_TRUE(run(CALL, ABSOLUTE + ALL).ends_with("\nPolyLine Entities Changed> 2"));
    // Upside down at -5; upright at its own elevation of 2, 5 up.
    EXPECT_EQ(heights(), "LWPOLYLINE -5.00; LWPOLYLINE 2.00");
    EXPECT_EQ(session.lisp("(cdr (assoc 10 (entget (entlast))))"), "(0.0 5.0)");
}

TEST_F(ElevationChange, RegeneratesForAttributesOnly)
{
    const struct {
        const char *made, *sent;
    } cases[] = {
        {LINE, "acedCommand (\"_.REDRAW\") -> RTNORM\n"},
        {PLAIN_BLOCK, "acedCommand (\"_.REDRAW\") -> RTNORM\n"},
        {"(point-block \"SRVPN1\" 4.0 '((\"PNT\" \"1\" 4.0)))", "acedCommand (\"_.REDRAW\") -> RTNORM\n"},
        {SURVEY_BLOCK, "acedCommand (\"_.REGEN\") -> RTNORM\n"}};
    for (const auto& c : cases) {
        begin_with(c.made);
        EXPECT_EQ(only(trace_of(CALL, ABSOLUTE + ALL), {"acedCommand"}), c.sent) << c.made;
    }
}

TEST_F(ElevationChange, GivesTheSelectionBack)
{
    begin_with(LINE);
    EXPECT_EQ(only(trace_of(CALL, ABSOLUTE + ALL), {"acedSSFree"}).substr(0, 10), "acedSSFree");
    press_break(1);
    EXPECT_EQ(only(trace_of(CALL, ABSOLUTE + ALL), {"acedSSFree"}).substr(0, 10), "acedSSFree");
}

TEST_F(ElevationChange, FlatPolylineKeepsAllElse)
{
    begin_with(LIGHT);
    session.lisp("(setq was (entget (entlast)))");
    run(CALL, ABSOLUTE + ALL);
    EXPECT_EQ(session.lisp("(equal (subst '(38 . 4.0) '(38 . 5.0) (entget (entlast))) was)"), "T");
}

TEST_F(ElevationChange, PolylineInSpaceIsANewObjectWithItsProperties)
{
    begin_with("");
    session.lisp(R"((regapp "SURVEY")
        (entmake '((0 . "LTYPE") (100 . "AcDbSymbolTableRecord") (100 . "AcDbLinetypeTableRecord") (2 . "FENCE")
            (70 . 0) (3 . "") (72 . 65) (73 . 0) (40 . 0.0)))
        (entmake '((0 . "POLYLINE") (8 . "KERB") (62 . 3) (6 . "FENCE") (48 . 2.5) (66 . 1) (70 . 9) (10 0.0 0.0 0.0)
            (-3 ("SURVEY" (1000 . "F12") (1040 . 2.5)))))
        (entmake '((0 . "VERTEX") (8 . "KERB") (70 . 32) (10 0.0 0.0 1.0)))
        (entmake '((0 . "VERTEX") (8 . "KERB") (70 . 32) (10 5.0 0.0 2.0)))
        (entmake '((0 . "SEQEND")))
        (setq old (entlast) was (entget old '("*"))))");
    run(CALL, ADD + ALL);
    EXPECT_EQ(session.lisp("(equal (entlast) old)"), "nil");
    EXPECT_EQ(session.lisp("(entget old)"), "nil");
    EXPECT_EQ(session.lisp(
                  "(vl-every '(lambda (code) (equal (assoc code was) (assoc code (entget (entlast) '(\"*\")))))"
                  " '(0 8 62 6 48 70 -3))"),
              "T");
    EXPECT_EQ(session.lisp("(assoc -3 (entget (entlast) '(\"*\")))"),
              R"((-3 ("SURVEY" (1000 . "F12") (1040 . 2.5))))");
    EXPECT_EQ(heights(), "POLYLINE 0.00; VERTEX -1.00; VERTEX 0.00");
}

TEST_F(ElevationChange, CurrentLayerStays)
{
    begin_with(std::string(IN_SPACE) + IN_SPACE);
    session.lisp("(setvar \"CLAYER\" \"0\")");
    run(CALL, ADD + ALL);
    EXPECT_EQ(variable("CLAYER"), "0");
}

// ---- what can't be changed ---------------------------------------------------------------------------

TEST_F(ElevationChange, LockedFlatPolylinesStayAndAreNotCounted)
{
    begin_with(std::string(LIGHT) + POINT);
    session.lisp("(setq layer (entget (tblobjname \"LAYER\" \"KERB\"))) (entmod (subst '(70 . 4) (assoc 70 "
                 "layer) layer))");
    const std::string told = run(CALL, ABSOLUTE + ALL);
    EXPECT_EQ(heights(), "LWPOLYLINE 4.00; POINT 5.00");
    EXPECT_EQ(summary(told), std::string("\rTested 2 Entities\n") + OTHER_1);
}

TEST_F(ElevationChange, MeshesStayWithAMessage)
{
    begin_with(R"((progn (entmake '((0 . "POLYLINE") (66 . 1) (70 . 16) (71 . 2) (72 . 2) (10 0.0 0.0 0.0)))
        (foreach p '((0.0 0.0 1.0) (1.0 0.0 1.0) (0.0 1.0 1.0) (1.0 1.0 1.0))
          (entmake (list '(0 . "VERTEX") '(70 . 64) (cons 10 p))))
        (entmake '((0 . "SEQEND")))))");
    const std::string told = run(CALL, ABSOLUTE + ALL);
    EXPECT_NE(told.find("\nSelected entity is not a 2d or 3d polyline"), std::string::npos);
    EXPECT_EQ(summary(told), "\rTested 1 Entities\n");
    EXPECT_EQ(heights(), "POLYLINE 0.00; VERTEX 1.00; VERTEX 1.00; VERTEX 1.00; VERTEX 1.00");
}

TEST_F(ElevationChange, WhatNoDrawingCanHoldIsToldAndLeftAlone)
{
    const struct {
        const char *made, *answers, *type;
    } cases[] = {
        {"(entmake '((0 . \"LINE\") (10 0.0 0.0 1e200) (11 9.0 0.0 1.0)))", "\nD\nS\n1e200\n", "LINE"},
        {"(entmake '((0 . \"LINE\") (10 0.0 0.0 1.0) (11 9.0 0.0 1e200)))", "\nD\nS\n1e200\n", "LINE"},
        {"(entmake '((0 . \"POINT\") (10 0.0 0.0 1e200)))", "\nD\nS\n1e200\n", "POINT"},
        {"(entmake '((0 . \"TEXT\") (10 0.0 0.0 1.0) (40 . 1.0) (1 . \"A\") (72 . 1) (11 1.0 0.0 1e200)))",
         "\nD\nS\n1e200\n", "TEXT"},
        {"(chain 8 '(1.0 1e200))", "\nD\nS\n1e200\n", "POLYLINE"},
        {"(chain 0 '(1e200 1e200))", "\nD\nS\n1e200\n", "POLYLINE"},
        {"(chain 0 '(-1e308 -1e308))", "\n\n1e308\n", "POLYLINE"},
        {"(point-block \"PINE\" 1.7e308 nil)", "\nD\n1.7e308\n", "INSERT"},
        {"(point-block \"SRVPN1\" 1.0 '((\"ELEV2\" \"1\" 1.0) (\"PNT\" \"1\" 1.7e308)))", "\nD\n1.7e308\n",
         "INSERT"},
        {"(point-block \"SRVPN1\" 1.0 '((\"PNT\" \"1\" 1.0) (\"ELEV2\" \"1e999\" 1.0)))", "\nD\n1\n", "INSERT"},
    };
    for (const auto& c : cases) {
        begin_with(c.made);
        const auto shape = [this] {
            return session.lisp("(progn (setq e (entnext) out nil) (while e (setq out (cons (entget e) out) e "
                                "(entnext e))) out)");
        };
        const std::string before = shape();
        const state held_before = held();
        const std::string told = run(CALL, c.answers + ALL);
        EXPECT_NE(told.find(std::string("\nNew elevation of ") + c.type + " is out of range, left as it is."),
                  std::string::npos)
            << c.made << told;
        EXPECT_EQ(summary(told), "\rTested 1 Entities\n") << c.made;
        EXPECT_EQ(shape(), before) << c.made;
        EXPECT_EQ(held(), held_before) << c.made;
    }
}

TEST_F(ElevationChange, AStandardThatIsNoNumberChangesNothing)
{
    begin_with(std::string(LINE) + LIGHT + IN_SPACE + SURVEY_BLOCK + POINT);
    const std::string before = heights();
    const std::string told = run("(cf:chgpnts \"Absolute\" (* 1e300 1e300))", "No\n\n\n" + ALL);
    EXPECT_EQ(summary(told), "\rTested 5 Entities\n");
    EXPECT_EQ(heights(), before);
}

TEST_F(ElevationChange, AnEmptySelectionIsToldAndGivenBack)
{
    begin_with(LINE);
    const state held_before = held();
    sets_seem_empty = true;
    const std::string told = run(CALL, ABSOLUTE + ALL);
    sets_seem_empty = false;
    EXPECT_TRUE(told.ends_with("\nNo Entities selected.")) << told;
    EXPECT_EQ(value, "nil");
    EXPECT_EQ(heights(), "LINE 1.50 2.50");
    EXPECT_EQ(held(), held_before);
}

// Lists as a host might give them.
TEST_F(ElevationChange, ObjectsWithoutTheirPointsAreToldAndLeft)
{
    const ads_point at = {1.0, 2.0, 3.0}, ground = {1.0, 2.0, 0.0};
    const ads_name nothing = {0, 0};
    const elevation_rule rule{'A', 5.0, true};
    elevation_tally tally;
    const auto told_by = [&](elevation_changer change, resbuf* list) {
        const held_list held_one(list);
        session.printed();
        change(nothing, list, rule, &tally);
        return session.printed();
    };
    EXPECT_EQ(told_by(change_line, acutBuildList(RTDXF0, "LINE", 11, at, RTNONE)),
              "\nError getting coordinate of ");
    EXPECT_EQ(told_by(change_line, acutBuildList(RTDXF0, "LINE", 10, at, RTNONE)),
              "\nError getting coordinate of ");
    EXPECT_EQ(told_by(change_line, acutBuildList(RTDXF0, "LINE", 10, ground, RTNONE)), "");
    EXPECT_EQ(told_by(change_insert, acutBuildList(RTDXF0, "INSERT", 2, "PINE", RTNONE)),
              "\nError getting coordinate of Insert");
    EXPECT_EQ(told_by(change_points, acutBuildList(RTDXF0, "POINT", RTNONE)), "");
    EXPECT_EQ(tally.others + tally.points + tally.polylines, 0);
}

TEST_F(ElevationChange, WhatWasErasedMeanwhileIsNotCounted)
{
    const struct {
        const char* made;
        elevation_changer change;
    } cases[] = {{LINE, change_line},      {POINT, change_points},      {PLAIN_BLOCK, change_insert},
                 {LIGHT, change_polyline}, {IN_SPACE, change_polyline}, {SURVEY_BLOCK, change_insert}};
    for (const auto& c : cases) {
        begin_with(c.made);
        ads_name name;
        ASSERT_EQ(acdbEntLast(name), RTNORM);
        const held_list list(acdbEntGet(name));
        session.lisp("(entdel (entlast))");
        elevation_tally tally;
        c.change(name, list.get(), {'A', 5.0, true}, &tally);
        EXPECT_EQ(tally.others + tally.points + tally.polylines, 0) << c.made;
        EXPECT_EQ(heights(), "") << c.made;
    }
}

// ---- broken off ---------------------------------------------------------------------------------------

TEST_F(ElevationChange, ABreakLeavesEachObjectWholeAndNoSummary)
{
    const std::string made = std::string(LINE) + SURVEY_BLOCK + IN_SPACE + LIGHT + OLD_FLAT + POINT;
    const struct {
        const char *before, *after;
    } OBJECTS[] = {
        {"POINT 3.00", "POINT 5.00"},
        {"POLYLINE 7.00; VERTEX 7.00; VERTEX 7.00; VERTEX 7.00",
         "POLYLINE 5.00; VERTEX 5.00; VERTEX 5.00; VERTEX 5.00"},
        {"LWPOLYLINE 4.00", "LWPOLYLINE 5.00"},
        {"POLYLINE 0.00; VERTEX 1.00; VERTEX 0.00; VERTEX 3.00",
         "POLYLINE 0.00; VERTEX 5.00; VERTEX 0.00; VERTEX 5.00"},
        {"INSERT 12.50; PNT2 'P7' 12.50 12.50; ELEV2 '12.50' 12.50 12.50; DESC2 'IRON PIN' 12.00 12.00",
         "INSERT 5.00; PNT2 'P7' 5.00 5.00; ELEV2 '5.00' 5.00 5.00; DESC2 'IRON PIN' 5.00 5.00"},
        {"LINE 1.50 2.50", "LINE 5.00 5.00"},
    };
    const std::string SUMMARY = "\rTested 6 Entities\n\nPolyLine Entities Changed> 3"
                                "\nOther Entities Changed>    2\nZentrik Points Changed>   1";
    for (int polls = 1; polls <= 7; ++polls) {
        begin_with(made);
        const state held_before = held();
        press_break(polls);
        const std::string told = run(CALL, ABSOLUTE + ALL);
        const bool is_broken = polls <= 6;
        EXPECT_EQ(value, is_broken ? "nil" : "(\"Absolute\" 5.0)") << polls;
        EXPECT_EQ(summary(told), is_broken ? "none" : SUMMARY) << polls;
        EXPECT_EQ(told.ends_with("\rTesting Entity> " + std::to_string(polls) + "  "), is_broken) << told;
        // The newest object is the first of the selection.
        const std::string left = heights();
        int changed = 0;
        for (const auto& object : OBJECTS) {
            const bool is_changed = changed < polls - 1;
            EXPECT_NE(left.find(is_changed ? object.after : object.before), std::string::npos) << polls << left;
            EXPECT_EQ(left.find(is_changed ? object.before : object.after), std::string::npos) << polls << left;
            ++changed;
        }
        EXPECT_EQ(held(), held_before) << polls;
    }
}

// What the module asks of the heap is refused once, each time a request later.
TEST_F(ElevationChange, AHeapThatGivesNoMoreLeavesEachObjectWhole)
{
    bool is_refused = true;
    for (long request = 1; is_refused && !HasFailure(); ++request) {
        begin_with(std::string(IN_SPACE) + LIGHT);
        session.lisp("(point-block \"SRVPN1\" 4.0 '((\"PNT\" \"1\" 4.0) (\"ELEV2\" \"4\" 4.0)))");
        const state held_before = held();
        host::answers_from_text(ABSOLUTE + ALL);
        host::heap_refuse(request);
        session.lisp(CALL);
        is_refused = host::heap_refuse(0) == 0;
        EXPECT_EQ(held(), held_before) << request;
        const std::string left = heights();
        const auto either = [&left, request](const char* a, const char* b) {
            EXPECT_TRUE((left.find(a) == std::string::npos) != (left.find(b) == std::string::npos))
                << request << left;
        };
        either("VERTEX 1.00; VERTEX 0.00; VERTEX 3.00", "VERTEX 5.00; VERTEX 0.00; VERTEX 5.00");
        either("LWPOLYLINE 4.00", "LWPOLYLINE 5.00");
        either("INSERT 4.00; PNT '1' 4.00 4.00; ELEV2 '4' 4.00 4.00",
               "INSERT 5.00; PNT '1' 5.00 5.00; ELEV2 '5.00' 5.00 5.00");
    }
}

} // namespace
