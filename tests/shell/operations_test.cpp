// The operations of cf:zentutil: which one a number means, and what the shell's own ones do.
#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <string>

#include "common/arguments.h"
#include "common/directories.h"
#include "common/invoke.h"
#include "common/text_buffer.h"
#include "host/core/console.h"
#include "host/core/document.h"
#include "host/core/heap.h"
#include "host/core/module.h"
#include "host/core/resbuf.h"
#include "host/core/session.h"
#include "host/core/trace.h"
#include "hostapi/ads.h"
#include "shell/operations.h"
#include "tests/host/files/temporary_directory.h"
#include "tests/shell/module_session.h"

namespace
{

resbuf node(int type)
{
    resbuf n{};
    n.restype = static_cast<short>(type);
    return n;
}

resbuf short_node(int value)
{
    resbuf n = node(RTSHORT);
    n.resval.rint = static_cast<short>(value);
    return n;
}

// ---- which operation a number means -------------------------------------------------------------

TEST(OperationTable, StandsInTheOrderOfTheNumbers)
{
    int last = -1;
    for (const operation* op = OPERATIONS; op->number >= 0; ++op) {
        EXPECT_GT(op->number, last);
        last = op->number;
        EXPECT_EQ(std::strspn(op->reads, "tsrpen"), std::strlen(op->reads)) << op->number;
    }
    EXPECT_EQ(last, 51);
}

TEST(OperationTable, NumbersThatAreNotListedRunOperation0)
{
    const std::set<int> unlisted = {7, 13, 17, 18};
    for (int number = -3; number < 60; ++number) {
        const bool listed = number >= 0 && number <= 51 && unlisted.count(number) == 0;
        EXPECT_EQ(find_operation(short_node(number)).number, listed ? number : 0) << number;
    }
    EXPECT_EQ(find_operation(short_node(32767)).number, 0);
}

TEST(OperationTable, CallWithoutArgumentsRunsOperation0AndADirectoryAloneRunsNone)
{
    EXPECT_EQ(operation_of_call(nullptr), &OPERATIONS[0]);
    resbuf directory = node(RTNIL), number = short_node(14);
    EXPECT_EQ(operation_of_call(&directory), nullptr);
    directory.rbnext = &number;
    EXPECT_EQ(operation_of_call(&directory)->number, 14);
}

TEST(OperationTable, TypeOfTheNumberCountsForTwoOperationsOnly)
{
    for (const int number : {14, 44, 45, 46, 47}) {
        resbuf n = node(RTLONG);
        n.resval.rlong = number;
        const bool picky = number == 45 || number == 46;
        EXPECT_EQ(find_operation(n).number, picky ? 0 : number) << number;
    }
    resbuf real = node(RTREAL);
    real.resval.rreal = 45.0;
    EXPECT_EQ(find_operation(real).number, 0);
    real.resval.rint = 46;
    EXPECT_EQ(find_operation(real).number, 0);
    real.resval.rint = 47;
    EXPECT_EQ(find_operation(real).number, 47);
}

// The node holds an address, which says nothing about an operation.
TEST(OperationTable, TextForANumberRunsOperation0)
{
    resbuf text = node(RTSTR);
    std::int32_t low = 19;
    std::memcpy(&text.resval, &low, sizeof low);
    EXPECT_EQ(find_operation(text).number, 0);
}

// ---- arguments -------------------------------------------------------------------------------------

TEST(Arguments, AreTakenInOrderAndTheMissingOnesAreStandard)
{
    resbuf* const list = acutBuildList(RTSTR, "text", RTSHORT, -7, RTSTR, "last", 0);
    const resbuf* at = list;
    EXPECT_STREQ(next_text(&at, "standard"), "text");
    EXPECT_EQ(next_short(&at, 1), -7);
    EXPECT_STREQ(next_text(&at, "standard"), "last");
    EXPECT_EQ(at, nullptr);
    ads_name name = {3, 4};
    EXPECT_STREQ(next_text(&at, "standard"), "standard");
    EXPECT_EQ(next_short(&at, 1), 1);
    EXPECT_FALSE(next_name(&at, name));
    EXPECT_EQ(name[0], 3);
    acutRelRb(list);
}

TEST(Arguments, NumbersAndNamesAreReadFromNodesOfOtherTypes)
{
    const ads_name set = {41, 42};
    resbuf* const list = acutBuildList(RTLONG, 70000L, RTREAL, 1.0, RTPICKS, set, RTENAME, set, 0);
    const resbuf* at = list;
    EXPECT_EQ(next_short(&at, 1), 70000 - 65536);
    EXPECT_EQ(next_short(&at, 1), 0);
    EXPECT_EQ(next_short(&at, 1), 41);
    ads_name name = {0, 0};
    EXPECT_TRUE(next_name(&at, name));
    EXPECT_EQ(name[1], 42);
    acutRelRb(list);
}

TEST(Arguments, TextAndTheOthersDoNotMix)
{
    resbuf* const list = acutBuildList(RTSTR, "1", RTSTR, "2", RTSHORT, 3, RTSHORT, 4, 0);
    const resbuf* at = list;
    ads_name name = {3, 4};
    EXPECT_EQ(next_short(&at, 9), 9);
    EXPECT_FALSE(next_name(&at, name));
    EXPECT_EQ(name[0], 3);
    EXPECT_STREQ(next_text(&at, "standard"), "standard");
    EXPECT_EQ(next_short(&at, 9), 4); // the node that didn't fit was passed over
    acutRelRb(list);
}

// ---- the frame of a call -------------------------------------------------------------------------

std::size_t blocks_left_by(resbuf* arguments)
{
    const std::size_t before = host::heap_live_blocks();
    host::call_external("cf:zentutil", arguments).reset();
    const std::size_t left = host::heap_live_blocks() - before;
    acutRelRb(arguments);
    return left;
}

TEST(Call, FirstTextBecomesTheDataDirectoryBeforeTheOperationRuns)
{
    module_session session;
    text_set(data_dir, "before");
    session.lisp("(cf:zentutil \"C:\\\\DATA\\\\\" 51 \"A\")");
    EXPECT_STREQ(data_dir, "C:\\DATA\\");
    session.lisp("(cf:zentutil \"D:\\\\\")");
    EXPECT_STREQ(data_dir, "D:\\");
    EXPECT_EQ(session.lisp("(cf:zentutil 1 51 \"A\")"), "\"A\"");
    EXPECT_STREQ(data_dir, "D:\\");
}

TEST(Call, LongDataDirectoryIsCut)
{
    module_session session;
    session.lisp("(cf:zentutil \"" + std::string(127, 'a') + "\" 51 \"A\")");
    EXPECT_EQ(data_dir, std::string(127, 'a'));
    session.lisp("(cf:zentutil \"" + std::string(300, 'b') + "\" 51 \"A\")");
    EXPECT_EQ(data_dir, std::string(127, 'b'));
}

TEST(Call, DirectoryAloneAnswersNil)
{
    module_session session;
    EXPECT_EQ(session.lisp("(cf:zentutil \"C:/\")"), "nil");
    EXPECT_EQ(session.printed(), "");
}

TEST(Call, OperationsThatHaveNothingToRunAnswerNilAndPrintNothing)
{
    module_session session;
    for (const operation* op = OPERATIONS; op->number >= 0; ++op) {
        if (op->run)
            continue;
        const std::string number = std::to_string(op->number);
        EXPECT_EQ(session.lisp("(cf:zentutil \"C:/\" " + number + " \"x\" 1 2.0)"), "nil") << number;
        EXPECT_EQ(session.printed(), "") << number;
        EXPECT_EQ(blocks_left_by(acutBuildList(RTSTR, "C:/", RTSHORT, op->number, RTSTR, "x", 0)), 0u);
    }
}

// What a program passes by mistake must not take the host down: every operation with missing arguments
// and with arguments of other types.
TEST(Call, WrongAndMissingArgumentsAreHarmless)
{
    const temporary_directory tmp; // some make files of these names
    module_session session;
    host::run_settings().no_shell = true;
    const std::string dir = session.directory();
    const char* const d = dir.c_str();
    const auto is_harmless = [](int number, resbuf* arguments) {
        host::answers_from_text("");
        EXPECT_EQ(blocks_left_by(arguments), 0u) << number;
    };
    for (const operation* op = OPERATIONS; op->number >= 0; ++op) {
        const int n = op->number;
        is_harmless(n, acutBuildList(RTSTR, d, RTSHORT, n, 0));
        is_harmless(n, acutBuildList(RTSTR, d, RTSHORT, n, RTSHORT, 5, 0));
        is_harmless(n, acutBuildList(RTSTR, d, RTSHORT, n, RTREAL, 1e300, RTREAL, -1.5, 0));
        is_harmless(n, acutBuildList(RTSTR, d, RTSHORT, n, RTLB, RTLE, RTNIL, RTT, 0));
        is_harmless(n, acutBuildList(RTSTR, d, RTSHORT, n, RTSTR, "a", RTSTR, "b", RTSTR, "c", RTSTR, "d", 0));
        is_harmless(n, acutBuildList(RTSHORT, 1, RTSHORT, n, RTSTR, "", 0));
    }
}

// What a call asks and does in a drawing of one line.
std::string traced_on_a_line(const std::string& call)
{
    module_session session;
    session.lisp("(entmake '((0 . \"LINE\") (10 0.0 0.0 0.0) (11 5.0 0.0 0.0)))");
    host::answers_from_text("#last 4,0\n");
    return session.traced(call);
}

// Operation 0 turns the view: the prompt and the command that it sends tell it.
TEST(Call, WithoutArgumentsOrOfAnUnlistedNumberRunsOperation0)
{
    const std::string first = traced_on_a_line("(cf:zentutil \"\" 0)");
    EXPECT_NE(first.find("acedEntSel \"\\nPick a line or pline to make horizontal:\""), std::string::npos);
    EXPECT_NE(first.find("acedCommand (\"_.DVIEW\""), std::string::npos) << first;
    for (const char* call :
         {"(cf:zentutil)", "(cf:map_zentutil)", "(cf:zentutil \"\" 7)", "(cf:zentutil \"\" 13)",
          "(cf:zentutil \"\" 17)", "(cf:zentutil \"\" 18)", "(cf:zentutil \"\" 52)",
          "(cf:zentutil \"\" 53 \"text\" 1)", "(cf:zentutil \"\" 32767)", "(cf:zentutil \"\" -1)",
          "(cf:zentutil \"\" -32768)", "(cf:zentutil \"\" 45.0 \"text\")", "(cf:zentutil \"\" 46.0 \"text\" 1)",
          "(cf:zentutil \"\" \"14\" 440 100)"})
        EXPECT_EQ(traced_on_a_line(call), first) << call;
}

// What tells a tool from the others: its first question, or what it draws.
TEST(Call, StartsTheToolOfItsNumber)
{
    const std::pair<const char*, const char*> cases[] = {
        {"0", "acedEntSel \"\\nPick a line or pline to make horizontal:\""},
        {"1", "acedEntSel \"\\nPick line or pline to extend: \""},
        {"2", "acedEntSel \"\\nPick arc to extend: \""},
        {"4", "acedGetKword \"\\nCreate a Zorro [Yes/<No>]? \""},
        {"5 1.0 1.0 '(0.0 0.0) '(10.0 0.0) 25.0 0 \"\" nil", "acedCommand (\"_.ARC\""},
        {"6 0.2", "acedGetString 1 \"\\nEnter text: \""},
        {"9 0.0 0.0 '(0.0 0.0) '(10.0 0.0) 6.0", "LWPOLYLINE"},
        {"30", "acedGetReal \"\\nEnter the arrow size <"},
    };
    for (const auto& [call, told] : cases) {
        const std::string trace = traced_on_a_line("(cf:zentutil \"\" " + std::string(call) + ")");
        EXPECT_NE(trace.find(told), std::string::npos) << call << "\n" << trace;
    }
}

TEST(Call, WithoutArgumentsLeavesTheDataDirectory)
{
    module_session session;
    text_set(data_dir, "C:\\DATA\\");
    host::answers_from_text("^C\n");
    EXPECT_EQ(session.lisp("(cf:zentutil)"), "nil");
    EXPECT_STREQ(data_dir, "C:\\DATA\\");
}

TEST(Call, OfAShort45Or46DoesNotRunOperation0)
{
    for (const char* call : {"(cf:zentutil \"\" 45 \"text\")", "(cf:zentutil \"\" 46 \"text\" 0)"})
        EXPECT_EQ(traced_on_a_line(call).find("make horizontal"), std::string::npos) << call;
}

TEST(Call, ANumberInPlaceOfATextCountsAsMissing)
{
    module_session session;
    session.name_drawing();
    const std::string dir = "\"" + session.directory() + "\"";
    for (const char* rest :
         {" 20 5", " 26 5", " 26 \"\"", " 40 5 1", " 40 \"\" 1", " 41 5", " 50 5 40", " 51 5"})
        EXPECT_EQ(session.lisp("(cf:zentutil " + dir + rest + ")"), "nil") << rest;
    EXPECT_EQ(session.printed(), "");
    EXPECT_EQ(session.lisp("(tblsearch \"BLOCK\" \"ZENTSETV\")"), "nil");
    EXPECT_EQ(read_text(session.directory() + "site.ini"), "<none>");
    EXPECT_EQ(read_text(session.directory() + "temp.txt"), "<none>");
    EXPECT_EQ(read_text(".ini"), "<none>");
}

// ---- operations of the shell ------------------------------------------------------------------------

TEST(Operation14, BeepsAsAsked)
{
    module_session session;
    EXPECT_NE(session.traced("(cf:zentutil \"\" 14 440 100)").find("Beep 440 100"), std::string::npos);
    EXPECT_EQ(session.traced("(cf:zentutil \"\" 14)").find("Beep"), std::string::npos);
    EXPECT_EQ(session.lisp("(cf:zentutil \"\" 14 440 100)"), "nil");
}

TEST(Operation19, RunsACommandOfTheMachine)
{
    module_session session;
    const std::string file = session.directory() + "made";
    EXPECT_EQ(session.lisp("(cf:zentutil \"\" 19 \"touch '" + file + "'; exit 3\")"), "nil");
    EXPECT_EQ(read_text(file), "");
}

constexpr const char* TWO_LINES_ONE_MARKED =
    "(regapp \"ZENT\")"
    "(entmake '((0 . \"LINE\") (10 0.0 0.0 0.0) (11 1.0 0.0 0.0)))"
    "(entmake '((0 . \"LINE\") (10 0.0 1.0 0.0) (11 1.0 1.0 0.0) (-3 (\"ZENT\" (1000 . \"x\")))))"
    "(setq marked (entlast))";

TEST(Operation20, SelectsAllThatAnApplicationMarked)
{
    module_session session;
    session.lisp(TWO_LINES_ONE_MARKED);
    EXPECT_EQ(session.lisp("(setq s (cf:zentutil \"\" 20 \"ZENT\")) (sslength s)"), "1");
    EXPECT_EQ(session.lisp("(eq (ssname s 0) marked)"), "T");
}

TEST(Operation20, UnknownApplicationIsRegisteredAndSelectsNothing)
{
    module_session session;
    session.lisp(TWO_LINES_ONE_MARKED);
    EXPECT_EQ(session.lisp("(tblsearch \"APPID\" \"OTHER\")"), "nil");
    EXPECT_EQ(session.lisp("(cf:zentutil \"\" 20 \"OTHER\")"), "nil");
    EXPECT_NE(session.lisp("(tblsearch \"APPID\" \"OTHER\")"), "nil");
    EXPECT_EQ(session.lisp("(cf:zentutil \"\" 20)"), "nil");
}

TEST(Operation20, SelectsEvenWhenTheNameCannotBeRegistered)
{
    module_session session;
    EXPECT_EQ(session.lisp("(cf:zentutil \"\" 20 \"A*B\")"), "nil");
    EXPECT_EQ(session.printed(), "\nError: unable to register A*B.");
    const std::string trace = session.traced("(cf:zentutil \"\" 20 \"A*B\")");
    EXPECT_NE(trace.find("acedSSGet \"X\""), std::string::npos) << trace;
    EXPECT_NE(trace.find("((-3 (\"A*B\")))"), std::string::npos) << trace;
}

TEST(Operation24, AsksTheUserAndKeepsWhatTheApplicationMarked)
{
    module_session session;
    session.lisp(TWO_LINES_ONE_MARKED);
    host::answers_from_text("all\n\n");
    EXPECT_EQ(session.lisp("(sslength (cf:zentutil \"\" 24 \"ZENT\"))"), "1");
    host::answers_from_text("^C\n");
    EXPECT_EQ(session.lisp("(cf:zentutil \"\" 24 \"ZENT\")"), "nil");
}

TEST(Operation21, FreesASelectionSet)
{
    module_session session;
    session.lisp(TWO_LINES_ONE_MARKED);
    EXPECT_NE(session.traced("(setq s (ssget \"X\")) (cf:zentutil \"\" 21 s)").find("acedSSFree"),
              std::string::npos);
    EXPECT_EQ(session.lisp("(cf:zentutil \"\" 21)"), "nil");
}

TEST(Operation26, SavesTheSettingsOfTheDrawingThatIsNamed)
{
    module_session session;
    const std::string drawing = session.directory() + "OTHER.DWG", dir = session.directory();
    session.lisp("(setq clfil \"a.cl \" bearoraz \"A\")");
    EXPECT_EQ(session.lisp("(cf:zentutil \"" + dir + "\" 26 \"" + drawing + "\")"), "nil");
    EXPECT_EQ(read_text(session.directory() + "OTHER.ini"), "clfil=a.cl\n");
    EXPECT_EQ(session.lisp("(setq b (tblsearch \"BLOCK\" \"ZENTSETV\")) (cdr (assoc 70 b))"), "2");
    EXPECT_EQ(session.lisp("(setq e (entget (cdr (assoc -2 b)))) (mapcar '(lambda (c) (cdr (assoc c e))) '(0 1 "
                           "2 3 70 40))"),
              "(\"ATTDEF\" \"A\" \"bearoraz\" \"prompt\" 1 0.2)");
    EXPECT_EQ(session.printed(), "");
}

TEST(Operation26, BlockOfASecondSaveTakesThePlaceOfTheFirst)
{
    module_session session;
    const std::string call =
        "(cf:zentutil \"" + session.directory() + "\" 26 \"" + session.directory() + "OTHER.DWG\")";
    session.lisp(call);
    session.lisp("(setq pnl \"NEW\")" + call);
    EXPECT_EQ(session.lisp("(setq e (cdr (assoc -2 (tblsearch \"BLOCK\" \"ZENTSETV\"))) n 0 values nil)"
                           "(while e (setq n (1+ n) values (cons (cdr (assoc 1 (entget e))) values))"
                           "(setq e (entnext e)))"
                           "(list n (nth 10 (reverse values)))"),
              "(21 \"NEW\")");
}

TEST(Operation26, WithoutAPathSavesNothing)
{
    module_session session;
    EXPECT_EQ(session.lisp("(cf:zentutil \"" + session.directory() + "\" 26)"), "nil");
    EXPECT_EQ(session.lisp("(tblsearch \"BLOCK\" \"ZENTSETV\")"), "nil");
}

TEST(Operation39, FindsASymbolInItsDirectoryOrByItsPath)
{
    module_session session;
    const std::string dir = session.directory();
    write_text(dir + "SPT1.DWG", "");
    session.lisp("(setq psname \"" + dir + "\")");
    std::string upper = dir;
    for (char& c : upper)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    EXPECT_EQ(session.lisp("(cf:zentutil \"\" 39 \"spt1\")"), "\"" + upper + "SPT1\"");
    EXPECT_EQ(session.lisp("(cf:zentutil \"\" 39 \"spt1.dwg\" 1)"), "\"" + upper + "SPT1\"");
    EXPECT_EQ(session.printed(), "");
    std::string path = dir + "SPT1";
    std::string escaped;
    for (const char c : path)
        escaped += c == '/' ? std::string("\\\\") : std::string(1, c);
    session.lisp("(setq psname \"C:/NOWHERE/\")");
    EXPECT_NE(session.lisp("(cf:zentutil \"\" 39 \"" + escaped + "\")"), "\"\"");
}

TEST(Operation39, MissingSymbolIsToldUnlessAskedQuietly)
{
    module_session session;
    session.lisp("(setq psname \"C:/NOWHERE/\")");
    EXPECT_EQ(session.lisp("(cf:zentutil \"\" 39 \"spt9\" 0)"), "\"\"");
    EXPECT_EQ(session.printed(), "\nWarning: Symbol 'C:/NOWHERE/SPT9.DWG' does not exist.\n");
    EXPECT_EQ(session.lisp("(cf:zentutil \"\" 39 \"spt9\")"), "\"\"");
    EXPECT_EQ(session.printed(), "\nWarning: Symbol 'C:/NOWHERE/SPT9.DWG' does not exist.\n");
    EXPECT_EQ(session.lisp("(cf:zentutil \"\" 39 \"spt9\" 2)"), "\"\"");
    EXPECT_EQ(session.printed(), "");
    EXPECT_STREQ(symbol_dir, "C:/NOWHERE/");
}

TEST(Operation40, RemembersAFileOnlyWithAShortOtherThan0)
{
    module_session session;
    session.name_drawing();
    const std::string dir = session.directory(), settings = dir + "site.ini";
    EXPECT_EQ(session.lisp("(cf:zentutil \"" + dir + "\" 40 \"c:/a/b.pln\")"), "nil");
    EXPECT_EQ(session.lisp("(cf:zentutil \"" + dir + "\" 40 \"c:/a/b.pln\" 0)"), "nil");
    EXPECT_EQ(read_text(settings), "<none>");
    EXPECT_EQ(session.lisp("(cf:zentutil \"" + dir + "\" 40 \"c:/a/b.pln\" 1)"), "nil");
    EXPECT_EQ(read_text(settings), "PROJECT=C:/A/B.PLN\n");
}

TEST(Operation41, WritesADirectoryIntoTheInstallation)
{
    module_session session;
    const std::string dir = session.directory(), config = dir + "config.pik";
    write_text(dir + "registry.reg",
               "Windows Registry Editor Version 5.00\n\n[HKEY_LOCAL_MACHINE\\Software\\Quorvane "
               "Software\\Zentrik\\2001\\R15.0]\n\"PATH\"=\"" +
                   dir + "\"\n");
    write_text(config, "1\n2\n3\n4\n5\n");
    EXPECT_EQ(session.lisp("(cf:zentutil \"\" 41)"), "nil");
    EXPECT_EQ(read_text(config), "1\n2\n3\n4\n5\n");
    EXPECT_EQ(session.lisp("(cf:zentutil \"\" 41 \"D:/jobs/\")"), "nil");
    EXPECT_EQ(read_text(config), "1\n2\nD:\n\\jobs\\\n5\n");
}

TEST(Operation48, AnswersThePathThatIsChosen)
{
    module_session session;
    session.name_drawing();
    const std::string dir = session.directory(), file = dir + "new.pln";
    const std::string call = "(cf:zentutil \"" + dir + "\" 48 \"Choose\" \"\" \"pln\" 1)";
    host::answers_from_text(file + "\n");
    EXPECT_EQ(session.lisp(call), "\"" + file + "\"");
    EXPECT_NE(session.printed().find("[file] Choose"), std::string::npos);
    EXPECT_NE(read_text(dir + "site.ini").find("PROJECT="), std::string::npos);
    host::answers_from_text("^C\n");
    EXPECT_EQ(session.lisp(call), "nil");
}

TEST(Operation48, AsksBeforeAnExistingFileIsTaken)
{
    module_session session;
    session.name_drawing();
    const std::string dir = session.directory(), old = dir + "old.pln", fresh = dir + "new.pln";
    write_text(old, "");
    host::answers_from_text(old + "\nno\n" + fresh + "\n");
    EXPECT_EQ(session.lisp("(cf:zentutil \"" + dir + "\" 48 \"Choose\" \"\" \"pln\" 1)"), "\"" + fresh + "\"");
    EXPECT_NE(
        session.printed().find("Zentrik Message: " + old + " already exists.\nDo you want to replace it?"),
        std::string::npos);
    host::answers_from_text(old + "\nyes\n");
    EXPECT_EQ(session.lisp("(cf:zentutil \"" + dir + "\" 48 \"Choose\" \"\" \"pln\" 1)"), "\"" + old + "\"");
}

TEST(Operation50, CompactsAPath)
{
    module_session session;
    EXPECT_EQ(session.lisp("(cf:zentutil \"\" 50 \"c:/JOBS/site.dwg\" 40)"), "\"C:\\\\Jobs\\\\Site.dwg\"");
    EXPECT_EQ(session.lisp("(cf:zentutil \"\" 50 \"c:\\\\jobs\\\\abcdefghijkl\" 10)"), "\"...hijkl\"");
}

TEST(Operation50, WithoutAPathOrAWidthAnswersNil)
{
    module_session session;
    const std::string trace = session.traced("(cf:zentutil \"\" 50 \"c:/jobs/site.dwg\" 40)");
    EXPECT_LT(trace.find("acedRetNil"), trace.find("acedRetStr")) << trace;
    EXPECT_EQ(session.lisp("(cf:zentutil \"\" 50 \"c:/jobs/site.dwg\")"), "nil");
    EXPECT_EQ(session.lisp("(cf:zentutil \"\" 50)"), "nil");
}

TEST(Operation51, AnswersTheTrimmedNameOrNil)
{
    module_session session;
    EXPECT_EQ(session.lisp("(cf:zentutil \"\" 51 \"  LOT 5 \")"), "\"LOT 5\"");
    EXPECT_EQ(session.lisp("(cf:zentutil \"\" 51 \"a;b\")"), "\"a;b\"");
    for (const char* bad : {"\"\"", "\"  \"", "\"a*b\"", "\"a,b\"", ""})
        EXPECT_EQ(session.lisp(std::string("(cf:zentutil \"\" 51 ") + bad + ")"), "nil") << bad;
}

// ---- calls back through the host -----------------------------------------------------------------------

TEST(Invoke, ComesBackThroughTheDispatcher)
{
    module_session session;
    text_set(data_dir, "C:\\DATA\\");
    const std::size_t blocks = host::heap_live_blocks();
    invoke_print_line("a line");
    invoke_help();
    EXPECT_EQ(host::heap_live_blocks(), blocks);
    EXPECT_STREQ(data_dir, "C:\\DATA\\");
}

} // namespace
