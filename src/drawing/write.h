// write.h: new drawing objects from chains. All go into the current space; what the host refuses is
// passed over silently.
#pragma once

#include "drawing/pline_props.h"
#include "drawing/vertex_chain.h"
#include "polygon/node.h"

// Makes one object from a chain of nodes, which stays the caller's. A layer in `props` is made if need
// be and becomes the current one ("CLAYER" and an empty name: the current layer as it is).
//   with_bulges  1 for arcs; a 3D polyline has none in any case
//   auto_kind    0 the kind of `props`; 1 a lightweight polyline where all z are equal and no curve is
//                wanted; non-zero a 3D polyline where z differs
void pl_make_entity(const pg_node* nodes, pline_props props, int with_bulges, int auto_kind);

// The same from a chain of two or more vertices. Nothing is made when the heap is exhausted.
//   choose_kind   1 replaces the kind: 3D where z differs, else lightweight
//   drop_closing  1 leaves out a last vertex that lies exactly on the first: it is cut off the caller's
//                 chain for good and released
void pl_write_vertices(pl_vertex* head, pline_props props, int choose_kind, int drop_closing, int with_bulges);

// With default properties. `layer` may be null; a negative `color` is by layer. `flags` is drop_closing
// too.
void pl_write_simple(pl_vertex* head, const char* layer, int flags, int color, int with_bulges);

// Nodes with default properties as a lightweight polyline, or 3D with `force_3d`; nothing for less than
// two nodes.
void pl_make_nodes_simple(const pg_node* nodes, const char* layer, int flags, int color, int force_3d);
