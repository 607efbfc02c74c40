// edge_boxes.h: which edges of a shape network can meet a given one.
#pragma once

#include "topology/box_index.h"
#include "topology/shape_net.h"

class EdgeBoxes
{
public:
    // Edges that are added to the network later must be pieces of those that it has.
    explicit EdgeBoxes(const ShapeNet& net);

    // Takes the edges up to that id in.
    void take_up_to(std::int32_t last);
    // Looks for the edges taken with ids above `id` whose boxes meet that of edge `id`. False without memory.
    bool look(std::int32_t id);
    // The edge is gone or has had its turn.
    void drop(std::int32_t id);
    // What was found, by rising id; some may be gone.
    std::int32_t found_count() const { return index_.found().count; }
    std::int32_t found(std::int32_t i) const { return index_.found().items[i] + 1; }

private:
    pg_box box_of(std::int32_t id) const;

    const ShapeNet& net_;
    pg_box_scale scale_{};
    BoxIndex index_; // the edge of number n has the id n + 1
    bool has_memory_ = true;
};
