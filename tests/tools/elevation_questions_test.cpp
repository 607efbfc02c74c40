// cf:chgpnts: its questions, their standards, and the ways to leave.
#include "tests/tools/elevation_case.h"

namespace
{

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

} // namespace
