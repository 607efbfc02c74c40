// plain_network.h: the triangle network once more, step by step and without any thought of speed. The network
// of src/tin is compared with it, list by list and word by word.
//
// Records bear the field names of src/tin, so that one template can write down either. Everything is owned by
// the network; a link or barrier that is taken out of its list simply stays in the store.
#pragma once

#include <deque>
#include <string>

namespace plain
{

constexpr double missing = 98765432.1;
constexpr int norm = 5100;
constexpr int none = 5000;

struct triangle;
struct link;

struct point {
    double x = 0, y = 0, z = 0;
    triangle* tri = nullptr;
    link* partners = nullptr;
    point* more = nullptr; // the subtree of greater x
    point* less = nullptr; // the subtree of x not greater
    point* next = nullptr;
};

inline point at(double x, double y)
{
    point p;
    p.x = x;
    p.y = y;
    return p;
}

struct link {
    plain::point* point = nullptr;
    link* next = nullptr;
};

struct triangle {
    point* corner[3] = {};
    triangle* side[3] = {}; // side[i] lies across corner[i], corner[i + 1]
    link* bucket = nullptr;
    triangle* next = nullptr;
};

struct barrier {
    point* from = nullptr;
    point* to = nullptr;
    barrier* next = nullptr;
};

struct place {
    double x, y;
};

struct prepared_edge {
    place low_x_end, high_x_end, top_end, bottom_end;
    double slope;
};

struct tri_edges {
    prepared_edge edge[3];
};

struct network {
    triangle* triangles = nullptr;
    int skip_zero = 0;
    int zero_count = 0;
    int failed_barriers = 0;
    double contour_interval = 1.0;
    tri_edges edges_a{}, edges_b{};
    point* frame[4] = {}; // upper left, upper right, lower right, lower left
    point* points = nullptr;
    int tick = 0;
    int hundreds = 0;
    int point_count = 0;
    double box[4] = {};
    int swap_depth = 0;
    double z_max = -missing, x_max = -missing, y_max = -missing;
    double z_min = missing, x_min = missing, y_min = missing;
    int inside = 0;
    barrier* barriers = nullptr;
    int split_on_barriers = 0;
    int quiet = 1;

    // What the steps keep beyond the fields.
    point* barrier_points = nullptr;
    int connected = 0;
    int swapped_away = 0; // edges of other barriers that made room for a barrier's end

    // The world around it.
    std::string said;       // all messages
    int break_at = 0;       // the poll, from 1, that finds the break key pressed; 0: none
    bool broken = false;    // a break once seen stays seen
    bool backwards = false; // the products of the determinant summed from the last to the first

    std::deque<point> own_points{};
    std::deque<link> own_links{};
    std::deque<triangle> own_triangles{};
    std::deque<barrier> own_barriers{};
};

// ---- plain_network.cpp: reading, frame ----
point* new_point(network& n, double x, double y, double z);
barrier* new_barrier(network& n, point* from, point* to);
// Null: taken. The point itself: dropped for its zero elevation. Else the earlier point that it doubles.
point* add_point(network& n, point* p);
void build_frame(network& n);
bool poll_break(network& n);

// ---- plain_insert.cpp ----
void load_edges(tri_edges& edges, const triangle& t);
int inside(network& n, const tri_edges& edges, const point& p);
void push(network& n, link*& head, point* p);
void replace_side(triangle* where, triangle* old_one, triangle* new_one);
// Both buckets sorted anew, that of `first` before that of `second`: what is inside `test` goes to it, all else
// to the other of the two.
void sort_buckets(network& n, triangle* first, triangle* second, triangle* test);
double determinant(const network& n, const point& a, const point& b, const point& c, const point& d);
int insert_point(network& n, point* p);
void swap_edges(network& n, point* p1, point* p2, triangle* far, point* p, triangle* near);
int swap_test(network& n, point* a, point* b, point* c, point* d, triangle* far);
int cocircular_test(network& n, point* a, point* b, point* c, point* d, triangle* far);
int is_barrier(const point* p, const point* q);

// ---- plain_barriers.cpp, plain_connect.cpp ----
int inters(const point& a, const point& b, const point& c, const point& d);
int segments_cross(const point& a, const point& b, const point& c, const point& d);
int vertical_cross(const point& a, const point& b, const point& c, const point& d, double* result);
void link_barrier(network& n, barrier* b);
void split_barriers(network& n);
int connect_barrier_points(network& n, barrier* b, triangle* start, triangle* end, int retry);

// ---- plain_run.cpp ----
// False: the user broke the run off.
bool barrier_phase(network& n);
int triangulate(network& n);

} // namespace plain
