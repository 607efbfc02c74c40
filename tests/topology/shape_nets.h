// shape_nets.h: shape networks for tests: inputs, dumps, and a check of the structure.
#pragma once

#include <string>
#include <vector>

#include "tests/topology/collection.h"
#include "topology/shape_net.h"

struct vertex {
    double x, y, z = 0, bulge = 0;
};
using path = std::vector<vertex>;

// Adds a path as a shape of its own; its id.
std::int32_t add_path(ShapeNet* net, const path& line, bool closed = false);
void add_segment(ShapeNet* net, double x0, double y0, double x1, double y1, double bulge = 0);

// Ids, positions and references of everything, also of what was taken out; -0.0 as 0.0.
std::string dump(const ShapeNet& net);
// Ids of the live objects of an array, as "1 2 5".
std::string ids_in(const ObjectArray& array);
// Ids that the holders of an array stand for.
std::string held_by(const ObjectArray& holders);
// Live edges as "node1-node2" or "node1-node2(bulge)" with two decimals, by rising id.
std::string edges_of(const ShapeNet& net);
// A chain as "x,y x,y(bulge) ...", two decimals at most.
std::string text_of(const pg_node* chain);
// Polygons in the list's order, outer ones with a "!" in front, one a line.
std::string text_of(const pg_ring* rings);
std::string traced_faces(ShapeNet* net);

// That references have their answers: edges in the lists of their nodes, shapes and edges in one another's.
void expect_sound(const ShapeNet& net);
int live_edges(const ShapeNet& net);
