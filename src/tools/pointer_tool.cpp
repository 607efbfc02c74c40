#include "tools/pointer_tool.h"

#include <cstring>

#include "common/variables.h"
#include "drawing/picked_segment.h"
#include "drawing/read.h"
#include "hostapi/ads.h"
#include "tools/pointer_arrow.h"
#include "tools/pointer_help.h"
#include "tools/pointer_keys.h"

namespace
{

constexpr double ARROWS_PER_VIEW = 19.0;
constexpr double MIDDLE = 0.5;

constexpr const char* PROMPTS[] = {
    "\nEnter or pick distance to Move (A,B,D,E,L,N,O,P,R,S,T,U,Help): ",   // MOVE_MODE
    "\nEnter or pick distance to Draw (A,B,C,E,L,M,N,O,P,R,S,T,U,Help): ", // DRAW_MODE
};

bool begins_with(const char* text, char letter)
{
    return (text[0] & ~('a' - 'A')) == letter;
}

// Reads the picked object and puts the pointer on the end of the segment nearer to the pick, looking outward.
// False, with a message, when there is no segment to stand on.
bool read_object(pointer_state& state, const ads_name name, const ads_point pick)
{
    std::memcpy(state.ent_name, name, sizeof(ads_name));
    state.name_group = acdbEntGet(name);
    state.ent_list = state.name_group ? state.name_group->rbnext : nullptr;
    state.ent_props = pl_get_props(name);
    state.drawn = true;
    state.is_line = is_line_list(state.name_group);
    if (!state.is_line && !is_polyline_list(state.name_group)) {
        acutPrintf("%s", NOT_A_LINE_OR_POLYLINE);
        return false;
    }
    pl_vertex* chain = read_open_chain(name, state.name_group);
    pl_vertex* cur = state.is_line ? chain : pl_nearest_segment(chain, pick);
    if (!cur || !add_chain(state, chain)) {
        acutPrintf("%s", NO_SEGMENT_THERE);
        pl_free_vertices(chain);
        return false;
    }
    pl_link_back(chain);
    const bool at_start = !(pick_fraction({chain, cur, cur->next}, pick) > MIDDLE);
    stand_on(state, at_start ? cur : cur->next, at_start ? cur->next : cur);
    return true;
}

// The user's next command; a point is the distance to it. The prompt's status; the text is empty for Enter.
int ask_command(const pointer_state& state, text_out text)
{
    const ads_point base{state.tip->x, state.tip->y, state.tip->z};
    ads_point point;
    acedInitGet(RSG_OTHER, "");
    const int status = acedGetPoint(base, PROMPTS[state.mode], point);
    if (status == RTNORM) {
        const pl_vertex there{0, point[0], point[1], point[2], 0.0, nullptr, nullptr};
        text_format(text, "%.14f", pl_plan_distance(*state.tip, there));
        return RTNORM;
    }
    acedGetInput(text.text);
    return status;
}

void draw_arrow(const pointer_state& state)
{
    draw_pointer_arrow(*state.cur, *state.other, *state.tip, state.rel_angle, state.arrow_size);
}

// One command; GO_ON unless the tool ends with it.
int run_command(pointer_state& state, text_out text)
{
    if (begins_with(text.text, 'U'))
        undo_pointer(state, text);
    if (begins_with(text.text, 'C'))
        close_polyline(state);
    else if (begins_with(text.text, 'O'))
        open_polyline(state);
    else if (begins_with(text.text, 'H')) {
        show_pointer_help(); // last_cmd stays, so that U takes back what was before
        return GO_ON;
    }
    if (!command_number_is_usable(text.text))
        return GO_ON;
    text_set(state.last_cmd, text.text);
    return run_pointer_key(state, text.text);
}

int run_commands(pointer_state& state)
{
    for (;;) {
        char text[COMMAND_SIZE] = "";
        draw_arrow(state);
        const int status = ask_command(state, text);
        draw_arrow(state);
        if (status == RTCAN)
            return RTCAN;
        if (text[0] == '\0')
            return RTNORM;
        // What is left of an earlier input is no answer to this prompt.
        if (status != RTNORM && status != RTKWORD)
            return RTCAN;
        if (const int end = run_command(state, text); end != GO_ON)
            return end;
    }
}

} // namespace

int pointer_tool()
{
    pointer_state state{};
    state.arrow_size = variable_number("VIEWSIZE", 0.0) / ARROWS_PER_VIEW;
    state.mode = DRAW_MODE;
    ads_name name;
    ads_point pick;
    if (acedEntSel("\nPick line or pline to extend: ", name, pick) != RTNORM)
        return RTCAN;
    const int status = read_object(state, name, pick) ? run_commands(state) : RTNORM;
    release_pointer(state);
    return status;
}
