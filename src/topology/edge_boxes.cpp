#include "topology/edge_boxes.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "hostapi/ads.h"
#include "topology/edge_arcs.h"
#include "topology/walk.h"

namespace
{

// Where a value lies between two, in 65536 steps.
std::uint32_t step_of(double value, double low, double high)
{
    const double share = (value - low) / (high - low);
    return share > 0.0 ? static_cast<std::uint32_t>(std::min(share, 1.0) * 65535.0) : 0; // 0 for no number
}

// The 16 bits of a number, with a 0 between each two.
std::uint32_t spread(std::uint32_t v)
{
    v = (v | v << 8) & 0x00FF00FF;
    v = (v | v << 4) & 0x0F0F0F0F;
    v = (v | v << 2) & 0x33333333;
    return (v | v << 1) & 0x55555555;
}

double sagitta(const pg_segment& s)
{
    return std::fabs(s.bulge) * std::hypot(s.q[0] - s.p[0], s.q[1] - s.p[1]) / 2.0;
}

// Takes an arc in by its chord and by all that it reaches, where it may be cut.
void add_to_scale(pg_box_scale* scale, const pg_segment& s)
{
    pg_scale_add(scale, s);
    if (!pg_is_arc(s))
        return;
    const double reach = sagitta(s);
    pg_segment around{};
    for (int i = 0; i < 2; ++i) {
        around.p[i] = std::min(s.p[i], s.q[i]) - reach;
        around.q[i] = std::max(s.p[i], s.q[i]) + reach;
    }
    pg_scale_add(scale, around);
}

} // namespace

EdgeBoxes::EdgeBoxes(const ShapeNet& net) : net_(net)
{
    for (std::int32_t id = first_of(net.edges); id != 0; id = net.edges.next(id))
        if (ShapeEdge* edge = net.edge(id); make_arc_ready(edge))
            add_to_scale(&scale_, segment_of(*edge));
}

EdgeBoxes::~EdgeBoxes()
{
    give_up();
    acad_free(near_.items);
}

void EdgeBoxes::free_level(level* gone)
{
    acad_free(gone->ids);
    pg_boxes_free(&gone->tree);
    gone->ids = nullptr;
}

void EdgeBoxes::give_up()
{
    for (level& l : levels_)
        free_level(&l);
    waiting_count_ = 0;
    has_memory_ = false;
}

EdgeBoxes::boxed_edge EdgeBoxes::boxed(std::int32_t id, const pg_box& box) const
{
    if (std::isinf(box.x1 - box.x0))
        return {0xFFFFFFFF, id, box}; // those without bounds stand together
    const pg_box& all = scale_.extents;
    const std::uint32_t x = step_of(box.x0 / 2 + box.x1 / 2, all.x0, all.x1);
    const std::uint32_t y = step_of(box.y0 / 2 + box.y1 / 2, all.y0, all.y1);
    return {spread(x) | spread(y) << 1, id, box};
}

bool EdgeBoxes::make_level(level* made, boxed_edge* boxes, int count)
{
    std::sort(boxes, boxes + count, [](const boxed_edge& a, const boxed_edge& b) { return a.order < b.order; });
    made->ids = static_cast<std::int32_t*>(acad_malloc(static_cast<std::size_t>(count) * sizeof(std::int32_t)));
    made->tree = pg_boxes_new(count);
    if (!made->ids || !made->tree.nodes)
        return false;
    for (int i = 0; i < count; ++i) {
        made->ids[i] = boxes[i].id;
        pg_boxes_set(&made->tree, i, boxes[i].box);
    }
    return true;
}

// The waiting edges and those of the trees below the first free level become the tree of that level. Edges that
// nobody will ask for stay behind.
bool EdgeBoxes::merge_waiting()
{
    int made = 0, most = waiting_count_;
    for (; levels_[made].ids; ++made) // one is free: all together would hold more than there are ids
        most += levels_[made].tree.count;
    auto* boxes = static_cast<boxed_edge*>(acad_malloc(static_cast<std::size_t>(most) * sizeof(boxed_edge)));
    if (!boxes)
        return false;
    int count = 0;
    const auto take = [&](std::int32_t id, const pg_box& box) {
        if (id > passed_ && net_.edge(id))
            boxes[count++] = boxed(id, box);
    };
    for (int i = 0; i < waiting_count_; ++i)
        take(waiting_[i].id, waiting_[i].box);
    for (int l = 0; l < made; ++l) {
        level& old = levels_[l];
        for (int i = 0; i < old.tree.count; ++i)
            take(old.ids[i], old.tree.nodes[old.tree.leaves + i]);
        free_level(&old);
    }
    waiting_count_ = 0;
    const bool is_made = count == 0 || make_level(&levels_[made], boxes, count);
    acad_free(boxes);
    return is_made;
}

bool EdgeBoxes::add(std::int32_t id)
{
    ShapeEdge* edge = net_.edge(id);
    if (!edge || !make_arc_ready(edge))
        return true;
    if (waiting_count_ == WAITING && !merge_waiting())
        return false;
    waiting_[waiting_count_++] = boxed(id, pg_segment_box(segment_of(*edge), scale_));
    return true;
}

void EdgeBoxes::take_up_to(std::int32_t last)
{
    while (has_memory_ && taken_ < last)
        if (!add(++taken_))
            give_up();
    taken_ = last;
}

const id_buffer* EdgeBoxes::near(std::int32_t id)
{
    passed_ = id;
    near_.count = 0;
    const ShapeEdge* edge = net_.edge(id);
    if (!edge || !ends_of(*edge) || !has_memory_)
        return has_memory_ ? &near_ : nullptr;
    const pg_box box = pg_segment_box(segment_of(*edge), scale_);
    const auto take = [&](std::int32_t other) {
        if (other > id && !near_.add(other))
            give_up();
    };
    for (const level& l : levels_)
        for (int i = pg_boxes_next(l.tree, box, 0); i >= 0; i = pg_boxes_next(l.tree, box, i + 1))
            take(l.ids[i]);
    for (int i = 0; i < waiting_count_; ++i)
        if (pg_boxes_meet(waiting_[i].box, box))
            take(waiting_[i].id);
    std::sort(near_.items, near_.items + near_.count);
    return has_memory_ ? &near_ : nullptr;
}
