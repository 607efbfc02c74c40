// centre_parts.h: the records with which centre lines are built.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

using cl_point = std::array<double, 3>;
using cl_path = std::vector<cl_point>;

constexpr std::int16_t CL_CORNER = 0; // a reflex corner, or an end of an open outline; only `from` counts
constexpr std::int16_t CL_SIDE = 1;

constexpr double CL_TIE = 1e-12; // of the reach: crossings on both sides that count as equally near

// One element of the outline. Ids run from 1 along the outline.
struct cl_item {
    std::int16_t kind;
    std::int32_t id;
    cl_point from, to;
};

// A stretch of the outline whose diagram is whole in itself: at first sides joined at reflex corners, later
// what was merged of them. Its items are those of a range of ids.
struct cl_run {
    std::int32_t first_id, last_id;
};

// How an item counts for a branch.
constexpr std::int16_t CL_AS_CORNER = 0;
constexpr std::int16_t CL_AS_SIDE = 1;
constexpr std::int16_t CL_AS_FROM = -1; // a side by its nearer end, beyond which the branch starts
constexpr std::int16_t CL_AS_TO = -2;

// States of a branch beside the kinds of centre_lines.h.
constexpr std::int16_t CL_MERGED = 3;   // part of another now, or without length
constexpr std::int16_t CL_ONE_ITEM = 4; // the edge of a run: both ids are the same
constexpr std::int16_t CL_RETIRED = -2;

// A line at equal distance from two items, led away from the outline with the left item on its left.
struct cl_branch {
    std::int32_t left_id, right_id;
    std::int16_t state;
    std::int16_t flag; // 1: its angle had to be guarded, or it follows on such a branch
    cl_path chain;
    std::int16_t left_relation, right_relation; // how the items count
    std::size_t fine_count = 0;                 // nodes in fine steps at the start of the chain, see cl_coarsen
};

// The outline as items, and its stretches between convex corners.
struct cl_outline {
    std::vector<cl_item> items; // by id, from 1
    std::vector<cl_run> runs;
    bool is_ring = false; // the last run meets the first at a convex corner
    double reach = 0.0;   // diagonal of the extents; no ray is longer

    const cl_item& item(std::int32_t id) const { return items[static_cast<std::size_t>(id - 1)]; }
};
