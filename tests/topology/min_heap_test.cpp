#include <algorithm>
#include <random>
#include <vector>

#include "tests/topology/collection.h"
#include "topology/min_heap.h"

namespace
{

using MinHeapTest = Collection;

void push(MinHeap* heap, int id)
{
    TopoObject* object = new TopoObject;
    object->id = id;
    EXPECT_EQ(heap->add(object), heap->count);
}

int take(MinHeap* heap, int at)
{
    TopoObject* object = heap->get(at);
    heap->remove(at);
    const int id = object->id;
    delete object;
    return id;
}

std::vector<int> ids(const MinHeap& heap)
{
    std::vector<int> all;
    for (int i = 1; i <= heap.count; ++i)
        all.push_back(heap.get(i)->id);
    return all;
}

TEST_F(MinHeapTest, EntriesMoveUpPastGreaterParents)
{
    MinHeap heap;
    for (int id : {5, 3, 8, 1})
        push(&heap, id);
    EXPECT_EQ(ids(heap), (std::vector{1, 3, 8, 5}));
}

TEST_F(MinHeapTest, LastEntryTakesTheRemovedPlaceAndMovesDown)
{
    MinHeap heap;
    for (int id : {1, 2, 3, 4, 5})
        push(&heap, id);
    EXPECT_EQ(take(&heap, 1), 1);
    EXPECT_EQ(ids(heap), (std::vector{2, 4, 3, 5}));
}

TEST_F(MinHeapTest, LastEntryMovesUpWhereItsNewParentIsGreater)
{
    MinHeap heap;
    for (int id : {1, 10, 2, 11, 12, 3, 4})
        push(&heap, id);
    EXPECT_EQ(take(&heap, 4), 11);
    EXPECT_EQ(ids(heap), (std::vector{1, 4, 2, 10, 12, 3}));
}

TEST_F(MinHeapTest, LastEntryIsJustTaken)
{
    MinHeap heap;
    for (int id : {1, 2, 3})
        push(&heap, id);
    EXPECT_EQ(take(&heap, 3), 3);
    EXPECT_EQ(ids(heap), (std::vector{1, 2}));
    EXPECT_EQ(take(&heap, 2), 2);
    EXPECT_EQ(take(&heap, 1), 1);
    EXPECT_EQ(heap.count, 0);
}

TEST_F(MinHeapTest, EqualEntriesAreNotSwapped)
{
    MinHeap heap;
    push(&heap, 4);
    TopoObject* first = heap.get(1);
    push(&heap, 4);
    EXPECT_EQ(heap.get(1), first);
}

TEST_F(MinHeapTest, RemovingOutOfRangeDoesNothing)
{
    MinHeap heap;
    heap.remove(1);
    push(&heap, 1);
    heap.remove(0);
    heap.remove(2);
    EXPECT_EQ(heap.count, 1);
}

TEST_F(MinHeapTest, NoObjectIsRefusedAndSoIsOneWithoutMemory)
{
    MinHeap heap;
    EXPECT_EQ(heap.add(nullptr), 0);
    TopoObject* object = new TopoObject;
    test_heap::fail_at(1);
    EXPECT_EQ(heap.add(object), 0);
    delete object;
    EXPECT_EQ(heap.count, 0);
}

TEST_F(MinHeapTest, ServesAsAnArrayThroughItsBase)
{
    MinHeap heap;
    ObjectArray& array = heap;
    for (int id : {7, 6, 5}) {
        TopoObject* object = new TopoObject;
        object->id = id;
        array.add(object);
    }
    EXPECT_EQ(array.get(1)->id, 5);
    EXPECT_EQ(array.find(7), 2);
    TopoObject* least = array.get(1);
    array.remove(1);
    delete least;
    EXPECT_EQ(array.get(1)->id, 6);
}

TEST_F(MinHeapTest, RandomEntriesComeOutInOrder)
{
    std::mt19937 random(4);
    for (int round = 0; round < 300; ++round) {
        MinHeap heap;
        std::vector<int> expected;
        for (int step = 0; step < 200; ++step) {
            if (expected.empty() || random() % 3 != 0) {
                const int id = static_cast<int>(random() % 50) - 10;
                push(&heap, id);
                expected.push_back(id);
            } else {
                const int at = static_cast<int>(random() % expected.size()) + 1;
                expected.erase(std::find(expected.begin(), expected.end(), take(&heap, at)));
            }
            for (int i = 2; i <= heap.count; ++i)
                ASSERT_LE(heap.get(i / 2)->id, heap.get(i)->id);
        }
        std::sort(expected.begin(), expected.end());
        for (int id : expected)
            ASSERT_EQ(take(&heap, 1), id);
        ASSERT_EQ(heap.count, 0);
    }
}

} // namespace
