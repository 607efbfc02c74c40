// read.h: polylines of the drawing as property records and chains.
#pragma once

#include "drawing/pline_props.h"
#include "drawing/vertex_chain.h"
#include "hostapi/adsdef.h"
#include "polygon/node.h"

// The properties of an object; for one that is no polyline layer, linetype, linetype scale and colour
// alone. All defaults when it doesn't open. Texts are cut to their fields.
pline_props pl_get_props(const ads_name name);

// The vertices of a polyline of any kind, in drawing order; the chain belongs to the caller
// (pl_free_nodes). Null, with a message, for any other object, and for a polyline with arcs unless
// `allow_arcs` is 1; null silently when the object doesn't open or the heap is exhausted.
pg_node* pl_read_nodes(const ads_name name, int allow_arcs);

// The same as a chain of vertices, arcs allowed (pl_free_vertices).
pl_vertex* pl_read_vertices(const ads_name name);
