// Hooks, posted messages, timers and keys.
#include "hostapi/framework.h"
#include "tests/host/dialogs/window_session.h"

namespace
{

using namespace host::dialogs;

HHOOK older, newer;

void note_message(const char* who, unsigned message)
{
    heard().push_back(std::string(who) + " " + std::to_string(message));
}

unsigned sent(LPARAM lparam)
{
    return reinterpret_cast<const CWPSTRUCT*>(lparam)->message;
}
unsigned waiting(LPARAM lparam)
{
    return reinterpret_cast<const MSG*>(lparam)->message;
}

LRESULT older_hook(int code, WPARAM w, LPARAM l)
{
    note_message("older", sent(l));
    return CallNextHookEx(older, code, w, l) + 5;
}
LRESULT newer_hook(int code, WPARAM w, LPARAM l)
{
    const LRESULT next = CallNextHookEx(newer, code, w, l);
    note_message(("newer after " + std::to_string(next)).c_str(), sent(l));
    return next;
}
LRESULT last_word_hook(int, WPARAM, LPARAM l)
{
    note_message("alone", sent(l));
    return 0;
}
LRESULT leaving_hook(int code, WPARAM w, LPARAM l)
{
    note_message("leaving", sent(l));
    EXPECT_TRUE(UnhookWindowsHookEx(newer));
    EXPECT_FALSE(UnhookWindowsHookEx(newer));
    return CallNextHookEx(newer, code, w, l);
}
LRESULT older_filter(int code, WPARAM w, LPARAM l)
{
    note_message("older", waiting(l));
    return CallNextHookEx(older, code, w, l);
}
LRESULT swallows_keys(int code, WPARAM w, LPARAM l)
{
    note_message(("filter " + std::to_string(code)).c_str(), waiting(l));
    return waiting(l) == WM_KEYDOWN ? 1 : CallNextHookEx(newer, code, w, l);
}
LRESULT watches(int code, WPARAM w, LPARAM l)
{
    const auto* message = reinterpret_cast<const MSG*>(l);
    if (message->message == WM_TIMER)
        heard().push_back("timer " + std::to_string(message->wParam) + " of " + std::to_string(message->hwnd));
    else if (message->message == WM_KEYDOWN)
        heard().push_back("key " + std::to_string(message->wParam) + " of " + std::to_string(message->hwnd));
    return CallNextHookEx(newer, code, w, l);
}
LRESULT sends_more(int code, WPARAM w, LPARAM l)
{
    heard().emplace_back("more");
    SendMessageA(MAIN_WINDOW, 902, 0, 0);
    return CallNextHookEx(newer, code, w, l);
}

class Messages : public window_session
{
protected:
    static HHOOK hook(int kind, HOOKPROC procedure) { return SetWindowsHookExA(kind, procedure, 0, 0); }
};

TEST_F(Messages, HooksAreCalledNewestFirstAndAnswerTheNextOnes)
{
    older = hook(WH_CALLWNDPROC, older_hook);
    newer = hook(WH_CALLWNDPROC, newer_hook);
    SendMessageA(MAIN_WINDOW, 902, 23, 0);
    EXPECT_EQ(log(), "older 902; newer after 5 902");
    EXPECT_TRUE(UnhookWindowsHookEx(newer));
    SendMessageA(MAIN_WINDOW, 902, 23, 0);
    EXPECT_EQ(log(), "older 902");
    EXPECT_TRUE(UnhookWindowsHookEx(older));
    SendMessageA(MAIN_WINDOW, 902, 23, 0);
    EXPECT_EQ(log(), "");
}

TEST_F(Messages, HookThatCallsNoneHidesTheOlderOnes)
{
    older = hook(WH_CALLWNDPROC, older_hook);
    newer = hook(WH_CALLWNDPROC, last_word_hook);
    SendMessageA(MAIN_WINDOW, 902, 0, 0);
    EXPECT_EQ(log(), "alone 902");
    UnhookWindowsHookEx(older);
    UnhookWindowsHookEx(newer);
}

TEST_F(Messages, HookMayRemoveItselfAndStillCallTheNext)
{
    older = hook(WH_CALLWNDPROC, older_hook);
    newer = hook(WH_CALLWNDPROC, leaving_hook);
    SendMessageA(MAIN_WINDOW, 902, 0, 0);
    EXPECT_EQ(log(), "leaving 902; older 902");
    EXPECT_EQ(hook_count(), 1);
    SendMessageA(MAIN_WINDOW, 902, 0, 0);
    EXPECT_EQ(log(), "older 902");
    UnhookWindowsHookEx(older);
}

TEST_F(Messages, HooksOfTheOtherKindDoNotMix)
{
    older = hook(WH_MSGFILTER, older_filter);
    SendMessageA(MAIN_WINDOW, 902, 0, 0); // sent, not waiting in a loop
    EXPECT_EQ(log(), "");
    PostMessageA(MAIN_WINDOW, 902, 0, 0);
    EXPECT_EQ(log(), "");
    turn();
    EXPECT_EQ(log(), "older 902");
    UnhookWindowsHookEx(older);
    EXPECT_EQ(hook(3, older_filter), 0u); // no kind that the host has
    EXPECT_EQ(hook(WH_MSGFILTER, nullptr), 0u);
    EXPECT_FALSE(UnhookWindowsHookEx(99999));
    EXPECT_EQ(CallNextHookEx(99999, 0, 0, 0), 0);
}

TEST_F(Messages, HookThatSendsForEachMessageComesToAnEnd)
{
    newer = hook(WH_CALLWNDPROC, sends_more);
    SendMessageA(MAIN_WINDOW, 902, 0, 0);
    EXPECT_GT(heard().size(), 1u);
    EXPECT_LT(heard().size(), 1000u);
    UnhookWindowsHookEx(newer);
}

TEST_F(Messages, SwallowedMessageGoesNoFurther)
{
    older = hook(WH_CALLWNDPROC, older_hook);
    newer = hook(WH_MSGFILTER, swallows_keys);
    PostMessageA(MAIN_WINDOW, WM_KEYDOWN, VK_F1, 0);
    PostMessageA(MAIN_WINDOW, 902, 0, 0);
    EXPECT_TRUE(run_messages(loop::dialog).empty());
    EXPECT_EQ(log(), "filter 0 256; filter 0 902; older 902");
    UnhookWindowsHookEx(newer);
    PostMessageA(MAIN_WINDOW, WM_KEYDOWN, VK_F1, 0);
    EXPECT_EQ(run_messages(loop::dialog), std::vector<WPARAM>{VK_F1});
    UnhookWindowsHookEx(older);
}

TEST_F(Messages, MessagesOfAWindowGoWithIt)
{
    newer = hook(WH_MSGFILTER, swallows_keys);
    made(": button { key = \"b\"; }");
    const HWND gone = GetActiveWindow();
    PostMessageA(gone, WM_KEYDOWN, VK_F1, 0);
    SetTimer(gone, 4, 100, nullptr);
    end_all_dialogs();
    heard().clear();
    turn();
    EXPECT_EQ(log(), "filter 0 15"); // the drawing that it lay over
    UnhookWindowsHookEx(newer);
}

TEST_F(Messages, TimersComeInEachLoopUntilKilled)
{
    newer = hook(WH_MSGFILTER, watches);
    EXPECT_TRUE(SetTimer(DRAWING_WINDOW, 0, 100, nullptr));
    EXPECT_EQ(SetTimer(MAIN_WINDOW, 7, 50, nullptr), 7u);
    EXPECT_EQ(log(), "");
    turn(); // however long it took: one message each
    EXPECT_EQ(log(), "timer 7 of 1; timer 0 of 3");
    EXPECT_TRUE(KillTimer(MAIN_WINDOW, 7));
    EXPECT_FALSE(KillTimer(MAIN_WINDOW, 7));
    turn(loop::prompt);
    EXPECT_EQ(log(), "timer 0 of 3");
    EXPECT_TRUE(KillTimer(DRAWING_WINDOW, 0));
    turn();
    EXPECT_EQ(log(), "");
    EXPECT_EQ(SetTimer(99999, 1, 10, nullptr), 0u);
    UnhookWindowsHookEx(newer);
}

TEST_F(Messages, TimerSetAgainTakesTheNewTime)
{
    host::run_settings().clock = "20260131.120000"; // the machine's clock takes no part
    newer = hook(WH_MSGFILTER, watches);
    SetTimer(MAIN_WINDOW, 7, 100, nullptr);
    SetTimer(MAIN_WINDOW, 7, 2500, nullptr);
    EXPECT_EQ(timer_count(), 1);
    turn();
    turn();
    EXPECT_EQ(log(), "");
    turn(); // the third second
    EXPECT_EQ(log(), "timer 7 of 1");
    KillTimer(MAIN_WINDOW, 7);
    UnhookWindowsHookEx(newer);
}

void note_timer(HWND window, unsigned message, std::uintptr_t id, DWORD)
{
    heard().push_back("called " + std::to_string(window) + " " + std::to_string(message) + " " +
                      std::to_string(id));
}

TEST_F(Messages, TimerMayHaveAProcedureAndNoWindow)
{
    const std::uintptr_t id = SetTimer(0, 0, 20, reinterpret_cast<void*>(note_timer));
    EXPECT_NE(id, 0u);
    turn();
    EXPECT_EQ(log(), "called 0 275 " + std::to_string(id));
    EXPECT_TRUE(KillTimer(0, id));
}

TEST_F(Messages, PumpTakesOneMessageAtATime)
{
    CWinApp* const application = acedGetAcadWinApp();
    newer = hook(WH_MSGFILTER, watches);
    EXPECT_EQ(application->PumpMessage(), 0);
    PostMessageA(MAIN_WINDOW, WM_KEYDOWN, 65, 0);
    PostMessageA(MAIN_WINDOW, WM_KEYDOWN, 66, 0);
    SetTimer(MAIN_WINDOW, 7, 100, nullptr);
    EXPECT_EQ(application->PumpMessage(), 1);
    EXPECT_EQ(log(), "key 65 of 1");
    EXPECT_EQ(application->PumpMessage(), 1);
    EXPECT_EQ(log(), "key 66 of 1");
    pass_time(100);
    EXPECT_EQ(application->PumpMessage(), 1);
    EXPECT_EQ(log(), "timer 7 of 1");
    EXPECT_EQ(application->PumpMessage(), 0);
    KillTimer(MAIN_WINDOW, 7);
    UnhookWindowsHookEx(newer);
    run_messages(loop::prompt);
}

TEST_F(Messages, TraceTellsOfHooksAndTimers)
{
    traced();
    newer = hook(WH_MSGFILTER, watches);
    SetTimer(MAIN_WINDOW, 7, 100, nullptr);
    KillTimer(MAIN_WINDOW, 7);
    SendMessageA(MAIN_WINDOW, 902, 23, 0);
    UnhookWindowsHookEx(newer);
    const std::string number = std::to_string(newer);
    EXPECT_EQ(traced(), "SetWindowsHookExA -1 -> " + number + "\nSetTimer 1 7 100 -> 7\nKillTimer 1 7 -> 1\n" +
                            "SendMessageA 1 902 -> 0\nUnhookWindowsHookEx " + number + " -> 1\n");
}

// ---- keys by answers

TEST_F(Messages, KeyInADialogIsThatOfTheActiveWindow)
{
    newer = hook(WH_MSGFILTER, watches);
    const ads_hdlg dialog = made(": edit_box { key = \"e\"; } ok_cancel;");
    const std::string window = std::to_string(GetActiveWindow());
    EXPECT_EQ(run(dialog, "@key F2\n@key x\n@key f12\n!accept\n"), 1);
    EXPECT_EQ(log(), "key 113 of " + window + "; key 88 of " + window + "; key 123 of " + window);
    UnhookWindowsHookEx(newer);
}

TEST_F(Messages, KeyThatNobodySwallowsDoesWhatTheHostDoes)
{
    const char* const tiles = ": edit_box { key = \"e\"; } ok_cancel;";
    EXPECT_EQ(run(made(tiles), "@key F1\n@key Enter\n"), 1);
    EXPECT_NE(history.find("[help] there is no page"), std::string::npos);
    EXPECT_EQ(run(made(tiles), "@key Esc\n"), 0);
    history.clear();
    EXPECT_EQ(run(made(tiles), "@key F13\n@key\n@keys F1\n!accept\n"), 1);
    EXPECT_NE(history.find("There is no key 'F13'"), std::string::npos);
    EXPECT_NE(history.find("There is no key ''"), std::string::npos);
    EXPECT_NE(history.find("A dialog is answered with"), std::string::npos); // no key line at all
}

TEST_F(Messages, SwallowedF1OpensNoHelpOfTheHost)
{
    newer = hook(WH_MSGFILTER, swallows_keys);
    EXPECT_EQ(run(made(": edit_box { key = \"e\"; } ok_cancel;"), "@key F1\n!accept\n"), 1);
    EXPECT_EQ(history.find("[help]"), std::string::npos);
    // The key that comes up again is the next message that a filter sees.
    EXPECT_NE(log().find("filter 0 256; filter 0 257"), std::string::npos);
    UnhookWindowsHookEx(newer);
}

TEST_F(Messages, PromptComesAgainBehindAKey)
{
    host::answers_from_text("@key F1\n12\n");
    int value = 0;
    EXPECT_EQ(acedGetInt("\nHow many: ", &value), RTNORM);
    EXPECT_EQ(value, 12);
    EXPECT_EQ(history, "How many: @key F1\n[help] there is no page 'host.html' in zentrik.chm\nHow many: 12\n");
}

TEST_F(Messages, EscapeCancelsAPromptAndEnterAnswersIt)
{
    int value = 0;
    host::answers_from_text("@key Esc\n@key Enter\n");
    EXPECT_EQ(acedGetInt("\nHow many: ", &value), RTCAN);
    EXPECT_EQ(acedGetInt("\nHow many: ", &value), RTNONE);
}

TEST_F(Messages, PromptsFilterWithTheirOwnCode)
{
    newer = hook(WH_MSGFILTER, swallows_keys);
    host::answers_from_text("@key F1\n12\n");
    int value = 0;
    acedGetInt("\nHow many: ", &value);
    EXPECT_EQ(log(), "filter 8 256; filter 8 257");
    EXPECT_EQ(history, "How many: @key F1\nHow many: 12\n");
    UnhookWindowsHookEx(newer);
}

TEST_F(Messages, MessageBoxHasALoopToo)
{
    newer = hook(WH_MSGFILTER, watches);
    SetTimer(MAIN_WINDOW, 7, 100, nullptr);
    host::answers_from_text("@key F2\nyes\n");
    EXPECT_EQ(MessageBoxA(1, "Sure?", "T", MB_YESNO), IDYES);
    EXPECT_EQ(log(), "timer 7 of 1; key 113 of 1; timer 7 of 1");
    EXPECT_EQ(history, "[message] T: Sure? (yes/no) @key F2\n[message] T: Sure? (yes/no) yes\n");
    KillTimer(MAIN_WINDOW, 7);
    UnhookWindowsHookEx(newer);
    turn();
}

TEST_F(Messages, FilterMayEndTheDialog)
{
    static ads_hdlg dialog;
    dialog = made(": edit_box { key = \"e\"; } ok_cancel;");
    newer = hook(WH_MSGFILTER, [](int, WPARAM, LPARAM l) -> LRESULT {
        if (waiting(l) == WM_TIMER)
            ads_done_dialog(dialog, 9);
        return 0;
    });
    SetTimer(GetActiveWindow(), 1, 100, nullptr);
    EXPECT_EQ(run(dialog, "!accept\n"), 9);
    EXPECT_EQ(host::next_answer(""), "!accept"); // not taken
    UnhookWindowsHookEx(newer);
}

} // namespace
