#include "topology/edge_boxes.h"

#include <algorithm>
#include <cmath>

#include "topology/edge_arcs.h"
#include "topology/walk.h"

namespace
{

// Takes an arc in by its chord and by all that it reaches, where it may be cut.
void add_to_scale(pg_box_scale* scale, const pg_segment& s)
{
    pg_scale_add(scale, s);
    if (!pg_is_arc(s))
        return;
    const double sagitta = std::fabs(s.bulge) * std::hypot(s.q[0] - s.p[0], s.q[1] - s.p[1]) / 2.0;
    pg_segment around{};
    for (int i = 0; i < 2; ++i) {
        around.p[i] = std::min(s.p[i], s.q[i]) - sagitta;
        around.q[i] = std::max(s.p[i], s.q[i]) + sagitta;
    }
    pg_scale_add(scale, around);
}

} // namespace

EdgeBoxes::EdgeBoxes(const ShapeNet& net) : net_(net)
{
    for (std::int32_t id = first_of(net.edges); id != 0; id = net.edges.next(id))
        if (make_arc_ready(net.edge(id)))
            add_to_scale(&scale_, segment_of(*net.edge(id)));
}

pg_box EdgeBoxes::box_of(std::int32_t id) const
{
    ShapeEdge* edge = net_.edge(id);
    return edge && make_arc_ready(edge) ? pg_segment_box(segment_of(*edge), scale_) : box_of_none();
}

void EdgeBoxes::take_up_to(std::int32_t last)
{
    while (has_memory_ && index_.count() < last)
        has_memory_ = index_.add(box_of(index_.count() + 1));
}

bool EdgeBoxes::look(std::int32_t id)
{
    has_memory_ = has_memory_ && index_.look(index_.box(id - 1), id);
    return has_memory_;
}

void EdgeBoxes::drop(std::int32_t id)
{
    if (id <= index_.count())
        index_.drop(id - 1);
}
