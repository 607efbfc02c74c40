#include "host/dialogs/dialog.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "host/core/document.h"
#include "host/core/text.h"
#include "host/dialogs/answer_front.h"
#include "host/dialogs/windows.h"
#include "host/lisp/api.h"

namespace host::dialogs
{

namespace
{

// A dialog's size is told in characters; these are the pixels of one.
constexpr int CHARACTER_WIDTH = 6;
constexpr int CHARACTER_HEIGHT = 13;
constexpr int DEFAULT_EDIT_LIMIT = 132;
constexpr int GREATEST_EDIT_LIMIT = 256;

struct dialog_table {
    std::vector<std::unique_ptr<dialog>> open; // the innermost last
    ads_hdlg last_handle = 0;
    ads_htile next_tile = 1;
};

dialog_table& table()
{
    static dialog_table all;
    return all;
}

void add_lines(tile& t)
{
    const std::string* list = t.about->attribute("list");
    if (!list || list->empty())
        return;
    std::string line;
    for (const char c : *list + "\n") {
        if (c != '\n') {
            line += c;
            continue;
        }
        t.lines.push_back(line);
        line.clear();
    }
}

std::string first_value(const dcl_tile& about)
{
    const std::string value = about.text("value");
    if (about.kind == tile_kind::toggle || about.kind == tile_kind::radio_button)
        return value == "1" ? "1" : "0";
    return value;
}

void add_tile(dialog& dlg, const dcl_tile& about, int parent)
{
    tile t;
    t.about = &about;
    t.parent = parent;
    t.key = about.text("key");
    t.value = first_value(about);
    t.enabled = about.flag_or("is_enabled", true);
    if (about.kind == tile_kind::list_box || about.kind == tile_kind::popup_list)
        add_lines(t);
    // A popup always shows a line.
    if (about.kind == tile_kind::popup_list && t.value.empty())
        t.value = "0";
    const int index = static_cast<int>(dlg.tiles.size());
    if (!t.key.empty())
        dlg.keys.emplace(t.key, index); // of tiles with one key the first is meant
    dlg.tiles.push_back(std::move(t));
    for (const dcl_tile& child : about.children)
        add_tile(dlg, child, index);
}

int find_flag(const dialog& dlg, const char* flag)
{
    for (std::size_t i = 0; i < dlg.tiles.size(); i++)
        if (dlg.tiles[i].about->flag(flag))
            return static_cast<int>(i);
    return NO_TILE;
}

int radio_group_of(const dialog& dlg, int index)
{
    for (int at = dlg.tiles[index].parent; at != NO_TILE; at = dlg.tiles[at].parent)
        if (dlg.tiles[at].about->kind == tile_kind::radio_group)
            return at;
    return NO_TILE;
}

// Without a radio group the buttons of one parent belong together.
int siblings_root(const dialog& dlg, int index)
{
    const int group = radio_group_of(dlg, index);
    return group != NO_TILE ? group : dlg.tiles[index].parent;
}

void choose_radio(dialog& dlg, int index)
{
    const int root = siblings_root(dlg, index);
    for (std::size_t i = 0; i < dlg.tiles.size(); i++)
        if (dlg.tiles[i].about->kind == tile_kind::radio_button &&
            siblings_root(dlg, static_cast<int>(i)) == root)
            dlg.tiles[i].value = "0";
    dlg.tiles[index].value = "1";
    if (dlg.tiles[root].about->kind == tile_kind::radio_group)
        dlg.tiles[root].value = dlg.tiles[index].key;
}

// ---- actions

// ---- windows of tiles

// The class of a tile's window; null: it has none.
const char* window_class_of(tile_kind kind)
{
    switch (kind) {
    case tile_kind::image:
    case tile_kind::image_button:
        return IMAGE_TILE_CLASS;
    case tile_kind::button:
    case tile_kind::toggle:
    case tile_kind::radio_button:
        return "Button";
    case tile_kind::edit_box:
        return "Edit";
    case tile_kind::list_box:
        return "ListBox";
    case tile_kind::popup_list:
        return "ComboBox";
    case tile_kind::slider:
        return "ScrollBar";
    case tile_kind::text:
        return "Static";
    default:
        return nullptr;
    }
}

// Children of the dialog's window in the order of the tiles, with the tile's number as their id.
void open_windows(dialog& dlg)
{
    dlg.window = open_window(dlg.tiles[0].about->text("label"));
    for (std::size_t i = 1; i < dlg.tiles.size(); i++) {
        tile& t = dlg.tiles[i];
        if (const char* name = window_class_of(t.about->kind))
            t.window = make_child(dlg.window, name, t.about->text("label"), static_cast<std::uint32_t>(i),
                                  image_width(t), image_height(t));
    }
}

void set_lisp_text(const char* name, const std::string& text)
{
    const list_ptr value(rb_text(RTSTR, text));
    lisp::set_variable(current_document(), name, value.get());
}

void set_lisp_int(const char* name, int number)
{
    const list_ptr value(rb_int(RTSHORT, number));
    lisp::set_variable(current_document(), name, value.get());
}

// The action that a DCL file itself gives, a LISP expression.
void run_expression(dialog& dlg, const tile& t, const std::string& expression, int reason, int x, int y)
{
    if (!has_document())
        return;
    set_lisp_text("$key", t.key);
    set_lisp_text("$value", t.value);
    set_lisp_int("$reason", reason);
    set_lisp_int("$x", x);
    set_lisp_int("$y", y);
    const std::string where = dlg.name + "." + t.key;
    const ads_hdlg handle = dlg.handle;
    if (lisp::evaluate_text(current_document(), expression, where).how == lisp::ending::done)
        return;
    // A program that has failed or stopped leaves its dialogs.
    if (find_dialog(handle))
        end_all_dialogs();
}

bool has_own_action(const tile& t)
{
    const std::string* action = t.about->attribute("action");
    return t.action || (action && !action->empty());
}

void run_action(dialog& dlg, int index, int reason, int x, int y)
{
    // Copies: the action may set the tile, or make dialogs.
    const tile t = dlg.tiles[index];
    const ads_callback callback = t.action ? t.action : has_own_action(t) ? nullptr : dlg.default_action;
    if (callback) {
        const std::string value = t.value;
        ads_callback_packet packet{
            dlg.handle,   dlg.first_tile + static_cast<ads_htile>(index), value.c_str(), reason, x, y,
            t.client_data};
        callback(&packet);
    } else if (has_own_action(t)) {
        run_expression(dlg, t, *t.about->attribute("action"), reason, x, y);
    }
}

// A radio button without an action leaves it to its group.
void run_choice(dialog& dlg, int index, int reason)
{
    const int group = radio_group_of(dlg, index);
    if (group != NO_TILE && !has_own_action(dlg.tiles[index]) &&
        (has_own_action(dlg.tiles[group]) || !dlg.tiles[group].key.empty()))
        run_action(dlg, group, reason, 0, 0);
    else
        run_action(dlg, index, reason, 0, 0);
}

// ---- values that users may give

bool is_line_number(const tile& t, std::string_view text)
{
    const auto number = parse_int(text);
    return number && *number >= 0 && static_cast<std::size_t>(*number) < t.lines.size();
}

bool fits_list(const tile& t, std::string_view value)
{
    int count = 0;
    for (std::size_t at = value.find_first_not_of(' '); at != std::string_view::npos;
         at = value.find_first_not_of(' ', at)) {
        const std::size_t end = std::min(value.find(' ', at), value.size());
        if (!is_line_number(t, value.substr(at, end - at)))
            return false;
        count++;
        at = end;
    }
    if (t.about->kind == tile_kind::popup_list)
        return count == 1;
    return count <= 1 || t.about->flag("multiple_select");
}

bool fits(const tile& t, std::string_view value)
{
    switch (t.about->kind) {
    case tile_kind::toggle:
    case tile_kind::radio_button:
        return value == "0" || value == "1";
    case tile_kind::list_box:
    case tile_kind::popup_list:
        return fits_list(t, value);
    case tile_kind::slider: {
        const auto number = parse_int(value);
        return number && *number >= t.about->number("min_value", 0) &&
               *number <= t.about->number("max_value", 10000);
    }
    default:
        return true;
    }
}

bool is_button(const tile& t)
{
    return t.about->kind == tile_kind::button || t.about->kind == tile_kind::image_button;
}

} // namespace

// ---- dialogs

int dialog::find(std::string_view key) const
{
    const auto found = keys.find(std::string(key));
    return found == keys.end() ? NO_TILE : found->second;
}

std::string dialog::title() const
{
    return window_title(window);
}

dialog* make_dialog(std::shared_ptr<const dcl_file> file, const std::string& name, ads_callback default_action)
{
    const auto found = file->tiles.find(name);
    if (found == file->tiles.end() || found->second.kind != tile_kind::dialog)
        return nullptr;
    auto made = std::make_unique<dialog>();
    made->handle = ++table().last_handle;
    made->name = name;
    add_tile(*made, found->second, NO_TILE);
    made->file = std::move(file);
    made->default_action = default_action;
    made->first_tile = table().next_tile;
    table().next_tile += static_cast<ads_htile>(made->tiles.size());
    open_windows(*made);
    // A group's value names the button of it that is on.
    for (std::size_t i = 0; i < made->tiles.size(); i++)
        if (made->tiles[i].about->kind == tile_kind::radio_button && made->tiles[i].value == "1")
            choose_radio(*made, static_cast<int>(i));
    for (std::size_t i = 0; i < made->tiles.size(); i++)
        if (made->tiles[i].about->kind == tile_kind::radio_group && !made->tiles[i].value.empty())
            set_value(*made, static_cast<int>(i), made->tiles[i].value);
    made->focus = made->find(made->tiles[0].about->text("initial_focus"));
    table().open.push_back(std::move(made));
    return table().open.back().get();
}

dialog* find_dialog(ads_hdlg handle)
{
    for (const auto& one : table().open)
        if (one->handle == handle)
            return one.get();
    return nullptr;
}

dialog* dialog_of_tile(ads_htile handle, int* index)
{
    for (const auto& one : table().open)
        if (handle >= one->first_tile && handle < one->first_tile + one->tiles.size()) {
            *index = static_cast<int>(handle - one->first_tile);
            return one.get();
        }
    return nullptr;
}

dialog* innermost_dialog()
{
    return table().open.empty() ? nullptr : table().open.back().get();
}

int run_dialog(dialog& dlg)
{
    dlg.running = true;
    invalidate(dlg.window, nullptr, true);
    run_by_answers(dlg);
    const int result = dlg.result;
    close_window(dlg.window);
    std::erase_if(table().open, [&](const auto& one) { return one.get() == &dlg; });
    return result;
}

void end_dialog(dialog& dlg, int result)
{
    dlg.done = true;
    dlg.result = result;
}

void end_all_dialogs()
{
    for (const auto& one : table().open)
        end_dialog(*one, DLGCANCEL);
    // Those that were never started have no loop that would drop them. What hears of their end may look at
    // the table.
    std::vector<HWND> gone;
    std::erase_if(table().open, [&gone](const auto& one) {
        if (!one->running)
            gone.push_back(one->window);
        return !one->running;
    });
    for (const HWND window : gone)
        close_window(window);
}

// ---- tiles

void set_value(dialog& dlg, int index, std::string_view value)
{
    tile& t = dlg.tiles[index];
    tiles_changed(dlg);
    if (t.about->kind == tile_kind::radio_group) {
        const int chosen = dlg.find(value);
        if (chosen != NO_TILE && dlg.tiles[chosen].about->kind == tile_kind::radio_button &&
            siblings_root(dlg, chosen) == index)
            choose_radio(dlg, chosen);
        return;
    }
    if (t.about->kind == tile_kind::radio_button && value == "1") {
        choose_radio(dlg, index);
        return;
    }
    t.value = value;
}

bool is_enabled(const dialog& dlg, int index)
{
    for (int at = index; at != NO_TILE; at = dlg.tiles[at].parent)
        if (!dlg.tiles[at].enabled)
            return false;
    return true;
}

bool takes_input(const tile& t)
{
    switch (t.about->kind) {
    case tile_kind::button:
    case tile_kind::edit_box:
    case tile_kind::image_button:
    case tile_kind::list_box:
    case tile_kind::popup_list:
    case tile_kind::radio_button:
    case tile_kind::slider:
    case tile_kind::toggle:
        return true;
    default:
        return false;
    }
}

bool is_image(const tile& t)
{
    return t.about->kind == tile_kind::image || t.about->kind == tile_kind::image_button;
}

void tiles_changed(dialog& dlg, bool drawn_anew)
{
    invalidate(dlg.window, nullptr, drawn_anew);
}

// A size that isn't given follows from the other one by the aspect ratio, width over height.
int image_width(const tile& t)
{
    const double ratio = t.about->number("aspect_ratio", 0);
    const double height = t.about->number("height", 0);
    const double width = t.about->number("width", 0);
    if (width <= 0 && ratio > 0 && height > 0)
        return static_cast<int>(std::lround(height * CHARACTER_HEIGHT * ratio));
    return static_cast<int>(std::lround((width > 0 ? width : 10) * CHARACTER_WIDTH));
}

int image_height(const tile& t)
{
    const double ratio = t.about->number("aspect_ratio", 0);
    const double height = t.about->number("height", 0);
    if (height <= 0 && ratio > 0)
        return static_cast<int>(std::lround(image_width(t) / ratio));
    return static_cast<int>(std::lround((height > 0 ? height : 5) * CHARACTER_HEIGHT));
}

// ---- deeds

deed enter_value(dialog& dlg, int index, std::string_view value)
{
    tile& t = dlg.tiles[index];
    const bool is_group = t.about->kind == tile_kind::radio_group;
    if ((!takes_input(t) && !is_group) || is_button(t))
        return deed::no_input;
    if (!is_enabled(dlg, index))
        return deed::disabled;
    if (is_group) { // the group's value is the key of one of its buttons
        const int chosen = dlg.find(value);
        if (chosen == NO_TILE || radio_group_of(dlg, chosen) != index)
            return deed::bad_value;
        return enter_value(dlg, chosen, "1");
    }
    if (!fits(t, value))
        return deed::bad_value;
    dlg.focus = index;
    if (t.about->kind == tile_kind::edit_box) {
        const double limit = t.about->number("edit_limit", DEFAULT_EDIT_LIMIT);
        value = value.substr(0, static_cast<std::size_t>(std::clamp(limit, 0.0, double(GREATEST_EDIT_LIMIT))));
    }
    set_value(dlg, index, value);
    run_choice(dlg, index, CBR_SELECT);
    return deed::done;
}

deed press(dialog& dlg, int index, int reason, int x, int y)
{
    tile& t = dlg.tiles[index];
    if (!takes_input(t))
        return deed::no_input;
    if (!is_enabled(dlg, index))
        return deed::disabled;
    dlg.focus = index;
    const dcl_tile& about = *t.about;
    tiles_changed(dlg);
    if (about.kind == tile_kind::toggle && reason == CBR_SELECT)
        t.value = t.value == "1" ? "0" : "1";
    if (about.kind == tile_kind::radio_button)
        choose_radio(dlg, index);
    if (about.kind == tile_kind::image_button) {
        x = x < 0 ? image_width(t) / 2 : x;
        y = y < 0 ? image_height(t) / 2 : y;
    }
    if (about.kind == tile_kind::radio_button)
        run_choice(dlg, index, reason);
    else
        run_action(dlg, index, reason, std::max(x, 0), std::max(y, 0));
    // Standard buttons end the dialog when no action has: a cancel button always, another one only when
    // nothing else was said about it.
    if (is_button(t) && !dlg.done) {
        if (about.flag("is_default") && !has_own_action(t))
            end_dialog(dlg, DLGOK);
        else if (about.flag("is_cancel"))
            end_dialog(dlg, DLGCANCEL);
    }
    if (about.kind == tile_kind::list_box && reason == CBR_DOUBLE_CLICK && about.flag("allow_accept") &&
        !dlg.done) {
        const int chosen = find_flag(dlg, "is_default");
        if (chosen != NO_TILE)
            press(dlg, chosen, CBR_SELECT);
    }
    return deed::done;
}

deed press_enter(dialog& dlg, int* index)
{
    const int chosen = find_flag(dlg, "is_default");
    *index = chosen;
    if (dlg.focus != NO_TILE) {
        const dcl_tile& about = *dlg.tiles[dlg.focus].about;
        const bool keeps = about.kind == tile_kind::edit_box || about.kind == tile_kind::list_box;
        // Enter in a field that isn't to end the dialog only leaves the field.
        if (keeps && !about.flag("allow_accept")) {
            *index = dlg.focus;
            dlg.focus = chosen;
            return deed::left_field;
        }
    }
    return chosen == NO_TILE ? deed::no_input : press(dlg, chosen, CBR_SELECT);
}

void press_cancel(dialog& dlg)
{
    const int chosen = find_flag(dlg, "is_cancel");
    if (chosen != NO_TILE && is_enabled(dlg, chosen))
        press(dlg, chosen, CBR_SELECT);
    if (!dlg.done)
        end_dialog(dlg, DLGCANCEL);
}

} // namespace host::dialogs
