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
    explicit FaceTracer(ShapeNet* net) : net_(net) {}

    // As ShapeNet::trace_face.
    ShapeObj* trace(std::int32_t edge_id, std::int32_t face_id, bool forward);

private:
    // An edge as it is walked.
    struct step {
        std::int32_t edge, from, to;
    };

    bool walk(std::int32_t face_id);
    step outermost(const step& last) const;
    bool undo_to(std::int32_t edge_id, const step& again);
    bool push(const step& s);
    ShapeObj* shape_of_walk() const;

    ShapeNet* net_;
    HeapArray<step> steps_;
};
