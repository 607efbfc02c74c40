#include "host/dialogs/windows.h"

#include <algorithm>
#include <vector>

#include "host/core/trace.h"

namespace host::dialogs
{

namespace
{

struct window {
    HWND number;
    std::string title;
};

std::vector<window>& all_windows()
{
    static std::vector<window> windows = {{MAIN_WINDOW, "Zentrik"}}; // the active one last
    return windows;
}

window* find_window(HWND number)
{
    for (window& one : all_windows())
        if (one.number == number)
            return &one;
    return nullptr;
}

} // namespace

HWND open_window(std::string_view title)
{
    static HWND last = MAIN_WINDOW;
    all_windows().push_back({++last, std::string(title)});
    return last;
}

void close_window(HWND number)
{
    if (number != MAIN_WINDOW)
        std::erase_if(all_windows(), [number](const window& one) { return one.number == number; });
}

std::string window_title(HWND number)
{
    const window* found = find_window(number);
    return found ? found->title : std::string();
}

} // namespace host::dialogs

extern "C" {

HWND GetActiveWindow()
{
    return host::dialogs::all_windows().back().number;
}

int SetWindowTextA(HWND window, const char* text)
{
    host::trace_line line("SetWindowTextA");
    line.integer(window).text(text);
    host::dialogs::window* found = host::dialogs::find_window(window);
    if (found)
        found->title = text ? text : "";
    line.result(found ? "1" : "0");
    return found ? 1 : 0;
}
}
