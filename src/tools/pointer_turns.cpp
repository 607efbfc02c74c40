// A and B: the pointer is turned to a line of the drawing, by an angle, or to a bearing.
//
// The last two work on `last_cmd` as their scratch and leave the digits of the minutes there, so that a U
// behind them steps back by the last distance.
#include <cmath>
#include <cstdlib>
#include <cstring>

#include "common/angle_text.h"
#include "common/variables.h"
#include "drawing/picked_segment.h"
#include "hostapi/ads.h"
#include "tools/pointer_angles.h"
#include "tools/pointer_keys.h"

namespace
{

constexpr int ANGLE_DECIMALS = 7; // of the minutes, before they are cut
constexpr int BEARING_DECIMALS = 9;
constexpr double MIDDLE = 0.5;

// The pointer then lies on the line of the picked segment and looks to the end nearer to the pick.
void align_to_segment(pointer_state& state)
{
    state.rel_angle = 0.0;
    ads_name name;
    ads_point pick;
    picked_segment segment;
    if (acedEntSel("\nPick a line or pline to align to:", name, pick) != RTNORM ||
        !read_picked_segment(name, pick, &segment))
        return;
    state.aux = pl_plan_distance(*segment.a, *segment.b);
    const bool near_a = pick_fraction(segment, pick) < MIDDLE;
    const pl_vertex& u = near_a ? *segment.a : *segment.b;
    const pl_vertex& w = near_a ? *segment.b : *segment.a;
    // Against the segment's reverse: turned about once more, the pointer goes from w to u.
    state.rel_angle =
        rotate_angle((point_angle(u, w) - point_angle(*state.cur, *state.other)) * DEGREES_PER_RADIAN, 0.0);
    pl_free_vertices(segment.chain);
}

// The bearing behind the letter or, without one, asked for; empty when the user gives none.
void ask_bearing(pointer_state& state, const char* typed)
{
    text_set(state.last_cmd, typed);
    if (typed[0] != '\0')
        return;
    if (acedGetString(0, "\nEnter Angle (Qdd.mmss): ", state.last_cmd) != RTNORM)
        state.last_cmd[0] = '\0';
}

} // namespace

int turn_by_angle(pointer_state& state, const char* text)
{
    const char* number = behind_letter(text);
    char* number_end;
    const double angle = std::strtod(number, &number_end);
    if (number_end == number) {
        align_to_segment(state);
        return GO_ON;
    }
    state.aux = angle;
    const double clockwise = dms_degrees(state.aux, ANGLE_DECIMALS, state.last_cmd);
    state.rel_angle = rotate_angle(state.rel_angle, -clockwise);
    return GO_ON;
}

int turn_to_bearing(pointer_state& state, const char* text)
{
    // Angles of the host count from east and counter-clockwise while one is asked for.
    const kept_variable turning("ANGDIR"), zero("ANGBASE");
    variable_set_short("ANGDIR", 0);
    variable_set_real("ANGBASE", 0.0);
    ask_bearing(state, behind_letter(text));
    if (std::strlen(state.last_cmd) < 2)
        return GO_ON;
    const quadrant_bearing bearing = read_quadrant_bearing(state.last_cmd);
    if (!std::isfinite(bearing.angle)) {
        acutPrintf("\nError: %s is not a usable bearing", state.last_cmd);
        state.last_cmd[0] = '\0';
        return GO_ON;
    }
    dms_degrees(std::atof(state.last_cmd + 1), BEARING_DECIMALS, state.last_cmd);
    state.rel_angle = bearing_turn(bearing.quadrant, bearing.angle, segment_direction(state));
    return GO_ON;
}
