// kd_plain.h: the point tree once more, word for word and slow: recursive, with vectors, every walk from the
// root. The judge of the other.
#pragma once

#include <cmath>
#include <cstdint>
#include <memory>
#include <set>
#include <vector>

struct plain_point {
    double at[3];
    int data;
};

struct plain_node {
    bool is_leaf = true;
    int dimension = 0;
    double value = 0;
    std::unique_ptr<plain_node> low, high;
    std::vector<int> items;
};

struct plain_tree {
    int dimensions, leaf_capacity;
    std::vector<plain_point> points{1}; // the last is the candidate
    plain_node root;
    int count = 0, capacity = 1000;

    plain_tree(int n, int leaf) : dimensions(n), leaf_capacity(leaf) {}
    virtual ~plain_tree() = default;
    plain_tree(plain_tree&&) = default;

    virtual double distance_squared(int a, int b) const
    {
        double sum = 0;
        for (int d = 0; d < dimensions; ++d)
            sum += (points[a].at[d] - points[b].at[d]) * (points[a].at[d] - points[b].at[d]);
        return sum;
    }

    plain_node& leaf_of(plain_node& node, int index)
    {
        if (node.is_leaf)
            return node;
        return leaf_of(node.value < points[index].at[node.dimension] ? *node.high : *node.low, index);
    }

    bool goes_high(int item, int dimension, double value) const { return points[item].at[dimension] > value; }

    // Whether a split would leave everything on one side, for ever.
    bool parts_nothing(const plain_node& leaf, int item, int dimension, double value) const
    {
        for (int other : leaf.items)
            if (goes_high(other, dimension, value) != goes_high(item, dimension, value))
                return false;
        return true;
    }

    double place_of(int item, int dimension) const
    {
        const double at = points[item].at[dimension];
        return std::isnan(at) ? -INFINITY : at;
    }

    bool is_one_place(int a, int b) const
    {
        for (int d = 0; d < dimensions; ++d)
            if (place_of(a, d) != place_of(b, d))
                return false;
        return true;
    }

    // Halfway between the finite ones, if that leaves something above; otherwise just above the least.
    void part_somehow(const plain_node& leaf, int item, int& dimension, double& value) const
    {
        double best = 0;
        for (int d = 0; d < dimensions; ++d) {
            std::multiset<double> all{place_of(item, d)}, finite;
            for (int i : leaf.items)
                all.insert(place_of(i, d));
            for (double at : all)
                if (std::isfinite(at))
                    finite.insert(at);
            if (!(*all.rbegin() - *all.begin() > best))
                continue;
            best = *all.rbegin() - *all.begin();
            dimension = d;
            value = *all.begin();
            if (finite.empty())
                continue;
            const double middle = *finite.begin() / 2 + *finite.rbegin() / 2;
            if (middle >= *all.begin() && middle < *all.rbegin())
                value = middle;
        }
    }

    void add_to_leaf(plain_node& leaf, int item)
    {
        const std::size_t most = static_cast<std::size_t>(leaf_capacity);
        if (leaf.items.size() < most) {
            leaf.items.push_back(item);
            return;
        }
        int dimension = 0;
        double value = 0, best = 0;
        for (int d = 0; d < dimensions; ++d) {
            double least = INFINITY, greatest = -INFINITY, sum = 0;
            for (int i : leaf.items) {
                if (points[i].at[d] < least)
                    least = points[i].at[d];
                if (points[i].at[d] > greatest)
                    greatest = points[i].at[d];
                sum += points[i].at[d];
            }
            if (greatest - least > best) {
                best = greatest - least;
                dimension = d;
                value = sum / static_cast<double>(leaf.items.size());
            }
        }
        const bool holds_one_place = leaf.items.size() > most && is_one_place(leaf.items[0], item);
        if (!holds_one_place && parts_nothing(leaf, item, dimension, value))
            part_somehow(leaf, item, dimension, value);
        if (holds_one_place || parts_nothing(leaf, item, dimension, value)) {
            leaf.items.push_back(item);
            return;
        }
        const bool was_too_full = leaf.items.size() > most;
        leaf.is_leaf = false;
        leaf.dimension = dimension;
        leaf.value = value;
        leaf.low = std::make_unique<plain_node>();
        leaf.high = std::make_unique<plain_node>();
        const std::vector<int> old = std::move(leaf.items);
        leaf.items.clear();
        for (int i : old)
            hand_down(leaf, i, was_too_full);
        hand_down(leaf, item, was_too_full);
    }

    void hand_down(plain_node& node, int item, bool was_too_full)
    {
        plain_node& child = goes_high(item, node.dimension, node.value) ? *node.high : *node.low;
        if (was_too_full)
            child.items.push_back(item);
        else
            add_to_leaf(child, item);
    }

    int find_or_add()
    {
        plain_node& leaf = leaf_of(root, count);
        int nearest = -1;
        double best = 98765432.1;
        for (int i : leaf.items)
            if (distance_squared(count, i) < best) {
                best = distance_squared(count, i);
                nearest = i;
            }
        if (nearest >= 0 && best == 0)
            return nearest;
        if (nearest >= 0) {
            bool same = true;
            for (int d = 0; d < dimensions; ++d)
                same = same && std::fabs(points[nearest].at[d] - points[count].at[d]) <= 1e-6;
            if (same)
                return nearest;
        }
        add_to_leaf(leaf, count);
        return count;
    }

    int add(double x, double y, double z, int data, int* found)
    {
        points[count] = {{x, y, z}, data};
        const int index = find_or_add();
        *found = index;
        if (index != count)
            return points[index].data;
        if (data == 0)
            return 0;
        ++count;
        points.push_back({});
        if (count + 1 == capacity)
            capacity += 1000;
        return points[index].data;
    }

    void add_near(const plain_node& node, double radius, plain_tree& to) const
    {
        if (!node.is_leaf) {
            const double at = points[count].at[node.dimension];
            if (!(at - radius > node.value))
                add_near(*node.low, radius, to);
            if (!(node.value > at + radius))
                add_near(*node.high, radius, to);
            return;
        }
        for (int i : node.items)
            if (distance_squared(count, i) < radius * radius) {
                int found;
                const plain_point& p = points[i];
                to.add(p.at[0], p.at[1], p.at[2], p.data, &found);
            }
    }

    plain_tree radius(double x, double y, double z, double r)
    {
        plain_tree near(dimensions, leaf_capacity);
        points[count] = {{x, y, z}, 1};
        add_near(root, r, near);
        return near;
    }
};
