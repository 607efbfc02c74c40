// edge_boxes.h: which edges of a network can meet a given one.
//
// Boxes (polygon/segment_boxes.h) stand in trees over their order in the plane. What is added waits in a short
// list; a full one becomes a tree, together with all trees up to the first size that is free. So there is a
// tree of 64, 128, 256 ... boxes at most once, and an edge is moved a number of times that is the logarithm of
// all.
#pragma once

#include "polygon/segment_boxes.h"
#include "topology/shape_net.h"
#include "topology/slots.h"

// A growing list of ids.
struct id_buffer {
    std::int32_t* items = nullptr;
    std::int32_t count = 0, capacity = 0, room = 0;

    bool add(std::int32_t id)
    {
        if (!make_slots(&items, count, &capacity, &room))
            return false;
        items[count++] = id;
        return true;
    }
};

class EdgeBoxes
{
public:
    // Of all edges of the network. Edges added later are pieces of them.
    explicit EdgeBoxes(const ShapeNet& net);
    ~EdgeBoxes();
    EdgeBoxes(const EdgeBoxes&) = delete;
    EdgeBoxes& operator=(const EdgeBoxes&) = delete;

    // Takes the edges up to that id in.
    void take_up_to(std::int32_t last);
    // The edges taken, ascending, with ids above `id` whose boxes meet that of edge `id`; some may be gone. Ids
    // asked for must not fall. Valid up to the next call. Null without memory, when any edge may be near.
    const id_buffer* near(std::int32_t id);

private:
    static constexpr int WAITING = 64;
    static constexpr int MOST_LEVELS = 26;

    struct boxed_edge {
        std::uint32_t order; // place along a curve that fills the plane
        std::int32_t id;
        pg_box box;
    };
    struct level {
        std::int32_t* ids;
        pg_box_tree tree;
    };

    bool add(std::int32_t id);
    bool merge_waiting();
    bool make_level(level* made, boxed_edge* edges, int count);
    void free_level(level* gone);
    boxed_edge boxed(std::int32_t id, const pg_box& box) const;
    pg_box box_of(const ShapeEdge& edge) const;
    void give_up();

    const ShapeNet& net_;
    pg_box_scale scale_{};
    level levels_[MOST_LEVELS] = {};
    boxed_edge waiting_[WAITING];
    int waiting_count_ = 0;
    std::int32_t taken_ = 0;  // edges up to this id
    std::int32_t passed_ = 0; // edges up to this one aren't asked for any more
    bool has_memory_ = true;
    id_buffer near_;
};
