// face_tracer.h: the walk round one face of a shape network.
//
// At each node the walk takes the outermost turn to its left, and so goes round the face on its left. An edge
// has a side for each direction in which it is walked: the face's id stands on the sides of its walk.
#pragma once

#include "topology/heap_array.h"
#include "topology/shape_net.h"

class FaceTracer
{
public:
    // `all_faces`: remembers walks that can't close, for one that takes every side in turn while no edge
    // changes.
    FaceTracer(ShapeNet* net, bool all_faces);
    ~FaceTracer();
    FaceTracer(const FaceTracer&) = delete;
    FaceTracer& operator=(const FaceTracer&) = delete;

    // As ShapeNet::trace_face.
    ShapeObj* trace(std::int32_t edge_id, std::int32_t face_id, bool forward);
    // Whether a walk from there is known to end without closing.
    bool is_dead(const ShapeEdge& edge, bool forward) const;

private:
    // An edge as it is walked.
    struct step {
        std::int32_t edge, from, to;
        std::int64_t arrival; // at `from`, before this step
    };
    enum class ending { CLOSED, NO_WAY, LOST };

    ending walk(std::int32_t face_id);
    step outermost(const step& last) const;
    bool undo_to(std::int32_t edge_id, const step& again);
    bool push(const step& s);
    void note_dead();
    void arrive(std::int32_t node);
    ShapeObj* shape_of_walk() const;

    ShapeNet* net_;
    HeapArray<step> steps_;
    HeapArray<std::int64_t> arrivals_; // by node id: when the walks came there last; empty: not remembered
    std::int64_t clock_ = 0;
};
