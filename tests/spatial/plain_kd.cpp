#include "tests/spatial/plain_kd.h"

#include <cmath>

namespace
{

using plain::kd_coordinate;
using plain::kd_node;
using plain::kd_tree;

kd_node* leaf_of(kd_tree& tree, int index)
{
    kd_node* node = &tree.root;
    while (!node->is_leaf)
        node = node->split_value < kd_coordinate(tree, index, node->split_dimension) ? node->high.get()
                                                                                     : node->low.get();
    return node;
}

void add_to_leaf(kd_tree& tree, kd_node& leaf, int index)
{
    if (static_cast<int>(leaf.items.size()) < tree.leaf_capacity) {
        leaf.items.push_back(index);
        return;
    }
    leaf.is_leaf = false;
    leaf.split_dimension = 0;
    leaf.split_value = 0;
    double best = 0;
    for (int d = 0; d < tree.dimensions; ++d) {
        double low = 0, high = 0, sum = 0;
        bool first = true;
        for (int item : leaf.items) {
            const double c = kd_coordinate(tree, item, d);
            low = first || c < low ? c : low;
            high = first || c > high ? c : high;
            sum += c;
            first = false;
        }
        if (high - low > best) {
            best = high - low;
            leaf.split_dimension = d;
            leaf.split_value = sum / static_cast<double>(leaf.items.size());
        }
    }
    leaf.low = std::make_unique<kd_node>();
    leaf.high = std::make_unique<kd_node>();
    std::vector<int> all;
    all.swap(leaf.items);
    all.push_back(index);
    for (int item : all) {
        const bool above = kd_coordinate(tree, item, leaf.split_dimension) > leaf.split_value;
        add_to_leaf(tree, above ? *leaf.high : *leaf.low, item);
    }
}

int find_or_add(kd_tree& tree)
{
    const int candidate = tree.point_count;
    kd_node* const leaf = leaf_of(tree, candidate);
    int nearest = -1;
    double smallest = 98765432.1;
    for (int item : leaf->items) {
        const double distance = kd_distance_squared(tree, item, candidate);
        if (distance < smallest) {
            smallest = distance;
            nearest = item;
        }
    }
    if (nearest >= 0) {
        if (smallest == 0)
            return nearest;
        bool near = true;
        for (int d = 0; d < tree.dimensions; ++d)
            near =
                near && std::fabs(kd_coordinate(tree, nearest, d) - kd_coordinate(tree, candidate, d)) <= 1e-6;
        if (near)
            return nearest;
    }
    add_to_leaf(tree, *leaf, candidate);
    return candidate;
}

void collect(kd_tree& tree, const kd_node& node, double radius, kd_tree& out)
{
    const int at = tree.point_count;
    if (!node.is_leaf) {
        const double c = kd_coordinate(tree, at, node.split_dimension);
        if (!(c - radius > node.split_value))
            collect(tree, *node.low, radius, out);
        if (!(node.split_value > c + radius))
            collect(tree, *node.high, radius, out);
        return;
    }
    for (int item : node.items)
        if (kd_distance_squared(tree, item, at) < radius * radius) {
            const plain::kd_point& p = tree.points[static_cast<std::size_t>(item)];
            // The slot of a look-up, which leaves may still name, has no value; it is taken up all the same.
            kd_add(out, p.x, p.y, p.z, p.data != 0 ? p.data : 1, nullptr);
        }
}

} // namespace

plain::kd_tree* plain::kd_create(int id, int dimensions, int leaf_capacity)
{
    kd_tree* const tree = new kd_tree;
    tree->id = id;
    tree->dimensions = dimensions;
    tree->leaf_capacity = leaf_capacity;
    tree->points.resize(1000);
    return tree;
}

void plain::kd_free_list(kd_tree** head)
{
    while (*head != nullptr) {
        kd_tree* const tree = *head;
        *head = tree->next;
        delete tree;
    }
}

void plain::kd_remove(kd_tree** head, int id)
{
    for (kd_tree** at = head; *at != nullptr; at = &(*at)->next)
        if ((*at)->id == id) {
            kd_tree* const tree = *at;
            *at = tree->next;
            delete tree;
            return;
        }
}

double plain::kd_coordinate(const kd_tree& tree, int index, int dimension)
{
    const kd_point& p = tree.points[static_cast<std::size_t>(index)];
    return dimension == 0 ? p.x : dimension == 1 ? p.y : dimension == 2 ? p.z : 0;
}

double plain::kd_distance_squared(const kd_tree& tree, int a, int b)
{
    double sum = 0;
    for (int d = 0; d < tree.dimensions; ++d) {
        const double difference = kd_coordinate(tree, a, d) - kd_coordinate(tree, b, d);
        sum += difference * difference;
    }
    return sum;
}

int plain::kd_add(kd_tree& tree, double x, double y, double z, int data, int* found_index)
{
    tree.points[static_cast<std::size_t>(tree.point_count)] = {x, y, z, data};
    const int index = find_or_add(tree);
    if (found_index != nullptr)
        *found_index = index;
    if (index != tree.point_count)
        return tree.points[static_cast<std::size_t>(index)].data;
    if (data == 0)
        return 0;
    tree.point_count += 1;
    if (tree.point_count + 1 == tree.point_capacity) {
        tree.point_capacity += 1000;
        tree.points.resize(static_cast<std::size_t>(tree.point_capacity));
    }
    return data;
}

plain::kd_tree* plain::kd_radius(kd_tree& tree, double x, double y, double z, double radius)
{
    kd_tree* const out = kd_create(0, tree.dimensions, tree.leaf_capacity);
    kd_point& slot = tree.points[static_cast<std::size_t>(tree.point_count)];
    slot.x = x;
    slot.y = y;
    slot.z = z;
    slot.data = 0;
    collect(tree, tree.root, radius, *out);
    return out;
}
