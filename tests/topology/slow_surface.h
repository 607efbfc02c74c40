// slow_surface.h: surfaces written down a second time, as plainly as can be: records in vectors, each search a
// walk over all of them. It is the judge of the surfaces of the library and shares nothing with them but the
// polygon kernel and the triangulation.
#pragma once

#include <string>
#include <vector>

struct pg_node;

namespace slow
{
constexpr double NO_HEIGHT = -98765432.1;

struct place {
    double x = 0, y = 0, z = 0;
};

// Ids in places; one that is taken away leaves a 0, but for the last place, which keeps its id.
struct ids {
    std::vector<int> at;
    void add(int id) { at.push_back(id); }
    void drop(int id);
};

struct node {
    place p;
    ids edges;
    int mark = 0;
    bool gone = false;
};

struct edge {
    int from = 0, to = 0;
    double bulge = 0;
    int left = 0, right = 0; // left is negative: the triangle walks from the high node to the low one
    int mark = 0;
    bool gone = false;

    int low() const { return from < to ? from : to; }
    int high() const { return from < to ? to : from; }
    double key_bulge() const { return from < to ? bulge : -bulge; }
    bool ends_at(int n) const { return from == n || to == n; }
    int other_end(int n) const { return from == n ? to : from; }
};

struct triangle {
    int edge[3] = {};
    bool gone = false;
};

struct vertex {
    place p;
    bool crossing = false; // put in where the chain meets an edge
};

using cache = std::vector<int>; // at most 20 ids, newest last

struct cut_volume {
    double volume_above = 0, area_above = 0, volume_below = 0, area_below = 0;
};

struct surface {
    std::vector<node> nodes; // id 1 stands at 0, and so with the others
    std::vector<edge> edges;
    std::vector<triangle> triangles;

    // ---- objects
    node* node_at(int id);
    edge* edge_at(int id);
    triangle* triangle_at(int id);
    int find_node(place p) const;
    int find_edge(int n1, int n2, double bulge) const;
    int intern_node(place p);
    int intern_edge(int n1, int n2, double bulge = 0);
    void remove_edge(int id);
    void remove_triangle(int id);
    int new_triangle(int e1, int e2, int e3);
    bool triangle_exists(int e1, int e2, int e3);
    int triangle_from_points(place p1, place p2, place p3);

    // ---- asking
    bool triangle_corners(int id, int* a, int* b, int* c);
    bool point_in_triangle(int id, place p);
    int find_triangle(place p, cache* recent);
    double triangle_elevation(int id, place p);
    cut_volume triangle_volume(int id, double level);

    // ---- faces
    std::vector<int> trace_face(int edge_id, bool forward); // edge ids; empty: no face
    std::vector<place> face_to_chain(const std::vector<int>& face);
    void close_faces();
    void fill_face(const std::vector<place>& chain);

    // ---- cutting
    int split_edge(int edge_id, int node_id);
    void cut_crossings();
    void merge_chain(std::vector<vertex>* chain);

    // ---- whole surfaces
    void load_edges(const std::string& text, bool make_triangles); // of a file that there is
    surface copy_edges();
    surface drape(const std::vector<std::vector<place>>& polylines, cache* recent);

private:
    double turn(int before, int at, int after);
    double gap_sq(int n1, int n2);
    bool same_box(place a, place b, place c, place d) const;
    int second_half(int edge_id, int node_id, int first);
    void split_at_two(int edge_id, int n1, int n2);
};
} // namespace slow
