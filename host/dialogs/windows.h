// windows.h: the windows that the host has numbered: its own, 1, and those of open dialogs.
#pragma once

#include <string>
#include <string_view>

#include "hostapi/windows.h"

namespace host::dialogs
{

constexpr HWND MAIN_WINDOW = 1;

// A new window becomes the active one; when it closes, the one before it is active again.
HWND open_window(std::string_view title);
void close_window(HWND window);
std::string window_title(HWND window); // empty: there is no such window

} // namespace host::dialogs
