#include "host/database/selection_sets.h"
#include "tests/host/database/lists.h"

namespace host::db
{
namespace
{

using namespace testing_lists;

struct Sets : Drawing {
    std::size_t before = live_sets();
    object_id a = made("0 POINT;10 1,0,0"), b = made("0 POINT;10 2,0,0"), c = made("0 POINT;10 3,0,0");

    std::int32_t length(const ads_name set)
    {
        std::int32_t count = -1;
        return acedSSLength(set, &count) == RTNORM ? count : -1;
    }
    int with(int (*call)(const ads_name, const ads_name), object_id id, const ads_name set)
    {
        ads_name name;
        make_name(db, id, name);
        return call(name, set);
    }
    int add(object_id id, ads_name set)
    {
        ads_name name;
        make_name(db, id, name);
        return acedSSAdd(name, set, set);
    }
    object_id member(const ads_name set, std::int32_t index)
    {
        ads_name name;
        return acedSSName(set, index, name) == RTNORM ? id_of_name(db, name) : 0;
    }
};

TEST_F(Sets, NewSetIsEmptyAndIsNoEntity)
{
    ads_name set;
    ASSERT_EQ(acedSSAdd(nullptr, nullptr, set), RTNORM);
    EXPECT_EQ(length(set), 0);
    EXPECT_EQ(member(set, 0), 0u);
    EXPECT_EQ(set[1], -1);
    EXPECT_EQ(id_of_name(db, set), 0u);
    EXPECT_EQ(acdbEntGet(set), nullptr);
    EXPECT_EQ(acedSSFree(set), RTNORM);
}

TEST_F(Sets, KeepTheOrderOfPicking)
{
    ads_name set;
    make_set(db, {c, a, b, a}, set);
    EXPECT_EQ(length(set), 3);
    EXPECT_EQ(member(set, 0), c);
    EXPECT_EQ(member(set, 1), a);
    EXPECT_EQ(member(set, 2), b);
    EXPECT_EQ(member(set, 3), 0u);
    EXPECT_EQ(member(set, -1), 0u);
    EXPECT_EQ(set_members(db, set), (std::vector<object_id>{c, a, b}));
}

TEST_F(Sets, MembersComeAndGo)
{
    ads_name set;
    make_set(db, {a}, set);
    EXPECT_EQ(add(b, set), RTNORM);
    EXPECT_EQ(add(b, set), RTNORM);
    EXPECT_EQ(add(c, set), RTNORM);
    EXPECT_EQ(length(set), 3);
    EXPECT_EQ(with(acedSSMemb, b, set), RTNORM);
    EXPECT_EQ(with(acedSSDel, b, set), RTNORM);
    EXPECT_EQ(with(acedSSDel, b, set), RTERROR);
    EXPECT_EQ(with(acedSSMemb, b, set), RTERROR);
    EXPECT_EQ(length(set), 2);
    EXPECT_EQ(member(set, 0), a);
    EXPECT_EQ(member(set, 1), c);
    EXPECT_EQ(add(b, set), RTNORM);
    EXPECT_EQ(member(set, 2), b);
}

TEST_F(Sets, AddingWithoutASetMakesOne)
{
    ads_name name, set;
    make_name(db, a, name);
    ASSERT_EQ(acedSSAdd(name, nullptr, set), RTNORM);
    EXPECT_EQ(length(set), 1);
    EXPECT_EQ(member(set, 0), a);
}

TEST_F(Sets, FreedSetIsNoSetAnyMore)
{
    ads_name set, other;
    make_set(db, {a}, set);
    EXPECT_EQ(live_sets(), before + 1);
    EXPECT_EQ(acedSSFree(set), RTNORM);
    EXPECT_EQ(live_sets(), before);
    EXPECT_EQ(acedSSFree(set), RTERROR);
    EXPECT_EQ(length(set), -1);
    EXPECT_EQ(add(a, set), RTERROR);
    make_set(db, {}, other);
    EXPECT_NE(other[0], set[0]) << "a freed name is not given out again";
}

TEST_F(Sets, ErasedObjectsAreNotAddedButStayMembers)
{
    ads_name set;
    make_set(db, {a, b}, set);
    erase(b);
    erase(c);
    EXPECT_EQ(add(c, set), RTERROR);
    EXPECT_EQ(length(set), 2);
    EXPECT_EQ(set_members(db, set), std::vector<object_id>{a});
}

TEST_F(Sets, WrongNamesAreRefused)
{
    ads_name set, layer;
    make_set(db, {a}, set);
    const ads_name nothing = {0, 0};
    std::int32_t count = 0;
    EXPECT_EQ(acedSSLength(nothing, &count), RTERROR);
    EXPECT_EQ(acedSSLength(set, nullptr), RTERROR);
    EXPECT_EQ(acedSSFree(nullptr), RTERROR);
    EXPECT_EQ(acedSSAdd(nothing, set, set), RTERROR);
    EXPECT_EQ(acedSSMemb(nothing, set), RTERROR);
    make_name(db, db.record("LAYER", "0"), layer);
    EXPECT_EQ(acedSSAdd(layer, set, set), RTERROR);
}

TEST_F(Sets, GoWithTheirDrawing)
{
    document& second = open_document();
    ads_name set;
    make_set(database_of(second), {}, set);
    EXPECT_EQ(live_sets(), before + 1);
    close_document(second);
    EXPECT_EQ(live_sets(), before);
    EXPECT_EQ(length(set), -1);
}

TEST_F(Sets, TakingAllOutOneByOneIsQuick)
{
    std::vector<object_id> all;
    for (int i = 0; i < 50'000; ++i)
        all.push_back(db.append(db.model_space(), object_class::entity, {db.text_group(0, "POINT")}));
    ads_name set;
    make_set(db, all, set);
    while (length(set) > 0) {
        ads_name name;
        ASSERT_EQ(acedSSName(set, 0, name), RTNORM);
        ASSERT_EQ(acedSSDel(name, set), RTNORM);
    }
    EXPECT_EQ(length(set), 0);
}

} // namespace
} // namespace host::db
