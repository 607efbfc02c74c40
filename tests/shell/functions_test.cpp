// The functions given to AutoLISP: where they are defined, how calls are told apart, what they answer.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "common/directories.h"
#include "common/text_buffer.h"
#include "common/tracking.h"
#include "common/user_break.h"
#include "host/core/console.h"
#include "host/core/document.h"
#include "host/core/heap.h"
#include "host/core/module.h"
#include "hostapi/ads.h"
#include "hostapi/editor.h"
#include "shell/functions.h"
#include "tests/shell/module_session.h"

extern "C" int acrxGetApiVersion();
extern "C" void _SetacrxPtp();

namespace
{

const std::vector<std::string> NAMES = {"cf:zentutil",   "cf:chgpnts",   "cf:ztedit",      "cf:txtenl",
                                        "cf:print_line", "cf:report_up", "cf:map_zentutil"};

bool all_defined()
{
    return std::all_of(NAMES.begin(), NAMES.end(), [](const std::string& n) { return host::is_external(n); });
}

bool any_defined()
{
    return std::any_of(NAMES.begin(), NAMES.end(), [](const std::string& n) { return host::is_external(n); });
}

TEST(Functions, StandInTheTableByTheirCodes)
{
    ASSERT_EQ(NAMES.size(), static_cast<std::size_t>(LISP_FUNCTION_COUNT));
    for (std::size_t code = 0; code < NAMES.size(); ++code)
        EXPECT_EQ(LISP_FUNCTIONS[code].name, NAMES[code]);
    EXPECT_EQ(LISP_FUNCTIONS[1].nil, nil_answer::before);
    for (const int code : {2, 3, 4, 5})
        EXPECT_EQ(LISP_FUNCTIONS[code].nil, nil_answer::after) << code;
    for (const int code : {0, 6})
        EXPECT_EQ(LISP_FUNCTIONS[code].nil, nil_answer::none) << code;
}

TEST(Functions, AreDefinedInEachDrawingAndTakenBackWithIt)
{
    module_session session;
    EXPECT_TRUE(all_defined());
    host::document& second = host::open_document();
    EXPECT_FALSE(any_defined());
    host::tell_drawing_loaded(second);
    EXPECT_TRUE(all_defined());
    host::tell_drawing_unloaded(second);
    EXPECT_FALSE(any_defined());
    host::close_document(second);
    EXPECT_TRUE(all_defined());
}

TEST(Functions, CannotBeDefinedWhenTheHostRefuses)
{
    // Outside a message of the host nothing can be defined.
    module_session session;
    EXPECT_EQ(lisp_defun_all(), RTERROR);
    EXPECT_EQ(lisp_undef_all(), RTNORM);
}

TEST(Functions, TheFourThatOnlyActAnswerNil)
{
    module_session session;
    for (const char* call : {"(cf:txtenl 0 (ssadd))", "(cf:report_up)", "(cf:print_line \"C:/\" \"\")"})
        EXPECT_EQ(session.lisp(call), "nil") << call;
}

TEST(Dispatch, OutsideACallThereIsNothingToRun)
{
    module_session session;
    user_break_set();
    EXPECT_EQ(lisp_dispatch(), 0);
    EXPECT_EQ(user_break(), 1); // left alone
    user_break_clear();
}

TEST(Dispatch, ClearsABreakThatIsLeftOver)
{
    module_session session;
    user_break_set();
    session.lisp("(cf:zentutil \"\" 51 \"A\")");
    EXPECT_EQ(user_break(), 0);
}

int odd_answer = -1;

int odd_entry(int message, void* packet)
{
    if (message == AcRx::kInitAppMsg)
        acrxUnlockApplication(packet);
    else if (message == AcRx::kLoadDwgMsg)
        acedDefun("cf:odd", LISP_FUNCTION_COUNT);
    else if (message == AcRx::kInvkSubrMsg)
        odd_answer = lisp_dispatch();
    return 0;
}

TEST(Dispatch, UnknownCodeIsAFaultAndAnswers0)
{
    module_session session;
    host::load_module(odd_entry, "odd");
    session.printed();
    EXPECT_EQ(session.lisp("(cf:odd)"), "nil");
    EXPECT_EQ(odd_answer, 0);
    EXPECT_NE(session.printed().find("Received nonexistent function code."), std::string::npos);
}

TEST(Dispatch, MapCallIsMarkedForItsLength)
{
    module_session session;
    session.name_drawing();
    int during = -1;
    host::answers_from([&]() -> std::optional<std::string> {
        during = in_map_call;
        return "^C";
    });
    EXPECT_EQ(session.lisp("(cf:map_zentutil \"\" 48 \"Title\" \"\" \"pln\" 0)"), "nil");
    EXPECT_EQ(during, 1);
    EXPECT_EQ(in_map_call, 0);
    EXPECT_EQ(session.lisp("(cf:zentutil \"\" 48 \"Title\" \"\" \"pln\" 0)"), "nil");
    EXPECT_EQ(during, 0);
    EXPECT_EQ(session.lisp("(cf:map_zentutil \"\" 51 \" A \")"), "\"A\"");
}

TEST(Entry, AlwaysAnswers0)
{
    for (const int message : {0, 2, 3, 4, 5, 99}) {
        module_session session;
        EXPECT_EQ(acrxEntryPoint(message, nullptr), 0) << message;
    }
}

TEST(Entry, LoadClearsTheRunningFunction)
{
    text_set(current_function, "OLD");
    module_session session;
    EXPECT_STREQ(current_function, "");
}

TEST(Entry, LoadReadsTheSymbolDirectory)
{
    module_session session;
    session.lisp("(setq psname \"C:/SYM/\")");
    host::unload_all_modules();
    host::load_module(acrxEntryPoint, "zentutil");
    EXPECT_STREQ(symbol_dir, "C:/SYM/");
}

TEST(Entry, UnlockedModuleCanBeUnloadedAndLoadedAgain)
{
    module_session session;
    EXPECT_TRUE(host::unload_module("zentutil"));
    EXPECT_FALSE(any_defined());
    EXPECT_TRUE(host::load_module(acrxEntryPoint, "zentutil"));
    EXPECT_TRUE(all_defined());
}

TEST(Entry, LoaderFindsItsOtherNames)
{
    EXPECT_EQ(acrxGetApiVersion(), 15);
    _SetacrxPtp();
}

} // namespace
