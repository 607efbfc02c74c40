// The two hooks: what each message does, what is handed on, what is swallowed.
#include <gtest/gtest.h>

#include <cstring>

#include "common/tracking.h"
#include "shell/framework.h"
#include "shell/hooks.h"
#include "shell/screen_marks.h"
#include "tests/shell/life/stand_ins.h"

namespace
{

class Hooks : public testing::Test
{
protected:
    LRESULT sent(unsigned message, WPARAM wparam = 0, int code = 0)
    {
        const CWPSTRUCT record{0, wparam, message, 9};
        return window_hook(code, 0, reinterpret_cast<LPARAM>(&record));
    }
    LRESULT filtered(unsigned message, WPARAM wparam = 0, int code = 0)
    {
        const MSG record{9, message, wparam, 0, 0, 0, 0};
        return filter_hook(code, 0, reinterpret_cast<LPARAM>(&record));
    }
    life_session session;
};
using WindowHook = Hooks;
using FilterHook = Hooks;

TEST_F(Hooks, AreInstalledOnTheCallingThreadAndTakenBack)
{
    hooks_install();
    EXPECT_EQ(noted(), "hook:4,window,5,77 hook:-1,filter,5,77");
    hooks_remove();
    EXPECT_EQ(noted(), "unhook:41 unhook:42");
}

// ---- messages on their way to windows

TEST_F(WindowHook, ANegativeCodeOnlyGoesOn)
{
    for (const LRESULT next : {0, 6}) {
        life.next_hook = next;
        EXPECT_EQ(window_hook(-1, 0, 0), next);
        EXPECT_EQ(noted(), "next:-1");
    }
}

TEST_F(WindowHook, OtherMessagesAnswerWhatTheNextHookDoes)
{
    for (const LRESULT next : {0, 6})
        for (const unsigned message : {0u, 1u, 16u, 275u, 901u, 903u}) {
            life.next_hook = next;
            EXPECT_EQ(sent(message, 23), next);
            EXPECT_EQ(noted(), "next:0") << message;
        }
}

TEST_F(WindowHook, PaintingDrawsTheMarksThatAreSet)
{
    framework_set_up();
    noted();
    EXPECT_EQ(sent(WM_PAINT), 0);
    EXPECT_EQ(noted(), "next:0");
    screen_mark_set(2, 10.0, 20.0);
    EXPECT_EQ(sent(WM_PAINT), 0);
    EXPECT_EQ(noted(), "next:0 pixel:2,10,20,0");
    screen_mark_set(1, 30.0, 40.0);
    EXPECT_EQ(sent(WM_PAINT), 0);
    EXPECT_EQ(noted(), "next:0 pixel:2,30,40,0 pixel:2,10,20,0");
    life.next_hook = 6;
    EXPECT_EQ(sent(WM_PAINT), 6);
    EXPECT_EQ(noted(), "next:0");
}

TEST_F(WindowHook, AWindowThatGoesFreesItsPreviews)
{
    EXPECT_EQ(sent(WM_DESTROY), 0);
    EXPECT_EQ(noted(), "next:0 destroyed:9");
    life.next_hook = 6;
    EXPECT_EQ(sent(WM_DESTROY), 6);
    EXPECT_EQ(noted(), "next:0");
}

TEST_F(WindowHook, AWindowThatIsWipedDrawsItsPreviewsAgainWhateverTheAnswer)
{
    for (const LRESULT next : {0, 6}) {
        life.next_hook = next;
        EXPECT_EQ(sent(WM_ERASEBKGND), next);
        EXPECT_EQ(noted(), "next:0 erased:9");
    }
}

TEST_F(WindowHook, PenInputStartsTheKeyboard)
{
    EXPECT_EQ(sent(902, 23), 1);
    EXPECT_EQ(noted(), "next:0 process:sk.exe,32 handle:82 handle:81 focus:9");
    EXPECT_EQ(life.printed, "Keyboard started\n");
    const STARTUPINFO zeroed{};
    EXPECT_EQ(std::memcmp(&life.startup, &zeroed, 68), 0);
}

TEST_F(WindowHook, AKeyboardThatCannotStartIsTold)
{
    life.process_starts = false;
    EXPECT_EQ(sent(902, 23), 1);
    EXPECT_EQ(noted(), "next:0 process:sk.exe,32 focus:9");
    EXPECT_EQ(life.printed, "Error: Keyboard could not start\n");
}

TEST_F(WindowHook, PenInputThatAnotherHookTookOrOfAnotherKindStartsNothing)
{
    EXPECT_EQ(sent(902, 22), 0);
    EXPECT_EQ(noted(), "next:0");
    life.next_hook = 6;
    EXPECT_EQ(sent(902, 23), 6);
    EXPECT_EQ(noted(), "next:0");
    EXPECT_EQ(life.printed, "");
}

// ---- messages of dialogs

TEST_F(FilterHook, ANegativeCodeOnlyGoesOn)
{
    help_pending = 4;
    life.next_hook = 6;
    EXPECT_EQ(filter_hook(-1, 0, 0), 6);
    EXPECT_EQ(noted(), "next:-1");
    EXPECT_EQ(help_pending, 4);
}

TEST_F(FilterHook, TheHelpKeyInAFunctionIsSwallowedAndAnsweredAtTheNextMessage)
{
    lisp_active = 1;
    EXPECT_EQ(filtered(WM_KEYDOWN, VK_F1), 1);
    EXPECT_EQ(help_pending, 4);
    EXPECT_EQ(noted(), "");
    EXPECT_EQ(filtered(0), 0);
    EXPECT_EQ(noted(), "help next:0");
    EXPECT_EQ(life.pending_in_help, -1);
    EXPECT_EQ(help_pending, 0);
    filtered(0);
    EXPECT_EQ(noted(), "next:0");
}

TEST_F(FilterHook, TheHelpKeyTwiceIsHelpOnce)
{
    lisp_active = 1;
    filtered(WM_KEYDOWN, VK_F1);
    EXPECT_EQ(filtered(WM_KEYDOWN, VK_F1), 1);
    EXPECT_EQ(help_pending, 4);
    help_pending = -1; // while help runs
    EXPECT_EQ(filtered(WM_KEYDOWN, VK_F1), 1);
    EXPECT_EQ(help_pending, -1);
    EXPECT_EQ(filtered(0), 0);
    EXPECT_EQ(noted(), "next:0");
}

TEST_F(FilterHook, TheHelpKeyElsewhereIsTheHosts)
{
    struct {
        int command, function;
    } const cases[] = {{0, 0}, {1, 0}, {1, 1}};
    for (const auto& c : cases) {
        cmd_active = c.command;
        lisp_active = c.function;
        EXPECT_EQ(filtered(WM_KEYDOWN, VK_F1), 0);
        EXPECT_EQ(help_pending, 0);
        EXPECT_EQ(noted(), "next:0");
    }
}

TEST_F(FilterHook, OtherKeysAndOtherMessagesOfThatKeyGoOn)
{
    lisp_active = 1;
    for (const WPARAM key : {111, 113})
        EXPECT_EQ(filtered(WM_KEYDOWN, key), 0);
    EXPECT_EQ(filtered(257, VK_F1), 0);
    EXPECT_EQ(help_pending, 0);
}

TEST_F(FilterHook, ATimerOfAPreviewIsSwallowedBeforeHelpIsLookedAt)
{
    help_pending = 4;
    life.tile_is_due = true;
    EXPECT_EQ(filtered(WM_TIMER), 1);
    EXPECT_EQ(noted(), "due:9");
    EXPECT_EQ(help_pending, 4);
    life.tile_is_due = false;
    life.next_hook = 6;
    EXPECT_EQ(filtered(WM_TIMER), 6);
    EXPECT_EQ(noted(), "due:9 help next:0");
}

} // namespace
