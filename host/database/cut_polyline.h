// cut_polyline.h: stretches of polylines as vertices. Inner header of cut.cpp.
#pragma once

#include <vector>

#include "host/database/cut.h"

namespace host::db
{

// A vertex in the polyline's own coordinates, with the widths and the bulge of the segment that it begins.
struct cut_vertex {
    vec at{};
    double width[2] = {0, 0};
    double bulge = 0;
    std::size_t source = 0; // which of the old vertices it is, or comes from
    bool is_new = false;    // lies at a cut
};

// Those of a LWPOLYLINE or POLYLINE that are drawn.
std::vector<cut_vertex> vertices_of(const database& db, object_id id);
// Those of a stretch of its curve, as an open polyline.
std::vector<cut_vertex> vertices_of_stretch(const plan_curve& curve, const std::vector<cut_vertex>& whole,
                                            const curve_stretch& kept);

// Group lists of what a polyline becomes, complete and with the heads that the old ones have.
struct cut_lists {
    group_list main;
    std::vector<group_list> children; // of a POLYLINE: its vertices
};
cut_lists lightweight_lists(const database& db, object_id id, const std::vector<cut_vertex>& vertices);
cut_lists polyline_lists(const database& db, object_id id, const std::vector<cut_vertex>& vertices);

// Puts a group in place of that code's first, or in front of the extended data.
void set_group(group_list& groups, const group& value);

} // namespace host::db
