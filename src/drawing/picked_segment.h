// picked_segment.h: the segment of a line or polyline at which the user picked.
#pragma once

#include "drawing/vertex_chain.h"
#include "hostapi/adsdef.h"

// What tools that work on such objects say to a pick of anything else, and to one that is not beside a segment.
constexpr const char* NOT_A_LINE_OR_POLYLINE = "\nError: selection must be a LINE or POLYLINE";
constexpr const char* NO_SEGMENT_THERE = "\nError: no segment of the polyline at that point";

// An entity list's group 0: "LINE"; "ARC"; "POLYLINE" or "LWPOLYLINE".
bool is_line_list(const resbuf* list);
bool is_arc_list(const resbuf* list);
bool is_polyline_list(const resbuf* list);

// The two ends of a LINE from its entity list, as a chain of two vertices (pl_free_vertices). Null when
// the list lacks an end or the heap is exhausted.
pl_vertex* pl_read_line(const resbuf* list);

struct picked_segment {
    pl_vertex* chain; // of the whole object, the caller's (pl_free_vertices)
    pl_vertex* a;
    pl_vertex* b; // behind a; the head of the chain when a is its last vertex
};

// The picked segment of a LINE, or of a polyline by pl_nearest_segment. False, with a message and nothing
// to release, for another object and for a pick beside no segment.
bool read_picked_segment(const ads_name name, const ads_point pick, picked_segment* segment);

// Plan distance of the pick from a, as a part of the segment's plan length; infinite or not a number for a
// segment without length.
double pick_fraction(const picked_segment& segment, const ads_point pick);
