// preview_tiles.h: pictures of symbol drawings in the image tiles of dialogs. The host repaints tiles
// itself, which wipes a picture; the module's hooks call what keeps them alive.
#pragma once

#include "hostapi/messages.h"

// Shows a drawing in the index-th image tile (from 1) of the active window. A name without a backslash lies
// in the symbol directory.
void symbol_tile_preview(const char* name, int index);
// Draws a drawing's picture over a window's client area, or a mark for a missing file or picture.
void symbol_display_preview(HWND window, const char* path);

// A dialog goes: its tiles are forgotten.
void preview_dialog_destroyed(HWND dialog);
// A dialog is being wiped: each of its tiles is drawn again 100 milliseconds later.
void preview_dialog_erased(HWND dialog);
// That time has come for a tile. False when no picture is kept there.
bool preview_tile_due(HWND tile);
