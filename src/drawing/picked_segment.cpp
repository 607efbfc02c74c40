#include "drawing/picked_segment.h"

#include <string_view>

#include "common/names.h"
#include "drawing/object_list.h"
#include "drawing/read.h"
#include "hostapi/ads.h"

namespace
{

constexpr int TYPE_GROUP = 0;
constexpr int START_GROUP = 10;
constexpr int END_GROUP = 11;

std::string_view type_of(const resbuf* list)
{
    const resbuf* type = rb_find(list, TYPE_GROUP);
    return type && type->resval.rstring ? type->resval.rstring : "";
}

pl_vertex* vertex_of_group(const resbuf* list, int group)
{
    const resbuf* node = rb_find(list, group);
    return node ? pl_vertex_new(node->resval.rpoint[0], node->resval.rpoint[1], node->resval.rpoint[2])
                : nullptr;
}

} // namespace

bool is_line_list(const resbuf* list)
{
    return type_of(list) == "LINE";
}

bool is_arc_list(const resbuf* list)
{
    return type_of(list) == "ARC";
}

bool is_polyline_list(const resbuf* list)
{
    const std::string_view type = type_of(list);
    return type == "POLYLINE" || type == "LWPOLYLINE";
}

pl_vertex* pl_read_line(const resbuf* list)
{
    pl_vertex* a = vertex_of_group(list, START_GROUP);
    pl_vertex* b = vertex_of_group(list, END_GROUP);
    if (a && b) {
        a->next = b;
        return a;
    }
    pl_free_vertices(a);
    pl_free_vertices(b);
    return nullptr;
}

bool read_picked_segment(const ads_name name, const ads_point pick, picked_segment* segment)
{
    const object_list list(name);
    const bool line = is_line_list(list.get()), polyline = is_polyline_list(list.get());
    pl_vertex* chain = line ? pl_read_line(list.get()) : polyline ? pl_read_vertices(name) : nullptr;
    if (!line && !polyline) {
        acutPrintf("%s", NOT_A_LINE_OR_POLYLINE);
        return false;
    }
    pl_vertex* a = line ? chain : pl_nearest_segment(chain, pick);
    if (!a) {
        acutPrintf("%s", NO_SEGMENT_THERE);
        pl_free_vertices(chain);
        return false;
    }
    *segment = {chain, a, a->next ? a->next : chain};
    return true;
}

double pick_fraction(const picked_segment& segment, const ads_point pick)
{
    const pl_vertex& a = *segment.a;
    const pl_vertex picked{0, pick[0], pick[1], pick[2], 0.0, nullptr, nullptr};
    return pl_plan_distance(a, picked) / pl_plan_distance(a, *segment.b);
}
