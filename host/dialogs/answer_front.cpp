#include "host/dialogs/answer_front.h"

#include <cstdio>

#include <unistd.h>

#include "host/core/console.h"
#include "host/core/text.h"
#include "host/dialogs/message_loop.h"

namespace host::dialogs
{

namespace
{

std::string shown_label(const tile& t)
{
    std::string label = t.about->text("label");
    std::erase(label, '&'); // marks the letter that chooses the tile
    return std::string(trimmed(label));
}

std::string shown_lines(const tile& t)
{
    std::string out;
    for (std::size_t i = 0; i < t.lines.size(); i++)
        out += "\n    " + std::to_string(i) + "  " + t.lines[i];
    return out;
}

bool is_answered(const tile& t)
{
    return takes_input(t) || (t.about->kind == tile_kind::radio_group && !t.key.empty());
}

std::string known_keys(const dialog& dlg)
{
    std::string out;
    for (const tile& t : dlg.tiles)
        if (!t.key.empty() && is_answered(t))
            out += (out.empty() ? "" : ", ") + t.key;
    return out;
}

void tell(const std::string& text)
{
    history_line(text);
}

void tell_unknown(const dialog& dlg, std::string_view key)
{
    tell("The dialog " + dlg.name + " has no tile '" + std::string(key) + "'; it has: " + known_keys(dlg) +
         ".");
}

// Where a value doesn't fit: what would.
std::string wanted_value(const dialog& dlg, const tile& t)
{
    switch (t.about->kind) {
    case tile_kind::toggle:
    case tile_kind::radio_button:
        return "0 or 1";
    case tile_kind::list_box:
    case tile_kind::popup_list:
        if (t.lines.empty())
            return "no value, its list is empty";
        return "the number of a line, 0 to " + std::to_string(t.lines.size() - 1) +
               (t.about->flag("multiple_select") ? ", or several" : "");
    case tile_kind::slider:
        return "a whole number from " + std::to_string(static_cast<int>(t.about->number("min_value", 0))) +
               " to " + std::to_string(static_cast<int>(t.about->number("max_value", 10000)));
    default:
        break;
    }
    std::string out; // a radio group
    for (const tile& other : dlg.tiles)
        if (other.about->kind == tile_kind::radio_button && &dlg.tiles[other.parent] == &t)
            out += (out.empty() ? "" : ", ") + other.key;
    return "one of: " + out;
}

void tell_deed(const dialog& dlg, int index, deed how)
{
    const tile& t = dlg.tiles[index];
    const std::string name = "The tile '" + t.key + "'";
    if (how == deed::disabled)
        tell(name + " is switched off.");
    else if (how == deed::bad_value)
        tell(name + " takes " + wanted_value(dlg, t) + ".");
    else if (how == deed::no_input && takes_input(t))
        tell(name + " takes no value: press it with !" + t.key + ".");
    else if (how == deed::no_input)
        tell(name + " can't be pressed or set.");
}

void enter_by_answer(dialog& dlg)
{
    int index = NO_TILE;
    const deed how = press_enter(dlg, &index);
    if (index == NO_TILE)
        tell("The dialog " + dlg.name + " has no default button: press one with !key.");
    else if (how == deed::left_field)
        tell("Enter has left the tile '" + dlg.tiles[index].key +
             "'; the next Enter presses the default button.");
    else
        tell_deed(dlg, index, how);
}

void set_by_answer(dialog& dlg, std::string_view line)
{
    const std::size_t equals = line.find('=');
    const std::string_view key = trimmed(line.substr(0, equals));
    const int index = dlg.find(key);
    if (index == NO_TILE)
        tell_unknown(dlg, key);
    else
        tell_deed(dlg, index, enter_value(dlg, index, line.substr(equals + 1)));
}

// `key`, `key reason` or `key reason x,y`.
void press_by_answer(dialog& dlg, std::string_view line)
{
    char key[256] = "", rest[2] = "";
    int reason = CBR_SELECT, x = -1, y = -1;
    const std::string text(line);
    const int parts = std::sscanf(text.c_str(), "%255s %d %d,%d %1s", key, &reason, &x, &y, rest);
    const int index = dlg.find(key);
    if (index == NO_TILE) {
        tell_unknown(dlg, key);
        return;
    }
    const bool has_more = trimmed(line) != key;
    if ((has_more && parts != 2 && parts != 4) || reason < CBR_SELECT || reason > CBR_DOUBLE_CLICK) {
        tell("A tile is pressed with !key, !key REASON or !key REASON X,Y; the reason is 1 to 4.");
        return;
    }
    tell_deed(dlg, index, press(dlg, index, reason, x, y));
}

void take_answer(dialog& dlg, const std::string& line)
{
    const std::string_view text = trimmed(line);
    if (text.empty())
        enter_by_answer(dlg);
    else if (text == "^C" || text == "^c")
        press_cancel(dlg);
    else if (text == "?")
        tell(described(dlg));
    else if (text[0] == '!')
        press_by_answer(dlg, text.substr(1));
    else if (line.find('=') != std::string::npos)
        set_by_answer(dlg, line);
    else
        tell("A dialog is answered with key=text, !key, an empty line for Enter, ^C to cancel, or ? for its "
             "tiles.");
}

// A key that no hook has swallowed.
void take_key(dialog& dlg, WPARAM key)
{
    if (dlg.done)
        return;
    if (key == VK_F1)
        show_host_help();
    else if (key == VK_ESCAPE)
        press_cancel(dlg);
    else if (key == VK_RETURN)
        enter_by_answer(dlg);
}

} // namespace

std::string described(const dialog& dlg)
{
    std::string out = dlg.title();
    for (std::size_t i = 0; i < dlg.tiles.size(); i++) {
        const tile& t = dlg.tiles[i];
        const std::string label = shown_label(t);
        const bool shows_text = t.about->kind == tile_kind::text;
        if (i == 0 || (!is_answered(t) && !shows_text && label.empty()))
            continue;
        std::string line = "  ";
        if (is_answered(t))
            line += (t.key.empty() ? "-" : t.key) + " (" + kind_name(t.about->kind) + ")";
        if (!label.empty())
            line += (line.size() > 2 ? " " : "") + label;
        if (shows_text && !t.value.empty())
            line = "  " + t.value;
        else if (!t.value.empty() && is_answered(t))
            line += " = " + t.value;
        if (is_answered(t) && !is_enabled(dlg, static_cast<int>(i)))
            line += " (off)";
        if (line.size() > 2)
            out += (out.empty() ? "" : "\n") + line + shown_lines(t);
    }
    return out;
}

void run_by_answers(dialog& dlg)
{
    if (dlg.done)
        return;
    history_line("[dialog " + dlg.name + "]");
    // A person wants to see what there is to answer; a log is not to depend on where it was written.
    if (isatty(STDIN_FILENO) && isatty(STDOUT_FILENO))
        history_line(described(dlg));
    while (!dlg.done) {
        for (const WPARAM key : run_messages(loop::dialog))
            take_key(dlg, key);
        if (dlg.done) // by what a hook or a timer has set off
            return;
        const auto line = next_answer("[dialog " + dlg.name + "]");
        if (!line)
            press_cancel(dlg);
        else if (!take_key_line(*line))
            take_answer(dlg, *line);
    }
}

} // namespace host::dialogs
