#include "tools/add_arrow_tool.h"

#include "common/variables.h"
#include "drawing/picked_segment.h"
#include "hostapi/ads.h"
#include "tools/arrow_head.h"

namespace
{

void add_arrow(const ads_name name, const ads_point pick)
{
    picked_segment segment;
    if (!read_picked_segment(name, pick, &segment))
        return;
    const bool nearer_a = pick_fraction(segment, pick) < 0.5;
    pl_vertex aim = nearer_a ? *segment.b : *segment.a;
    pl_vertex tip = nearer_a ? *segment.a : *segment.b;
    pl_free_vertices(segment.chain);
    aim.next = nullptr;
    tip.next = &aim;
    draw_arrow_head(&tip);
}

} // namespace

int add_arrow_tool()
{
    kept_variable size("DIMASZ");
    if (ask_arrow_size() == RTCAN) {
        size.drop();
        return RTNORM;
    }
    ads_name name;
    ads_point pick;
    int status = acedEntSel("\nPick a line or pline to add arrow: ", name, pick);
    while (status == RTNORM) {
        add_arrow(name, pick);
        status = acedEntSel("\nPick a line or pline to add arrow (Enter to End): ", name, pick);
    }
    return RTNORM;
}
