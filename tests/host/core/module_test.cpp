#include "host/core/module.h"

#include <gtest/gtest.h>

#include "host/core/document.h"
#include "host/core/heap.h"
#include "host/core/trace.h"
#include "hostapi/editor.h"

// A guest that defines two functions and keeps what it was told.
namespace
{

std::string told;
bool left_during_call = false;
std::string reason;

int call()
{
    resbuf* arguments = acedGetArgs();
    const int code = acedGetFunCode();
    if (code == 1) {
        acedRetNil();
        int sum = 0;
        for (const resbuf* node = arguments; node; node = node->rbnext)
            sum += node->resval.rint;
        acedRetInt(sum);
    } else if (code == 2) { // through the host to the first function
        resbuf* inner = acutBuildList(RTSTR, "g:sum", RTSHORT, 40, RTSHORT, 2, RTNONE);
        resbuf* result = nullptr;
        acedInvoke(inner, &result);
        acedRetList(result);
        acutRelRb(inner);
        acutRelRb(result);
    } else if (code == 4) {
        left_during_call = host::unload_module("guest", &reason);
        host::unload_all_modules();
    }
    acutRelRb(arguments);
    return 0;
}

int guest(int message, void* packet)
{
    told += static_cast<char>('0' + message);
    switch (message) {
    case AcRx::kInitAppMsg:
        acrxUnlockApplication(packet);
        break;
    case AcRx::kLoadDwgMsg:
        acedDefun("G:SUM", 1);
        acedDefun("g:nested", 2);
        acedDefun("g:quiet", 3);
        acedDefun("g:unload", 4);
        break;
    case AcRx::kUnloadDwgMsg:
        acedUndef("g:sum", 1);
        break;
    case AcRx::kInvkSubrMsg:
        return call();
    default:
        break;
    }
    return 0;
}

class Modules : public testing::Test
{
protected:
    void SetUp() override
    {
        told.clear();
        host::open_document();
        ASSERT_TRUE(host::load_module(guest, "guest"));
    }
    void TearDown() override
    {
        host::unload_all_modules();
        host::close_all_documents();
    }
};

TEST_F(Modules, LoadTellsTheModuleAndItsFunctionsAreCalled)
{
    EXPECT_EQ(told, "13");
    EXPECT_TRUE(host::is_external("G:Sum"));
    const std::size_t blocks = host::heap_live_blocks();
    const host::list_ptr arguments(acutBuildList(RTSHORT, 3, RTSHORT, 4, RTNONE));
    EXPECT_EQ(host::printed_list(host::call_external("g:sum", arguments.get()).get(), false), "(7)");
    EXPECT_EQ(told, "135");
    EXPECT_EQ(host::heap_live_blocks(), blocks + 2);
}

TEST_F(Modules, CallsNestThroughInvoke)
{
    EXPECT_EQ(host::printed_list(host::call_external("g:nested", nullptr).get(), false), "((42))");
}

TEST_F(Modules, FunctionThatAnswersNothingGivesNil)
{
    EXPECT_EQ(host::call_external("g:quiet", nullptr)->restype, RTNIL);
    EXPECT_EQ(host::call_external("g:none", nullptr), nullptr);
}

TEST_F(Modules, EachDrawingHasItsOwnFunctions)
{
    host::document& first = host::current_document();
    host::document& second = host::open_document();
    EXPECT_FALSE(host::is_external("g:sum"));
    host::tell_drawing_loaded(second);
    EXPECT_TRUE(host::is_external("g:sum"));
    host::tell_drawing_unloaded(second);
    EXPECT_FALSE(host::is_external("g:sum"));
    host::make_current(first);
    EXPECT_TRUE(host::is_external("g:sum"));
}

TEST_F(Modules, UnloadTakesTheFunctionsAway)
{
    EXPECT_TRUE(host::unload_module("guest"));
    EXPECT_FALSE(host::is_external("g:sum"));
    EXPECT_TRUE(host::loaded_modules().empty());
    EXPECT_FALSE(host::unload_module("guest"));
}

TEST_F(Modules, StayUntilTheirCallHasEnded)
{
    left_during_call = true;
    EXPECT_EQ(host::call_external("g:unload", nullptr)->restype, RTNIL);
    EXPECT_FALSE(left_during_call);
    EXPECT_TRUE(host::is_external("g:sum"));
    EXPECT_TRUE(host::unload_module("guest"));
}

TEST_F(Modules, UnloadIsToldPerDrawingFirst)
{
    host::tell_drawing_loaded(host::open_document());
    told.clear();
    EXPECT_TRUE(host::unload_module("C:\\BIN\\Guest.arx"));
    EXPECT_EQ(told, "442");
}

TEST_F(Modules, RefusalsSayWhy)
{
    const auto stubborn = [](int, void*) { return 0; }; // never unlocked
    ASSERT_TRUE(host::load_module(stubborn, "stubborn.so"));
    std::string why;
    EXPECT_FALSE(host::unload_module("stubborn", &why));
    EXPECT_EQ(why, "stubborn.so is locked and cannot be unloaded.");
    EXPECT_TRUE(host::is_loaded("STUBBORN.arx"));
    EXPECT_FALSE(host::load_module(stubborn, "Stubborn.so", &why));
    EXPECT_EQ(why, "Stubborn.so is already loaded.");
    EXPECT_FALSE(host::unload_module("nobody", &why));
    EXPECT_EQ(why, "nobody is not loaded.");
    left_during_call = false;
    host::call_external("g:unload", nullptr);
    EXPECT_EQ(reason, "guest is at work and cannot be unloaded.");
}

TEST_F(Modules, MissingSharedObjectIsRefused)
{
    EXPECT_FALSE(host::load_module("/nowhere/nothing.so"));
}

TEST(ModulesOutsideACall, NoCodeNoArgumentsNoResult)
{
    EXPECT_LT(acedGetFunCode(), 0);
    EXPECT_EQ(acedGetArgs(), nullptr);
    EXPECT_EQ(acedRetInt(1), RTERROR);
}

} // namespace
