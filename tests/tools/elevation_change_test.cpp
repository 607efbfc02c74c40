// cf:chgpnts in the real host: its questions, what it does to each kind of object, its messages and counts.
#include <sstream>
#include <vector>

#include "tests/tools/annotation_case.h"

namespace
{

const std::string CALL = "(cf:chgpnts)";
const std::string ALL = "all\n\n";

// Objects, as forms that make them.
const char* const LINE = R"((entmake '((0 . "LINE") (10 0.0 0.0 1.5) (11 9.0 0.0 2.5))))";
const char* const SURVEY_BLOCK = R"((point-block "SRVPN1" 12.5 '(("PNT2" "P7" 12.5) ("ELEV2" "12.50" 12.5)
    ("DESC2" "IRON PIN" 12.0))))";
const char* const LIGHT = R"((entmake '((0 . "LWPOLYLINE") (100 . "AcDbEntity") (8 . "KERB") (62 . 3) (48 . 2.0)
    (100 . "AcDbPolyline") (90 . 3) (70 . 1) (38 . 4.0) (10 0.0 10.0) (42 . 0.5) (10 10.0 10.0) (10 10.0 20.0))))";
const char* const OLD_FLAT = "(chain 0 '(7.0 7.0 7.0))";
const char* const IN_SPACE = "(chain 8 '(1.0 0.0 3.0))";

class ElevationChange : public Annotation
{
protected:
    ElevationChange()
    {
        session.lisp(R"(
            (setvar "LUNITS" 2) (setvar "LUPREC" 2) (setvar "DIMZIN" 0)
            (foreach name '("SRVPN1" "SRVPNX" "SRVPM" "PINE" "srvpn2")
              (entmake (list '(0 . "BLOCK") (cons 2 name) '(70 . 2) '(10 0.0 0.0 0.0)))
              (entmake '((0 . "CIRCLE") (10 0.0 0.0 0.0) (40 . 0.5)))
              (entmake '((0 . "ENDBLK"))))
            ; A block with attributes of tag, text and z.
            (defun point-block (name z parts)
              (entmake (list '(0 . "INSERT") (cons 2 name) (cons 66 (if parts 1 0)) (list 10 1.0 2.0 z)))
              (foreach part parts
                (entmake (list '(0 . "ATTRIB") (list 10 1.0 2.0 (caddr part)) '(40 . 1.0) (cons 1 (cadr part))
                  (cons 2 (car part)) '(70 . 0) '(72 . 1) (list 11 1.5 2.0 (caddr part)))))
              (if parts (entmake '((0 . "SEQEND")))))
            ; An old polyline with these z.
            (defun chain (flags zs / x)
              (entmake (list '(0 . "POLYLINE") '(8 . "KERB") '(66 . 1) (cons 70 flags)
                (list 10 0.0 0.0 (if (= flags 8) 0.0 (car zs)))))
              (setq x 0.0)
              (foreach z zs
                (entmake (list '(0 . "VERTEX") '(8 . "KERB") (cons 70 (if (= flags 8) 32 0)) (list 10 x -9.0 z)))
                (setq x (+ x 5.0)))
              (entmake '((0 . "SEQEND"))))
            ; "LINE 1.50 2.50", a block's parts and a polyline's vertices behind it.
            (defun high (e / g out)
              (setq g (entget e) out (cdr (assoc 0 g)))
              (if (= out "ATTRIB") (setq out (strcat (cdr (assoc 2 g)) " '" (cdr (assoc 1 g)) "'")))
              (foreach n g
                (if (or (and (member (car n) '(10 11)) (cadddr n)) (= (car n) 38))
                  (setq out (strcat out " " (txt (if (= (car n) 38) (cdr n) (cadddr n)))))))
              out)
            (defun heights (/ e out)
              (setq e (entnext) out "")
              (while e
                (if (not (member (cdr (assoc 0 (entget e))) '("SEQEND")))
                  (setq out (strcat out (if (= out "") "" "; ") (high e))))
                (setq e (entnext e)))
              out))");
        session.printed();
    }
    std::string heights() { return text_of("(heights)"); }
    // The objects alone in the drawing, newest last.
    void begin_with(const std::string& forms)
    {
        erase_all();
        session.lisp(forms);
    }
    // What follows the last "Tested" line.
    static std::string summary(const std::string& told)
    {
        const std::size_t at = told.find("\rTested");
        return at == std::string::npos ? "none" : told.substr(at);
    }
};

// ---- the questions ---------------------------------------------------------------------------------

struct question_case {
    const char* name;
    const char* call;
    const char* answers; // up to the selection, which is cancelled
    const char* asked;   // lines of the trace
};

constexpr const char* ZEROS = "acedInitGet 0 \"Yes No\"\n"
                              "acedGetKword \"\\nIgnore zero elevations [<Yes>/No]? \" -> RTNONE\n"
                              "acedInitGet 0 \"Absolute Differential\"\n";

TEST_F(ElevationChange, AsksInTheseWords)
{
    const question_case cases[] = {
        {"standards", "(cf:chgpnts)", "\n\n\n",
         "acedGetKword \"\\n[A]bsolute or [D]ifferential Change <Absolute>: \" -> RTNONE\n"
         "acedInitGet 0 nil\n"
         "acedGetReal \"\\nElevation to change to <0.00>: \" -> RTNONE\n"},
        {"given standards", "(cf:chgpnts \"Differential\" 12.345)", "\n\n\n",
         "acedGetKword \"\\n[A]bsolute or [D]ifferential Change <Differential>: \" -> RTNONE\n"
         "acedInitGet 2 \"Scale\"\n"
         "acedGetDist nil \"\\nScale/Elevation difference <12.35>: \" -> RTNONE\n"},
        {"mode chosen", "(cf:chgpnts \"Differential\" -3.0)", "\nA\n7\n",
         "acedGetKword \"\\n[A]bsolute or [D]ifferential Change <Differential>: \" -> RTNORM\n"
         "acedInitGet 0 nil\n"
         "acedGetReal \"\\nElevation to change to <-3.00>: \" -> RTNORM\n"},
        {"scale", "(cf:chgpnts)", "\ndiff\ns\n2\n",
         "acedGetKword \"\\n[A]bsolute or [D]ifferential Change <Absolute>: \" -> RTNORM\n"
         "acedInitGet 2 \"Scale\"\n"
         "acedGetDist nil \"\\nScale/Elevation difference <0.00>: \" -> RTKWORD\n"
         "acedInitGet 3 nil\n"
         "acedGetReal \"\\nScale factor to change elevations: \" -> RTNORM\n"},
        {"difference by two points", "(cf:chgpnts)", "\nD\n0,0\n3,4\n",
         "acedGetKword \"\\n[A]bsolute or [D]ifferential Change <Absolute>: \" -> RTNORM\n"
         "acedInitGet 2 \"Scale\"\n"
         "acedGetDist nil \"\\nScale/Elevation difference <0.00>: \" -> RTNORM\n"},
    };
    for (const question_case& c : cases) {
        const std::string trace = trace_of(c.call, std::string(c.answers) + "^C\n");
        EXPECT_EQ(only(trace, {"acedInitGet", "acedGet"}), std::string(ZEROS) + c.asked) << c.name;
        EXPECT_NE(trace.find("acedSSGet nil nil nil nil -> RTCAN"), std::string::npos) << c.name;
    }
}

TEST_F(ElevationChange, NilComesFirst)
{
    begin_with(LINE);
    EXPECT_EQ(only(trace_of(CALL, "\n\n5\n" + ALL), {"acedRet"}),
              "acedRetNil\nacedRetList ((\"Absolute\" 5.0))\n");
    EXPECT_EQ(only(trace_of(CALL, "^C\n"), {"acedRet"}), "acedRetNil\n");
}

TEST_F(ElevationChange, WholeSessionOnTheScreen)
{
    begin_with(std::string(LINE) + LIGHT + SURVEY_BLOCK);
    EXPECT_EQ(run(CALL, "n\nd\n2\n" + ALL), "Ignore zero elevations [<Yes>/No]? n\n"
                                            "[A]bsolute or [D]ifferential Change <Absolute>: d\n"
                                            "\nPositive number increases, negative number decreases elevation."
                                            "\nScale/Elevation difference <0.00>: 2\n"
                                            "\nSelect Entities for Elevation Change."
                                            "\nSelect objects: all\n3 found\nSelect objects: \n"
                                            "\rTesting Entity> 1  \rTesting Entity> 2  \rTesting Entity> 3  "
                                            "\rTested 3 Entities\n"
                                            "\nPolyLine Entities Changed> 1"
                                            "\nOther Entities Changed>    1"
                                            "\nZentrik Points Changed>   1");
}

struct end_case {
    const char* name;
    const char* answers;
    const char* told; // at the end
};

TEST_F(ElevationChange, EachEarlyEndAnswersNilAndChangesNothing)
{
    const end_case cases[] = {
        {"cancel at zeros", "^C\n", "^C\n"},
        {"cancel at the mode", "\n^C\n", "^C\n"},
        {"cancel at the elevation", "\n\n^C\n", "^C\n"},
        {"cancel at the difference", "\nD\n^C\n", "^C\n"},
        {"cancel at the factor", "\nD\nS\n^C\n", "^C\n"},
        {"cancel at the selection", "\n\n5\n^C\n", "\nNo selection set created!"},
        {"cancel in the selection", "\n\n5\nall\n^C\n", "\nNo selection set created!"},
        {"nothing selected", "\n\n5\n\n", "\nNo selection set created!"},
    };
    for (const end_case& c : cases) {
        begin_with(std::string(LINE) + SURVEY_BLOCK);
        const std::string before = heights();
        const state held_before = held();
        const std::string told = run(CALL, c.answers);
        EXPECT_EQ(value, "nil") << c.name;
        EXPECT_TRUE(told.ends_with(c.told)) << c.name << ": " << told;
        EXPECT_EQ(told.find("Testing"), std::string::npos) << c.name;
        EXPECT_EQ(heights(), before) << c.name;
        EXPECT_EQ(held(), held_before) << c.name;
    }
}

// Each list of answers cut off before its last ones: the prompt that finds none is cancelled.
TEST_F(ElevationChange, EndOfTheAnswersChangesNothing)
{
    const std::vector<std::string> sessions[] = {{"Yes", "Absolute", "5", "all", ""},
                                                 {"No", "Differential", "5", "all", ""},
                                                 {"Yes", "D", "Scale", "2", "all", ""}};
    for (const std::vector<std::string>& answers : sessions) {
        std::string given;
        for (const std::string& answer : answers) {
            begin_with(LINE);
            const state held_before = held();
            host::answers_from_text(given);
            session.lisp(CALL);
            EXPECT_TRUE(host::answers_ended()) << given;
            host::answers_from_text("");
            EXPECT_EQ(heights(), "LINE 1.50 2.50") << given;
            EXPECT_EQ(held(), held_before) << given;
            given += answer + "\n";
        }
    }
}

TEST_F(ElevationChange, NoScaleFactorOfNothing)
{
    begin_with(LINE);
    const std::string told = run(CALL, "\nD\n0\nS\n\n0\n2\n" + ALL);
    EXPECT_NE(told.find("\nScale/Elevation difference <0.00>: 0\n"), std::string::npos) << told;
    EXPECT_NE(told.find("\nThis Option Does NOT Change INSERT's !\nScale factor to change elevations: \n"),
              std::string::npos)
        << told;
    EXPECT_EQ(heights(), "LINE 3.00 5.00");
}

struct default_case {
    const char* name;
    const char* call;
    const char* answers;
    const char* prompts[2]; // of the mode and of the value
    const char* answer;
    const char* after; // of a line at 1.5 and 2.5
};

TEST_F(ElevationChange, StandardsComeFromTheArguments)
{
    const default_case cases[] = {
        {"none",
         "(cf:chgpnts)",
         "\n\n\n",
         {"<Absolute>", "Elevation to change to <0.00>"},
         "(\"Absolute\" 0.0)",
         "LINE 0.00 0.00"},
        {"mode alone",
         "(cf:chgpnts \"Differential\")",
         "\n\n\n",
         {"<Differential>", "difference <0.00>"},
         "(\"Differential\" 0.0)",
         "LINE 1.50 2.50"},
        {"both",
         "(cf:chgpnts \"Absolute\" 7.25)",
         "\n\n\n",
         {"<Absolute>", "change to <7.25>"},
         "(\"Absolute\" 7.25)",
         "LINE 7.25 7.25"},
        {"lower case",
         "(cf:chgpnts \"differential\" 1.0)",
         "\n\n\n",
         {"<differential>", "difference <1.00>"},
         "(\"differential\" 1.0)",
         "LINE 2.50 3.50"},
        {"one letter",
         "(cf:chgpnts \"D\" 1.0)",
         "\n\n\n",
         {"<D>", "difference <1.00>"},
         "(\"D\" 1.0)",
         "LINE 2.50 3.50"},
        {"no text",
         "(cf:chgpnts \"\" 1.0)",
         "\n\n\n",
         {"<>", "change to <1.00>"},
         "(\"\" 1.0)",
         "LINE 1.00 1.00"},
        {"another word",
         "(cf:chgpnts \"Xyz\" 1.0)",
         "\n\n\n",
         {"<Xyz>", "change to <1.00>"},
         "(\"Xyz\" 1.0)",
         "LINE 1.00 1.00"},
        {"a program's scale",
         "(cf:chgpnts \"Scale\" 2.0)",
         "\n\n\n",
         {"<Scale>", "change to <2.00>"},
         "(\"Absolute\" 2.0)",
         "LINE 3.00 5.00"},
        {"chosen scale",
         "(cf:chgpnts \"Differential\" 5.0)",
         "\n\nScale\n2\n",
         {"<Differential>", "difference <5.00>"},
         "(\"Absolute\" 2.0)",
         "LINE 3.00 5.00"},
        {"its own answer as one list",
         "(cf:chgpnts '(\"Differential\" 1.0))",
         "\n\n\n",
         {"<Differential>", "difference <1.00>"},
         "(\"Differential\" 1.0)",
         "LINE 2.50 3.50"},
        {"its own answer as values",
         "(apply 'cf:chgpnts '(\"Differential\" 1.0))",
         "\n\n\n",
         {"<Differential>", "difference <1.00>"},
         "(\"Differential\" 1.0)",
         "LINE 2.50 3.50"},
        {"an integer value",
         "(cf:chgpnts \"Absolute\" 4)",
         "\n\n\n",
         {"<Absolute>", "change to <4.00>"},
         "(\"Absolute\" 4.0)",
         "LINE 4.00 4.00"},
        {"a long integer",
         "(cf:chgpnts \"Absolute\" 123456)",
         "\n\n\n",
         {"<Absolute>", "change to <123456.00>"},
         "(\"Absolute\" 123456.0)",
         "LINE 123456.00 123456.00"},
        {"a number for the mode",
         "(cf:chgpnts 4.0 5.0)",
         "\n\n\n",
         {"<Absolute>", "change to <5.00>"},
         "(\"Absolute\" 5.0)",
         "LINE 5.00 5.00"},
        {"nil for the mode",
         "(cf:chgpnts nil 5.0)",
         "\n\n\n",
         {"<Absolute>", "change to <5.00>"},
         "(\"Absolute\" 5.0)",
         "LINE 5.00 5.00"},
        {"a text for the value",
         "(cf:chgpnts \"D\" \"5\")",
         "\n\n\n",
         {"<D>", "difference <0.00>"},
         "(\"D\" 0.0)",
         "LINE 1.50 2.50"},
        {"a point for the value",
         "(cf:chgpnts \"D\" '(5.0 6.0))",
         "\n\n\n",
         {"<D>", "difference <0.00>"},
         "(\"D\" 0.0)",
         "LINE 1.50 2.50"},
        {"a third value",
         "(cf:chgpnts \"D\" 1.0 7.0)",
         "\n\n\n",
         {"<D>", "difference <1.00>"},
         "(\"D\" 1.0)",
         "LINE 2.50 3.50"},
        {"percent signs",
         "(cf:chgpnts \"D%s%n\" 1.0)",
         "\n\n\n",
         {"<D%s%n>", "difference <1.00>"},
         "(\"D%s%n\" 1.0)",
         "LINE 2.50 3.50"},
        {"Enter keeps a zero difference",
         "(cf:chgpnts \"D\" 0.0)",
         "\n\n\n",
         {"<D>", "difference <0.00>"},
         "(\"D\" 0.0)",
         "LINE 1.50 2.50"},
    };
    for (const default_case& c : cases) {
        begin_with(LINE);
        const std::string told = run(c.call, c.answers + ALL);
        for (const char* prompt : c.prompts)
            EXPECT_NE(told.find(prompt + std::string(": ")), std::string::npos) << c.name << ": " << told;
        EXPECT_EQ(value, c.answer) << c.name;
        EXPECT_EQ(heights(), c.after) << c.name;
    }
}

TEST_F(ElevationChange, AModeTextOfAnyLengthComesBackWhole)
{
    begin_with(LINE);
    run("(setq word \"D\") (repeat 600 (setq word (strcat word \"x\"))) (equal (cf:chgpnts word 1.0) (list "
        "word 1.0))",
        "\n\n\n" + ALL);
    EXPECT_EQ(value, "T");
    EXPECT_EQ(heights(), "LINE 2.50 3.50");
}

TEST_F(ElevationChange, ValueIsShownAsDecimalsOfTheDrawing)
{
    struct shown_case {
        int units, precision;
        const char* shown;
    };
    for (const shown_case& c :
         {shown_case{2, 0, "<1235>"}, {2, 4, "<1234.5678>"}, {4, 2, "<1234.57>"}, {1, 6, "<1234.567800>"}}) {
        set("LUNITS", std::to_string(c.units));
        set("LUPREC", std::to_string(c.precision));
        for (const char* mode : {"Absolute", "Differential"}) {
            const std::string told = run("(cf:chgpnts \"" + std::string(mode) + "\" 1234.5678)", "\n\n^C\n");
            EXPECT_NE(told.find(c.shown), std::string::npos) << told;
        }
    }
}

// ---- the kinds of objects ----------------------------------------------------------------------------

struct kind_case {
    const char* name;
    const char* made;
    const char* answers; // up to the value
    const char* after;
    const char* counted; // of the summary, without its first line
};

constexpr const char *POLYLINE_1 = "\nPolyLine Entities Changed> 1",
                     *OTHER_1 = "\nOther Entities Changed>    1", *POINTS_1 = "\nZentrik Points Changed>   1";
constexpr const char *ABSOLUTE = "Yes\nA\n5\n", *ABSOLUTE_ALL = "No\nA\n5\n", *ADD = "Yes\nD\n-2\n",
                     *ADD_ALL = "No\nD\n-2\n", *SCALE = "Yes\nD\nS\n3\n", *SCALE_ALL = "No\nD\nS\n3\n";
constexpr const char *PLAIN_BLOCK = "(point-block \"PINE\" 3.0 '((\"ELEV2\" \"3.00\" 3.0)))",
                     *GROUND_BLOCK = "(point-block \"SRVPN1\" 0.0 '((\"ELEV2\" \"8.00\" 8.0)))",
                     *POINT = "(entmake '((0 . \"POINT\") (10 1.0 1.0 3.0)))",
                     *GROUND_POINT = "(entmake '((0 . \"POINT\") (10 1.0 1.0 0.0)))",
                     *BELOW = "(entmake '((0 . \"LINE\") (10 0.0 0.0 0.0) (11 9.0 0.0 2.5)))",
                     *ABOVE = "(entmake '((0 . \"LINE\") (10 0.0 0.0 1.5) (11 9.0 0.0 0.0)))",
                     *NEGATIVE_ZERO = "(entmake '((0 . \"POINT\") (10 1.0 1.0 -0.0)))",
                     *NEARLY_ZERO = "(entmake '((0 . \"POINT\") (10 1.0 1.0 1e-300)))",
                     *CENTRED = "(entmake '((0 . \"TEXT\") (10 0.0 0.0 4.0) (40 . 1.0) (1 . \"A\") (72 . 1) "
                                "(11 1.0 0.0 4.0)))",
                     *CIRCLE = "(entmake '((0 . \"CIRCLE\") (10 0.0 0.0 4.0) (40 . 1.0)))",
                     *ARC = "(entmake '((0 . \"ARC\") (10 0.0 0.0 4.0) (40 . 1.0) (50 . 0.0) (51 . 1.0)))",
                     *FACE = "(entmake '((0 . \"3DFACE\") (10 0.0 0.0 1.0) (11 1.0 0.0 2.0) (12 1.0 1.0 3.0) "
                             "(13 0.0 1.0 4.0)))",
                     *GROUND_LIGHT =
                         "(entmake '((0 . \"LWPOLYLINE\") (100 . \"AcDbEntity\") (8 . \"0\") (100 . "
                         "\"AcDbPolyline\") (90 . 2) (70 . 0) (38 . 0.0) (10 0.0 0.0) (10 5.0 0.0)))";

TEST_F(ElevationChange, EachKindInEachMode)
{
    const std::string line_1 = OTHER_1;
    const kind_case cases[] = {
        {"line to a value", LINE, ABSOLUTE, "LINE 5.00 5.00", OTHER_1},
        {"line by a difference", LINE, ADD, "LINE -0.50 0.50", OTHER_1},
        {"line by a factor", LINE, SCALE, "LINE 4.50 7.50", OTHER_1},
        {"line from 0 stays, its end too", BELOW, ABSOLUTE, "LINE 0.00 2.50", ""},
        {"line from 0 by a difference", BELOW, ADD, "LINE 0.00 2.50", ""},
        {"line from 0 by a factor", BELOW, SCALE, "LINE 0.00 2.50", ""},
        {"line from 0, zeros wanted", BELOW, ABSOLUTE_ALL, "LINE 5.00 5.00", OTHER_1},
        {"line from 0, zeros wanted, by a factor", BELOW, SCALE_ALL, "LINE 0.00 7.50", OTHER_1},
        {"line to 0 keeps that end", ABOVE, ABSOLUTE, "LINE 5.00 0.00", OTHER_1},
        {"line to 0 by a difference", ABOVE, ADD, "LINE -0.50 0.00", OTHER_1},
        {"line to 0, zeros wanted", ABOVE, ADD_ALL, "LINE -0.50 -2.00", OTHER_1},

        {"point", POINT, ABSOLUTE, "POINT 5.00", OTHER_1},
        {"point by a difference", POINT, ADD, "POINT 1.00", OTHER_1},
        {"point by a factor", POINT, SCALE, "POINT 9.00", OTHER_1},
        {"point at 0", GROUND_POINT, ABSOLUTE, "POINT 0.00", ""},
        {"point at 0, zeros wanted", GROUND_POINT, ABSOLUTE_ALL, "POINT 5.00", OTHER_1},
        {"point at 0, zeros wanted, by a factor", GROUND_POINT, SCALE_ALL, "POINT 0.00", OTHER_1},
        {"minus 0 is 0", NEGATIVE_ZERO, ABSOLUTE, "POINT 0.00", ""},
        {"next to 0 is not 0", NEARLY_ZERO, ABSOLUTE, "POINT 5.00", OTHER_1},

        {"text, both places", CENTRED, ADD, "TEXT 2.00 2.00", OTHER_1},
        {"text to a value", CENTRED, ABSOLUTE, "TEXT 5.00 5.00", OTHER_1},
        {"text by a factor", CENTRED, SCALE, "TEXT 12.00 12.00", OTHER_1},
        {"circle", CIRCLE, ADD, "CIRCLE 2.00", OTHER_1},
        {"arc", ARC, SCALE, "ARC 12.00", OTHER_1},
        {"face: its third and fourth corner stay", FACE, ABSOLUTE, "3DFACE 5.00 5.00", OTHER_1},
        {"ellipse",
         "(entmake '((0 . \"ELLIPSE\") (100 . \"AcDbEntity\") (100 . \"AcDbEllipse\") (10 0.0 0.0 4.0) "
         "(11 2.0 0.0 0.0) (40 . 0.5)))",
         ABSOLUTE, "ELLIPSE 5.00 0.00", OTHER_1},
        {"multiline text",
         "(entmake '((0 . \"MTEXT\") (100 . \"AcDbEntity\") (100 . \"AcDbMText\") (10 0.0 0.0 4.0) "
         "(40 . 1.0) (1 . \"A\") (11 1.0 0.0 0.0)))",
         ADD, "MTEXT 2.00 0.00", OTHER_1},

        {"plain block: its attributes stay", PLAIN_BLOCK, ABSOLUTE, "INSERT 5.00; ELEV2 '3.00' 3.00 3.00",
         OTHER_1},
        {"plain block by a factor stays", PLAIN_BLOCK, SCALE, "INSERT 3.00; ELEV2 '3.00' 3.00 3.00", ""},
        {"plain block at 0", "(point-block \"PINE\" 0.0 nil)", ADD, "INSERT 0.00", ""},
        {"plain block at 0, zeros wanted", "(point-block \"PINE\" 0.0 nil)", ADD_ALL, "INSERT -2.00", OTHER_1},
        {"survey block to a value", SURVEY_BLOCK, ABSOLUTE,
         "INSERT 5.00; PNT2 'P7' 5.00 5.00; ELEV2 '5.00' 5.00 5.00; DESC2 'IRON PIN' 5.00 5.00", POINTS_1},
        {"survey block: parts keep their place above it", SURVEY_BLOCK, ADD,
         "INSERT 10.50; PNT2 'P7' 10.50 10.50; ELEV2 '10.50' 10.50 10.50; DESC2 'IRON PIN' 10.00 10.00",
         POINTS_1},
        {"survey block by a factor stays", SURVEY_BLOCK, SCALE,
         "INSERT 12.50; PNT2 'P7' 12.50 12.50; ELEV2 '12.50' 12.50 12.50; DESC2 'IRON PIN' 12.00 12.00", ""},
        {"survey block by a factor stays, zeros wanted", GROUND_BLOCK, SCALE_ALL,
         "INSERT 0.00; ELEV2 '8.00' 8.00 8.00", ""},
        {"survey block at 0 stays with its elevation", GROUND_BLOCK, ADD, "INSERT 0.00; ELEV2 '8.00' 8.00 8.00",
         ""},
        {"survey block at 0, zeros wanted", GROUND_BLOCK, ADD_ALL, "INSERT -2.00; ELEV2 '6.00' 6.00 6.00",
         POINTS_1},
        {"parts at 0 go along", "(point-block \"SRVPN1\" 4.0 '((\"ELEV2\" \"0\" 0.0)))", ADD,
         "INSERT 2.00; ELEV2 '-2.00' -2.00 -2.00", POINTS_1},
        {"any name that begins so", "(point-block \"SRVPNX\" 4.0 '((\"EL\" \"4\" 4.0)))", ABSOLUTE,
         "INSERT 5.00; EL '5.00' 5.00 5.00", POINTS_1},
        {"a name that begins otherwise", "(point-block \"SRVPM\" 4.0 '((\"EL\" \"4\" 4.0)))", ABSOLUTE,
         "INSERT 5.00; EL '4' 4.00 4.00", OTHER_1},
        {"a name in lower case", "(point-block \"srvpn2\" 4.0 '((\"EL\" \"4\" 4.0)))", ABSOLUTE,
         "INSERT 5.00; EL '4' 4.00 4.00", OTHER_1},
        {"other tags keep their texts",
         "(point-block \"SRVPN1\" 4.0 '((\"E\" \"4\" 4.0) (\"DEL\" \"4\" 4.0) (\"LEVEL\" \"4\" 4.0)))",
         ABSOLUTE, "INSERT 5.00; E '4' 5.00 5.00; DEL '4' 5.00 5.00; LEVEL '4' 5.00 5.00", ""},
        {"two elevations count twice",
         "(point-block \"SRVPN1\" 4.0 '((\"ELEV\" \"4\" 4.0) (\"ELLIPS\" \"44\" 4.0)))", ADD,
         "INSERT 2.00; ELEV '2.00' 2.00 2.00; ELLIPS '42.00' 2.00 2.00", "\nZentrik Points Changed>   2"},
        {"a block without parts ends there",
         "(progn (point-block \"SRVPN1\" 4.0 nil) (entmake '((0 . \"POINT\") (10 1.0 1.0 0.0))))", ABSOLUTE,
         "INSERT 5.00; POINT 0.00", ""},

        {"lightweight polyline", LIGHT, ABSOLUTE, "LWPOLYLINE 5.00", POLYLINE_1},
        {"lightweight polyline by a difference", LIGHT, ADD, "LWPOLYLINE 2.00", POLYLINE_1},
        {"lightweight polyline by a factor", LIGHT, SCALE, "LWPOLYLINE 12.00", POLYLINE_1},
        {"lightweight polyline at 0", GROUND_LIGHT, ADD, "LWPOLYLINE 0.00", ""},
        {"lightweight polyline at 0, zeros wanted", GROUND_LIGHT, ADD_ALL, "LWPOLYLINE -2.00",
         POLYLINE_1},
        {"old flat polyline", OLD_FLAT, ABSOLUTE, "POLYLINE 5.00; VERTEX 5.00; VERTEX 5.00; VERTEX 5.00",
         POLYLINE_1},
        {"old flat polyline by a factor", OLD_FLAT, SCALE,
         "POLYLINE 21.00; VERTEX 21.00; VERTEX 21.00; VERTEX 21.00", POLYLINE_1},
        {"old flat polyline at 0", "(chain 0 '(0.0 0.0))", ABSOLUTE, "POLYLINE 0.00; VERTEX 0.00; VERTEX 0.00",
         ""},
        {"polyline in space", IN_SPACE, ABSOLUTE, "POLYLINE 0.00; VERTEX 5.00; VERTEX 0.00; VERTEX 5.00",
         POLYLINE_1},
        {"polyline in space, zeros wanted", IN_SPACE, ABSOLUTE_ALL,
         "POLYLINE 0.00; VERTEX 5.00; VERTEX 5.00; VERTEX 5.00", POLYLINE_1},
        {"polyline in space by a difference", IN_SPACE, ADD,
         "POLYLINE 0.00; VERTEX -1.00; VERTEX 0.00; VERTEX 1.00", POLYLINE_1},
        {"polyline in space by a factor", IN_SPACE, SCALE,
         "POLYLINE 0.00; VERTEX 3.00; VERTEX 0.00; VERTEX 9.00", POLYLINE_1},
        {"polyline in space at 0 counts too", "(chain 8 '(0.0 0.0))", ADD,
         "POLYLINE 0.00; VERTEX 0.00; VERTEX 0.00", POLYLINE_1},
    };
    for (const kind_case& c : cases) {
        begin_with(c.made);
        const state held_before = held();
        const std::string told = run(CALL, c.answers + ALL);
        EXPECT_EQ(heights(), c.after) << c.name;
        const std::string first = summary(told);
        EXPECT_EQ(first.substr(first.find('\n') + 1), c.counted) << c.name;
        EXPECT_EQ(held(), held_before) << c.name;
    }
}

// Group 11 of these is a direction.
TEST_F(ElevationChange, DirectionsTiltWhenZerosAreWanted)
{
    begin_with(
        "(entmake '((0 . \"MTEXT\") (100 . \"AcDbEntity\") (100 . \"AcDbMText\") (10 0.0 0.0 4.0) (40 . 1.0) "
        "(1 . \"A\") (11 1.0 0.0 0.0)))");
    run(CALL, ABSOLUTE_ALL + ALL);
    EXPECT_EQ(heights(), "MTEXT 5.00 5.00");
}

struct text_case {
    const char* text;
    int precision;
    const char* after; // 100 more
};

TEST_F(ElevationChange, ElevationTextIsReadAsANumberAndWrittenInDecimals)
{
    const text_case cases[] = {
        {"12.50", 2, "112.50"},  {"12.5", 4, "112.5000"}, {"12.456", 0, "112"},
        {"12.456", 1, "112.5"},  {"-250", 3, "-150.000"}, {"+7.25", 2, "107.25"},
        {"  7.25", 2, "107.25"}, {"7.25 m", 2, "107.25"}, {"7,25", 2, "107.00"},
        {"1e2", 2, "200.00"},    {".5", 2, "100.50"},     {"-.5", 2, "99.50"},
        {"n/a", 2, "100.00"},    {"", 2, "100.00"},       {"-", 2, "100.00"},
        {"inf", 2, "100.00"},    {"nan", 2, "100.00"},    {"INFERRED", 2, "100.00"},
        {"1e-999", 2, "100.00"}, {"0x10", 2, "100.00"},   {"12.50000000000000", 1, "112.5"},
        {"1'-6\"", 2, "101.00"},
    };
    for (const text_case& c : cases) {
        begin_with("");
        set("LUPREC", std::to_string(c.precision));
        std::string text = c.text;
        for (std::size_t at = text.find('"'); at != std::string::npos; at = text.find('"', at + 2))
            text.insert(at, "\\");
        session.lisp("(point-block \"SRVPN1\" 4.0 (list (list \"ELEV2\" \"" + text + "\" 4.0)))");
        const std::string told = run(CALL, "\nD\n100\n" + ALL);
        EXPECT_EQ(text_of("(cdr (assoc 1 (entget (entnext (entlast)))))"), c.after) << c.text;
        EXPECT_TRUE(told.ends_with(POINTS_1)) << c.text;
    }
}

TEST_F(ElevationChange, AttributesAreDecimalInAllUnitsOfTheDrawing)
{
    for (const char* units : {"1", "3", "4", "5"}) {
        set("LUNITS", units);
        begin_with(SURVEY_BLOCK);
        run(CALL, "\nA\n1234.5\n" + ALL);
        EXPECT_EQ(text_of("(cdr (assoc 1 (entget (entnext (entnext (entlast))))))"), "1234.50") << units;
    }
}

TEST_F(ElevationChange, AttributeWithOnePlaceHasNoSecond)
{
    begin_with("");
    session.lisp(R"((entmake '((0 . "INSERT") (2 . "SRVPN1") (66 . 1) (10 1.0 2.0 4.0)))
        (entmake '((0 . "ATTRIB") (10 1.0 2.0 4.0) (40 . 1.0) (1 . "4.00") (2 . "ELEV2") (70 . 0)))
        (entmake '((0 . "SEQEND"))))");
    run(CALL, ABSOLUTE + ALL);
    EXPECT_TRUE(heights().starts_with("INSERT 5.00; ELEV2 '5.00' 5.00")) << heights();
}

TEST_F(ElevationChange, AllKindsCountTogether)
{
    begin_with(std::string(LINE) + LIGHT + IN_SPACE + OLD_FLAT + SURVEY_BLOCK + PLAIN_BLOCK + POINT +
               GROUND_POINT);
    const std::string told = run(CALL, ABSOLUTE + ALL);
    EXPECT_EQ(summary(told), "\rTested 8 Entities\n\nPolyLine Entities Changed> 3"
                             "\nOther Entities Changed>    3\nZentrik Points Changed>   1");
}

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
