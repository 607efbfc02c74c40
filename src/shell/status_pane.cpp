#include "shell/status_pane.h"

#include <cstring>

#include "shell/framework.h"

namespace
{

constexpr int STATUS_BAR = 59393; // the bar's id in the framework
constexpr int LEAST_BAR_WIDTH = 800;
constexpr int MARGIN = 10; // to the right of the pane
constexpr int PER_CHARACTER = 10;
constexpr DWORD VISIBLE_CHILD = 0x50000000;

HFONT font = 0;
HWND pane = 0;

void make_font()
{
    if (font == 0)
        font = CreateFontA(16, 8, 0, 0, FW_NORMAL, 0, 0, 0, 0, 0, 0, 0, FIXED_PITCH, "Courier New");
}

void make_pane(const char* text)
{
    const HWND bar = GetDlgItem(window_of(main_window), STATUS_BAR);
    RECT area{};
    if (bar == 0 || !GetClientRect(bar, &area) || area.right - area.left < LEAST_BAR_WIDTH)
        return;
    const int width = PER_CHARACTER * static_cast<int>(std::strlen(text));
    pane = CreateWindowExA(0, "STATIC", text, VISIBLE_CHILD, area.right - MARGIN - width, area.top, width,
                           area.bottom - area.top, bar, 0, module_instance, nullptr);
    if (pane == 0)
        return;
    make_font();
    SendMessageA(pane, WM_SETFONT, font, 1);
}

} // namespace

void status_text(const char* text)
{
    if (!text || text[0] == '\0')
        return;
    if (pane != 0)
        SetWindowTextA(pane, text);
    else
        make_pane(text);
}

void status_pane_remove()
{
    if (pane != 0)
        DestroyWindow(pane);
    if (font != 0)
        DeleteObject(font);
    pane = font = 0;
}
