// all_faces.h: faces of a shape network one after the other, while its nodes and edges stay as they are. The
// same faces as FaceTracer has, without walks that don't close.
#pragma once

#include "topology/face_tracer.h"
#include "topology/way_forest.h"

class AllFaces
{
public:
    explicit AllFaces(ShapeNet* net);

    // As ShapeNet::trace_face, from a side that isn't taken.
    ShapeObj* trace(std::int32_t edge_id, std::int32_t face_id, bool forward);

private:
    enum class outlook { CLOSES, FAILS, OPEN };

    outlook outlook_of(std::int32_t way) const;
    bool walk(std::int32_t start);
    ShapeObj* shape_of_walk() const;
    std::int32_t* side_of(std::int32_t way) const;

    ShapeNet* net_;
    Ways ways_;
    WayForest forest_; // taken sides are marked
    bool has_forest_ = false;
    HeapArray<std::int32_t> face_; // the ways round the face at hand
};
