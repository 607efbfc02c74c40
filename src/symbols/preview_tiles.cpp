#include "symbols/preview_tiles.h"

#include <cstring>

#include "common/directories.h"
#include "common/lisp_vars.h"
#include "common/text_buffer.h"
#include "hostapi/files.h"
#include "hostapi/framework.h"
#include "symbols/preview_marks.h"
#include "symbols/symbol_file.h"

namespace
{

constexpr const char* IMAGE_TILE_CLASS = "adesk_img0000";
constexpr unsigned REDRAW_AFTER = 100; // milliseconds: the host's own painting is over by then
constexpr std::uintptr_t REDRAW_TIMER = 0;
constexpr int WIPED_WIDTH = 250, WIPED_HEIGHT = 170;

struct preview_slot {
    HWND dialog; // 0: free
    HWND tile;
    char path[257];
};
preview_slot slots[10];

HWND image_tile(HWND dialog, int index)
{
    int seen = 0;
    for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        char name[64] = "";
        GetClassNameA(child, name, sizeof name);
        if (std::strcmp(name, IMAGE_TILE_CLASS) == 0 && ++seen == index)
            return child;
    }
    return 0;
}

// The first slot that is free or has this tile already. A tile that finds none is drawn, but not kept alive.
void keep(HWND dialog, HWND tile, const char* path)
{
    for (preview_slot& slot : slots) {
        if (slot.dialog != 0 && !(slot.dialog == dialog && slot.tile == tile))
            continue;
        slot.dialog = dialog;
        slot.tile = tile;
        text_set(slot.path, path);
        return;
    }
}

void draw_mark(HDC context, const RECT& area, HBITMAP mark)
{
    const HDC memory = CreateCompatibleDC(context);
    const HGDIOBJ before = SelectObject(memory, mark);
    StretchBlt(context, 0, 0, area.right - area.left, area.bottom - area.top, memory, 0, 0, PREVIEW_MARK_WIDTH,
               PREVIEW_MARK_HEIGHT, SRCCOPY);
    SelectObject(memory, before);
    DeleteDC(memory);
}

} // namespace

void symbol_display_preview(HWND window, const char* path)
{
    RECT area{};
    GetClientRect(window, &area);
    const HDC context = GetDC(window);
    PatBlt(context, 0, 0, WIPED_WIDTH, WIPED_HEIGHT, WHITENESS);
    if (path[0] != '\0' && !acdbDisplayPreviewFromDwg(path, window, nullptr))
        draw_mark(context, area, file_exists(path) ? no_preview_mark() : missing_file_mark());
    ReleaseDC(window, context);
}

void symbol_tile_preview(const char* name, int index)
{
    lisp_get_text(symbol_dir, "psname");
    const HWND dialog = GetActiveWindow();
    const HWND tile = image_tile(dialog, index);
    if (!tile)
        return;
    char path[sizeof slots[0].path];
    symbol_full_path(path, name);
    keep(dialog, tile, path);
    symbol_display_preview(tile, path);
}

void preview_dialog_destroyed(HWND dialog)
{
    for (preview_slot& slot : slots)
        if (slot.dialog == dialog)
            slot = preview_slot{};
}

void preview_dialog_erased(HWND dialog)
{
    for (const preview_slot& slot : slots)
        if (slot.dialog != 0 && slot.dialog == dialog)
            SetTimer(slot.tile, REDRAW_TIMER, REDRAW_AFTER, nullptr);
}

bool preview_tile_due(HWND tile)
{
    bool known = false;
    for (const preview_slot& slot : slots) {
        if (slot.dialog == 0 || slot.tile != tile)
            continue;
        symbol_display_preview(tile, slot.path);
        KillTimer(tile, REDRAW_TIMER);
        known = true;
    }
    return known;
}
