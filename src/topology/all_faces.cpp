#include "topology/all_faces.h"

#include <initializer_list>

AllFaces::AllFaces(ShapeNet* net) : net_(net), has_forest_(ways_.make(*net) && forest_.make(ways_))
{
    for (std::int32_t way = way_of(1, false); has_forest_ && way < ways_.count(); ++way)
        if (ways_.to(way) != 0 && *side_of(way) != 0)
            forest_.mark(way);
}

std::int32_t* AllFaces::side_of(std::int32_t way) const
{
    ShapeEdge* edge = net_->edge(edge_of_way(way));
    return way == way_of(edge_of_way(way), true) ? &edge->right_shape : &edge->left_shape;
}

// A walk ends at a side that is taken, unless it comes there along an edge that it has walked the other way.
AllFaces::outlook AllFaces::outlook_of(std::int32_t way) const
{
    const std::int32_t home = ways_.to(way) != 0 ? forest_.home(way) : 0;
    if (home == 0)
        return outlook::FAILS;
    const std::int32_t taken = forest_.first_marked(way);
    const std::int32_t to_taken = taken != 0 ? forest_.steps(way, taken) : -1;
    if (to_taken < 0 || to_taken > forest_.steps(way, home))
        return outlook::CLOSES;
    const std::int32_t to_its_back = forest_.steps(way, way_back(taken));
    return taken == home || to_its_back < 0 || to_its_back > to_taken ? outlook::FAILS : outlook::OPEN;
}

// Goes round a face of which no side is taken. What would be walked there and back is left out. False where
// that is all there is, and without memory.
bool AllFaces::walk(std::int32_t start)
{
    const std::int32_t home = forest_.home(start);
    std::int32_t left = forest_.steps(start, home);
    face_.count = 0;
    if (!face_.add(start))
        return false;
    for (std::int32_t way = start;;) {
        way = ways_.next(way);
        if (--left == 0)
            return !(face_.count == 1 && home == way_back(start)) && face_.add(home);
        const std::int32_t back = forest_.steps(way, way_back(way));
        if (back > 0 && back < left) {
            way = way_back(way);
            left -= back;
        } else if (!face_.add(way)) {
            return false;
        }
    }
}

ShapeObj* AllFaces::shape_of_walk() const
{
    auto* shape = new ShapeObj;
    if (!shape)
        return nullptr;
    shape->closed = 1;
    for (std::int32_t i = 0; i < face_.count; ++i) {
        shape->link(edge_of_way(face_.items[i]));
        if (shape->edges.count != i + 1) {
            delete shape;
            return nullptr;
        }
    }
    return shape;
}

ShapeObj* AllFaces::trace(std::int32_t edge_id, std::int32_t face_id, bool forward)
{
    const std::int32_t start = way_of(edge_id, forward);
    const outlook seen = has_forest_ ? outlook_of(start) : outlook::OPEN;
    if (seen == outlook::FAILS)
        return nullptr;
    if (seen == outlook::CLOSES) {
        ShapeObj* shape = walk(start) ? shape_of_walk() : nullptr;
        for (std::int32_t i = 0; shape && i < face_.count; ++i) {
            *side_of(face_.items[i]) = face_id;
            forest_.mark(face_.items[i]);
        }
        return shape;
    }
    ShapeObj* shape = FaceTracer(net_).trace(edge_id, face_id, forward);
    for (std::int32_t i = 1; shape && has_forest_ && i <= shape->edges.count; ++i)
        for (const bool side : {false, true})
            if (const std::int32_t way = way_of(shape->edges.get(i)->id, side); *side_of(way) == face_id)
                forest_.mark(way);
    return shape;
}
