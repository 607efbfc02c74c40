// message_loop.h: messages on their way to windows, the hooks that see them, timers, and the loops in which
// waiting ones are handled: a dialog between its answers, a prompt before its answer, PumpMessage.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hostapi/messages.h"

namespace host::dialogs
{

// What a WH_MSGFILTER hook gets as its code.
enum class loop { dialog = 0, prompt = 8 };

// Through the WH_CALLWNDPROC hooks to the window's own handling. A window that isn't there answers 0.
LRESULT send_message(HWND window, unsigned message, WPARAM wparam, LPARAM lparam);
// The text of WM_COPYDATA, up to its terminator.
std::string copied_text(const COPYDATASTRUCT& data);
// Its waiting messages and its timers.
void forget_messages_of(HWND window);

// One turn of a loop: posted messages, what has to be painted, due timers. Answers the keys (VK_...) that no
// hook has swallowed. Costs next to nothing when nothing waits.
std::vector<WPARAM> run_messages(loop where);
// Paints what waits for it, and handles nothing else.
void run_paints();
// Handles one message; false when none was waiting.
bool pump_message();

// Timers go by the host's clock, and the time that a person takes to answer is added at each loop: answers
// from a file come at once, and the runs are to be the same on each machine.
void pass_time(int milliseconds);

// ---- keys
// "@key F1": presses the key in the active window. False when the line is another one.
bool take_key_line(std::string_view line);
constexpr WPARAM VK_RETURN = 13, VK_ESCAPE = 27;

// The next answer at a prompt that the caller has shown, after a turn of the loop. Keys are pressed here, and
// the prompt comes again behind them. Nothing: the answers have run out.
std::optional<std::string> wait_for_answer(std::string_view prompt, loop where);
// What the host does by itself on F1.
void show_host_help();

// ---- what is held, for tests of what programs give back
int hook_count();
int timer_count();

} // namespace host::dialogs
