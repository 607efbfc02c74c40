// plain_surface.h: a surface once more, by plain lists and plain scans, for comparison.
//
// Geometry of points, segments and chains, and the triangle network that fills a face, are the library's own.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "polygon/node.h"

class SurfaceNet;

namespace plain
{

struct node {
    double at[3];
    std::vector<int> edges; // in the order in which they came
};

struct edge {
    int node1, node2;
    int left, right;
    bool is_gone, is_marked;
    int low() const { return node1 < node2 ? node1 : node2; }
    int high() const { return node1 < node2 ? node2 : node1; }
    int far_end(int from) const { return node1 == from ? node2 : node1; }
};

struct triangle {
    int edge[3];
    bool is_gone;
};

// Ids are from 1; 0 is none.
struct surface {
    std::vector<node> nodes;
    std::vector<edge> edges;
    std::vector<triangle> triangles;

    int intern_node(const double* at);
    int intern_edge(int node1, int node2);
    int split_edge(int edge, int node);
    void cut_crossings();
    void merge_chain(pg_node* chain);
    void close_faces();
    int find_triangle(const double* at) const; // by the scan alone

    int known_node(const double* at) const;
    int known_edge(int node1, int node2) const;

private:
    void remove_triangle(int id);
    void new_triangle(int e1, int e2, int e3);
    bool cut_pair(int i, int j);
    bool split_at(int edge, int first, int second);
    std::vector<int> trace_face(int edge, bool forward, bool* found) const;
    void close_face(int edge, bool forward);
    void fill_face(const pg_node* chain);
};

// One line an object, numbers to the last bit.
std::string text_of(const surface& s);
std::string text_of(const SurfaceNet& s);

} // namespace plain
