#include "shell/hooks.h"

#include <cstdint>

#include "common/tracking.h"
#include "hostapi/ads.h"
#include "launch/help.h"
#include "shell/framework.h"
#include "shell/screen_marks.h"
#include "symbols/preview_tiles.h"

namespace
{

constexpr LRESULT SWALLOWED = 1;

// The pen input of the system asks for a keyboard on the screen by this message.
constexpr unsigned PEN_MESSAGE = 902;
constexpr WPARAM PEN_KEYBOARD = 23;

constexpr int HELP_IDLE = 0;
constexpr int HELP_WANTED = 4;
constexpr int HELP_RUNNING = -1;

HHOOK window_messages = 0;
HHOOK filtered_messages = 0;

template <class Record>
const Record& record_at(LPARAM address)
{
    return *reinterpret_cast<const Record*>(static_cast<std::intptr_t>(address));
}

void start_keyboard()
{
    char command_line[] = "sk.exe";
    const STARTUPINFO startup{};
    PROCESS_INFORMATION process{};
    if (CreateProcessA(nullptr, command_line, nullptr, nullptr, 0, NORMAL_PRIORITY_CLASS, nullptr, nullptr,
                       &startup, &process)) {
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
        acutPrintf("Keyboard started\n");
    } else {
        acutPrintf("Error: Keyboard could not start\n");
    }
}

bool is_help_key(const MSG& message)
{
    return message.message == WM_KEYDOWN && message.wParam == VK_F1 && !cmd_active && lisp_active;
}

} // namespace

// The window's own procedure has had the message when the next hook is through; what is drawn here lies on
// top of what it has drawn.
LRESULT window_hook(int code, WPARAM wparam, LPARAM lparam)
{
    const LRESULT next = CallNextHookEx(window_messages, code, wparam, lparam);
    if (code < 0)
        return next;
    const CWPSTRUCT& sent = record_at<CWPSTRUCT>(lparam);
    if (sent.message == WM_ERASEBKGND)
        preview_dialog_erased(sent.hwnd);
    if (next != 0)
        return next;
    if (sent.message == WM_PAINT) {
        screen_marks_draw();
    } else if (sent.message == WM_DESTROY) {
        preview_dialog_destroyed(sent.hwnd);
    } else if (sent.message == PEN_MESSAGE && sent.wParam == PEN_KEYBOARD) {
        start_keyboard();
        SetFocus(sent.hwnd);
        return SWALLOWED;
    }
    return next;
}

// Help opens a dialog or a window, which must not happen inside the key press that asks for it: the key only
// leaves a note, and the message that comes next runs the help.
LRESULT filter_hook(int code, WPARAM wparam, LPARAM lparam)
{
    if (code < 0)
        return CallNextHookEx(filtered_messages, code, wparam, lparam);
    const MSG& message = record_at<MSG>(lparam);
    if (is_help_key(message)) {
        if (help_pending == HELP_IDLE)
            help_pending = HELP_WANTED;
        return SWALLOWED;
    }
    if (message.message == WM_TIMER && preview_tile_due(message.hwnd))
        return SWALLOWED;
    if (help_pending > HELP_IDLE) {
        help_pending = HELP_RUNNING;
        help_show();
        help_pending = HELP_IDLE;
    }
    return CallNextHookEx(filtered_messages, code, wparam, lparam);
}

void hooks_install()
{
    const DWORD thread = GetCurrentThreadId();
    window_messages = SetWindowsHookExA(WH_CALLWNDPROC, window_hook, module_instance, thread);
    filtered_messages = SetWindowsHookExA(WH_MSGFILTER, filter_hook, module_instance, thread);
}

void hooks_remove()
{
    UnhookWindowsHookEx(window_messages);
    UnhookWindowsHookEx(filtered_messages);
    window_messages = filtered_messages = 0;
}
