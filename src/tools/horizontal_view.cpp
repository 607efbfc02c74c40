#include "tools/horizontal_view.h"

#include <algorithm>

#include "common/angle_text.h"
#include "hostapi/ads.h"

namespace
{

constexpr int DRAWING_UNIT = -1;
constexpr int TWIST_DECIMALS = 9;

struct extents {
    ads_point min{0.0, 0.0, 0.0};
    ads_point max{99999999.0, 99999999.0, 99999999.0};
};

// Leaves the standard corner, with a warning, when the host has none.
void read_corner(const char* name, ads_point corner)
{
    resbuf value{};
    if (acedGetVar(name, &value) == RTNORM)
        std::copy_n(value.resval.rpoint, 3, corner);
    else
        acutPrintf("\nWarning: unable to find %s", name);
}

// The twist goes out as text in the drawing's own angle unit, as its user would type it. The corners choose
// the whole drawing as the objects of the command.
void twist_view(const extents& drawing, double twist)
{
    char text[ADS_TEXT_SIZE] = "";
    acdbAngToS(twist, DRAWING_UNIT, TWIST_DECIMALS, text);
    acedCommand(RTSTR, "_.DVIEW", RTSTR, "_C", RT3DPOINT, drawing.min, RT3DPOINT, drawing.max, RTSTR, "", RTSTR,
                "_TW", RTSTR, text, RTSTR, "", 0);
}

} // namespace

double level_twist(const picked_segment& segment, const ads_point pick)
{
    const double a[2] = {segment.a->x, segment.a->y}, b[2] = {segment.b->x, segment.b->y};
    const bool towards_a = pick_fraction(segment, pick) < 0.5;
    return TWO_PI - (towards_a ? point_angle(b, a) : point_angle(a, b));
}

int horizontal_view_tool()
{
    extents drawing;
    read_corner("EXTMIN", drawing.min);
    read_corner("EXTMAX", drawing.max);
    ads_name name;
    ads_point pick;
    if (acedEntSel("\nPick a line or pline to make horizontal:", name, pick) != RTNORM) {
        acutPrintf("\nFunction cancelled.");
        return RTNORM;
    }
    picked_segment segment;
    if (!read_picked_segment(name, pick, &segment))
        return RTNORM;
    const double twist = level_twist(segment, pick);
    pl_free_vertices(segment.chain);
    twist_view(drawing, twist);
    return RTNORM;
}
