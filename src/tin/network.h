// network.h: triangle networks: points in space triangulated in the plane of x and y (Delaunay), with
// barriers, segments that must appear as edges.
//
//     tin_network network;
//     for each point: tin_point* p = tin_point_new(x, y, z);
//                     tin_add_point(&network, p) answers null: tin_keep_point(&network, p, &list), with a list
//                     of your own, null at first; any other answer: acad_free(p)
//     for each barrier: tin_add_barrier(&network, from, to), between points that were taken
//     network.points = the list; tin_triangulate(&network);
//
// The triangles then hang on `triangles`. Those with a corner of `frame` lie outside the points; the frame's
// corners stay in the run's own coordinates, whose origin is (x_min, y_min). A network is run once; until then
// `points` is the tree of those that were added, and what is not run needs the list or null there.
#pragma once

#include <cstdint>

#include "common/tolerances.h"

struct tin_link;
struct tin_triangle;
struct tin_reading;
struct tin_waiting;

struct tin_point {
    double x, y, z;
    union {
        tin_triangle* tri;  // the triangle in whose bucket the point waits; once inserted, one of its triangles
        tin_point* greater; // while points are read: the subtree of greater x
        std::uintptr_t place; // inside tin_triangulate, of a waiting point that is in no bucket
    };
    tin_link* partners; // points to which a barrier joins this one
    tin_point* less;    // while points are read: the subtree of x not greater
    tin_point* next;
};

// A cell of a list of points.
struct tin_link {
    tin_point* point;
    tin_link* next;
};

struct tin_triangle {
    tin_point* corner[3];  // counter-clockwise
    tin_triangle* side[3]; // side[i]: across the edge from corner[i] to the next; null on the frame
    tin_link* bucket;      // points inside that wait for their insertion
    tin_triangle* next;
};

// A segment that must become an edge; it has no direction. Both ends have each other as partners.
struct tin_barrier {
    tin_point *from, *to;
    tin_barrier* next;
};

struct tin_place {
    double x, y;
};

// One edge of a triangle made ready for the inside test; the ends are places of `tri_edges::corner`.
struct tri_edge {
    tin_place *low_x_end, *high_x_end, *top_end, *bottom_end;
    double slope; // 98765432.1 when vertical
};

struct tri_edges {
    tri_edge edge[3];
    tin_place corner[3];
};

struct tin_network {
    tin_triangle* triangles = nullptr;
    std::int32_t skip_zero = 0;  // 1: points of elevation zero are dropped
    std::int32_t zero_count = 0; // points so dropped
    // Segments that could not be forced. An edge of a barrier that made room for another one's end, and one
    // whose forcing ended with a message, are not among them.
    std::int32_t failed_barriers = 0;
    double contour_interval = 1.0; // elevations on a multiple of it are nudged; 0: none is
    tri_edges edges_a{}, edges_b{};
    tin_point* frame[4] = {}; // upper left, upper right, lower right, lower left
    tin_point* points = nullptr;
    std::int32_t tick = 0; // progress, 0 to 100
    std::int32_t hundreds = 0;
    std::int32_t point_count = 0;
    double box[4] = {}; // in which a point is a duplicate of the one being read: low x, high x, low y, high y
    std::int32_t swap_depth = 0;
    // The caller's are x and y, before the run; z is the run's.
    double z_max = -NO_VALUE, x_max = -NO_VALUE, y_max = -NO_VALUE;
    double z_min = NO_VALUE, x_min = NO_VALUE, y_min = NO_VALUE;
    std::int32_t inside = 0;
    tin_barrier* barriers = nullptr;
    std::int32_t split_on_barriers = 0; // 1: barriers are split at points that lie on them
    std::int32_t quiet = 1;             // 1: no progress text

    // The run's own.
    tin_point* barrier_points = nullptr; // points inserted for barriers, midpoints among them
    tin_point* kept_points = nullptr; // head of the list of which `points` is the rest, while a run inserts it
    tin_waiting* waiting = nullptr;   // of the points that a run has still to insert, those in no bucket
    std::uint32_t listed = 0;         // triangles put on the list
    tin_reading* reading = nullptr;   // finds places in the tree of points faster than the tree does

    tin_network() = default;
    tin_network(const tin_network&) = delete;
    tin_network& operator=(const tin_network&) = delete;
    // Gives back barriers, points, triangles and all that hangs on them.
    ~tin_network();
};

// A point with null links; null when the heap is exhausted.
tin_point* tin_point_new(double x, double y, double z);

// Offers a point. Null: it was taken into the tree of points, is still the caller's, and goes on the caller's
// list. The point itself: it was dropped because its elevation is zero. Another point: that one, of which it
// is a duplicate; nothing of it was kept.
//   A duplicate lies within 1e-6 in x and in y, and is found only where the way down the tree, by x alone,
//   comes by. An elevation on a contour (and every negative one) is raised by 1e-7.
tin_point* tin_add_point(tin_network* network, tin_point* point);

// Puts a point that was taken at the head of the caller's list and widens x_min to y_max by it.
void tin_keep_point(tin_network* network, tin_point* point, tin_point** list);

// A new barrier at the head of `barriers`, linked. False without memory, with the network as it was.
bool tin_add_barrier(tin_network* network, tin_point* from, tin_point* to);

// Makes the ends of a barrier each other's partners, which protects the edge between them.
void tin_link_barrier(tin_network* network, tin_barrier* barrier);

// Triangulates `points`, barriers first. RTNORM always. After a user break the network stays as it then is,
// coordinates included.
int tin_triangulate(tin_network* network);
