#include "tests/topology/collection.h"
#include "tests/topology/slot.h"
#include "topology/id_list.h"

namespace
{

using IdListTest = Collection;

TEST_F(IdListTest, PlacesRunFromOne)
{
    IdList list;
    EXPECT_EQ(list.get(0), 0);
    EXPECT_EQ(list.get(1), 0);
    EXPECT_EQ(list.add(70), 1);
    EXPECT_EQ(list.add(-80), 2);
    EXPECT_EQ(list.get(1), 70);
    EXPECT_EQ(list.get(2), -80);
    EXPECT_EQ(list.get(3), 0);
    EXPECT_EQ(list.get(-1), 0);
}

TEST_F(IdListTest, CapacityGrowsByThreeWhenNotAboveCountPlusOne)
{
    IdList list;
    std::string seen;
    for (int i = 1; i <= 8; ++i) {
        list.add(i);
        seen += std::to_string(list.capacity) + " ";
    }
    EXPECT_EQ(seen, "3 3 6 6 6 9 9 9 ");
}

TEST_F(IdListTest, RemovedPlacesArePassedOver)
{
    IdList list;
    for (int i = 1; i <= 5; ++i)
        list.add(10 * i);
    list.remove(2);
    list.remove(3);
    EXPECT_EQ(list.count, 5);
    EXPECT_EQ(list.live_count(), 3);
    EXPECT_EQ(list.get(2), 0);
    EXPECT_EQ(list.next(1), 4);
    EXPECT_EQ(list.previous(4), 1);
    EXPECT_EQ(list.find(20), 0);
    EXPECT_EQ(list.find(40), 4);
    list.remove(1);
    EXPECT_EQ(list.previous(4), 0);
    EXPECT_EQ(list.find(10), 0);
    EXPECT_EQ(list.find(50), 5);
    EXPECT_EQ(list.add(60), 6);
}

TEST_F(IdListTest, LastPlaceKeepsItsId)
{
    IdList list;
    list.add(7);
    list.remove(1);
    EXPECT_EQ(list.get(1), 7);
    list.add(8);
    list.remove(2);
    EXPECT_EQ(list.get(2), 8);
    list.remove(1);
    EXPECT_EQ(list.get(1), 0);
    EXPECT_EQ(list.live_count(), 1);
    list.add(9); // no longer the last one
    list.remove(2);
    EXPECT_EQ(list.get(2), 0);
}

TEST_F(IdListTest, RemovingOutOfRangeDoesNothing)
{
    IdList list;
    list.remove(1);
    list.add(7);
    list.add(8);
    list.remove(0);
    list.remove(-1);
    list.remove(3);
    EXPECT_EQ(list.live_count(), 2);
}

TEST_F(IdListTest, WalksStopAtBothEnds)
{
    IdList list;
    for (int i = 1; i <= 3; ++i)
        list.add(i);
    EXPECT_EQ(list.next(0), 0);
    EXPECT_EQ(list.next(2), 3);
    EXPECT_EQ(list.next(3), 0);
    EXPECT_EQ(list.next(4), 0);
    EXPECT_EQ(list.previous(2), 1);
    EXPECT_EQ(list.previous(1), 0);
    EXPECT_EQ(list.previous(0), 0);
    EXPECT_EQ(list.previous(4), 0);
}

TEST_F(IdListTest, LastPlaceHasNoPreviousOne)
{
    IdList list;
    for (int i = 1; i <= 3; ++i)
        list.add(i);
    EXPECT_EQ(list.previous(3), 0);
    EXPECT_EQ(list.previous(list.count), 0);
}

TEST_F(IdListTest, FirstOfEqualIdsIsFound)
{
    IdList list;
    for (int value : {5, 6, 5, 6})
        list.add(value);
    EXPECT_EQ(list.find(6), 2);
    EXPECT_EQ(list.find(9), 0);
}

TEST_F(IdListTest, ZeroIsNeverFound)
{
    IdList list;
    EXPECT_EQ(list.find(0), 0);
    list.add(4);
    list.add(5);
    list.remove(1);
    EXPECT_EQ(list.find(0), 0);
}

TEST_F(IdListTest, FailedGrowthLeavesTheListAsItWas)
{
    IdList list;
    test_heap::fail_at(1);
    EXPECT_EQ(list.add(1), 0);
    EXPECT_EQ(list.capacity, 0);
    EXPECT_EQ(list.add(1), 1);
    EXPECT_EQ(list.add(2), 2);
    test_heap::fail_at(1);
    EXPECT_EQ(list.add(3), 0);
    EXPECT_EQ(list.count, 2);
    EXPECT_EQ(list.capacity, 3);
    EXPECT_EQ(list.get(2), 2);
    EXPECT_EQ(list.add(3), 3);
}

#ifdef ZENT_SLOTS_CAN_BE_READ
TEST_F(IdListTest, OperationsStandInTheirOrder)
{
    EXPECT_EQ(slot_of(&IdList::next), 1);
    EXPECT_EQ(slot_of(&IdList::previous), 2);
    EXPECT_EQ(slot_of(&IdList::get), 3);
    EXPECT_EQ(slot_of(&IdList::add), 4);
    EXPECT_EQ(slot_of(&IdList::remove), 5);
    EXPECT_EQ(slot_of(&IdList::find), 6);
    EXPECT_EQ(slot_of(&IdList::live_count), 7);
}
#endif

} // namespace
