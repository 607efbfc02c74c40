// Faces of a shape network: traced, as chains, and asked whether a place lies in them.
#include <algorithm>
#include <cmath>

#include "common/tolerances.h"
#include "hostapi/ads.h"
#include "topology/all_faces.h"
#include "topology/edge_arcs.h"
#include "topology/face_chain.h"
#include "topology/face_tracer.h"
#include "topology/shape_net.h"
#include "topology/walk.h"

namespace
{

// A face as an entry of a list of polygons; null without memory.
pg_ring* ring_of(const ShapeNet& net, const ShapeObj& face)
{
    pg_ring* ring = pg_ring_new();
    if (!ring)
        return nullptr;
    ring->nodes = net.face_to_chain(&face);
    if (!ring->nodes) {
        acad_free(ring);
        return nullptr;
    }
    ring->clockwise = pg_orientation(ring->nodes) == 1;
    return ring;
}

} // namespace

ShapeObj* ShapeNet::trace_face(std::int32_t edge_id, std::int32_t face_id, bool forward)
{
    return FaceTracer(this).trace(edge_id, face_id, forward);
}

pg_ring* ShapeNet::trace_faces()
{
    AllFaces faces(this);
    pg_ring* head = nullptr;
    std::int32_t face_id = 1;
    for (std::int32_t i = first_of(edges); i != 0; i = edges.next(i))
        for (const bool forward : {true, false}) {
            const ShapeEdge& side = *edge(i);
            if ((forward ? side.right_shape : side.left_shape) != 0)
                continue;
            ShapeObj* face = faces.trace(i, face_id, forward);
            pg_ring* ring = face ? ring_of(*this, *face) : nullptr;
            face_id += face ? 1 : 0;
            delete face;
            if (!ring)
                continue;
            ring->next = head;
            head = ring;
        }
    return head;
}

pg_node* ShapeNet::face_to_chain(const ShapeObj* face) const
{
    return face ? ::face_to_chain(*this, *face) : nullptr;
}

int ShapeNet::point_in_face(const ShapeObj* face, const double* point) const
{
    int inside = 0;
    for (std::int32_t i = face ? first_of(face->edges) : 0; i != 0; i = face->edges.next(i)) {
        const ShapeEdge* side = edge(face->edges.get(i)->id);
        const NodeObj* a = side ? node(side->node1) : nullptr;
        const NodeObj* b = side ? node(side->node2) : nullptr;
        if (!a || !b || !(point[1] >= std::min(a->y, b->y) && point[1] < std::max(a->y, b->y)))
            continue;
        const double x = a->x + (point[1] - a->y) / (b->y - a->y) * (b->x - a->x);
        if (std::fabs(x - point[0]) <= LENGTH_TOL)
            return 2;
        if (x < point[0])
            inside = 1 - inside;
    }
    return inside;
}
