// dcl.h: dialogs described by DCL files. Handles are 32-bit numbers given out by the host; 0 is none.
#pragma once

#include <cstdint>

#include "hostapi/adsdef.h"

using ads_hdlg = std::uint32_t;
using ads_htile = std::uint32_t;

// Why a tile's action runs.
constexpr int CBR_SELECT = 1;       // chosen
constexpr int CBR_LOST_FOCUS = 2;   // an edit box was left
constexpr int CBR_CHANGED = 3;      // a slider is being moved
constexpr int CBR_DOUBLE_CLICK = 4; // a list line or an image was double-clicked

struct ads_callback_packet {
    ads_hdlg dialog;
    ads_htile tile;
    const char* value; // the tile's value, for the length of the call
    int reason;
    int x, y; // position in an image button
    void* client_data;
};
using ads_callback = void (*)(ads_callback_packet*);

// Results of a dialog that is ended by its standard buttons.
constexpr int DLGOK = 1;
constexpr int DLGCANCEL = 0;

// Modes of ads_mode_tile.
constexpr int MODE_ENABLE = 0;
constexpr int MODE_DISABLE = 1;
constexpr int MODE_SETFOCUS = 2;
constexpr int MODE_SETSEL = 3; // the whole text of an edit box
constexpr int MODE_FLIP = 4;   // an image's highlight

// Operations of ads_start_list.
constexpr int LIST_CHANGE = 1;
constexpr int LIST_APPEND = 2;
constexpr int LIST_NEW = 3;

extern "C" {
// Loads a DCL file. `id` is set to a number of 0 or more, or to -1 when it can't be read.
int ads_load_dialog(const char* file, int* id);
int ads_unload_dialog(int id);
// Makes the named dialog ready; `default_action` (may be null) runs for tiles without one.
// RTNORM and a handle, or RTERROR and 0.
int ads_new_dialog(const char* name, int id, ads_callback default_action, ads_hdlg* dialog);
// Runs the dialog to its end; `result` is what ads_done_dialog was given.
int ads_start_dialog(ads_hdlg dialog, int* result);
int ads_done_dialog(ads_hdlg dialog, int result);
int ads_done_positioned_dialog(ads_hdlg dialog, int result, int* x, int* y);
int ads_term_dialog();
int ads_action_tile(ads_hdlg dialog, const char* key, ads_callback action);
int ads_client_data_tile(ads_hdlg dialog, const char* key, void* data);
int ads_set_tile(ads_hdlg dialog, const char* key, const char* value);
// Up to `size` - 1 characters of a tile's value.
int ads_get_tile(ads_hdlg dialog, const char* key, char* value, int size);
int ads_mode_tile(ads_hdlg dialog, const char* key, int mode);
// An attribute as it stands in the DCL file, by dialog and key, or by the tile of a callback.
int ads_get_attr(ads_hdlg dialog, const char* key, const char* attribute, char* value, int size);
int ads_get_attr_string(ads_htile tile, const char* attribute, char* value, int size);
int ads_start_list(ads_hdlg dialog, const char* key, int operation, int index);
int ads_add_list(const char* item);
int ads_end_list();
// Size of an image tile, in pixels.
int ads_dimensions_tile(ads_hdlg dialog, const char* key, int* width, int* height);
int ads_start_image(ads_hdlg dialog, const char* key);
int ads_fill_image(int x, int y, int width, int height, int color);
int ads_vector_image(int x1, int y1, int x2, int y2, int color);
int ads_slide_image(int x, int y, int width, int height, const char* slide);
int ads_end_image();
}
