// windows.cpp: the tree of windows and what they do by themselves. Handles are never used twice, so a call for
// a window that is gone finds none and does nothing.
#include "host/dialogs/windows.h"

#include <algorithm>
#include <map>

#include "host/core/command_queue.h"
#include "host/core/document.h"
#include "host/core/text.h"
#include "host/core/trace.h"
#include "host/database/sysvars.h"
#include "host/dialogs/message_loop.h"

namespace host::dialogs
{

namespace
{

constexpr int STATUS_BAR_HEIGHT = 20;
constexpr int USUAL_WIDTH = 1024, USUAL_HEIGHT = 768; // while no drawing is open to ask
constexpr const char* DIALOG_CLASS = "#32770";
constexpr std::uintptr_t COMMAND_LINE_TEXT = 1; // code of WM_COPYDATA

struct window_table {
    std::map<HWND, window> all;
    std::vector<HWND> active{MAIN_WINDOW}; // frames and dialogs, the active one last
    std::vector<HWND> to_paint;
    HWND focus = 0;
    HWND last = DRAWING_WINDOW;

    window_table()
    {
        put(MAIN_WINDOW, 0, "ZentrikFrame", "Zentrik", 0, USUAL_WIDTH, USUAL_HEIGHT + STATUS_BAR_HEIGHT);
        put(STATUS_BAR, MAIN_WINDOW, "ZentrikStatusBar", "", STATUS_BAR_ID, USUAL_WIDTH, STATUS_BAR_HEIGHT);
        put(DRAWING_WINDOW, MAIN_WINDOW, "ZentrikDrawing", "", 0, USUAL_WIDTH, USUAL_HEIGHT);
    }
    void put(HWND number, HWND parent, std::string_view class_name, std::string_view title, std::uint32_t id,
             int width, int height)
    {
        window& made = all[number];
        made.number = number;
        made.parent = parent;
        made.class_name = class_name;
        made.title = title;
        made.id = id;
        made.width = width;
        made.height = height;
        if (parent)
            all[parent].children.push_back(number);
    }
};

window_table& table()
{
    static window_table windows;
    return windows;
}

// The drawing's window is as large as its screen.
void fit_drawing_window(window& w)
{
    if (!has_document())
        return;
    const list_ptr size = db::get_variable(current_document(), "SCREENSIZE");
    if (!size)
        return;
    w.width = static_cast<int>(size->resval.rpoint[0]);
    w.height = static_cast<int>(size->resval.rpoint[1]);
}

bool is_empty(const RECT& area)
{
    return area.left >= area.right || area.top >= area.bottom;
}

RECT client_area(const window& w)
{
    return {0, 0, w.width, w.height};
}

LRESULT take_copied_data(LPARAM lparam)
{
    const auto* data = reinterpret_cast<const COPYDATASTRUCT*>(lparam);
    if (!data || data->dwData != COMMAND_LINE_TEXT || !data->lpData)
        return 0;
    queue_command_text(copied_text(*data));
    return 1;
}

// Image tiles are drawn again by the dialog from what was drawn in them by DCL; the rest is lost.
void erase(window& w)
{
    w.pixels.fill(is_empty(w.invalid) ? client_area(w) : w.invalid, NOT_DRAWN);
    for (const HWND child : w.children)
        if (window* tile = find_window(child); tile && tile->class_name == IMAGE_TILE_CLASS)
            tile->pixels.wipe();
}

void drop(HWND number)
{
    window* gone = find_window(number);
    if (!gone)
        return;
    if (window* parent = find_window(gone->parent))
        std::erase(parent->children, number);
    std::erase(table().active, number);
    std::erase(table().to_paint, number);
    if (table().focus == number)
        table().focus = 0;
    forget_messages_of(number);
    table().all.erase(number);
}

bool close_tree(HWND number)
{
    window* going = find_window(number);
    if (!going || going->is_going)
        return false;
    going->is_going = true;
    send_message(number, WM_DESTROY, 0, 0);
    // What programs did on hearing it may have changed the tree.
    going = find_window(number);
    const std::vector<HWND> children = going ? going->children : std::vector<HWND>();
    for (const HWND child : children)
        close_tree(child);
    drop(number);
    return true;
}

} // namespace

window* find_window(HWND number)
{
    const auto found = table().all.find(number);
    if (found == table().all.end())
        return nullptr;
    if (number == DRAWING_WINDOW)
        fit_drawing_window(found->second);
    window& w = found->second;
    if (w.pixels.width() != w.width || w.pixels.height() != w.height)
        w.pixels = surface(w.width, w.height);
    return &w;
}

std::string window_title(HWND number)
{
    const window* found = find_window(number);
    return found ? found->title : std::string();
}

HWND open_window(std::string_view title)
{
    const HWND number = ++table().last;
    table().put(number, 0, DIALOG_CLASS, title, 0, USUAL_WIDTH / 2, USUAL_HEIGHT / 2);
    table().active.push_back(number);
    return number;
}

HWND make_child(HWND parent, std::string_view class_name, std::string_view title, std::uint32_t id, int width,
                int height)
{
    const HWND number = ++table().last;
    table().put(number, parent, class_name, title, id, std::max(width, 0), std::max(height, 0));
    return number;
}

void close_window(HWND number)
{
    if (number <= DRAWING_WINDOW)
        return;
    const bool was_active = std::count(table().active.begin(), table().active.end(), number) > 0;
    if (close_tree(number) && was_active)
        uncover_active_window();
}

void resize_window(HWND number, int width, int height)
{
    if (window* found = find_window(number)) {
        found->width = width;
        found->height = height;
        invalidate(number, nullptr, true);
    }
}

HWND focused_window()
{
    return table().focus;
}

int window_count()
{
    return static_cast<int>(table().all.size());
}

void invalidate(HWND number, const RECT* area, bool erase)
{
    window* found = find_window(number);
    if (!found || found->is_going)
        return;
    const RECT whole = client_area(*found);
    RECT wanted = area ? *area : whole;
    wanted = {std::max(wanted.left, whole.left), std::max(wanted.top, whole.top),
              std::min(wanted.right, whole.right), std::min(wanted.bottom, whole.bottom)};
    if (is_empty(wanted))
        return;
    RECT& all = found->invalid;
    if (is_empty(all)) {
        all = wanted;
        table().to_paint.push_back(number);
    } else {
        all = {std::min(all.left, wanted.left), std::min(all.top, wanted.top),
               std::max(all.right, wanted.right), std::max(all.bottom, wanted.bottom)};
    }
    found->needs_erase = found->needs_erase || erase;
}

void validate(HWND number)
{
    std::erase(table().to_paint, number);
    if (window* found = find_window(number)) {
        found->invalid = {0, 0, 0, 0};
        found->needs_erase = false;
    }
}

void uncover_active_window()
{
    const HWND active = table().active.back();
    invalidate(active == MAIN_WINDOW ? DRAWING_WINDOW : active, nullptr, true);
}

const std::vector<HWND>& windows_to_paint()
{
    return table().to_paint;
}

void paint_window(HWND number)
{
    std::erase(table().to_paint, number);
    window* found = find_window(number);
    if (!found || is_empty(found->invalid))
        return;
    if (found->needs_erase)
        send_message(number, WM_ERASEBKGND, 0, 0);
    found = find_window(number);
    if (!found)
        return;
    // The drawing's picture covers the whole of what is painted.
    if (number == DRAWING_WINDOW)
        found->pixels.fill(found->invalid, NOT_DRAWN);
    validate(number);
    send_message(number, WM_PAINT, 0, 0);
}

LRESULT window_procedure(HWND number, unsigned message, WPARAM wparam, LPARAM lparam)
{
    window* found = find_window(number);
    if (!found)
        return 0;
    switch (message) {
    case WM_COPYDATA:
        return number == MAIN_WINDOW ? take_copied_data(lparam) : 0;
    case WM_SETFONT:
        found->font = static_cast<HFONT>(wparam);
        return 0;
    case WM_ERASEBKGND:
        erase(*found);
        return 1;
    default:
        return 0;
    }
}

COLORREF window_pixel(HWND number, int x, int y)
{
    const window* found = find_window(number);
    return found ? found->pixels.at(x, y) : NOT_DRAWN;
}

} // namespace host::dialogs

using namespace host::dialogs;

namespace
{

// The platform's own classes, as GetClassNameA spells them.
constexpr const char* CONTROL_CLASSES[] = {"Button", "ComboBox", "Edit", "ListBox", "ScrollBar", "Static"};

const char* control_class(const char* name)
{
    for (const char* known : CONTROL_CLASSES)
        if (name && host::same_text(name, known))
            return known;
    return nullptr;
}

} // namespace

extern "C" {

HWND GetActiveWindow()
{
    return table().active.back();
}

int SetWindowTextA(HWND window, const char* text)
{
    host::trace_line line("SetWindowTextA");
    line.integer(window).text(text);
    host::dialogs::window* found = find_window(window);
    if (found) {
        found->title = text ? text : "";
        invalidate(window, nullptr, true);
    }
    line.result(found ? "1" : "0");
    return found ? 1 : 0;
}

HWND SetFocus(HWND window)
{
    host::trace_line line("SetFocus");
    line.integer(window);
    const HWND before = table().focus;
    const bool there = window == 0 || find_window(window);
    if (there)
        table().focus = window;
    line.result(std::to_string(there ? before : 0));
    return there ? before : 0;
}

HWND GetDlgItem(HWND parent, int id)
{
    if (const host::dialogs::window* found = find_window(parent))
        for (const HWND child : found->children)
            if (find_window(child)->id == static_cast<std::uint32_t>(id))
                return child;
    return 0;
}

HWND GetWindow(HWND number, unsigned what)
{
    const window* found = find_window(number);
    if (!found)
        return 0;
    if (what == GW_CHILD)
        return found->children.empty() ? 0 : found->children.front();
    const window* parent = find_window(found->parent);
    if (what != GW_HWNDNEXT || !parent)
        return 0;
    const auto at = std::find(parent->children.begin(), parent->children.end(), number);
    return at == parent->children.end() || at + 1 == parent->children.end() ? 0 : at[1];
}

int GetClassNameA(HWND number, char* name, int size)
{
    const window* found = find_window(number);
    if (!found || !name || size <= 0)
        return 0;
    const std::size_t length = found->class_name.copy(name, static_cast<std::size_t>(size) - 1);
    name[length] = '\0';
    return static_cast<int>(length);
}

int GetClientRect(HWND number, RECT* area)
{
    const window* found = find_window(number);
    if (!found || !area)
        return 0;
    *area = client_area(*found);
    return 1;
}

HWND CreateWindowExA(DWORD, const char* window_class, const char* text, DWORD style, int x, int y, int width,
                     int height, HWND parent, std::uint32_t id, HINSTANCE, void*)
{
    host::trace_line line("CreateWindowExA");
    line.text(window_class).text(text).integer(style).integer(x).integer(y).integer(width).integer(height);
    line.integer(parent).integer(id);
    const char* known = control_class(window_class);
    const window* owner = find_window(parent);
    const HWND made =
        known && owner && !owner->is_going ? make_child(parent, known, text ? text : "", id, width, height) : 0;
    if (host::dialogs::window* child = find_window(made)) {
        child->x = x;
        child->y = y;
    }
    invalidate(made, nullptr, true);
    line.result(std::to_string(made));
    return made;
}

int DestroyWindow(HWND number)
{
    host::trace_line line("DestroyWindow");
    line.integer(number);
    const window* found = find_window(number);
    const bool can = found && number > DRAWING_WINDOW && !found->is_going;
    if (can)
        close_window(number);
    line.result(can ? "1" : "0");
    return can ? 1 : 0;
}

int InvalidateRect(HWND number, const RECT* area, int erase)
{
    host::trace_line line("InvalidateRect");
    line.integer(number);
    if (area)
        line.word("(" + std::to_string(area->left) + " " + std::to_string(area->top) + " " +
                  std::to_string(area->right) + " " + std::to_string(area->bottom) + ")");
    else
        line.word("nil");
    line.integer(erase);
    const bool there = find_window(number);
    invalidate(number, area, erase != 0);
    line.result(there ? "1" : "0");
    return there ? 1 : 0;
}
}
