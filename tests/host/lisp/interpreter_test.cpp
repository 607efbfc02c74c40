// interpreter_test.cpp: what programs can't look at themselves: places of errors, limits, speed, and
// AutoLISP as the rest of the host calls it.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include "host/core/console.h"
#include "host/core/document.h"
#include "host/core/heap.h"
#include "host/core/module.h"
#include "host/core/session.h"
#include "host/core/trace.h"
#include "host/database/selection_sets.h"
#include "host/lisp/api.h"
#include "host/lisp/builtins.h"
#include "host/lisp/interpreter.h"
#include "host/lisp/printer.h"
#include "hostapi/editor.h"
#include "tests/growth.h"
#include "tests/host/files/temporary_directory.h"

namespace
{

namespace fs = std::filesystem;
using namespace host;
using namespace host::lisp;

class Lisp : public testing::Test
{
protected:
    void SetUp() override
    {
        answers_from_text("");
        open_document();
        capture_history(&text);
    }
    void TearDown() override
    {
        capture_history(nullptr);
        close_all_documents();
        answers_from_text("");
        clear_break();
    }
    document& doc() { return current_document(); }
    outcome run(std::string_view program, const std::string& name = "")
    {
        return evaluate_text(doc(), program, name);
    }
    std::string value(std::string_view program) { return run(program).printed; }
    std::string text; // the history
};

// ---- selection sets

TEST_F(Lisp, ASetThatAProgramHoldsGoesWithItsDrawingWithoutACall)
{
    const std::size_t before = db::live_sets();
    temporary_directory tmp;
    const std::string file = tmp.path + "/trace";
    ASSERT_TRUE(trace_to(file));
    run("(setq kept (ssadd) gone (ssadd))");
    EXPECT_EQ(db::live_sets(), before + 2);
    run("(setq gone nil)");
    EXPECT_EQ(db::live_sets(), before + 1);
    close_all_documents();
    trace_to("");
    EXPECT_EQ(db::live_sets(), before);
    std::ifstream traced(file);
    std::string calls;
    for (std::string line; std::getline(traced, line);)
        calls += line.substr(0, line.find(' ')) + line.substr(line.rfind(' ')) + "\n";
    EXPECT_EQ(calls, "acedSSAdd RTNORM\nacedSSAdd RTNORM\nacedSSFree RTNORM\n");
}

// ---- places of errors

struct syntax_case {
    const char* name;
    const char* program;
    const char* message;
};

class LispSyntax : public Lisp, public testing::WithParamInterface<syntax_case>
{
};

TEST_P(LispSyntax, NamesFileAndLine)
{
    const outcome o = run(GetParam().program, "job.lsp");
    EXPECT_EQ(o.how, ending::error);
    EXPECT_EQ(o.message, GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(
    Places, LispSyntax,
    testing::Values(
        syntax_case{"OpenListIsToldWhereItBegins", "(setq a 1)\n\n(defun f ()\n (car a)\n\n",
                    "job.lsp:3: malformed list on input"},
        syntax_case{"OpenStringIsToldWhereItBegins", "(setq a\n\"text\n\n)",
                    "job.lsp:2: malformed string on input"},
        syntax_case{"ExtraParen", "(setq a 1)\n(setq b 2))\n(setq c 3)",
                    "job.lsp:2: extra right paren on input"},
        syntax_case{"Dot", "(setq a\n '( . 1))", "job.lsp:2: misplaced dot on input"},
        syntax_case{"LonelyDot", "\n.\n", "job.lsp:2: misplaced dot on input"},
        syntax_case{"TwoBehindDot", "'(1 . 2\n 3)", "job.lsp:2: extra cdrs in dotted pair on input"},
        syntax_case{"QuoteAtEnd", "(setq a 1)\n'", "job.lsp:2: syntax error"},
        syntax_case{"CommentCountsLines", ";| one\n two |;\n)", "job.lsp:3: extra right paren on input"},
        syntax_case{"StringCountsLines", "(setq a \"1\n2\n3\") )", "job.lsp:3: extra right paren on input"}),
    [](const testing::TestParamInfo<syntax_case>& c) { return std::string(c.param.name); });

TEST_F(Lisp, FormsBeforeASyntaxErrorAreEvaluated)
{
    run("(setq a 5)\n(setq b 6)\n(setq c (list 1 2)", "job.lsp");
    EXPECT_EQ(value("(list a b c)"), "(5 6 nil)");
    EXPECT_EQ(text.substr(0, text.find(";   (")),
              "; error: malformed list on input\n;   job.lsp:3: malformed list on input\n");
}

TEST_F(Lisp, ByteOrderMarkIsSkipped)
{
    EXPECT_EQ(run("\xEF\xBB\xBF(+ 1 2)", "job.lsp").printed, "3");
    EXPECT_EQ(value("(strlen (vl-symbol-name (read (strcat (chr 239) (chr 187) (chr 191) \"A\"))))"), "4")
        << "only at the start of a program";
}

TEST_F(Lisp, ErrorIsFollowedByItsCallsInnermostFirst)
{
    run("(defun g (x)\n  (car x))\n(defun f (x)\n  (list (g x)))\n(f\n  3)", "job.lsp");
    EXPECT_EQ(text, "; error: bad argument type: consp 3\n"
                    ";   job.lsp:2: (CAR X)\n"
                    ";   job.lsp:4: (G X)\n"
                    ";   job.lsp:5: (F 3)\n");
}

TEST_F(Lisp, RecursionIsOneLineOfTheChain)
{
    run("(defun f (n) (if (> n 0) (f (1- n)) (car 5)))");
    run("(f 20)");
    EXPECT_EQ(text,
              "; error: bad argument type: consp 5\n;   (CAR 5)\n;   (F (1- N))  [20 calls]\n;   (F 20)\n");
}

TEST_F(Lisp, MiddleOfALongChainIsLeftOut)
{
    std::string program = "(defun f0 () (car 5))\n";
    for (int i = 1; i < 40; ++i)
        program += "(defun f" + std::to_string(i) + " () (f" + std::to_string(i - 1) + "))\n";
    run(program);
    run("(f39)");
    EXPECT_NE(text.find(";   (F8)\n;   ... 28 more calls\n;   (F37)\n;   (F38)\n;   (F39)\n"), text.npos)
        << text;
}

// ---- limits

TEST_F(Lisp, EndlessRecursionIsAnError)
{
    const outcome o = run("(defun f (n) (1+ (f n))) (f 1)");
    EXPECT_EQ(o.how, ending::error);
    EXPECT_EQ(o.message, "internal stack limit reached");
    EXPECT_EQ(value("(+ 1 2)"), "3");
}

TEST_F(Lisp, EndlessRecursionThroughMapcarIsAnError)
{
    EXPECT_EQ(run("(defun f (n) (mapcar 'f (list n))) (f 1)").message, "internal stack limit reached");
    EXPECT_EQ(value("(defun f (n) (vl-catch-all-apply 'f (list n))) (f 1)"), "#<%catch-all-apply-error%>");
}

TEST_F(Lisp, HandlerRunsAfterTheStackIsUsedUp)
{
    EXPECT_TRUE(run("(defun *error* (m) (setq told m)) (defun f () (1+ (f))) (f)").reported);
    EXPECT_EQ(value("told"), "\"internal stack limit reached\"");
}

TEST_F(Lisp, ThousandsOfNestedCallsAreFine)
{
    EXPECT_EQ(value("(defun f (n) (if (= n 0) 0 (1+ (f (1- n))))) (f 2000)"), "2000");
}

TEST_F(Lisp, DeeplyNestedTextIsReadAsAnError)
{
    const std::string deep(1000000, '(');
    const outcome o = run("'" + deep, "deep.lsp");
    EXPECT_EQ(o.message, "deep.lsp:1: internal stack limit reached");
    const std::string quotes(1000000, '\'');
    EXPECT_EQ(run(quotes + "a", "deep.lsp").message, "deep.lsp:1: internal stack limit reached");
}

TEST_F(Lisp, DeeplyNestedValuesArePrintedComparedAndReleasedSafely)
{
    run("(setq a nil b nil) (repeat 1000000 (setq a (list a) b (list b)))");
    EXPECT_EQ(run("(progn (vl-prin1-to-string a) 1)").message, "internal stack limit reached");
    EXPECT_EQ(run("(equal a b)").message, "internal stack limit reached");
    EXPECT_EQ(variable(doc(), "a"), nullptr);
    EXPECT_EQ(value("(setq a nil b nil)"), "nil");
}

TEST_F(Lisp, ListOfAMillionCellsIsReleased)
{
    run("(setq a nil i 0) (repeat 1000000 (setq a (cons i a) i (1+ i)))");
    EXPECT_EQ(value("(length a)"), "1000000");
    EXPECT_EQ(value("(progn (setq b (mapcar '1+ a)) (setq a nil) (car b))"), "1000000");
    EXPECT_EQ(value("(setq b nil)"), "nil");
}

TEST_F(Lisp, ListFunctionsTakeLinearTime)
{
    run("(defun work (n / a i s) (setq a nil i 0)"
        " (repeat n (setq a (cons (setq i (1+ i)) a)))"
        " (setq a (reverse (append (mapcar '1+ a) a)) s 0)"
        " (foreach x a (setq s (+ s x)))"
        " (length (subst 1 2 (vl-remove 5 a))))");
    const auto work = [this](int size) {
        EXPECT_EQ(value("(work " + std::to_string(size) + ")"), std::to_string(2 * size - 2));
    };
    EXPECT_TRUE(grows_in_proportion(work, 160000));
}

TEST_F(Lisp, SortTakesNearlyLinearTime)
{
    run("(defun work (n / a i) (setq a nil i 1)"
        " (repeat n (setq a (cons (float (setq i (rem (* i 16807) 65537))) a)))"
        " (length (vl-sort a '<)))");
    const auto work = [this](int size) {
        EXPECT_EQ(value("(work " + std::to_string(size) + ")"), std::to_string(size));
    };
    EXPECT_TRUE(grows_in_proportion(work, 64000));
}

// Neither the depth of the calls nor what has run before makes a call dearer.
TEST_F(Lisp, CallsTakeLinearTime)
{
    run("(defun down (n) (if (< n 1) 0 (1+ (down (1- n)))))"
        "(defun work (n) (repeat (/ n 1000) (down 1000)))");
    const auto work = [this](int size) { EXPECT_EQ(value("(work " + std::to_string(size) + ")"), "1000"); };
    EXPECT_TRUE(grows_in_proportion(work, 320000));
}

// ---- endings

TEST_F(Lisp, BreakKeyEndsALoopThroughTheHandler)
{
    run("(defun *error* (m) (setq told m))");
    request_break();
    const outcome o = run("(while t)");
    EXPECT_EQ(o.how, ending::stopped);
    EXPECT_TRUE(o.reported);
    EXPECT_EQ(value("told"), "\"Function cancelled\"");
}

TEST_F(Lisp, BreakKeyIsNotCaught)
{
    request_break();
    EXPECT_EQ(run("(vl-catch-all-apply '(lambda () (while t)) nil) (setq went-on t)").how, ending::stopped);
    EXPECT_EQ(value("went-on"), "nil");
}

TEST_F(Lisp, BreakKeyEndsEachKindOfLoop)
{
    for (const char* loop : {"(repeat 2000000000)", "(foreach x '(1 2 3) x)", "(mapcar '1+ '(1 2))",
                             "(defun f () (f)) (f)", "(vl-sort '(2 1) '<)", "(vl-some 'null '(1))"}) {
        request_break();
        EXPECT_EQ(run(loop).how, ending::stopped) << loop;
    }
}

TEST_F(Lisp, ExitStops)
{
    const outcome o = run("(exit) (setq a 1)");
    EXPECT_EQ(o.how, ending::quit);
    EXPECT_EQ(o.message, "quit / exit abort");
    EXPECT_EQ(text, "; error: quit / exit abort\n");
    EXPECT_EQ(value("a"), "nil");
}

TEST_F(Lisp, BindingsOfAFailedProgramArePutBack)
{
    run("(setq a 1) (defun f (a) (car a))");
    run("(f 5)");
    EXPECT_EQ(value("a"), "1");
}

// ---- the rest of the host

TEST_F(Lisp, ProgramFileIsNamedByItsLastPart)
{
    const temporary_directory tmp;
    const fs::path path = fs::path(tmp.path) / "lisp_program_file.lsp";
    std::ofstream(path) << "(setq a 5)\n(car a)";
    EXPECT_EQ(load_program(doc(), path.string()).how, ending::error);
    EXPECT_NE(text.find(";   lisp_program_file.lsp:2: (CAR A)\n"), text.npos);
    fs::remove(path);
    EXPECT_EQ(load_program(doc(), path.string()).message, "LOAD failed: \"" + path.string() + "\"");
}

TEST_F(Lisp, EachDrawingHasItsOwnSymbols)
{
    run("(setq a 1)");
    document& second = open_document();
    EXPECT_EQ(evaluate_text(second, "a", "").printed, "nil");
    evaluate_text(second, "(setq a 2)", "");
    EXPECT_EQ(evaluate_text(*documents().front(), "a", "").printed, "1");
}

TEST_F(Lisp, CommandsAreFoundByName)
{
    run("(defun c:Survey () (setq ran t) 7) (setq c:data 5)");
    EXPECT_TRUE(has_command(doc(), "survey"));
    EXPECT_FALSE(has_command(doc(), "data"));
    EXPECT_FALSE(has_command(doc(), "other"));
    EXPECT_EQ(run_command(doc(), "SURVEY").printed, "7");
    EXPECT_EQ(run_command(doc(), "other").message, "no function definition: C:OTHER");
}

struct round_trip {
    const char* expression;
    const char* printed;
};

class LispVariable : public Lisp, public testing::WithParamInterface<round_trip>
{
};

TEST_P(LispVariable, GoesOutAndInAgain)
{
    const std::size_t blocks = heap_live_blocks();
    run(std::string("(setq a ") + GetParam().expression + ")");
    resbuf* list = nullptr;
    ASSERT_EQ(acedGetSym("A", &list), RTNORM);
    ASSERT_EQ(acedPutSym("b", list), RTNORM);
    acutRelRb(list);
    EXPECT_EQ(value("b"), GetParam().printed);
    EXPECT_EQ(heap_live_blocks(), blocks);
}

INSTANTIATE_TEST_SUITE_P(Values, LispVariable,
                         testing::Values(round_trip{"5", "5"}, round_trip{"-32769", "-32769"},
                                         round_trip{"1.5", "1.5"}, round_trip{"\"x\"", "\"x\""},
                                         round_trip{"'(1 2 3)", "(1 2 3)"},
                                         round_trip{"'(1.0 2 3.0)", "(1.0 2.0 3.0)"},
                                         round_trip{"'(1.0 2.0)", "(1.0 2.0)"},
                                         round_trip{"'((1 . 2) (\"a\" (3)))", "((1 . 2) (\"a\" (3)))"},
                                         round_trip{"'((1.0 2.0) (3.0 4.0 5.0))", "((1.0 2.0) (3.0 4.0 5.0))"},
                                         round_trip{"'(a . (1 . \"x\"))", "(\"A\" 1 . \"x\")"},
                                         round_trip{"'(1 nil t)", "(1 nil T)"}, round_trip{"t", "T"},
                                         round_trip{"nil", "nil"}, round_trip{"car", "nil"}));

TEST_F(Lisp, IntegerIsAShortWhereItFits)
{
    run("(setq a 32767 b 32768)");
    const list_ptr a(variable(doc(), "a")), b(variable(doc(), "B"));
    EXPECT_EQ(a->restype, RTSHORT);
    EXPECT_EQ(b->restype, RTLONG);
    EXPECT_EQ(b->resval.rlong, 32768);
}

TEST_F(Lisp, UnsetVariableIsNoText)
{
    resbuf* list = nullptr;
    EXPECT_EQ(acedGetSym("nosuch", &list), RTNORM);
    EXPECT_EQ(list, nullptr);
    EXPECT_EQ(acedGetSym(nullptr, &list), RTERROR);
    EXPECT_EQ(acedPutSym("", nullptr), RTERROR);
}

TEST_F(Lisp, AnswerIsAnExpressionOrAVariable)
{
    run("(setq p '(1.0 2.0 3.0))");
    list_ptr list;
    ASSERT_TRUE(answer_value(doc(), "!p", &list));
    EXPECT_EQ(list->restype, RT3DPOINT);
    ASSERT_TRUE(answer_value(doc(), "(+ 1 2)", &list));
    EXPECT_EQ(list->resval.rint, 3);
    ASSERT_TRUE(answer_value(doc(), "!nosuch", &list));
    EXPECT_FALSE(list);
    EXPECT_FALSE(answer_value(doc(), "(car 5)", &list));
}

TEST_F(Lisp, InvokeCallsAFunctionOfTheProgram)
{
    run("(defun add (a b) (+ a b)) (defun bad () (car 5)) (setq data 5)");
    list_builder call;
    call.add(rb_text(RTSTR, "add")).add(rb_int(RTSHORT, 2)).add(rb_real(RTREAL, 1.5));
    const list_ptr list(call.take());
    resbuf* result = nullptr;
    ASSERT_EQ(acedInvoke(list.get(), &result), RTNORM);
    EXPECT_EQ(result->resval.rreal, 3.5);
    acutRelRb(result);
    for (const char* name : {"bad", "nosuch", "data"}) {
        const list_ptr failing(rb_text(RTSTR, name));
        EXPECT_EQ(acedInvoke(failing.get(), &result), RTERROR) << name;
        EXPECT_EQ(result, nullptr);
    }
}

// A module of one function, `m:twice`, that hands its arguments back as a list, and `m:back`, which
// calls AutoLISP.
int module_calls = 0;
int small_module(int message, void*)
{
    switch (message) {
    case AcRx::kLoadDwgMsg:
        acedDefun("m:twice", 1);
        acedDefun("m:back", 2);
        acedDefun("m:void", 3);
        break;
    case AcRx::kInvkSubrMsg: {
        ++module_calls;
        const list_ptr given(acedGetArgs());
        if (acedGetFunCode() == 1) {
            acedRetList(given.get());
        } else if (acedGetFunCode() == 2) {
            resbuf* result = nullptr;
            acedInvoke(given.get(), &result);
            acutRelRb(result);
        } else {
            acedRetVoid();
        }
        break;
    }
    default:
        break;
    }
    return 0;
}

class LispWithModule : public Lisp
{
protected:
    void SetUp() override
    {
        Lisp::SetUp();
        module_calls = 0;
        load_module(small_module, "small");
    }
    void TearDown() override
    {
        Lisp::TearDown();
        unload_all_modules();
    }
};

TEST_F(LispWithModule, ExternalFunctionIsAValueOfItsSymbol)
{
    EXPECT_EQ(value("(type m:twice)"), "EXRXSUBR");
    EXPECT_EQ(value("(m:twice 1 '(2.0 3.0) \"x\" '(1 . 2) nil t)"), "(1 (2.0 3.0) \"x\" (1 . 2) nil T)");
    EXPECT_EQ(value("(mapcar 'm:twice '(1 2))"), "((1) (2))");
    EXPECT_EQ(value("(apply m:twice '(1 2))"), "(1 2)");
    EXPECT_EQ(value("(m:void)"), "");
    EXPECT_EQ(value("(boundp 'm:twice)"), "T");
    EXPECT_EQ(value("(progn (defun m:twice () 5) (m:twice))"), "5"); // the program's own goes first
}

TEST_F(LispWithModule, ErrorWithinACallBackStaysThere)
{
    EXPECT_EQ(run("(defun bad () (car 5)) (m:back \"bad\") (setq went-on t)").how, ending::done);
    EXPECT_EQ(value("went-on"), "T");
}

TEST_F(LispWithModule, StopWithinACallBackEndsTheProgram)
{
    EXPECT_EQ(run("(defun quits () (exit)) (m:back \"quits\") (setq went-on t)").how, ending::stopped);
    EXPECT_EQ(value("went-on"), "nil");
    EXPECT_EQ(value("(+ 1 2)"), "3");
}

// ---- all tables

std::string wrong_for(char letter)
{
    const char small = static_cast<char>(letter >= 'A' && letter <= 'Z' ? letter + 32 : letter);
    switch (small) {
    case '.':
        return "";
    case 'n':
    case 'i':
    case 'd':
        return "\"x\"";
    case 'l':
    case 'c':
    case 'y':
    case 'e':
    case 'p':
    case 'f':
    case 's':
        return "5";
    default:
        ADD_FAILURE() << "unknown letter " << letter;
        return "";
    }
}

std::string right_for(char letter)
{
    switch (letter) {
    case 'n':
    case 'i':
        return "1";
    case 's':
        return "\"x\"";
    case 'y':
        return "'a";
    case 'c':
        return "'(1)";
    case 'd':
        return "'(1.0 2.0)";
    default:
        return letter >= 'A' && letter <= 'Z' ? "nil" : letter == 'l' ? "nil" : "";
    }
}

TEST_F(Lisp, EveryFunctionRefusesWrongCounts)
{
    for (const auto table : builtin_tables())
        for (const builtin& b : table) {
            if (b.minimum > 0) {
                EXPECT_EQ(run("(" + std::string(b.name) + ")").message, "too few arguments") << b.name;
            }
            if (b.maximum < 0)
                continue;
            std::string call = "(" + std::string(b.name);
            for (int i = 0; i <= b.maximum; ++i)
                call += " nil";
            EXPECT_EQ(run(call + ")").message, "too many arguments") << b.name;
        }
}

TEST_F(Lisp, EveryFunctionRefusesWrongTypes)
{
    int checked = 0;
    for (const auto table : builtin_tables())
        for (const builtin& b : table) {
            // The first letters are satisfied, the next one not.
            std::string call = "(" + std::string(b.name);
            const std::string types = b.types;
            for (std::size_t i = 0; i < types.size(); ++i) {
                const std::string wrong = wrong_for(types[i]);
                if (!wrong.empty() && static_cast<int>(i) + 1 >= b.minimum) {
                    const std::string message = run(call + " " + wrong + ")").message;
                    EXPECT_TRUE(message.starts_with("bad argument type: ") && message.ends_with(wrong))
                        << call << " " << wrong << ") " << message;
                    ++checked;
                }
                const std::string right = right_for(types[i]);
                if (right.empty() && types[i] != '.')
                    break;
                call += " " + (right.empty() ? "nil" : right);
            }
        }
    EXPECT_GT(checked, 150);
}

TEST_F(Lisp, EveryFunctionHasAProgram)
{
    std::string programs;
    for (const auto& entry : fs::recursive_directory_iterator(fs::path(ZENT_SOURCE_DIR) / "tests/host/lisp"))
        if (entry.path().extension() == ".lsp") {
            std::ostringstream all;
            all << std::ifstream(entry.path(), std::ios::binary).rdbuf();
            programs += all.str();
        }
    const auto used = [&](const std::string& name) {
        for (const char* before : {"(", "'", " "})
            for (const char* behind : {" ", ")", "\n"})
                if (programs.find(before + name + behind) != programs.npos)
                    return true;
        return false;
    };
    for (const auto table : builtin_tables())
        for (const builtin& b : table)
            EXPECT_TRUE(used(b.name)) << b.name;
    for (const special_form& s : special_forms())
        EXPECT_TRUE(used(s.name)) << s.name;
}

TEST_F(Lisp, NoFunctionHasTwoEntries)
{
    std::set<std::string> names;
    for (const auto table : builtin_tables())
        for (const builtin& b : table)
            EXPECT_TRUE(names.insert(b.name).second) << b.name;
    for (const special_form& s : special_forms())
        EXPECT_TRUE(names.insert(s.name).second) << s.name;
}

} // namespace
