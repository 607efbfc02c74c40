#include "tools/rotate_to_chain.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numbers>

#include "common/arguments.h"
#include "common/tolerances.h"
#include "drawing/chain_index.h"
#include "drawing/object_list.h"
#include "drawing/picked_segment.h"
#include "hostapi/ads.h"
#include "tools/pointer_state.h"

namespace
{

constexpr double PI = std::numbers::pi;
constexpr double DRAWN_OUT = 1000.0;
constexpr double UPRIGHT = 1.5707963267948966, HEAD_DOWN = 4.71238898038469; // quarter, three quarters

constexpr int NAME_GROUP = 2; // of a block; of an attribute: its tag
constexpr int POINT_GROUP = 10, ALIGNMENT_GROUP = 11;
constexpr int DIRECTION_GROUP = 11; // of an MTEXT
constexpr int HEIGHT_GROUP = 40;
constexpr int ANGLE_GROUP = 50;

// Moves `end` away from `neighbour`; one that lies on it has no way to go.
void draw_out(pl_vertex* end, const pl_vertex& neighbour)
{
    const double length = pl_plan_distance(neighbour, *end);
    if (!(length > 0.0))
        return;
    const double dx = (end->x - neighbour.x) / length, dy = (end->y - neighbour.y) / length;
    end->x += DRAWN_OUT * dx;
    end->y += DRAWN_OUT * dy;
}

void set_real(const object_list& list, int group, double value)
{
    if (resbuf* node = list.find(group))
        node->resval.rreal = value;
}

void set_point(const object_list& list, int group, const ads_point point)
{
    if (resbuf* node = list.find(group))
        std::copy_n(point, 3, node->resval.rpoint);
}

// ---- survey points ----------------------------------------------------------------------------------

// Where an attribute of a survey point goes: to one side of the point, by a part of its own height.
struct attribute_place {
    std::string_view tag;
    double side;   // radians from the direction of the text
    double height; // of the text, times this; 0: as far as it was
};

constexpr attribute_place PLACES[] = {
    {"PT#", PI / 2.0, 0.75},
    {"ELEV2", 0.0, 0.0},
    {"DESC2", -PI / 2.0, 1.75},
};
constexpr double ALIGNMENT_STEP = 0.02; // from a text's point to the second one

double plan_distance(const double* a, const double* b)
{
    return std::hypot(b[0] - a[0], b[1] - a[1]);
}

void place_attribute(const object_list& list, const ads_point block, double angle)
{
    const auto* place = std::find_if(std::begin(PLACES), std::end(PLACES),
                                     [&](const auto& each) { return list.text(NAME_GROUP) == each.tag; });
    const resbuf* old = list.find(POINT_GROUP);
    const resbuf* height = list.find(HEIGHT_GROUP);
    if (place == std::end(PLACES) || !old || !height)
        return;
    set_real(list, ANGLE_GROUP, angle);
    const bool keeps_distance = place->height == 0.0;
    const double off =
        keeps_distance ? plan_distance(old->resval.rpoint, block) : place->height * height->resval.rreal;
    ads_point at, second;
    acutPolar(block, angle + place->side, off, at);
    set_point(list, POINT_GROUP, at);
    if (keeps_distance)
        return;
    acutPolar(at, angle, ALIGNMENT_STEP, second);
    set_point(list, ALIGNMENT_GROUP, second);
}

void place_attributes(const ads_name block_name, const ads_point block, double angle)
{
    ads_name at = {block_name[0], block_name[1]};
    while (acdbEntNext(at, at) == RTNORM) {
        const object_list list(at);
        if (list.type() != "ATTRIB")
            break;
        place_attribute(list, block, angle);
        acdbEntMod(list.get());
    }
    acdbEntUpd(block_name);
}

// ---- objects ------------------------------------------------------------------------------------------

void turn(const object_list& list, double angle)
{
    set_real(list, ANGLE_GROUP, angle);
    acdbEntMod(list.get());
}

void turn_paragraphs(const object_list& list, double angle)
{
    // One that has its direction as a vector too would otherwise stay as it is.
    const ads_point along = {std::cos(angle), std::sin(angle), 0.0};
    set_point(list, DIRECTION_GROUP, along);
    turn(list, angle);
}

bool holds(std::string_view text, std::string_view part)
{
    return text.find(part) != std::string_view::npos;
}

void turn_block(const ads_name name, const object_list& list, const ads_point at, double angle)
{
    const std::string_view block = list.text(NAME_GROUP);
    if (holds(in_capitals(block), "SPT"))
        turn(list, angle);
    // Survey points are named in one case throughout; mixed letters are somebody else's block.
    if (!holds(block, "SRVPN") && !holds(block, "srvpn"))
        return;
    turn(list, angle);
    place_attributes(name, at, angle);
}

void turn_object(const ads_name name, const chain_index& chain, double view_angle)
{
    const object_list list(name);
    const resbuf* point = list.find(POINT_GROUP);
    double direction[2];
    if (!point || !chain.normal_at(point->resval.rpoint, NO_VALUE, direction))
        return;
    const double angle = readable_angle(direction, view_angle);
    if (!std::isfinite(angle))
        return;
    if (list.type() == "TEXT")
        turn(list, angle);
    else if (list.type() == "MTEXT")
        turn_paragraphs(list, angle);
    else if (list.type() == "INSERT")
        turn_block(name, list, point->resval.rpoint, angle);
}

} // namespace

void draw_out_ends(pl_vertex* chain)
{
    if (!chain || !chain->next)
        return;
    if (chain->bulge == 0.0)
        draw_out(chain, *chain->next);
    pl_link_back(chain);
    pl_vertex* last = pl_last(chain);
    if (last->bulge == 0.0)
        draw_out(last, *last->prev);
}

double readable_angle(const double* direction, double view_angle)
{
    double angle = std::acos(std::clamp(direction[0], -1.0, 1.0));
    if (direction[1] < 0.0)
        angle = 2.0 * PI - angle;
    double seen = angle - view_angle;
    if (seen < 0.0)
        seen += 2.0 * PI;
    return seen > UPRIGHT && seen < HEAD_DOWN ? angle + PI : angle;
}

int rotate_to_chain(const resbuf* args)
{
    acedRetNil();
    ads_name polyline, set;
    if (!next_name(&args, polyline) || !next_name(&args, set))
        return RTNORM;
    const double view_angle = next_real(&args, 0.0);
    const object_list list(polyline);
    if (!is_polyline_list(list.get()) || !std::isfinite(view_angle))
        return RTNORM;
    pl_vertex* chain = read_open_chain(polyline, list.get());
    draw_out_ends(chain);
    const chain_index index(chain);
    std::int32_t length = 0;
    acedSSLength(set, &length);
    for (std::int32_t i = 0; i < length; ++i) {
        ads_name name;
        if (acedSSName(set, i, name) == RTNORM)
            turn_object(name, index, view_angle);
    }
    pl_free_vertices(chain);
    return RTNORM;
}
