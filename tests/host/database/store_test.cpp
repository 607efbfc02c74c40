#include <gtest/gtest.h>

#include "host/core/document.h"
#include "host/database/entities.h"

namespace host::db
{
namespace
{

struct Store : testing::Test {
    document doc{7};
    database& db = database_of(doc);

    object_id point(double x, std::uint64_t handle = 0)
    {
        group_list groups{db.text_group(0, "POINT"), handle_group(330, 0), handle_group(5, 0),
                          point_group(10, x, 0, 0)};
        return db.append(db.model_space(), object_class::entity, std::move(groups), handle);
    }
    std::vector<object_id> entities(object_id space) const
    {
        std::vector<object_id> all;
        for (object_id at = db.at(space).first; at; at = db.at(at).next)
            all.push_back(at);
        return all;
    }
};

TEST_F(Store, NewDrawingHasItsTablesAndRecords)
{
    for (const char* table :
         {"VPORT", "LTYPE", "LAYER", "STYLE", "VIEW", "UCS", "APPID", "DIMSTYLE", "BLOCK_RECORD"}) {
        ASSERT_NE(db.table(table), 0u) << table;
        EXPECT_EQ(db.at(db.table(table)).family, object_class::table);
    }
    const struct {
        const char *table, *name;
    } records[] = {{"LAYER", "0"},
                   {"LTYPE", "BYBLOCK"},
                   {"LTYPE", "bylayer"},
                   {"LTYPE", "CONTINUOUS"},
                   {"STYLE", "Standard"},
                   {"APPID", "acad"},
                   {"DIMSTYLE", "STANDARD"},
                   {"VPORT", "*ACTIVE"},
                   {"BLOCK_RECORD", "*MODEL_SPACE"},
                   {"BLOCK_RECORD", "*paper_space"}};
    for (const auto& each : records)
        EXPECT_NE(db.record(each.table, each.name), 0u) << each.table << ' ' << each.name;
    EXPECT_EQ(db.record("LAYER", "1"), 0u);
    EXPECT_FALSE(db.modified());
    EXPECT_EQ(db.current_space(), db.model_space());
}

TEST_F(Store, RootDictionaryLeadsToTheLayouts)
{
    ASSERT_NE(db.root_dictionary(), 0u);
    const group_list& root = db.at(db.root_dictionary()).groups;
    object_id layouts = 0;
    for (std::size_t i = 0; i + 1 < root.size(); ++i)
        if (root[i].code == 3 && db.text(root[i].text) == "ACAD_LAYOUT")
            layouts = db.by_handle(root[i + 1].handle);
    ASSERT_NE(layouts, 0u);
    const group* model = find(db.at(db.model_space()).groups, 340);
    ASSERT_NE(model, nullptr);
    EXPECT_TRUE(db.is(db.by_handle(model->handle), "LAYOUT"));
}

TEST_F(Store, EveryObjectIsFoundByItsHandleAndOwnerHandleIsFilledIn)
{
    for (object_id id = 1; id < db.size(); ++id) {
        EXPECT_EQ(db.by_handle(db.at(id).handle), id);
        const group* own = find(db.at(id).groups, db.is(id, "DIMSTYLE") ? 105 : 5);
        ASSERT_NE(own, nullptr) << id;
        EXPECT_EQ(own->handle, db.at(id).handle);
        if (db.at(id).owner) {
            EXPECT_EQ(find(db.at(id).groups, 330)->handle, db.at(db.at(id).owner).handle);
        }
    }
}

TEST_F(Store, GivenHandlesAreKeptAndNeverGivenOutAgain)
{
    const object_id far = point(1, 0xABC);
    const object_id next = point(2);
    EXPECT_EQ(db.at(far).handle, 0xABCu);
    EXPECT_EQ(db.at(next).handle, 0xABDu);
    db.reserve_handle(0x1000);
    EXPECT_EQ(db.next_handle(), 0x1001u);
    db.reserve_handle(5);
    EXPECT_EQ(db.next_handle(), 0x1001u);
}

TEST_F(Store, EqualTextsHaveOneId)
{
    EXPECT_EQ(db.intern("FENCE"), db.intern(std::string("FENCE")));
    EXPECT_NE(db.intern("FENCE"), db.intern("fence"));
    EXPECT_EQ(db.intern(""), 0u);
    EXPECT_EQ(db.text(db.intern("FENCE")), "FENCE");
    EXPECT_EQ(db.text(4'000'000'000u), "");
}

TEST_F(Store, EntitiesStandBetweenBlockAndEndblk)
{
    const object_id a = point(1), b = point(2);
    const auto all = entities(db.model_space());
    ASSERT_EQ(all.size(), 4u);
    EXPECT_TRUE(db.is(all[0], "BLOCK"));
    EXPECT_EQ(all[1], a);
    EXPECT_EQ(all[2], b);
    EXPECT_TRUE(db.is(all[3], "ENDBLK"));
    EXPECT_EQ(db.at(b).previous, a);
    EXPECT_EQ(db.at(db.model_space()).last, all[3]);
}

TEST_F(Store, RecordsAreFoundUnderTheirNewName)
{
    const object_id layer = add_layer(db, "Fence", 3);
    EXPECT_EQ(db.record("layer", "FENCE"), layer);
    find(db.modify(layer), 2)->text = db.intern("HEDGE");
    EXPECT_EQ(db.record("LAYER", "Fence"), 0u);
    EXPECT_EQ(db.record("LAYER", "hedge"), layer);
}

TEST_F(Store, RenameIsSeenThoughTheTableWasAskedMeanwhile)
{
    const object_id layer = add_layer(db, "Fence", 3);
    group_list& groups = db.modify(layer);
    EXPECT_EQ(db.record("LAYER", "Fence"), layer);
    find(groups, 2)->text = db.intern("HEDGE");
    EXPECT_EQ(db.record("LAYER", "Hedge"), layer);
    EXPECT_EQ(db.record("LAYER", "Fence"), 0u);
}

TEST_F(Store, ErasedRecordGivesWayToANewOneOfItsName)
{
    const object_id old = add_layer(db, "Fence", 3);
    db.set_erased(old, true);
    EXPECT_EQ(db.record("LAYER", "Fence"), 0u);
    db.set_erased(old, false);
    EXPECT_EQ(db.record("LAYER", "Fence"), old);
    db.set_erased(old, true);
    const object_id made = add_layer(db, "FENCE", 4);
    EXPECT_EQ(db.record("LAYER", "Fence"), made);
}

TEST_F(Store, CurrentSpaceFollowsTilemodeAndViewport)
{
    db.set_header("$TILEMODE", {int_group(70, 0)});
    EXPECT_EQ(db.layout_space(), db.paper_space());
    EXPECT_EQ(db.current_space(), db.paper_space());
    db.layout_viewport = 2;
    EXPECT_EQ(db.layout_space(), db.paper_space());
    EXPECT_EQ(db.current_space(), db.model_space());
}

TEST_F(Store, NamesLeadBackAndForeignNamesToNothing)
{
    const object_id a = point(1);
    std::int32_t name[2];
    make_name(db, a, name);
    EXPECT_EQ(id_of_name(db, name), a);
    name[1] = 8;
    EXPECT_EQ(id_of_name(db, name), 0u);
    name[1] = 7;
    for (const std::int32_t wrong : {0, -1, 1'000'000}) {
        name[0] = wrong;
        EXPECT_EQ(id_of_name(db, name), 0u) << wrong;
    }
    EXPECT_EQ(id_of_name(db, nullptr), 0u);
}

struct heard : change_listener {
    std::vector<std::pair<object_id, change_kind>> all;
    void object_changed(object_id id, change_kind kind) override { all.emplace_back(id, kind); }
};

TEST_F(Store, ListenersHearEveryChangeOnce)
{
    heard listener;
    db.add_listener(&listener);
    const object_id a = point(1);
    db.modify(a)[3] = point_group(10, 5, 5, 5);
    db.set_erased(a, true);
    db.set_erased(a, true);
    db.set_erased(a, false);
    db.remove_listener(&listener);
    db.set_erased(a, true);
    const std::vector<std::pair<object_id, change_kind>> expected = {{a, change_kind::added},
                                                                     {a, change_kind::modified},
                                                                     {a, change_kind::erased},
                                                                     {a, change_kind::restored}};
    EXPECT_EQ(listener.all, expected);
    EXPECT_TRUE(db.modified());
}

TEST_F(Store, ReplacedDatabaseIsTheDocumentsOwn)
{
    auto fresh = empty_database(doc);
    EXPECT_EQ(fresh->size(), 1u);
    database* expected = fresh.get();
    complete_drawing(*fresh);
    replace_database(doc, std::move(fresh));
    EXPECT_EQ(&database_of(doc), expected);
    EXPECT_FALSE(database_of(doc).modified());
}

TEST_F(Store, CompletingACompleteDrawingAddsNothing)
{
    const std::size_t before = db.size(), variables = db.header.size();
    complete_drawing(db);
    EXPECT_EQ(db.size(), before);
    EXPECT_EQ(db.header.size(), variables);
}

struct code_case {
    int code;
    group_kind kind;
};

TEST(GroupCodes, KindFollowsTheCode)
{
    const code_case cases[] = {
        {0, group_kind::text},       {5, group_kind::handle},     {9, group_kind::text},
        {10, group_kind::point},     {18, group_kind::point},     {38, group_kind::real},
        {59, group_kind::real},      {60, group_kind::integer},   {99, group_kind::integer},
        {100, group_kind::text},     {102, group_kind::text},     {105, group_kind::handle},
        {110, group_kind::point},    {140, group_kind::real},     {149, group_kind::real},
        {160, group_kind::integer},  {170, group_kind::integer},  {210, group_kind::point},
        {280, group_kind::integer},  {290, group_kind::integer},  {300, group_kind::text},
        {310, group_kind::binary},   {320, group_kind::handle},   {330, group_kind::handle},
        {360, group_kind::handle},   {370, group_kind::integer},  {390, group_kind::handle},
        {410, group_kind::text},     {420, group_kind::integer},  {1000, group_kind::text},
        {1003, group_kind::text},    {1004, group_kind::binary},  {1005, group_kind::handle},
        {1010, group_kind::point},   {1013, group_kind::point},   {1040, group_kind::real},
        {1070, group_kind::integer}, {1071, group_kind::integer}, {5000, group_kind::integer},
    };
    for (const code_case& each : cases)
        EXPECT_EQ(kind_of_code(each.code), each.kind) << each.code;
}

} // namespace
} // namespace host::db
