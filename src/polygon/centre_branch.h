// centre_branch.h: the line at equal distance from two items of an outline.
#pragma once

#include "polygon/centre_parts.h"

// What is asked of a new branch.
struct cl_wish {
    const cl_item* left;
    const cl_item* right;
    cl_point from; // at equal distance from both
    double slope;  // at which the planes rise from the sides
    double reach;  // how far a branch may lead
    // How the items count; see cl_relation.
    std::int16_t left_relation, right_relation;
};

// How an item counts for a branch from `place`: a side as such where its perpendicular meets the place.
std::int16_t cl_relation(const cl_item& item, const cl_point& place);

// Makes the branch: its ids, relations, path and, where its angle had to be kept within bounds, its flag. False
// when there is none.
bool cl_lead_branch(const cl_wish& wish, cl_branch* made);

// Curves are led in steps of a CL_FINE-th of the step that is given out: chords of whole steps leave the curve
// by enough to be crossed in the wrong order where three lines nearly meet. Leaves whole steps and the last
// node.
constexpr std::size_t CL_FINE = 8;
void cl_coarsen(cl_branch* branch);

// Moves the crossing of two branches, found on their chords, to the place that is equally far from the items of
// both. Left alone where that place isn't nearby. Answers by how much it has moved in the direction of
// `beyond`.
double cl_settle_crossing(const cl_outline& outline, double slope, const cl_branch& made, const cl_branch& hit,
                          const cl_point& beyond, cl_point* at);

// Moves a place that was found on the chords of a branch to the curve itself. Left alone where that isn't
// nearby.
void cl_settle_on_branch(const cl_outline& outline, double slope, const cl_branch& b, cl_point* at);

// Height over `place` of the plane that rises from a side, or of the cone that rises from a corner; beyond
// the ends of a side, from its nearer end.
double cl_height(const cl_item& item, double slope, const double* place);
