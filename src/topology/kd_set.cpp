#include "topology/kd_set.h"

#include <cmath>

#include "common/tolerances.h"

namespace
{

// Members that were taken out still lie where they lay: what was split with them stays as it is.
double key_value(const void* set, std::int32_t id, std::int32_t dimension)
{
    const TopoObject* object = static_cast<const KdSet*>(set)->items[id - 1];
    return object ? object->get(dimension) : NO_VALUE;
}

struct key_position {
    double at[KD_MOST_DIMENSIONS];
};

key_position position_of(const TopoObject* object)
{
    key_position position;
    for (std::int32_t d = 0; d < KD_MOST_DIMENSIONS; ++d)
        position.at[d] = object->get(d);
    return position;
}

bool is_same_key(const TopoObject* a, const TopoObject* b, std::int32_t dimensions)
{
    for (std::int32_t i = 0; i < dimensions; ++i)
        if (!(std::fabs(a->get(i) - b->get(i)) <= LENGTH_TOL))
            return false;
    return true;
}

} // namespace

KdSet::KdSet(std::int32_t n, std::int32_t leaf) : dimensions(n), leaf_capacity(leaf), root(kd_node_new(nullptr))
{
}

KdSet::~KdSet()
{
    kd_node_free(root);
}

double KdSet::squared_distance(std::int32_t id1, std::int32_t id2) const
{
    const TopoObject* object = get(id1);
    return object ? object->squared_distance(get(id2), dimensions) : NO_VALUE;
}

void KdSet::take_nearer(const kd_node* leaf, const TopoObject* object, near_member* nearest) const
{
    for (int i = 0; i < leaf->item_count; ++i) {
        const double distance = object->squared_distance(get(leaf->items[i]), dimensions);
        if (distance < nearest->distance_sq)
            *nearest = {leaf->items[i], distance};
    }
}

// The member of the leaf with the object's key, 0 when there is none. Only the nearest is looked at.
std::int32_t KdSet::same_key_in(const kd_node* leaf, const TopoObject* object) const
{
    if (object->squared_distance(object, dimensions) != 0.0)
        return 0; // a value is infinite or no number, and no distance to it is below the mark
    near_member nearest{0, NO_VALUE};
    take_nearer(leaf, object, &nearest);
    return nearest.id != 0 && is_same_key(object, get(nearest.id), dimensions) ? nearest.id : 0;
}

// The id that the object reaches: a member's, or count + 1, which then stands in a leaf; 0 without memory.
std::int32_t KdSet::reach(TopoObject* object)
{
    if (!root)
        root = kd_node_new(nullptr);
    if (!root)
        return 0;
    const std::int32_t candidate = ObjectArray::add(object);
    if (candidate == 0)
        return 0;
    kd_node* leaf = kd_node_leaf(root, position_of(object).at);
    std::int32_t reached = same_key_in(leaf, object);
    const kd_points points{dimensions, leaf_capacity, this, key_value};
    if (reached == 0 && kd_node_enter(leaf, candidate, points))
        reached = candidate;
    --count;
    return reached;
}

std::int32_t KdSet::find(TopoObject* object)
{
    if (!object)
        return 0;
    const std::int32_t reached = reach(object);
    return reached <= count ? reached : 0;
}

std::int32_t KdSet::look(const TopoObject* object) const
{
    return object && root ? same_key_in(kd_node_leaf(root, position_of(object).at), object) : 0;
}

std::int32_t KdSet::look_around(const TopoObject* object) const
{
    if (!object || !root)
        return 0;
    const key_position position = position_of(object);
    near_member nearest{0, NO_VALUE};
    const kd_node* top = kd_node_around(root, position.at, 2 * LENGTH_TOL);
    for (const kd_node* leaf = kd_node_first_near(top, position.at, LENGTH_TOL); leaf;
         leaf = kd_node_next_near(top, leaf, position.at, LENGTH_TOL))
        take_nearer(leaf, object, &nearest);
    return nearest.id != 0 && is_same_key(object, get(nearest.id), dimensions) ? nearest.id : 0;
}

// The old leaf keeps the id, where it is one more member that lies elsewhere.
bool KdSet::note_move(std::int32_t id)
{
    const TopoObject* object = get(id);
    if (!object || !root)
        return false;
    kd_node* leaf = kd_node_leaf(root, position_of(object).at);
    for (int i = 0; i < leaf->item_count; ++i)
        if (leaf->items[i] == id)
            return true;
    return kd_node_enter(leaf, id, {dimensions, leaf_capacity, this, key_value});
}

// The id that a look has left in a leaf is no member's, and `get` passes over it. False without memory.
bool KdSet::add_near(KdSet* to, const kd_node* leaf, const TopoObject* object, double radius) const
{
    for (int i = 0; i < leaf->item_count; ++i) {
        const TopoObject* member = get(leaf->items[i]);
        if (!member || !(object->squared_distance(member, dimensions) < radius * radius))
            continue;
        TopoObject* clone = member->clone();
        if (!clone)
            return false;
        clone->id = leaf->items[i];
        const std::int32_t reached = to->reach(clone);
        const bool is_new = reached > to->count;
        if (is_new && to->add(clone))
            continue;
        delete clone;
        if (is_new || reached == 0)
            return false;
    }
    return true;
}

KdSet* KdSet::within(const TopoObject* object, double radius) const
{
    KdSet* near = new KdSet(dimensions, leaf_capacity);
    if (!near || !object || !root)
        return near;
    const key_position position = position_of(object);
    const kd_node* top = kd_node_around(root, position.at, radius);
    for (const kd_node* leaf = kd_node_first_near(top, position.at, radius); leaf;
         leaf = kd_node_next_near(top, leaf, position.at, radius))
        if (!add_near(near, leaf, object, radius)) {
            delete near;
            return nullptr;
        }
    return near;
}
