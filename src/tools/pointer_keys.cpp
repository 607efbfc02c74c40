#include "tools/pointer_keys.h"

#include <cmath>
#include <cstdlib>
#include <cstring>

#include "hostapi/ads.h"
#include "tools/pointer_angles.h"
#include "tools/pointer_step.h"

namespace
{

constexpr double QUARTER_TURN = 90.0;
constexpr const char* NUMBER_STARTS = "+-0123456789.";

char upper(char c)
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool begins_with_one_of(const char* text, const char* characters)
{
    return text[0] != '\0' && std::strchr(characters, upper(text[0]));
}

void step(pointer_state& state, double dist)
{
    state.rel_angle = pointer_step(state, dist, state.rel_angle, state.mode, state.last_cmd);
}

// ---- keys -----------------------------------------------------------------------------------------------

int draw_from_here(pointer_state& state, const char*)
{
    state.mode = DRAW_MODE;
    acutPrintf("\nDraw mode");
    return GO_ON;
}

int move_from_here(pointer_state& state, const char*)
{
    state.mode = MOVE_MODE;
    acutPrintf("\nMove mode");
    return GO_ON;
}

int go_distance(pointer_state& state, const char* text)
{
    state.dist = std::atof(text);
    step(state, state.dist);
    return GO_ON;
}

void turn_and_go(pointer_state& state, double turn, const char* number)
{
    state.rel_angle = rotate_angle(state.rel_angle, turn);
    state.dist = std::atof(number);
    if (state.dist > 0.0)
        step(state, state.dist);
}

int turn_right(pointer_state& state, const char* text)
{
    turn_and_go(state, -QUARTER_TURN, behind_letter(text));
    return GO_ON;
}

int turn_left(pointer_state& state, const char* text)
{
    turn_and_go(state, QUARTER_TURN, behind_letter(text));
    return GO_ON;
}

int set_total_length(pointer_state& state, const char* text)
{
    state.dist = segment_length(state);
    const char* number = behind_letter(text);
    state.aux = std::atof(number);
    if (number[0] == '\0') {
        acutPrintf("\nEnter the total distance <%.2f>", state.dist);
        const int status = acedGetReal(": ", &state.aux);
        if (status == RTCAN)
            return RTCAN;
        if (status != RTNORM)
            state.aux = state.dist;
    }
    state.dist = state.aux - state.dist;
    step(state, state.dist);
    return GO_ON;
}

int switch_direction(pointer_state& state, const char*)
{
    stand_on(state, state.other, state.cur);
    return GO_ON;
}

// At an end of the chain the pointer turns about.
int go_forward(pointer_state& state, const char*)
{
    pl_vertex* beyond = state.cur->next == state.other ? state.cur->prev : state.cur->next;
    stand_on(state, beyond ? beyond : state.other, state.cur);
    return GO_ON;
}

int go_back(pointer_state& state, const char*)
{
    pl_vertex* beyond = state.cur->next == state.other ? state.other->next : state.other->prev;
    stand_on(state, state.other, beyond ? beyond : state.cur);
    return GO_ON;
}

struct pointer_key {
    const char* letters;
    bool takes_number; // of its text, behind a letter
    int (*run)(pointer_state&, const char*);
};

constexpr pointer_key KEYS[] = {
    {"D", false, draw_from_here},   {"M", false, move_from_here}, {NUMBER_STARTS, true, go_distance},
    {"R", true, turn_right},        {"L", true, turn_left},       {"T", true, set_total_length},
    {"E", false, extend_to_edge},   {"A", true, turn_by_angle},   {"B", false, turn_to_bearing},
    {"S", false, switch_direction}, {"N", false, go_forward},     {"P", false, go_back},
};

const pointer_key* find_key(const char* text)
{
    for (const pointer_key& key : KEYS)
        if (begins_with_one_of(text, key.letters))
            return &key;
    return nullptr;
}

// ---- undo -------------------------------------------------------------------------------------------------

void tell_nothing_to_undo(pointer_state&)
{
    acutPrintf("\nUnable to undo.");
}

// A turn with a distance: the step is taken back, the turn stays.
void undo_turn(pointer_state& state, double back)
{
    if (state.dist > 0.0)
        step(state, -state.dist);
    else
        state.rel_angle = rotate_angle(state.rel_angle, back);
}

void undo_right(pointer_state& state)
{
    undo_turn(state, QUARTER_TURN);
}

void undo_left(pointer_state& state)
{
    undo_turn(state, -QUARTER_TURN);
}

// Behind an align `aux` is a length; the pointer turns by that number all the same.
void undo_angle(pointer_state& state)
{
    state.rel_angle = rotate_angle(state.rel_angle, -state.aux);
}

// Also behind A# and B, which leave digits in last_cmd: the pointer steps back and stays turned.
void step_back(pointer_state& state)
{
    step(state, -state.dist);
}

struct undo_row {
    const char* last;             // first characters of the last command
    void (*undo)(pointer_state&); // null: the other key is all
    const char* text;             // the command that goes on
};

constexpr undo_row UNDO_ROWS[] = {
    {"U", tell_nothing_to_undo, "U"},
    {"M", nullptr, "D"},
    {"D", nullptr, "M"},
    {"C", close_polyline, "O"},
    {"O", open_polyline, "C"},
    {"S", nullptr, "S"},
    {"N", nullptr, "P"},
    {"P", nullptr, "N"},
    {"R", undo_right, "U"},
    {"L", undo_left, "U"},
    {"AB", undo_angle, "U"},
    {NUMBER_STARTS, step_back, "U"},
    {"TE", step_back, "U"},
};

void set_closed(pointer_state& state, bool closed)
{
    state.ent_props.flags = closed ? state.ent_props.flags | PLINE_CLOSED : state.ent_props.flags & 0xFE;
    state.rel_angle = pointer_step(state, 0.0, 0.0, state.mode, state.last_cmd);
}

} // namespace

const char* behind_letter(const char* text)
{
    ++text;
    return text + std::strspn(text, " ");
}

bool command_number_is_usable(const char* text)
{
    const pointer_key* key = find_key(text);
    if (!key || !key->takes_number)
        return true;
    const char* number = begins_with_one_of(text, NUMBER_STARTS) ? text : behind_letter(text);
    if (std::isfinite(std::atof(number)))
        return true;
    acutPrintf("\nError: %s is not a usable number", number);
    return false;
}

int run_pointer_key(pointer_state& state, const char* text)
{
    const pointer_key* key = find_key(text);
    return key ? key->run(state, text) : GO_ON;
}

void close_polyline(pointer_state& state)
{
    if (state.is_line)
        acutPrintf("\nError: unable to close line");
    else
        set_closed(state, true);
}

void open_polyline(pointer_state& state)
{
    if (state.is_line)
        acutPrintf("\nError: unable to open line");
    else
        set_closed(state, false);
}

void undo_pointer(pointer_state& state, text_out text)
{
    text_set(text, "U");
    if (state.last_cmd[0] == '\0') {
        tell_nothing_to_undo(state);
        return;
    }
    for (const undo_row& row : UNDO_ROWS) {
        if (!begins_with_one_of(state.last_cmd, row.last))
            continue;
        if (row.undo)
            row.undo(state);
        text_set(text, row.text);
        return;
    }
}
