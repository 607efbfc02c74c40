// plain_kd.h: the tree of points once more, step by step, for a comparison with src/spatial. Field names are
// those of src/spatial.
#pragma once

#include <memory>
#include <vector>

namespace plain
{

struct kd_point {
    double x = 0, y = 0, z = 0;
    int data = 0; // 0: only being looked for
};

struct kd_node {
    bool is_leaf = true;
    int split_dimension = 0;
    double split_value = 0; // what is above goes to `high`, all else to `low`
    std::unique_ptr<kd_node> low{}, high{};
    std::vector<int> items{};
};

struct kd_tree {
    int leaf_capacity = 0;
    int dimensions = 0;
    std::vector<kd_point> points; // the slot at point_count is the candidate
    kd_node root{};
    int point_count = 0;
    int point_capacity = 1000;
    int id = 0;
    kd_tree* next = nullptr;
};

kd_tree* kd_create(int id, int dimensions, int leaf_capacity);
void kd_free_list(kd_tree** head);
void kd_remove(kd_tree** head, int id);
double kd_coordinate(const kd_tree& tree, int index, int dimension);
double kd_distance_squared(const kd_tree& tree, int a, int b);
int kd_add(kd_tree& tree, double x, double y, double z, int data, int* found_index);
kd_tree* kd_radius(kd_tree& tree, double x, double y, double z, double radius);

} // namespace plain
