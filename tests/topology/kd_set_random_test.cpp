// The same tree, ids and answers as the plain set, operation by operation.
#include <vector>

#include "tests/spatial/inputs.h"
#include "tests/spatial/kd_dump.h"
#include "tests/spatial/kd_plain.h"
#include "tests/topology/collection.h"
#include "topology/kd_set.h"
#include "topology/objects.h"

namespace
{

using KdSetRandom = Collection;

// The plain tree with members that can be taken out. Ids are its indices and one more.
struct plain_set : plain_tree {
    std::vector<bool> removed;

    plain_set(int n, int leaf) : plain_tree(n, leaf) {}

    bool is_member(int index) const { return index < count && !removed[static_cast<std::size_t>(index)]; }

    double distance_squared(int a, int b) const override
    {
        return b == count || is_member(b) ? plain_tree::distance_squared(a, b) : 98765432.1;
    }

    int find(const place& p)
    {
        points[count] = {{p.x, p.y, p.z}, 0};
        const int index = find_or_add();
        return index == count ? 0 : index + 1;
    }

    void add(const place& p)
    {
        points[count] = {{p.x, p.y, p.z}, 0};
        points.push_back({});
        removed.push_back(false);
        ++count;
    }

    // Ids of the members that come through, in order.
    void collect(const plain_node& node, double radius, plain_set& to, std::vector<int>& found) const
    {
        if (!node.is_leaf) {
            const double at = points[count].at[node.dimension];
            if (!(at - radius > node.value))
                collect(*node.low, radius, to, found);
            if (!(node.value > at + radius))
                collect(*node.high, radius, to, found);
            return;
        }
        for (int i : node.items) {
            if (!is_member(i) || !(distance_squared(count, i) < radius * radius))
                continue;
            const place p{points[i].at[0], points[i].at[1], points[i].at[2]};
            if (to.find(p) == 0) {
                to.add(p);
                found.push_back(i + 1);
            }
        }
    }
};

TopoObject* node_at(const place& p)
{
    return new NodeObj(p.x, p.y, p.z);
}

void expect_same_near(const KdSet& set, plain_set& plain, const place& p, double radius)
{
    TopoObject* middle = node_at(p);
    KdSet* near = set.within(middle, radius);
    plain.points[plain.count] = {{p.x, p.y, p.z}, 0};
    plain_set plain_near(plain.dimensions, plain.leaf_capacity);
    std::vector<int> ids, plain_ids;
    plain.collect(plain.root, radius, plain_near, plain_ids);
    for (int i = 1; i <= near->count; ++i)
        ids.push_back(near->get(i)->id);
    ASSERT_EQ(ids, plain_ids);
    ASSERT_EQ(dump(near->root, -1), dump(plain_near.root));
    delete near;
    delete middle;
}

void run(place_kind kind, place_order order, unsigned seed, int operations)
{
    std::mt19937 random(seed);
    const auto whole = [&](int a, int b) { return std::uniform_int_distribution<int>(a, b)(random); };
    const int capacities[] = {1, 2, 3, 10};
    const int dimensions = whole(1, 3), capacity = capacities[whole(0, 3)];
    KdSet set(dimensions, capacity);
    plain_set plain(dimensions, capacity);
    const std::vector<place> places = random_places(kind, order, operations, random);
    for (int i = 0; i < operations && !testing::Test::HasFatalFailure(); ++i) {
        const int choice = whole(0, 19);
        const place p = places[choice == 0 || choice == 4 ? whole(0, operations - 1) : i];
        if (choice == 0) {
            expect_same_near(set, plain, p, whole(-1, 20) * 0.5);
        } else if (choice < 3 && plain.count > 0) {
            const int id = whole(1, plain.count);
            set.remove(id);
            plain.removed[static_cast<std::size_t>(id - 1)] = true;
        } else {
            TopoObject* object = node_at(p);
            const bool looks = choice != 3; // else straight in
            const int id = looks ? set.find(object) : 0;
            ASSERT_EQ(id, looks ? plain.find(p) : 0);
            if (id == 0 && (!looks || choice > 6)) {
                ASSERT_EQ(set.add(object), plain.count + 1);
                plain.add(p);
            } else {
                delete object;
            }
        }
    }
    ASSERT_EQ(dump(set.root, -1), dump(plain.root));
}

TEST_F(KdSetRandom, TreesAndIdsAreThoseOfThePlainSet)
{
    for (int kind = 0; kind < static_cast<int>(place_kind::KINDS); ++kind)
        for (int order = 0; order < static_cast<int>(place_order::ORDERS); ++order)
            for (unsigned seed = 1; seed <= 80; ++seed) {
                run(static_cast<place_kind>(kind), static_cast<place_order>(order), seed, 200);
                ASSERT_FALSE(HasFailure()) << "kind " << kind << " order " << order << " seed " << seed;
            }
}

} // namespace
