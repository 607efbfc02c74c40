// windows.h: the tree of windows that the host has numbered: the main frame with its status bar and the window
// of the drawing, open dialogs with a child for each tile that shows something, and what programs made.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/dialogs/surface.h"
#include "hostapi/framework.h"

namespace host::dialogs
{

constexpr HWND MAIN_WINDOW = 1;
constexpr HWND STATUS_BAR = 2;
constexpr HWND DRAWING_WINDOW = 3; // shows whichever drawing is in front
constexpr std::uint32_t STATUS_BAR_ID = 59393;
constexpr const char* IMAGE_TILE_CLASS = "adesk_img0000";

struct window {
    HWND number = 0, parent = 0; // parent 0: a frame or dialog of its own
    std::string class_name, title;
    std::uint32_t id = 0; // among its parent's children
    int x = 0, y = 0;     // in the parent, of what programs made
    int width = 0, height = 0;
    std::vector<HWND> children; // in the order of their making, which is that of GetWindow
    HFONT font = 0;
    RECT invalid{0, 0, 0, 0}; // what waits to be painted; empty: nothing
    bool needs_erase = false; // before that
    bool is_going = false;
    surface pixels;                // what programs have drawn since it was last wiped
    std::unique_ptr<CWnd> wrapper; // of the framework, when it was asked for
};

// Null: there is no such window.
window* find_window(HWND number);
std::string window_title(HWND number); // empty: there is no such window

// A dialog's window becomes the active one; when it closes, the one before it is active again.
HWND open_window(std::string_view title);
HWND make_child(HWND parent, std::string_view class_name, std::string_view title, std::uint32_t id, int width,
                int height);
// Tells the window and what is below it with WM_DESTROY, the parent first, and drops them. The host's own
// stay.
void close_window(HWND number);
void resize_window(HWND number, int width, int height);
HWND focused_window(); // 0: none
int window_count();

// Adds to what waits to be painted (null: all of it).
void invalidate(HWND number, const RECT* area, bool erase);
void validate(HWND number); // nothing of it waits any more
// What lies under a box or dialog that has gone is painted anew.
void uncover_active_window();
// The numbers of the windows that wait to be painted.
const std::vector<HWND>& windows_to_paint();
// Sends WM_ERASEBKGND, where that is due, and WM_PAINT.
void paint_window(HWND number);
// What the window itself does with a message, behind the hooks.
LRESULT window_procedure(HWND number, unsigned message, WPARAM wparam, LPARAM lparam);

// The colour that programs have drawn there; NOT_DRAWN where they haven't, or outside.
COLORREF window_pixel(HWND number, int x, int y);

} // namespace host::dialogs
