// hostapi/dcl.h: the calls by which programs run dialogs.
#include <cstring>
#include <map>
#include <memory>

#include "host/core/console.h"
#include "host/core/trace.h"
#include "host/dialogs/dialog.h"
#include "host/files/names.h"
#include "host/files/paths.h"
#include "hostapi/dcl.h"

namespace
{

using namespace host::dialogs;
using host::trace_line;

struct loaded_files {
    std::map<int, std::shared_ptr<const dcl_file>> files;
    int last = 0;
};

loaded_files& loaded()
{
    static loaded_files all;
    return all;
}

// The list or image that is being filled.
struct {
    ads_hdlg dialog = 0;
    int tile = NO_TILE;
    int operation = LIST_NEW;
    std::size_t next = 0; // line that LIST_CHANGE changes
} filling;

struct {
    ads_hdlg dialog = 0;
    int tile = NO_TILE;
} drawing;

struct place {
    dialog* dlg = nullptr;
    int index = NO_TILE;
    explicit operator bool() const { return dlg && index != NO_TILE; }
    tile& operator*() const { return dlg->tiles[index]; }
    tile* operator->() const { return &dlg->tiles[index]; }
};

place find_place(ads_hdlg handle, const char* key)
{
    dialog* dlg = find_dialog(handle);
    return {dlg, dlg && key ? dlg->find(key) : NO_TILE};
}

place find_place(ads_hdlg handle, int index)
{
    dialog* dlg = find_dialog(handle);
    return {dlg, dlg ? index : NO_TILE};
}

bool is_list(const tile& t)
{
    return t.about->kind == tile_kind::list_box || t.about->kind == tile_kind::popup_list;
}

// Cut to the caller's room.
int hand_out(const std::string& text, char* out, int size)
{
    if (!out || size <= 0)
        return RTERROR;
    const std::size_t length = text.copy(out, static_cast<std::size_t>(size) - 1);
    out[length] = '\0';
    return RTNORM;
}

int hand_out_attribute(const place& at, const char* attribute, char* value, int size)
{
    if (value && size > 0)
        value[0] = '\0';
    const std::string* found = at && attribute ? at->about->attribute(attribute) : nullptr;
    return found ? hand_out(*found, value, size) : RTERROR;
}

std::optional<std::string> dcl_path(std::string name)
{
    if (host::extension_of(name).empty())
        name += ".dcl";
    if (auto found = host::find_file(name))
        return found;
    return std::nullopt;
}

int draw(const image_item& item)
{
    const place at = find_place(drawing.dialog, drawing.tile);
    if (!at)
        return RTERROR;
    at->drawn.push_back(item);
    return RTNORM;
}

} // namespace

extern "C" {

int ads_load_dialog(const char* file, int* id)
{
    trace_line line("ads_load_dialog");
    line.text(file);
    int number = -1;
    dcl_error error{file ? file : "", 0, "there is no such dialog file"};
    const auto path = file && *file ? dcl_path(file) : std::nullopt;
    if (std::shared_ptr<const dcl_file> read = path ? read_dcl(*path, &error) : nullptr) {
        number = ++loaded().last;
        loaded().files[number] = std::move(read);
    } else {
        host::complain(error.text());
    }
    if (id)
        *id = number;
    line.result(std::to_string(number));
    return number >= 0 ? RTNORM : RTERROR;
}

int ads_unload_dialog(int id)
{
    trace_line line("ads_unload_dialog");
    line.integer(id);
    // Dialogs that are open hold on to their file.
    return line.status(loaded().files.erase(id) == 1 ? RTNORM : RTERROR);
}

int ads_new_dialog(const char* name, int id, ads_callback default_action, ads_hdlg* handle)
{
    trace_line line("ads_new_dialog");
    line.text(name).integer(id);
    if (handle)
        *handle = 0;
    const auto file = loaded().files.find(id);
    dialog* made = name && handle && file != loaded().files.end()
                       ? make_dialog(file->second, name, default_action)
                       : nullptr;
    if (!made) {
        if (name && file != loaded().files.end())
            host::complain("the dialog file has no dialog '" + std::string(name) + "'");
        return line.status(RTERROR);
    }
    *handle = made->handle;
    return line.status(RTNORM);
}

int ads_start_dialog(ads_hdlg handle, int* result)
{
    trace_line line("ads_start_dialog");
    line.integer(handle);
    dialog* dlg = find_dialog(handle);
    if (!dlg || dlg->running)
        return line.status(RTERROR);
    const int ended = run_dialog(*dlg);
    if (result)
        *result = ended;
    line.result(std::to_string(ended));
    return RTNORM;
}

int ads_done_dialog(ads_hdlg handle, int result)
{
    trace_line line("ads_done_dialog");
    line.integer(handle).integer(result);
    dialog* dlg = find_dialog(handle);
    if (!dlg)
        return line.status(RTERROR);
    end_dialog(*dlg, result);
    return line.status(RTNORM);
}

int ads_done_positioned_dialog(ads_hdlg handle, int result, int* x, int* y)
{
    // Dialogs that answers run have no place; -1 lets the next one be centred.
    if (x)
        *x = -1;
    if (y)
        *y = -1;
    return ads_done_dialog(handle, result);
}

int ads_term_dialog()
{
    trace_line line("ads_term_dialog");
    end_all_dialogs();
    return line.status(RTNORM);
}

int ads_action_tile(ads_hdlg handle, const char* key, ads_callback action)
{
    const place at = find_place(handle, key);
    if (!at)
        return RTERROR;
    at->action = action;
    return RTNORM;
}

int ads_client_data_tile(ads_hdlg handle, const char* key, void* data)
{
    const place at = find_place(handle, key);
    if (!at)
        return RTERROR;
    at->client_data = data;
    return RTNORM;
}

int ads_set_tile(ads_hdlg handle, const char* key, const char* value)
{
    trace_line line("ads_set_tile");
    line.integer(handle).text(key).text(value);
    const place at = find_place(handle, key);
    if (!at || !value)
        return line.status(RTERROR);
    set_value(*at.dlg, at.index, value);
    return line.status(RTNORM);
}

int ads_get_tile(ads_hdlg handle, const char* key, char* value, int size)
{
    const place at = find_place(handle, key);
    if (value && size > 0)
        value[0] = '\0';
    return at ? hand_out(at->value, value, size) : RTERROR;
}

int ads_mode_tile(ads_hdlg handle, const char* key, int mode)
{
    trace_line line("ads_mode_tile");
    line.integer(handle).text(key).integer(mode);
    const place at = find_place(handle, key);
    if (!at)
        return line.status(RTERROR);
    switch (mode) {
    case MODE_ENABLE:
    case MODE_DISABLE:
        at->enabled = mode == MODE_ENABLE;
        break;
    case MODE_SETFOCUS:
        at.dlg->focus = at.index;
        break;
    case MODE_SETSEL:
        break; // answers replace the whole text anyway
    case MODE_FLIP:
        at->highlighted = !at->highlighted;
        break;
    default:
        return line.status(RTERROR);
    }
    tiles_changed(*at.dlg);
    return line.status(RTNORM);
}

int ads_get_attr(ads_hdlg handle, const char* key, const char* attribute, char* value, int size)
{
    return hand_out_attribute(find_place(handle, key), attribute, value, size);
}

int ads_get_attr_string(ads_htile handle, const char* attribute, char* value, int size)
{
    place at;
    at.dlg = dialog_of_tile(handle, &at.index);
    return hand_out_attribute(at, attribute, value, size);
}

int ads_start_list(ads_hdlg handle, const char* key, int operation, int index)
{
    trace_line line("ads_start_list");
    line.integer(handle).text(key).integer(operation).integer(index);
    const place at = find_place(handle, key);
    filling.tile = NO_TILE;
    if (!at || !is_list(*at) || operation < LIST_CHANGE || operation > LIST_NEW)
        return line.status(RTERROR);
    if (operation == LIST_CHANGE && (index < 0 || static_cast<std::size_t>(index) >= at->lines.size()))
        return line.status(RTERROR);
    if (operation == LIST_NEW)
        at->lines.clear();
    filling = {handle, at.index, operation, static_cast<std::size_t>(index < 0 ? 0 : index)};
    return line.status(RTNORM);
}

int ads_add_list(const char* item)
{
    trace_line line("ads_add_list");
    line.text(item);
    const place at = find_place(filling.dialog, filling.tile);
    if (!at || !item)
        return line.status(RTERROR);
    if (filling.operation != LIST_CHANGE)
        at->lines.emplace_back(item);
    else if (filling.next < at->lines.size())
        at->lines[filling.next++] = item;
    else
        return line.status(RTERROR);
    return line.status(RTNORM);
}

int ads_end_list()
{
    trace_line line("ads_end_list");
    const bool was_open = filling.tile != NO_TILE;
    if (const place at = find_place(filling.dialog, filling.tile))
        tiles_changed(*at.dlg);
    filling.tile = NO_TILE;
    return line.status(was_open ? RTNORM : RTERROR);
}

int ads_dimensions_tile(ads_hdlg handle, const char* key, int* width, int* height)
{
    const place at = find_place(handle, key);
    if (width)
        *width = at ? image_width(*at) : 0;
    if (height)
        *height = at ? image_height(*at) : 0;
    return at ? RTNORM : RTERROR;
}

int ads_start_image(ads_hdlg handle, const char* key)
{
    trace_line line("ads_start_image");
    line.integer(handle).text(key);
    const place at = find_place(handle, key);
    drawing.tile = NO_TILE;
    if (!at || !is_image(*at))
        return line.status(RTERROR);
    drawing = {handle, at.index};
    return line.status(RTNORM);
}

int ads_fill_image(int x, int y, int width, int height, int color)
{
    trace_line line("ads_fill_image");
    line.integer(x).integer(y).integer(width).integer(height).integer(color);
    return line.status(draw({image_item::fill, x, y, width, height, color, {}}));
}

int ads_vector_image(int x1, int y1, int x2, int y2, int color)
{
    trace_line line("ads_vector_image");
    line.integer(x1).integer(y1).integer(x2).integer(y2).integer(color);
    return line.status(draw({image_item::vector, x1, y1, x2, y2, color, {}}));
}

int ads_slide_image(int x, int y, int width, int height, const char* slide)
{
    trace_line line("ads_slide_image");
    line.integer(x).integer(y).integer(width).integer(height).text(slide);
    return line.status(slide ? draw({image_item::slide, x, y, width, height, 0, slide}) : RTERROR);
}

int ads_end_image()
{
    trace_line line("ads_end_image");
    const bool was_open = drawing.tile != NO_TILE;
    if (const place at = find_place(drawing.dialog, drawing.tile))
        tiles_changed(*at.dlg, true);
    drawing.tile = NO_TILE;
    return line.status(was_open ? RTNORM : RTERROR);
}
}
