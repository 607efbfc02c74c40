// idle_walks.h: walks round faces that come to nothing, so that none is walked from each of its edges.
#pragma once

#include "topology/face_walk.h"

// A step leads to the next one whatever came before. A walk that was made once therefore comes out the same
// from each of its edges, as long as no edge is put in that it would turn into and it doesn't come through the
// first node early; so steps that leave nodes to which the walk comes more than once don't count.
//
// Without memory nothing is remembered, and nothing goes wrong.
class IdleWalks
{
public:
    // Whether a walk from this edge is known to come to nothing.
    bool knows(std::int32_t edge, bool forward) const;
    // Remembers a walk that found no way on, or a closed one of which `is_never_inner` says so.
    void remember(const SurfaceNet& surface, face_walk* walk);
    // The edge was put in: walks that would turn into it are forgotten.
    void forget_for(const SurfaceNet& surface, std::int32_t added);

private:
    struct known_walk {
        std::int32_t leads_into; // an earlier walk that this one comes upon; 0: none
        bool is_void;            // an edge was put in that it turns into
    };
    HeapArray<std::int32_t> walk_of_; // by edge and direction; 0 none, negative: of no use to walks from there
    HeapArray<std::int32_t> next_of_; // by edge and direction; the edge on which its walk goes on, 0 none
    HeapArray<known_walk> walks_;     // from 1
    HeapArray<std::int32_t> visits_;  // by node; 0 between two calls

    bool holds(std::int32_t number) const;
    void enter(const SurfaceNet& surface, const face_walk& walk, std::int32_t own_steps);
    void forget_at(const SurfaceNet& surface, std::int32_t node, std::int32_t added);
    void add_ways_here(const SurfaceNet& surface, HeapArray<face_step>* steps);
};

// Whether the chain through the walk's nodes is no counter-clockwise one, whichever node it starts at.
bool is_never_inner(const SurfaceNet& surface, const face_walk& walk);
