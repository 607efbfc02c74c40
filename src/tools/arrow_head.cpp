// arrow_head.cpp: the host draws a whole dimension leader; then all of it but the head is erased. A marker
// drawn just before shows how far that may go.
#include "tools/arrow_head.h"

#include <cmath>

#include "common/text_buffer.h"
#include "common/variables.h"
#include "drawing/object_list.h"
#include "hostapi/ads.h"
#include "tools/curve.h"
#include "tools/drawn_objects.h"

namespace
{

constexpr double STANDARD_DIMASZ = 0.18;
constexpr double LEADER_LENGTH = 2.1;    // in arrow sizes: a shorter leader would have no head
constexpr std::size_t PROMPT_SIZE = 400; // a size of 300 digits is a size

double dimension_scale()
{
    const double scale = variable_number("DIMSCALE", 1.0);
    return scale == 0.0 ? 1.0 : scale;
}

// The vertex at about one arrow length from the tip, along whose chord the head lies: on a curve it then
// fits the curve's start.
const pl_vertex* aim_point(const pl_vertex* tip, double size)
{
    const pl_vertex* aim = tip->next;
    double passed = 0.0;
    while (aim->next && 2.0 * size > passed) {
        passed += pl_plan_distance(*tip, *aim);
        if (!(passed < size))
            break;
        aim = aim->next;
    }
    return aim;
}

bool is_of_leader(const ads_name name)
{
    const object_list list(name);
    return list.type() == "TEXT" || list.type() == "MTEXT" || list.type() == "LINE";
}

// Erases lines and texts from the drawing's end back to the head, the marker, or what was there before both.
void erase_leader_lines(const newest_object& before)
{
    ads_name last;
    while (before.added(last) && is_of_leader(last))
        if (acdbEntDel(last) != RTNORM)
            return;
}

void draw_head(const ads_point tip, const ads_point along, const ads_point aim)
{
    const newest_object before;
    ads_name marker;
    acedCommand(RTSTR, "_.POINT", RT3DPOINT, aim, RTNONE);
    const bool is_marked = before.added(marker);
    acedCommand(RTSTR, "_.DIM1", RTSTR, "_LEADER", RT3DPOINT, tip, RT3DPOINT, along, RTSTR, "", RTSTR, "",
                RTNONE);
    erase_leader_lines(before);
    if (is_marked)
        acdbEntDel(marker);
}

} // namespace

double arrow_size()
{
    return variable_number("DIMASZ", STANDARD_DIMASZ) * dimension_scale();
}

void set_arrow_size(double size)
{
    const double value = size / dimension_scale();
    if (std::isfinite(value))
        variable_set_real("DIMASZ", value);
}

int ask_arrow_size()
{
    char prompt[PROMPT_SIZE];
    text_format(prompt, "\nEnter the arrow size <%.2f>: ", arrow_size());
    double size = 0.0;
    const int status = acedGetReal(prompt, &size);
    if (status == RTNORM)
        set_arrow_size(size);
    return status == RTCAN ? RTCAN : RTNORM;
}

void draw_arrow_head(pl_vertex* chain)
{
    if (!chain || !chain->next)
        return;
    const double size = arrow_size();
    const kept_variable object_snap("OSMODE");
    variable_set_short("OSMODE", 0); // it would draw the leader's points to other objects
    if (chain->next->type >= USER_POINT)
        chain_curve(chain, LEADER_TENSION, LEADER_STEP);
    const pl_vertex* v = aim_point(chain, size);
    const ads_point tip = {chain->x, chain->y, chain->z}, aim = {v->x, v->y, v->z};
    ads_point along;
    acutPolar(tip, acutAngle(tip, aim), size * LEADER_LENGTH, along);
    if (point_is_finite(tip) && point_is_finite(aim) && point_is_finite(along))
        draw_head(tip, along, aim);
}
