// Faces: walked by the leftmost turn, so the face lies on the left of its edges: inner faces come out
// counter-clockwise, and the outside of a part that hangs together clockwise.
#include "topology/face_chain.h"
#include "topology/face_walk.h"
#include "topology/fill_face.h"
#include "topology/idle_walks.h"
#include "topology/polling.h"
#include "topology/surface_net.h"

// What close_faces works with.
struct face_closing {
    face_walk walk;
    IdleWalks idle;
    bool is_broken = false; // the user broke off, and was told
};

namespace
{

bool is_triangle(const face_walk& walk)
{
    return walk.steps.count == 3 && walk.end != WalkEnd::NO_WAY_ON;
}

void fill(SurfaceNet* surface, const pg_node* chain, face_closing* work)
{
    const std::int32_t edges_before = surface->edges.count;
    work->is_broken = !fill_face(surface, chain);
    for (std::int32_t id = edges_before + 1; id <= surface->edges.count; ++id)
        work->idle.forget_for(*surface, id);
}

void close_larger_face(SurfaceNet* surface, face_closing* work)
{
    ShapeObj* shape = shape_of(work->walk);
    pg_node* chain = shape ? surface->face_to_chain(shape) : nullptr;
    delete shape;
    if (!chain)
        return;
    if (pg_orientation(chain) == -1)
        fill(surface, chain, work);
    else if (work->walk.end == WalkEnd::CLOSED && is_never_inner(*surface, work->walk))
        work->idle.remember(*surface, &work->walk);
    pl_free_nodes(chain);
}

} // namespace

ShapeObj* SurfaceNet::trace_face(std::int32_t edge_id, bool forward)
{
    face_walk walk;
    walk_face(*this, edge_id, forward, ++walks_, &walk);
    return walk.end == WalkEnd::NO_WAY_ON ? nullptr : shape_of(walk);
}

pg_node* SurfaceNet::face_to_chain(const ShapeObj* shape) const
{
    return shape ? ::face_to_chain(*this, *shape) : nullptr;
}

void SurfaceNet::close_face(std::int32_t edge_id, bool forward, face_closing* work)
{
    if (work->idle.knows(edge_id, forward))
        return;
    face_walk& walk = work->walk;
    walk_face(*this, edge_id, forward, ++walks_, &walk);
    if (is_triangle(walk))
        new_triangle(walk.steps.items[0].edge, walk.steps.items[1].edge, walk.steps.items[2].edge);
    else if (walk.end != WalkEnd::NO_WAY_ON)
        close_larger_face(this, work);
    else if (walk.steps.count > 0)
        work->idle.remember(*this, &walk);
}

void SurfaceNet::close_faces()
{
    face_closing work;
    BreakPoll poll;
    // Edges that a filled face gets come last, and so have their turn too.
    for (std::int32_t id = 1; id <= edges.count && !work.is_broken; ++id) {
        const EdgeObj* of = edge(id);
        if (!of)
            continue;
        if (poll.is_cancelled())
            return;
        if (of->right == 0)
            close_face(id, true, &work);
        if (of->left == 0 && !work.is_broken)
            close_face(id, false, &work);
    }
}
