#include "tests/growth.h"
#include "tests/topology/collection.h"
#include "tests/topology/slot.h"
#include "topology/object_array.h"

namespace
{

TopoObject* numbered(int id)
{
    TopoObject* object = new TopoObject;
    object->id = id;
    return object;
}

class ObjectArrayTest : public Collection
{
protected:
    void fill(int n)
    {
        for (int i = 1; i <= n; ++i)
            array.add(numbered(100 + i));
    }
    void TearDown() override
    {
        delete made;
        Collection::TearDown();
    }

    ObjectArray* made = new ObjectArray;
    ObjectArray& array = *made;
};

TEST_F(ObjectArrayTest, IdsRunFromOne)
{
    TopoObject* object = numbered(9);
    EXPECT_EQ(array.add(object), 1);
    EXPECT_EQ(object->id, 9); // left to the caller
    EXPECT_EQ(array.add(numbered(9)), 2);
    EXPECT_EQ(array.get(1), object);
    EXPECT_EQ(array.get(0), nullptr);
    EXPECT_EQ(array.get(3), nullptr);
    EXPECT_EQ(array.get(-1), nullptr);
}

TEST_F(ObjectArrayTest, CapacityGrowsByThreeWhenNotAboveCountPlusOne)
{
    std::string seen = std::to_string(array.capacity) + " ";
    for (int i = 1; i <= 8; ++i) {
        fill(1);
        seen += std::to_string(array.capacity) + " ";
    }
    EXPECT_EQ(seen, "0 3 3 6 6 6 9 9 9 ");
    EXPECT_GE(array.room, array.capacity);
}

TEST_F(ObjectArrayTest, AddingMarksTheObjectAsInUse)
{
    TopoObject* object = numbered(1);
    object->deleted = 1;
    array.add(object);
    EXPECT_EQ(object->deleted, 0);
    EXPECT_EQ(array.get(1), object);
}

TEST_F(ObjectArrayTest, RemovedIdIsNotUsedAgain)
{
    fill(3);
    TopoObject* second = array.get(2);
    array.remove(2);
    EXPECT_EQ(second->deleted, 1);
    EXPECT_EQ(array.get(2), nullptr);
    EXPECT_EQ(array.count, 3);
    EXPECT_EQ(array.add(numbered(104)), 4);
    array.remove(4);
    EXPECT_EQ(array.count, 4);
    array.remove(4);
    array.remove(0);
    array.remove(5);
    EXPECT_EQ(array.count, 4);
}

TEST_F(ObjectArrayTest, NextPassesOverRemovedOnes)
{
    fill(5);
    array.remove(2);
    array.remove(3);
    EXPECT_EQ(array.next(1), 4);
    EXPECT_EQ(array.next(4), 5);
    array.remove(5);
    EXPECT_EQ(array.next(4), 0);
}

TEST_F(ObjectArrayTest, NextOutsideTheArrayIsNone)
{
    EXPECT_EQ(array.next(1), 0);
    fill(3);
    EXPECT_EQ(array.next(3), 0);
    EXPECT_EQ(array.next(4), 0);
    EXPECT_EQ(array.next(0), 0);
    EXPECT_EQ(array.next(-5), 0);
}

TEST_F(ObjectArrayTest, NullEntryStopsAWalk)
{
    fill(2);
    EXPECT_EQ(array.add(nullptr), 3);
    fill(2);
    EXPECT_EQ(array.get(3), nullptr);
    EXPECT_EQ(array.next(1), 2);
    EXPECT_EQ(array.next(2), 0);
    EXPECT_EQ(array.next(3), 4);
    EXPECT_EQ(array.previous(4), 0);
    array.remove(3);
    EXPECT_EQ(array.find(101), 1);
    array.items[1]->id = 55;
    EXPECT_EQ(array.find(102), 0); // there is one behind the null entry
}

TEST_F(ObjectArrayTest, PreviousPassesOverRemovedOnes)
{
    fill(5);
    array.remove(2);
    array.remove(3);
    EXPECT_EQ(array.previous(4), 1);
    array.remove(1);
    EXPECT_EQ(array.previous(4), 0);
    EXPECT_EQ(array.previous(1), 0);
    EXPECT_EQ(array.previous(0), 0);
    EXPECT_EQ(array.previous(6), 0);
}

TEST_F(ObjectArrayTest, LastIdHasNoPreviousOne)
{
    fill(4);
    EXPECT_EQ(array.previous(array.count), 0);
    EXPECT_EQ(array.previous(3), 2);
}

TEST_F(ObjectArrayTest, FindLooksForTheNumberOfTheObject)
{
    fill(4);
    EXPECT_EQ(array.find(103), 3);
    EXPECT_EQ(array.find(3), 0);
    array.remove(3);
    EXPECT_EQ(array.find(103), 0);
    array.add(numbered(103));
    EXPECT_EQ(array.find(103), 5);
    EXPECT_EQ(array.find(101), 1);
    array.remove(1);
    EXPECT_EQ(array.find(101), 0);
    EXPECT_EQ(array.find(102), 2);
}

TEST_F(ObjectArrayTest, FailedGrowthLeavesTheArrayAsItWas)
{
    TopoObject* object = numbered(1);
    test_heap::fail_at(1);
    EXPECT_EQ(array.add(object), 0);
    EXPECT_EQ(array.capacity, 0);
    EXPECT_EQ(array.count, 0);
    EXPECT_EQ(array.add(object), 1);
}

TEST_F(ObjectArrayTest, WithoutMemoryThereIsNoObject)
{
    test_heap::fail_at(1);
    EXPECT_EQ(new TopoObject, nullptr);
}

TEST_F(ObjectArrayTest, AddingGrowsWithTheNumberOfObjects)
{
    EXPECT_TRUE(grows_in_proportion(
        [](int size) {
            ObjectArray many;
            for (int i = 0; i < size; ++i)
                many.add(nullptr);
        },
        1000000));
}

#ifdef ZENT_SLOTS_CAN_BE_READ
TEST_F(ObjectArrayTest, OperationsStandInTheirOrder)
{
    EXPECT_EQ(slot_of(&ObjectArray::next), 1);
    EXPECT_EQ(slot_of(&ObjectArray::previous), 2);
    EXPECT_EQ(slot_of(&ObjectArray::get), 3);
    EXPECT_EQ(slot_of(&ObjectArray::add), 4);
    EXPECT_EQ(slot_of(&ObjectArray::remove), 5);
    EXPECT_EQ(slot_of(&ObjectArray::find), 6);
}
#endif

} // namespace
