// vertex_chain.h: the chain of vertices on which the interactive tools work.
//
// A tool reads a polyline into a chain, changes it, and writes a new object from it. Vertices come from
// the host's heap; a chain belongs to the tool that read it. A closed polyline's chain doesn't repeat its
// first vertex at its end.
#pragma once

#include <cstdint>

#include "hostapi/adsdef.h"

struct pl_vertex {
    std::int32_t type; // 1 from the readers; the drawing tools give it roles of their own
    double x, y, z;    // world coordinates; z of a flat polyline is its elevation
    double bulge;      // of the segment that starts here, 0 straight
    pl_vertex* next;
    pl_vertex* prev; // not set by the readers
};

// A lone vertex of type 1, bulge 0. Null when the heap is exhausted.
pl_vertex* pl_vertex_new(double x, double y, double z);
void pl_free_vertices(pl_vertex* head);

// Sets `prev` of a whole chain.
void pl_link_back(pl_vertex* head);
pl_vertex* pl_last(pl_vertex* head); // null of an empty chain
double pl_plan_distance(const pl_vertex& a, const pl_vertex& b);

// The vertex at which the segment nearest to a pick begins, null when the pick's foot falls on none.
// Chords only, in the plane; of equal distances the later segment wins. Segments of 0.0001 or less
// don't count.
pl_vertex* pl_nearest_segment(pl_vertex* head, const ads_point point);
