// dialog.h: dialogs that have been made, as trees of tiles with values, modes and actions. What a user does
// is done here; a front (answers, later windows) only says what it was.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/dialogs/dcl_file.h"
#include "hostapi/dcl.h"
#include "hostapi/windows.h"

namespace host::dialogs
{

// One thing drawn in an image tile, in the order of drawing.
struct image_item {
    enum kind { fill, vector, slide } what;
    int x1, y1, x2, y2; // fills and slides: place, width and height
    int color;
    std::string name; // of a slide
};

constexpr int NO_TILE = -1;

struct tile {
    const dcl_tile* about = nullptr;
    int parent = NO_TILE; // NO_TILE for the dialog itself
    std::string key;
    std::string value;
    bool enabled = true;
    bool highlighted = false;       // images
    std::vector<std::string> lines; // of list boxes and popup lists
    std::vector<image_item> drawn;
    HWND window = 0; // of tiles that show something
    ads_callback action = nullptr;
    void* client_data = nullptr;
};

struct dialog {
    ads_hdlg handle = 0;
    std::string name;
    HWND window = 0;
    std::shared_ptr<const dcl_file> file; // holds what the tiles are about
    std::vector<tile> tiles;              // parents before children; the dialog itself first
    std::unordered_map<std::string, int> keys;
    ads_htile first_tile = 0; // handle of tiles[0], the others follow
    ads_callback default_action = nullptr;
    int focus = NO_TILE;
    bool running = false, done = false;
    int result = DLGCANCEL;

    int find(std::string_view key) const; // NO_TILE: there is none
    std::string title() const;
};

// ---- what the calls of programs need
// Null when the file has no such dialog.
dialog* make_dialog(std::shared_ptr<const dcl_file> file, const std::string& name, ads_callback default_action);
dialog* find_dialog(ads_hdlg handle);
dialog* dialog_of_tile(ads_htile handle, int* index);
dialog* innermost_dialog(); // null: none has been made
// Runs the dialog to its end by the answers, drops it, and gives its result.
int run_dialog(dialog& dlg);
void end_dialog(dialog& dlg, int result);
void end_all_dialogs();

// Sets a value as programs do: no action runs. Radio siblings are cleared.
void set_value(dialog& dlg, int index, std::string_view value);
// Disabled itself or by a group around it.
bool is_enabled(const dialog& dlg, int index);
bool takes_input(const tile& t);
bool is_image(const tile& t);
// What tiles show has become other. When DCL has drawn in an image, what programs drew in the windows of images
// is wiped before the next painting.
void tiles_changed(dialog& dlg, bool drawn_anew = false);
int image_width(const tile& t);
int image_height(const tile& t);

// ---- what a user does. Each runs the actions that follow from it.
enum class deed {
    done,
    disabled,  // the tile is switched off
    no_input,  // the tile only shows something
    bad_value, // no value for this kind of tile
    left_field // Enter has left an edit box or a list
};
// Gives a tile a value and chooses it.
deed enter_value(dialog& dlg, int index, std::string_view value);
// Presses a tile. `x`, `y`: place in an image button; negative: its middle.
deed press(dialog& dlg, int index, int reason, int x = -1, int y = -1);
// Presses the default button; `index` is the tile concerned, NO_TILE when there is no such button.
deed press_enter(dialog& dlg, int* index);
void press_cancel(dialog& dlg);

} // namespace host::dialogs
