// plain_shape_net.h: a shape network told a second time, as plainly as it goes: vectors, linear scans, all
// pairs. It shares the polygon kernel and the sets that find nodes and edges again with the network, nothing
// else.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "topology/kd_set.h"
#include "topology/objects.h"

namespace plain_shapes
{

// Ids are places from 1. What was taken out keeps its place.
struct node {
    double x, y, z;
    std::vector<int> edges; // 0 where one was taken out
};

struct edge {
    int node1, node2;
    double bulge;
    bool deleted = false;
    std::vector<int> shapes;
    int left = 0, right = 0;
};

struct shape {
    std::vector<int> edges;
    int kind = 0;
    bool closed = false;
    int visible = 1, color = 0;
};

struct vertex {
    double x, y, z, bulge;
};

struct arc {
    double center[3], radius, start, end;
};

struct cell {
    double z;
    bool has_value;
};

struct raster {
    double x0, y0, step_x, step_y;
    int columns, rows; // intervals
    std::vector<cell> cells;
    std::vector<double> attributes; // as many
};

struct ring {
    std::vector<vertex> vertices;
    bool clockwise;
};

class net
{
public:
    std::vector<node> nodes;
    std::vector<edge> edges;
    std::vector<shape> shapes;
    double tolerance = 1e-6;
    bool is_stuck = false; // a cut has made more edges than a test can want

    explicit net(int dimensions) : dimensions_(dimensions), node_set_(dimensions, 10), edge_set_(dimensions, 10)
    {
    }

    int intern_node(double x, double y, double z);
    int intern_edge(int node1, int node2, double bulge);
    int connect(int node1, int node2, double bulge, int shape_id);
    int new_shape();
    int add_chain(int shape_id, const std::vector<vertex>& vertices, int color, bool closed);
    void add_grid(const raster& grid, int mark);
    arc arc_of(const edge& e) const;
    std::vector<vertex> edge_crossings(int first, int second) const;
    double edge_position(int edge_id, const vertex& point) const;
    int split_edge(int edge_id, int node_id);
    void cut_crossings();
    void cut_at_near_nodes();
    double turn_angle(int before, int at, int after) const;
    // Ids of edges in order; empty: no face.
    std::vector<int> trace_face(int edge_id, int face_id, bool forward);
    std::vector<ring> trace_faces();
    std::vector<vertex> face_to_chain(const std::vector<int>& face) const;
    int point_in_face(const std::vector<int>& face, double x, double y) const;

    int low(const edge& e) const { return e.node1 < e.node2 ? e.node1 : e.node2; }
    int high(const edge& e) const { return e.node1 < e.node2 ? e.node2 : e.node1; }
    node& node_at(int id) { return nodes[static_cast<std::size_t>(id - 1)]; }
    const node& node_at(int id) const { return nodes[static_cast<std::size_t>(id - 1)]; }
    edge& edge_at(int id) { return edges[static_cast<std::size_t>(id - 1)]; }
    const edge& edge_at(int id) const { return edges[static_cast<std::size_t>(id - 1)]; }
    shape& shape_at(int id) { return shapes[static_cast<std::size_t>(id - 1)]; }
    const shape& shape_at(int id) const { return shapes[static_cast<std::size_t>(id - 1)]; }
    int edge_count() const { return static_cast<int>(edges.size()); }

private:
    int dimensions_;
    KdSet node_set_; // NodeObj and EdgeKey, under the same ids
    KdSet edge_set_;

    void remove_edge(int edge_id);
    bool is_curved(const edge& e) const;
    double height_on(const edge& e, const double* at) const;
    bool is_end(int edge_id, int node_id) const;
    double half_bulge(const edge& e, int from, int to) const;
    bool lies_at_end(const edge& e, int node_id) const;
    bool is_a_place(const edge& e) const;
    int cut_at(int edge_id, int node_id);
    bool cut_pair(int i, int j);
    int& side(int edge_id, bool forward);
    int outermost_edge(int before, int at, int walked, int* far) const;
    double squared_distance(const node& a, const node& b) const;
    int near_node(const edge& e) const;
};

} // namespace plain_shapes
