// LISP variables as text, the break latch, calls back through the host, the memory probe.
#include <gtest/gtest.h>

#include <cstring>

#include "common/directories.h"
#include "common/invoke.h"
#include "common/lisp_vars.h"
#include "common/memory_probe.h"
#include "common/user_break.h"
#include "host/core/document.h"
#include "host/core/module.h"
#include "host/core/session.h"
#include "hostapi/ads.h"
#include "hostapi/editor.h"
#include "tests/fakes/fake_host.h"

namespace
{

TEST(LispVariable, EachTypeAsText)
{
    host_session session;
    fake.lisp = {{"text", text_value(" as it is ")}, {"short", short_value(-12)}, {"real", real_value(0.1)},
                 {"long", long_value(70000)},        {"list", list_value()},      {"empty", text_value("")}};
    const std::pair<const char*, const char*> cases[] = {
        {"text", " as it is "}, {"short", "-12"}, {"real", "0.100000"}, {"long", ""},
        {"list", ""},           {"empty", ""},    {"unset", ""}};
    for (const auto& [name, text] : cases) {
        char out[32] = "before";
        lisp_get_text(out, name);
        EXPECT_STREQ(out, text) << name;
    }
    EXPECT_TRUE(session.heap_is_as_before());
}

TEST(LispVariable, LongTextIsCut)
{
    host_session session;
    fake.lisp["text"] = text_value("abcdef");
    char out[4];
    lisp_get_text(out, "text");
    EXPECT_STREQ(out, "abc");
}

TEST(LispVariable, IsSet)
{
    host_session session;
    lisp_set_text("name", "value");
    EXPECT_EQ(fake.lisp["name"].text, "value");
    EXPECT_EQ(session.printed, "");
    EXPECT_TRUE(session.heap_is_as_before());
}

TEST(LispVariable, RefusalIsTold)
{
    host_session session;
    fake.lisp_refuses = true;
    lisp_set_text("name", "value");
    EXPECT_EQ(session.printed, "Unable to set AutoLisp variable\n");
    EXPECT_TRUE(session.heap_is_as_before());
}

TEST(LispVariable, IsAnIntegerOnlyAsAnInteger)
{
    host_session session;
    fake.lisp = {{"zero", short_value(0)},
                 {"one", short_value(1)},
                 {"text", text_value("0")},
                 {"real", real_value(0.0)}};
    EXPECT_TRUE(lisp_is_integer("zero", 0));
    EXPECT_FALSE(lisp_is_integer("one", 0));
    EXPECT_TRUE(lisp_is_integer("one", 1));
    EXPECT_FALSE(lisp_is_integer("text", 0));
    EXPECT_FALSE(lisp_is_integer("real", 0));
    EXPECT_FALSE(lisp_is_integer("unset", 0));
    EXPECT_TRUE(session.heap_is_as_before());
}

TEST(UserBreak, OnceSeenStaysSeenUntilCleared)
{
    user_break_clear();
    EXPECT_EQ(user_break(), 0);
    host::request_break();
    EXPECT_EQ(user_break(), 1);
    host::clear_break();
    EXPECT_EQ(user_break(), 1);
    user_break_clear();
    EXPECT_EQ(user_break(), 0);
    user_break_set();
    EXPECT_EQ(user_break(), 1);
    user_break_clear();
}

std::string called; // arguments of the last call, each in brackets

int guest_entry(int message, void*)
{
    if (message == AcRx::kLoadDwgMsg) {
        acedDefun("cf:zentutil", 0);
        acedDefun("cf:print_line", 4);
    } else if (message == AcRx::kInvkSubrMsg) {
        called = std::to_string(acedGetFunCode());
        resbuf* args = acedGetArgs();
        for (const resbuf* a = args; a; a = a->rbnext)
            called += a->restype == RTSTR ? std::string(" [") + a->resval.rstring + "]"
                                          : " " + std::to_string(a->resval.rint);
        acutRelRb(args);
        acedRetStr("answer");
    }
    return 0;
}

TEST(Invoke, CallsGoThroughTheHostAndGiveAllBack)
{
    host::open_document();
    host::load_module(guest_entry, "guest");
    host_session session;
    text_set(data_dir, "C:\\DATA\\");
    invoke_print_line("a line");
    EXPECT_EQ(called, "4 [C:\\DATA\\] [a line]");
    invoke_help();
    EXPECT_EQ(called, "0 [C:\\DATA\\] 38");
    EXPECT_TRUE(session.heap_is_as_before());
    host::unload_all_modules();
    invoke_help(); // nobody is there: nothing happens
    EXPECT_TRUE(session.heap_is_as_before());
    host::close_all_documents();
}

TEST(MemoryProbe, TellsTheLossOfBothKinds)
{
    host_session session;
    fake.free_physical = 1000;
    fake.free_virtual = 5000;
    memory_probe_start("grid");
    fake.free_physical = 900;
    fake.free_virtual = 4500;
    memory_probe_report();
    EXPECT_EQ(session.printed, "Memory Loss in (grid) is 600 bytes \n");
}

TEST(MemoryProbe, GainIsANegativeLoss)
{
    host_session session;
    memory_probe_start("grid");
    fake.free_physical = 10;
    memory_probe_report();
    EXPECT_EQ(session.printed, "Memory Loss in (grid) is -10 bytes \n");
}

} // namespace
