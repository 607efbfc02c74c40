// The LISP file that the host loads behind the module.
#include <gtest/gtest.h>

#include <string>

#include "host/core/console.h"
#include "host/core/document.h"
#include "host/core/session.h"
#include "host/lisp/api.h"
#include "tests/shell/module_session.h"

namespace
{

void load_start_file()
{
    const host::lisp::outcome outcome =
        host::lisp::load_program(host::current_document(), ZENT_SOURCE_DIR "/share/lisp/zentrik.lsp");
    EXPECT_EQ(outcome.how, host::lisp::ending::done) << outcome.message;
}

TEST(StartFile, SetsTheProductsDirectories)
{
    module_session session;
    session.name_drawing();
    session.lisp("(setq *zentrik-share* \"/opt/zentrik/\")");
    load_start_file();
    EXPECT_EQ(session.lisp("(list lspdir$ psname)"), "(\"/opt/zentrik/dialogs/\" \"/opt/zentrik/symbols/\")");
    EXPECT_EQ(
        session.lisp("(equal (list usrdir$ tmpdir$) (list (getvar \"DWGPREFIX\") (getvar \"DWGPREFIX\")))"),
        "T");
    EXPECT_EQ(session.printed(), "");
}

TEST(StartFile, LeavesWhatIsSet)
{
    module_session session;
    session.lisp("(setq *zentrik-share* \"/opt/zentrik/\" usrdir$ \"C:/U/\" lspdir$ \"C:/L/\" psname \"C:/P/\""
                 " tmpdir$ \"C:/T/\")");
    load_start_file();
    EXPECT_EQ(session.lisp("(list usrdir$ lspdir$ psname tmpdir$)"),
              "(\"C:/U/\" \"C:/L/\" \"C:/P/\" \"C:/T/\")");
}

TEST(StartFile, DefinesACommandForEachTool)
{
    module_session session;
    session.lisp("(setq *zentrik-share* \"/opt/zentrik/\")");
    load_start_file();
    for (const char* name : {"PLWRITE", "PLREAD", "HORIZVIEW", "POINTER", "EXTENDARC", "ARCTEXT", "CURVELEADER",
                             "ADDARROW", "TRIMSYMBOLS", "WIZARD", "OPEN_DWG", "START_WIZ"})
        EXPECT_TRUE(host::lisp::has_command(host::current_document(), name)) << name;
}

// ---- the tools' commands ------------------------------------------------------------------------

// A symbol on a line of its own; a line, a kerb with a linetype scale, and an arc about (20,0) of radius 5.
const char* const DRAWING = R"((progn (setq *zentrik-share* "/opt/zentrik/")
    (entmake '((0 . "BLOCK") (2 . "SPTTREE") (70 . 0) (10 0.0 0.0 0.0)))
    (entmake '((0 . "CIRCLE") (8 . "0") (10 0.0 0.0 0.0) (40 . 1.0)))
    (entmake '((0 . "ENDBLK")))
    (entmake '((0 . "LINE") (10 60.0 0.0 0.0) (11 70.0 0.0 0.0)))
    (entmake '((0 . "INSERT") (2 . "SPTTREE") (10 60.0 0.0 0.0)))
    (entmake '((0 . "LINE") (10 0.0 0.0 0.0) (11 10.0 0.0 0.0)))
    (entmake '((0 . "LWPOLYLINE") (100 . "AcDbEntity") (8 . "0") (48 . 2.0) (100 . "AcDbPolyline") (90 . 2) (70 . 0)
               (10 0.0 10.0) (10 10.0 10.0)))
    (entmake '((0 . "ARC") (10 20.0 0.0 0.0) (40 . 5.0) (50 . 0.0) (51 . 1.5707963267948966)))))";

struct tool_case {
    const char *command, *operation, *answers;
    const char* sends; // the command that the tool sends; null: none
};

std::ostream& operator<<(std::ostream& out, const tool_case& tool)
{
    return out << tool.command;
}

const tool_case TOOLS[] = {
    {"(c:horizview)", "0", "7,0\n", "_.DVIEW"},
    {"(c:pointer)", "1", "9,10\n5\n\n", "_.CHPROP"},
    {"(c:extendarc)", "2", "25,0\nNo\n2\n\n", nullptr},
    {"(c:trimsymbols)", "3", "all\n\n", "_.TRIM"},
    {"(c:curveleader)", "4", "No\nYes\n0.5\n0,50\n20,50\n\nNo\n", "_.DIM1"},
    {"(c:arctext)", "6 0.2", "A B\n1\n0.5\nInside\nYes\n25,0\n\n", "_.TEXT"},
    {"(c:addarrow)", "30", "0.5\n9,0\n\n", "_.DIM1"},
};

struct tool_session : module_session {
    tool_session()
    {
        lisp(DRAWING);
        load_start_file();
        printed();
    }
    // What the call prints with these answers.
    std::string told(const std::string& call, const std::string& answers)
    {
        host::answers_from_text(answers);
        lisp(call);
        return printed();
    }
    std::string told_by_operation(int echo, const tool_case& tool)
    {
        return told("(setvar \"CMDECHO\" " + std::to_string(echo) + ")(cf:zentutil usrdir$ " + tool.operation +
                        ")",
                    tool.answers);
    }
    std::string echo_and_handler() { return lisp("(list (getvar \"CMDECHO\") *error*)"); }
};

class ToolCommands : public testing::TestWithParam<tool_case>
{
};

TEST_P(ToolCommands, ShowTheirOwnPromptsOnly)
{
    const tool_case& tool = GetParam();
    const std::string loud = tool_session().told_by_operation(1, tool);
    const std::string quiet = tool_session().told_by_operation(0, tool);
    EXPECT_EQ(loud == quiet, tool.sends == nullptr) << loud;
    for (const int echo : {0, 1}) {
        tool_session session;
        session.lisp("(setvar \"CMDECHO\" " + std::to_string(echo) + ")");
        host::answers_from_text(tool.answers);
        const std::string trace = session.traced(tool.command);
        EXPECT_EQ(session.printed(), quiet);
        const std::string sent = std::string("acedCommand (\"") + (tool.sends ? tool.sends : "");
        EXPECT_EQ(trace.find(sent) != std::string::npos, tool.sends != nullptr) << trace;
        EXPECT_EQ(session.echo_and_handler(), "(" + std::to_string(echo) + " nil)");
    }
}

TEST_P(ToolCommands, PutTheEchoBackWhereverTheyAreLeft)
{
    const tool_case& tool = GetParam();
    const std::string answers = tool.answers;
    for (std::size_t end = 0; end != answers.size(); end = answers.find('\n', end) + 1)
        for (const char* leaving : {"", "^C\n^C\n", "(car 5)\n", "(exit)\n"}) {
            tool_session session;
            session.told(tool.command, answers.substr(0, end) + leaving);
            EXPECT_EQ(session.echo_and_handler(), "(1 nil)") << leaving << " behind " << answers.substr(0, end);
        }
}

std::string tool_name(const testing::TestParamInfo<tool_case>& tool)
{
    const std::string command = tool.param.command;
    return command.substr(3, command.size() - 4);
}
INSTANTIATE_TEST_SUITE_P(StartFile, ToolCommands, testing::ValuesIn(TOOLS), tool_name);

TEST(Quietly, HandsTheEndOfTheAnswersToTheErrorFunctionOfTheProgram)
{
    tool_session session;
    const std::string program = R"((defun *error* (message)
        (princ (strcat "job: " message ", echo " (itoa (getvar "CMDECHO"))))
        (setq *error* before))
        (setq before nil) (c:curveleader))";
    EXPECT_TRUE(session.told(program, "No\n").ends_with("job: Function cancelled, echo 1"));
    EXPECT_EQ(session.echo_and_handler(), "(1 nil)"); // what the program's function has put back stands
}

TEST(Quietly, LeavesTheErrorFunctionOfTheProgramInPlace)
{
    tool_session session;
    session.told("(defun *error* (m) (setq told m))(c:horizview)", "^C\n");
    EXPECT_EQ(session.lisp("(*error* \"x\") told"), "\"x\"");
    session.told("(defun job (/ *error*) (setq *error* 'inner) (c:horizview) (setq kept *error*))(job)",
                 "7,0\n");
    EXPECT_EQ(session.lisp("kept"), "INNER");
}

TEST(Quietly, WithoutAnErrorFunctionTheEndIsTold)
{
    tool_session session;
    EXPECT_TRUE(session.told("(c:curveleader)", "").ends_with("\n; error: Function cancelled"));
}

TEST(Quietly, HasTheValueOfTheCallAndHidesNoNameOfTheUser)
{
    tool_session session;
    EXPECT_EQ(session.lisp("(setq call 1 echo 2) (zt:quietly '(list call echo (getvar \"CMDECHO\")))"),
              "(1 2 0)");
}

} // namespace
