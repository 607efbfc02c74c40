// Operations 15 and 27 as a LISP program calls them, in the real host.
#include <gtest/gtest.h>

#include <filesystem>

#include "common/directories.h"
#include "host/core/console.h"
#include "host/core/heap.h"
#include "tests/growth.h"
#include "tests/shell/module_session.h"

namespace
{

const std::string DIALOGS = ZENT_SOURCE_DIR "/share/dialogs/";

class PolylineFiles : public testing::Test
{
protected:
    module_session session;
    std::size_t views = host::live_views();

    // Picks aren't remembered: the settings file of an unnamed drawing would lie beside the test.
    PolylineFiles() { session.lisp("(setq do_ini 0)"); }

    void TearDown() override { EXPECT_EQ(host::live_views(), views) << "views left open"; }

    std::string path(const std::string& name) const { return session.directory() + name; }
    std::string call(int operation, const std::string& dialogs = DIALOGS)
    {
        const std::string directory = "\"" + session.directory() + "\" ";
        return "(cf:zentutil " + directory + std::to_string(operation) + " " + directory + "\"" + dialogs +
               "\")";
    }
    // What an operation printed with these answers.
    std::string run(int operation, const std::string& answers, const std::string& dialogs = DIALOGS)
    {
        session.printed();
        host::answers_from_text(answers + "left over\n");
        EXPECT_EQ(session.lisp(call(operation, dialogs)), "nil");
        const std::string told = session.printed();
        EXPECT_EQ(host::next_answer("").value_or("none"), "left over") << "not the answers that were wanted";
        return told;
    }
    std::string written(const std::string& answers, const std::string& name)
    {
        run(15, answers);
        return read_text(path(name));
    }
    // Lightweight polyline of "x y" or "x y bulge" vertices; `more` groups of the entity, `pline` of the class.
    void lw(const std::string& vertices, const std::string& pline = "(70 . 0) (38 . 5.0)",
            const std::string& more = "(8 . \"0\")")
    {
        EXPECT_NE(session.lisp("(entmake '((0 . \"LWPOLYLINE\") (100 . \"AcDbEntity\") " + more +
                               " (100 . \"AcDbPolyline\") (90 . 2) " + pline + " " + vertices + "))"),
                  "nil")
            << vertices;
    }
    void layer(const std::string& name, int color)
    {
        session.lisp(
            "(entmake '((0 . \"LAYER\") (100 . \"AcDbSymbolTableRecord\") (100 . \"AcDbLayerTableRecord\") "
            "(2 . \"" +
            name + "\") (70 . 0) (62 . " + std::to_string(color) + ") (6 . \"Continuous\")))");
    }
    // Groups of all polylines, oldest first: "type 62 38 (x y z)...".
    std::string drawn()
    {
        return session.lisp(R"((progn
            (setq out nil e (entnext))
            (while e
              (setq g (entget e))
              (setq out (cons
                (append (list (cdr (assoc 0 g)))
                  (if (= (cdr (assoc 0 g)) "LWPOLYLINE") (list (cdr (assoc 62 g)) (cdr (assoc 70 g)) (cdr (assoc 38 g))))
                  (if (= (cdr (assoc 0 g)) "POLYLINE") (list (cdr (assoc 62 g)) (cdr (assoc 70 g))))
                  (mapcar 'cdr (vl-remove-if-not '(lambda (x) (= (car x) 10)) g)))
                out))
              (setq e (entnext e)))
            (reverse out)))");
    }
};

const char* const LINE = "(10 1.0 2.0) (10 3.005 4.0)";

// ---- writing

TEST_F(PolylineFiles, WritingAsksInThisOrder)
{
    lw(LINE);
    EXPECT_EQ(run(15, "z\n!new\n" + path("a.pln") + "\nYes\nall\n\n"),
              "Polyline file format [<Zentrik>/DTM/MicroStation]? z\n"
              "[dialog zt_newappend]\n"
              "!new\n"
              "[file] Polyline File to Write " +
                  path("a.pln") +
                  "\n"
                  "Include Z coordinate in polyline file (Yes/<No>)? Yes\n"
                  "\nSelect polylines to write.\n"
                  "Select objects: all\n1 found\n"
                  "Select objects: \n"
                  "\nDone.");
    EXPECT_EQ(read_text(path("a.pln")), "POLYLINE,15\n1.00,2.00,5.00\n3.00,4.00,5.00\n");
}

TEST_F(PolylineFiles, WritingIsTracedAsItIsPrompted)
{
    lw(LINE);
    host::answers_from_text("Dtm\n!new\n" + path("a.lf") + "\nall\n\n");
    const std::string trace = session.traced(call(15));
    for (const char* line :
         {"acedInitGet 0 \"Microstation Zentrik Dtm\"\n",
          "acedGetKword \"\\nPolyline file format [<Zentrik>/DTM/MicroStation]? \" -> RTNORM\n",
          "\"type\" \"File type> Polyline\" -> RTNORM\n", "acedGetFileD \"DTM Polyline File to Write\"",
          "\"lf;lfn\" 33",
          "acedSSGet nil nil nil ((-4 . \"<OR\") (0 . \"POLYLINE\") (0 . \"LWPOLYLINE\") (-4 . \"OR>\")) -> "
          "RTNORM\n",
          "acedSSFree"})
        EXPECT_NE(trace.find(line), std::string::npos) << line << "\nin\n" << trace;
    EXPECT_EQ(trace.find("Yes No"), std::string::npos) << "z is asked for in the own format alone";
}

struct write_case {
    const char* name;
    const char* answers; // before the file's name
    const char* z;       // behind it
    const char* expected;
};

TEST_F(PolylineFiles, Formats)
{
    const write_case cases[] = {
        {"own without z, the standard answers", "\n!new\n", "\n", "POLYLINE,15\n1.00,2.00\n3.00,4.00\n"},
        {"own, no z", "Zentrik\n!new\n", "No\n", "POLYLINE,15\n1.00,2.00\n3.00,4.00\n"},
        {"own with z", "Zentrik\n!new\n", "Yes\n", "POLYLINE,15\n1.00,2.00,5.00\n3.00,4.00,5.00\n"},
        {"DTM", "Dtm\n!new\n", "", "2\n1.00,2.00,5.00\n3.00,4.00,5.00\nEND\n"},
        {"MicroStation", "Microstation\n!new\n", "",
         "1.000000   2.000000   5.000000   1\n3.005000   4.000000   5.000000   0\n"},
    };
    lw(LINE);
    int number = 0;
    for (const write_case& c : cases) {
        const std::string name = "f" + std::to_string(number++) + ".x";
        EXPECT_EQ(written(c.answers + path(name) + "\n" + c.z + "all\n\n", name), c.expected) << c.name;
    }
}

TEST_F(PolylineFiles, ClosedPolylineBeginsAtItsOwnEnd)
{
    lw("(10 0.0 0.0) (10 5.0 0.0) (10 5.0 5.0)", "(70 . 1) (38 . 0.0)");
    EXPECT_EQ(written("\n!new\n" + path("a") + "\n\nall\n\n", "a"),
              "POLYLINE,15\n5.00,5.00\n0.00,0.00\n5.00,0.00\n5.00,5.00\n");
    EXPECT_EQ(written("Microstation\n!new\n" + path("b") + "\nall\n\n", "b"),
              "5.000000   5.000000   0.000000  1\n0.000000   0.000000   0.000000   0\n"
              "5.000000   0.000000   0.000000   0\n5.000000   5.000000   0.000000   0\n");
}

TEST_F(PolylineFiles, ArcsAreStroked)
{
    lw("(10 -100.0 0.0) (42 . 1.0) (10 100.0 0.0)", "(70 . 0) (38 . 0.0)");
    const std::string text = written("\n!new\n" + path("a") + "\n\nall\n\n", "a");
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 1 + 22) << "twenty inner points";
    EXPECT_NE(text.find("\n-98.88,-14.90\n"), std::string::npos) << text;
}

struct color_case {
    const char* name;
    const char* groups;
    int code;
};

TEST_F(PolylineFiles, ColourCodes)
{
    layer("CYAN", 4);
    layer("DARK", 9);
    layer("OFF", -3);
    const color_case cases[] = {
        {"red", "(8 . \"CYAN\") (62 . 1)", 4},
        {"yellow", "(8 . \"CYAN\") (62 . 2)", 14},
        {"green", "(8 . \"CYAN\") (62 . 3)", 2},
        {"cyan", "(8 . \"CYAN\") (62 . 4)", 3},
        {"blue", "(8 . \"CYAN\") (62 . 5)", 1},
        {"magenta", "(8 . \"CYAN\") (62 . 6)", 5},
        {"white", "(8 . \"CYAN\") (62 . 7)", 15},
        {"any other", "(8 . \"CYAN\") (62 . 200)", 200},
        {"of the layer", "(8 . \"CYAN\")", 3},
        {"by block, so of the layer", "(8 . \"CYAN\") (62 . 0)", 3},
        {"another of the layer", "(8 . \"DARK\")", 9},
        {"of a layer that is off", "(8 . \"OFF\")", -3},
        {"layer 0", "(8 . \"0\")", 15},
    };
    int number = 0;
    for (const color_case& c : cases) {
        lw(LINE, "(70 . 0)", c.groups);
        const std::string name = std::to_string(number++);
        EXPECT_EQ(written("\n!new\n" + path(name) + "\n\nlast\n\n", name),
                  "POLYLINE," + std::to_string(c.code) + "\n1.00,2.00\n3.00,4.00\n")
            << c.name;
    }
}

TEST_F(PolylineFiles, EveryKindOfPolylineIsTaken)
{
    session.lisp(R"((entmake '((0 . "POLYLINE") (66 . 1) (70 . 0) (10 0.0 0.0 7.0))))");
    session.lisp(R"((entmake '((0 . "VERTEX") (10 1.0 2.0 0.0))) (entmake '((0 . "VERTEX") (10 3.0 4.0 0.0)))
                    (entmake '((0 . "SEQEND"))))");
    session.lisp(R"((entmake '((0 . "POLYLINE") (66 . 1) (70 . 9) (10 0.0 0.0 0.0))))");
    session.lisp(R"((entmake '((0 . "VERTEX") (70 . 32) (10 1.0 2.0 3.0)))
                    (entmake '((0 . "VERTEX") (70 . 32) (10 3.0 4.0 5.0))) (entmake '((0 . "SEQEND"))))");
    session.lisp("(entmake '((0 . \"LINE\") (10 0.0 0.0 0.0) (11 9.0 9.0 9.0)))");
    EXPECT_EQ(written("Dtm\n!new\n" + path("a") + "\nall\n\n", "a"),
              "2\n3.00,4.00,5.00\n1.00,2.00,3.00\n3.00,4.00,5.00\nEND\n"
              "2\n1.00,2.00,7.00\n3.00,4.00,7.00\nEND\n");
}

TEST_F(PolylineFiles, PolylineWithoutVerticesWritesNoHeader)
{
    session.lisp(R"((entmake '((0 . "POLYLINE") (66 . 1) (70 . 4) (75 . 6) (10 0.0 0.0 0.0))))");
    session.lisp(R"((entmake '((0 . "VERTEX") (70 . 16) (10 1.0 2.0 0.0))) (entmake '((0 . "SEQEND"))))");
    EXPECT_EQ(written("Dtm\n!new\n" + path("a") + "\nall\n\n", "a"), "");
}

TEST_F(PolylineFiles, AppendAddsBehindWithoutASeparator)
{
    lw(LINE);
    write_text(path("a.lf"), "2\n9.00,9.00,9.00\nEND\n");
    // The file is there, and nobody asks whether to replace it.
    EXPECT_EQ(written("Dtm\n!append\n" + path("a.lf") + "\nall\n\n", "a.lf"),
              "2\n9.00,9.00,9.00\nEND\n2\n1.00,2.00,5.00\n3.00,4.00,5.00\nEND\n");
    EXPECT_EQ(written("Dtm\n!append\n" + path("fresh.lf") + "\nall\n\n", "fresh.lf"),
              "2\n1.00,2.00,5.00\n3.00,4.00,5.00\nEND\n");
}

TEST_F(PolylineFiles, NewFileAsksBeforeItReplaces)
{
    lw(LINE);
    write_text(path("a.lf"), "old\n");
    const std::string told = run(15, "Dtm\n!new\n" + path("a.lf") + "\nno\n" + path("b.lf") + "\nall\n\n");
    EXPECT_NE(told.find("already exists"), std::string::npos) << told;
    EXPECT_EQ(read_text(path("a.lf")), "old\n");
    EXPECT_NE(read_text(path("b.lf")), "<none>");
    run(15, "Dtm\n!new\n" + path("a.lf") + "\nyes\nall\n\n");
    EXPECT_EQ(read_text(path("a.lf")), "2\n1.00,2.00,5.00\n3.00,4.00,5.00\nEND\n");
}

struct leave_case {
    const char* name;
    const char* answers;  // %1 is the file
    const char* told_end; // how the history ends
};

TEST_F(PolylineFiles, LeavingWritesNothing)
{
    const leave_case cases[] = {
        {"at the format", "^C\n", nullptr},
        {"at the dialog, by its button", "\n!cancel\n", nullptr},
        {"at the dialog, by the cancel key", "\n^C\n", nullptr},
        {"at the file", "\n!new\n^C\n", nullptr},
        {"at the question of z", "\n!new\n%1\n^C\n", nullptr},
        {"at the selection", "\n!new\n%1\n\n^C\n", "Nothing selected"},
        {"with nothing selected", "\n!new\n%1\n\n\n", "Nothing selected"},
    };
    lw(LINE);
    for (const leave_case& c : cases) {
        std::string answers = c.answers;
        if (const auto at = answers.find("%1"); at != std::string::npos)
            answers.replace(at, 2, path("a.pln"));
        const std::string told = run(15, answers);
        EXPECT_EQ(read_text(path("a.pln")), "<none>") << c.name;
        EXPECT_EQ(told.find("Done."), std::string::npos) << c.name;
        EXPECT_EQ(told.ends_with("Nothing selected"), c.told_end != nullptr) << c.name << ": " << told;
    }
}

TEST_F(PolylineFiles, DialogFileThatIsMissingIsTold)
{
    const std::string told = run(15, "\n", session.directory());
    EXPECT_TRUE(told.ends_with("\nError loading dialog file: " + session.directory() + "zentfile.dcl")) << told;
    write_text(path("zentfile.dcl"),
               "another : dialog { : button { key = \"ok\"; label = \"OK\"; is_cancel = true; } }\n");
    EXPECT_TRUE(run(15, "\n", session.directory())
                    .ends_with("\nError loading dialog file: " + session.directory() + "zentfile.dcl"));
}

TEST_F(PolylineFiles, FileThatDoesNotOpenIsTold)
{
    lw(LINE);
    const std::string bad = session.directory() + "none/a.lf";
    for (const char* mode : {"!new", "!append"}) {
        const std::string told = run(15, std::string("Dtm\n") + mode + "\n" + bad + "\nall\n\n");
        EXPECT_TRUE(told.ends_with("\nError: failed to open file> " + bad)) << told;
        host::answers_from_text(std::string("Dtm\n") + mode + "\n" + bad + "\nall\n\n");
        EXPECT_NE(session.traced(call(15)).find("acedSSFree"), std::string::npos) << "the set is given back";
    }
}

TEST_F(PolylineFiles, FileThatTakesNoMoreIsTold)
{
    if (!std::filesystem::exists("/dev/full"))
        GTEST_SKIP() << "no device that is always full";
    lw(LINE);
    const std::string told = run(15, "Dtm\n!append\n/dev/full\nall\n\n");
    EXPECT_TRUE(told.ends_with("\nError: failed to write file> /dev/full")) << told;
}

TEST_F(PolylineFiles, LongLayerNameIsToldAndCutWhereItIsLookedUp)
{
    const std::string name(40, 'L');
    layer(name, 1);
    lw(LINE, "(70 . 0)", "(8 . \"" + name + "\")");
    const std::string told = run(15, "\n!new\n" + path("a") + "\n\nall\n\n");
    EXPECT_NE(told.find("\nWarning: layer name " + name + " truncated to" + name.substr(0, 31)),
              std::string::npos);
    EXPECT_EQ(read_text(path("a")).substr(0, 12), "POLYLINE,15\n") << "no layer of the cut name: white";
}

TEST_F(PolylineFiles, StringsSetTheDirectories)
{
    run(27, "^C\n");
    EXPECT_EQ(data_dir, session.directory());
    EXPECT_EQ(lsp_dir, DIALOGS);
    // A file's name stays out of the directory that small files are put into.
    host::answers_from_text("^C\n");
    session.lisp("(cf:zentutil \"/u/\" 27 \"C:\\\\JOBS\\\\site.pln\" \"/d/\")");
    EXPECT_STREQ(data_dir, "C:\\JOBS\\");
    EXPECT_STREQ(lsp_dir, "/d/");
    host::answers_from_text("^C\n");
    session.lisp("(cf:zentutil \"/v/\" 27 \"site.pln\" \"/d/\")");
    EXPECT_STREQ(data_dir, "/v/") << "a name without a directory says nothing";
    host::answers_from_text("^C\n");
    session.lisp("(cf:zentutil \"/u/\" 27 \"\" \"\")");
    EXPECT_STREQ(data_dir, "/u/") << "that of the call itself";
    EXPECT_STREQ(lsp_dir, "/d/");
    session.printed();
}

TEST_F(PolylineFiles, WithoutStringsTheDialogFilesAreThoseOfTheProgram)
{
    lw(LINE);
    session.lisp("(setq lspdir$ \"" + DIALOGS + "\")");
    lsp_dir[0] = '\0';
    host::answers_from_text("Dtm\n!new\n" + path("a.lf") + "\nall\n\n");
    session.lisp("(cf:zentutil \"" + session.directory() + "\" 15)");
    EXPECT_NE(read_text(path("a.lf")), "<none>");
}

TEST_F(PolylineFiles, FirstStringIsTheDefaultOfTheFileDialog)
{
    host::answers_from_text("\n^C\n");
    const std::string trace = session.traced("(cf:zentutil \"/u/\" 27 \"C:\\\\JOBS\\\\SITE.PLN\" \"/d/\")");
    EXPECT_NE(trace.find("acedGetFileD \"Polyline File to Read\""), std::string::npos) << trace;
    EXPECT_NE(trace.find("SITE.PLN"), std::string::npos) << trace;
}

// ---- reading

struct read_case {
    const char* name;
    const char* answer;
    const char* text;
    const char* expected;
};

TEST_F(PolylineFiles, ReadingDrawsBackwardsInReverseFileOrder)
{
    const read_case cases[] = {
        {"own, coloured, flat", "", "POLYLINE,4\n1,2,5\n3,4,5\nPOLYLINE,14\n5,6\n7,8\n",
         "((\"LWPOLYLINE\" 2 0 0.0 (7.0 8.0) (5.0 6.0)) (\"LWPOLYLINE\" 1 0 5.0 (3.0 4.0) (1.0 2.0)))"},
        {"own, no colour is by block", "Zentrik", "POLYLINE\n1,2\n3,4\n",
         "((\"LWPOLYLINE\" 0 0 0.0 (3.0 4.0) (1.0 2.0)))"},
        {"own, a layer that was off is by layer", "Zentrik", "POLYLINE,-3\n1,2\n3,4\n",
         "((\"LWPOLYLINE\" nil 0 0.0 (3.0 4.0) (1.0 2.0)))"},
        {"DTM", "Dtm", "2\n1,2,5\n3,4,5\nEND\n", "((\"LWPOLYLINE\" 0 0 5.0 (3.0 4.0) (1.0 2.0)))"},
        {"DTM, z differs", "Dtm", "2\n1,2,5\n3,4,6\nEND\n",
         "((\"POLYLINE\" 0 8 (0.0 0.0 0.0)) (\"VERTEX\" (3.0 4.0 6.0)) (\"VERTEX\" (1.0 2.0 5.0)) "
         "(\"SEQEND\"))"},
        {"MicroStation", "Microstation", "1   2   5   1\n3   4   5   0\n",
         "((\"LWPOLYLINE\" 0 0 5.0 (3.0 4.0) (1.0 2.0)))"},
        {"one vertex draws nothing", "Dtm", "2\n1,2,5\nEND\n", "nil"},
        {"a repeated vertex stays", "Dtm", "2\n1,2,5\n3,4,5\n1,2,5\nEND\n",
         "((\"LWPOLYLINE\" 0 0 5.0 (1.0 2.0) (3.0 4.0) (1.0 2.0)))"},
    };
    for (const read_case& c : cases) {
        session.lisp("(while (entlast) (entdel (entlast)))");
        write_text(path("in.txt"), c.text);
        const std::string told = run(27, std::string(c.answer) + "\n" + path("in.txt") + "\n");
        EXPECT_TRUE(told.ends_with("\nDone.")) << c.name << ": " << told;
        EXPECT_EQ(drawn(), c.expected) << c.name;
    }
}

TEST_F(PolylineFiles, ReadingGoesOnTheCurrentLayer)
{
    layer("INPUT", 4);
    session.lisp("(setvar \"CLAYER\" \"INPUT\")");
    write_text(path("in.pln"), "POLYLINE,4\n1,2\n3,4\n");
    run(27, "\n" + path("in.pln") + "\n");
    EXPECT_EQ(session.lisp("(cdr (assoc 8 (entget (entlast))))"), "\"INPUT\"");
    EXPECT_EQ(session.lisp("(getvar \"CLAYER\")"), "\"INPUT\"");
}

TEST_F(PolylineFiles, ReadingAsksForTheFileByFormat)
{
    const std::pair<const char*, const char*> cases[] = {
        {"Zentrik", "acedGetFileD \"Polyline File to Read\" "},
        {"Dtm", "acedGetFileD \"DTM Polyline File to Read\" "},
        {"Microstation", "acedGetFileD \"Polyline File to Read\" "},
    };
    const char* const extensions[] = {"\"pln\" 0 ", "\"lf;lfn\" 0 ", "\"txt;*\" 0 "};
    int i = 0;
    for (const auto& [answer, title] : cases) {
        host::answers_from_text(std::string(answer) + "\n^C\n");
        const std::string trace = session.traced(call(27));
        EXPECT_NE(trace.find(title), std::string::npos) << trace;
        EXPECT_NE(trace.find(extensions[i++]), std::string::npos) << trace;
    }
}

TEST_F(PolylineFiles, FileThatIsMissingDrawsNothingAndIsDone)
{
    const std::string told = run(27, "\n" + path("none.pln") + "\n");
    EXPECT_TRUE(told.ends_with("\nDone.")) << told;
    EXPECT_EQ(drawn(), "nil");
}

TEST_F(PolylineFiles, LeavingReadsNothing)
{
    write_text(path("in.pln"), "POLYLINE,4\n1,2\n3,4\n");
    for (const char* answers : {"^C\n", "\n^C\n"}) {
        EXPECT_EQ(run(27, answers).find("Done."), std::string::npos) << answers;
        EXPECT_EQ(drawn(), "nil");
    }
}

TEST_F(PolylineFiles, WhatIsWrittenReadsBackInEachFormat)
{
    // Twice backwards is forwards: written, read, written and read again the shape is the first.
    lw("(10 1.0 2.0) (10 30.5 4.0) (10 7.0 80.25)", "(70 . 0) (38 . 5.0)", "(8 . \"0\") (62 . 1)");
    const std::string first = drawn();
    for (const char* format : {"Zentrik", "Dtm", "Microstation"}) {
        const std::string z = format[0] == 'Z' ? "Yes\n" : "";
        for (const char* name : {"one", "two"}) {
            const std::string file = path(std::string(format) + name);
            run(15, std::string(format) + "\n!new\n" + file + "\n" + z + "all\n\n");
            session.lisp("(while (entlast) (entdel (entlast)))");
            run(27, std::string(format) + "\n" + file + "\n");
        }
        std::string expected = first;
        if (format[0] != 'Z')
            expected.replace(expected.find(" 1 "), 3, " 0 "); // no colour
        EXPECT_EQ(drawn(), expected) << format;
        session.lisp("(while (entlast) (entdel (entlast)))");
        lw("(10 1.0 2.0) (10 30.5 4.0) (10 7.0 80.25)", "(70 . 0) (38 . 5.0)", "(8 . \"0\") (62 . 1)");
    }
}

TEST_F(PolylineFiles, ManyPolylinesTakeTimeInProportion)
{
    const auto work = [this](int size) {
        std::string text;
        for (int i = 0; i < size; ++i)
            text += "2\n" + std::to_string(i) + ",1,2\n" + std::to_string(i) + ",3,4\n" + std::to_string(i) +
                    ",9,4\nEND\n";
        write_text(path("in.lf"), text);
        std::filesystem::remove(path("out.lf"));
        session.lisp("(while (entlast) (entdel (entlast)))");
        run(27, "Dtm\n" + path("in.lf") + "\n");
        const std::string back = written("Dtm\n!new\n" + path("out.lf") + "\nall\n\n", "out.lf");
        EXPECT_EQ(std::count(back.begin(), back.end(), '\n'), 5 * size);
    };
    EXPECT_TRUE(grows_in_proportion(work, 10000));
}

} // namespace
