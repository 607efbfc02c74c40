#include "symbols/preview_tiles.h"

void symbol_tile_preview(const char*, int) {}
void symbol_display_preview(HWND, const char*) {}
void preview_dialog_destroyed(HWND) {}
void preview_dialog_erased(HWND) {}
bool preview_tile_due(HWND)
{
    return false;
}
