// centre_network.h: the growing diagram: its branches, and what is looked for among them.
#pragma once

#include <cstddef>

#include "polygon/centre_boxes.h"
#include "polygon/centre_walls.h"

// Finds branches by where they start. Cells are a little wider than the tolerance and lie in a hash table.
struct cl_places {
    std::vector<std::int32_t> first; // by hash; -1 none
    std::vector<std::int32_t> next;  // by number, -1 none
    cl_path places;
};

void cl_places_init(cl_places* p, std::size_t expected);
void cl_places_add(cl_places* p, const cl_point& place);
// The numbers of the places within 1e-6 of `place` in x and in y, ascending.
void cl_places_near(const cl_places& p, const cl_point& place, std::vector<std::int32_t>* found);

// Branches by one of their two ids, below a tree of boxes over the ids, so that those in the way of a new
// branch are found without looking at the others.
struct cl_id_tree {
    std::size_t leaves = 0;
    std::vector<cl_box> boxes;                       // heap order; the leaf of id i is leaves + i
    std::vector<std::vector<std::int32_t>> branches; // by id, in the order made
};

struct cl_network {
    std::vector<cl_branch> branches; // in the order made
    std::vector<cl_box> boxes;       // by branch
    cl_places starts;                // of the branches, same numbers
    cl_id_tree by_left, by_right;
    cl_walls walls;
    double margin = 0.0; // around boxes, for what pg_seg_intersect takes for a meeting
};

struct cl_hit {
    double length;       // along the new branch; PG_NO_VALUE: none
    std::int32_t branch; // -1: none; the new branch is hidden from its items from here on
    cl_point at;
    cl_point beyond; // a little further on the same chord
};

// A new branch made ready for many crossings: the length up to each node, and a box round each stretch of
// chords.
struct cl_probe {
    static constexpr std::size_t STRETCH = 16;
    const cl_branch& lead;
    const cl_path& path; // of that
    std::vector<double> lengths;
    std::vector<cl_box> stretches;
    cl_box box;
};

cl_probe cl_make_probe(const cl_branch& lead);

// With the outline's starting rays. The outline must stay where it is.
void cl_network_init(cl_network* net, const cl_outline& outline);

// Adds a branch; its number. One that is not `searchable` is never hit.
std::int32_t cl_add_branch(cl_network* net, cl_branch branch, bool searchable);

// Every branch of the run that starts at `point`, and on from the end of each, is retired. A branch goes on
// from another when it was led from its end and parts one of the same items: branches that end by chance where
// others start, as happens in outlines of right angles, don't.
void cl_retire_from(cl_network* net, const cl_run& run, const cl_point& point);

// Makes a branch one of the network and ends it at `point`; what went on from its old end is retired.
void cl_cut_branch(cl_network* net, const cl_run& run, std::int32_t branch, const cl_point& point);

// Whether two chords meet, and where.
bool cl_chords_meet(const cl_point& a1, const cl_point& a2, const cl_point& b1, const cl_point& b2,
                    cl_point* at);

// Where the path first meets the branch at a place that nothing hides from the items of both; kept when that is
// nearer along the path than `best`.
void cl_cross_branch(const cl_network& net, const cl_probe& probe, std::int32_t other, cl_hit* best);

// The nearest crossing of the path with branches that have the first id, from `id` downward (by right ids) or
// upward (by left ids) to the end of the run, which has any crossing. The edge of a run counts only with
// `with_edge`, and as that of the item `id` itself.
cl_hit cl_search_left(const cl_network& net, const cl_run& run, std::int32_t id, bool with_edge,
                      const cl_probe& probe);
cl_hit cl_search_right(const cl_network& net, const cl_run& run, std::int32_t id, bool with_edge,
                       const cl_probe& probe);
