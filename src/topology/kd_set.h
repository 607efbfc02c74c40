// kd_set.h: an array of objects that knows an object again by its key (the values of `get`), and finds those
// near one. The way in is
//
//     id = set.find(object);
//     if (id == 0)
//         id = set.add(object);
//
// `add` by itself takes the object into the array, but not into the index.
#pragma once

#include "spatial/kd_node.h"
#include "topology/object_array.h"

class KdSet : public ObjectArray
{
public:
    std::int32_t dimensions;    // how many values are the key
    std::int32_t leaf_capacity; // as in kd_points; networks use 10
    kd_node* root;              // items are ids; null while the heap has been exhausted from the start

    KdSet(std::int32_t n, std::int32_t leaf);
    ~KdSet() override;

    using ObjectArray::find;
    // The id of a member with the same key, within 1e-6 in each value; 0 when there is none (or no object, or
    // no memory). Only the nearest one in one leaf is looked at. While it is looked for the object stands as
    // the next member: its `deleted` is cleared, and the array may grow for it. If it wasn't found the next id
    // stays in the leaf, and so the `add` that follows needs no place of its own in the index.
    std::int32_t find(TopoObject* object);
    // The same for those who won't add the object: nothing is left in a leaf, and an id that is left there from
    // before doesn't count (for `find` it is the object itself, nearer than a member that isn't just there).
    std::int32_t look(const TopoObject* object) const;
    // The same for members in all leaves around: one near a split is found from its other side too.
    std::int32_t look_around(const TopoObject* object) const;
    // The key of a member has changed; from now on it is found by the new one. False when the heap is
    // exhausted.
    bool note_move(std::int32_t id);
    // A new set with clones of the members nearer to the object than `radius`, less those that are one with
    // another; each clone's `id` is that of its member here. Same dimensions and leaf capacity. The caller's;
    // null when the heap is exhausted.
    KdSet* within(const TopoObject* object, double radius) const;
    // Between two members; NO_VALUE if one is missing.
    double squared_distance(std::int32_t id1, std::int32_t id2) const;

private:
    struct near_member {
        std::int32_t id;
        double distance_sq;
    };
    void take_nearer(const kd_node* leaf, const TopoObject* object, near_member* nearest) const;
    std::int32_t reach(TopoObject* object);
    std::int32_t same_key_in(const kd_node* leaf, const TopoObject* object) const;
    bool add_near(KdSet* to, const kd_node* leaf, const TopoObject* object, double radius) const;
};
