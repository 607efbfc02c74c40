#include <algorithm>

#include <gtest/gtest.h>

#include "host/core/document.h"
#include "host/database/entities.h"

namespace host::db
{
namespace
{

struct Undo : testing::Test {
    document doc{1};
    database& db = database_of(doc);

    object_id point(double x)
    {
        group_list groups{db.text_group(0, "POINT"), point_group(10, x, 0, 0)};
        return db.append(db.model_space(), object_class::entity, std::move(groups));
    }
    double x_of(object_id id) const { return find(db.at(id).groups, 10)->point[0]; }
    void move(object_id id, double x) { find(db.modify(id), 10)->point[0] = x; }
    std::string layer() const { return std::string(db.text_of(*db.header_value("$CLAYER"), 8)); }
};

TEST_F(Undo, NothingToUndoInANewDrawing)
{
    EXPECT_FALSE(db.undo_back());
    EXPECT_FALSE(db.redo());
    EXPECT_FALSE(db.undo_to_mark());
}

TEST_F(Undo, StepsGoBackOneByOne)
{
    db.command_boundary("POINT");
    const object_id a = point(1);
    db.command_boundary("MOVE");
    move(a, 2);
    move(a, 3);
    db.command_boundary("ERASE");
    db.set_erased(a, true);

    EXPECT_TRUE(db.undo_back());
    EXPECT_FALSE(db.at(a).erased);
    EXPECT_EQ(x_of(a), 3);
    EXPECT_TRUE(db.undo_back());
    EXPECT_EQ(x_of(a), 1);
    EXPECT_TRUE(db.undo_back());
    EXPECT_TRUE(db.at(a).erased);
    EXPECT_FALSE(db.undo_back());
}

TEST_F(Undo, StepsWithoutAChangeAreSkipped)
{
    db.command_boundary("POINT");
    const object_id a = point(1);
    db.command_boundary("LIST");
    db.command_boundary("U");
    EXPECT_TRUE(db.undo_back());
    EXPECT_TRUE(db.at(a).erased);
}

TEST_F(Undo, GroupGoesAsOneWithTheGroupsInsideIt)
{
    db.command_boundary("POINT");
    const object_id a = point(1);
    db.undo_mark(true);
    db.command_boundary("POINT");
    const object_id b = point(2);
    db.undo_mark(true);
    db.command_boundary("POINT");
    const object_id c = point(3);
    db.undo_group_end();
    db.undo_group_end();
    db.undo_group_end(); // one too many counts for nothing
    EXPECT_TRUE(db.undo_back());
    EXPECT_FALSE(db.at(a).erased);
    EXPECT_TRUE(db.at(b).erased);
    EXPECT_TRUE(db.at(c).erased);
    EXPECT_TRUE(db.undo_back());
    EXPECT_TRUE(db.at(a).erased);
}

TEST_F(Undo, OpenGroupGoesBackByItsSteps)
{
    db.undo_mark(true);
    db.command_boundary("POINT");
    const object_id a = point(1);
    db.command_boundary("POINT");
    const object_id b = point(2);
    EXPECT_TRUE(db.undo_back());
    EXPECT_TRUE(db.at(b).erased);
    EXPECT_FALSE(db.at(a).erased);
}

TEST_F(Undo, EndOfAGroupThatWasUndoneSwallowsNothing)
{
    db.command_boundary("POINT");
    const object_id a = point(1);
    db.undo_mark(true);
    const object_id b = point(2);
    EXPECT_TRUE(db.undo_back());
    db.undo_group_end();
    db.command_boundary("POINT");
    const object_id c = point(3);
    EXPECT_TRUE(db.undo_back());
    EXPECT_TRUE(db.at(c).erased);
    EXPECT_TRUE(db.at(b).erased);
    EXPECT_FALSE(db.at(a).erased);
}

TEST_F(Undo, MarkIsReachedOverManySteps)
{
    db.command_boundary("POINT");
    const object_id a = point(1);
    db.undo_mark(false);
    for (int i = 0; i < 5; ++i) {
        db.command_boundary("MOVE");
        move(a, 10 + i);
    }
    EXPECT_TRUE(db.undo_to_mark());
    EXPECT_EQ(x_of(a), 1);
    EXPECT_FALSE(db.undo_to_mark());
    EXPECT_FALSE(db.at(a).erased);
    EXPECT_TRUE(db.redo());
    EXPECT_EQ(x_of(a), 14);
}

TEST_F(Undo, HeaderAndCurrentLayerComeBack)
{
    db.command_boundary("LAYER");
    add_layer(db, "FENCE", 1);
    db.set_header("$CLAYER", {db.text_group(8, "FENCE")});
    db.set_header("$NEWONE", {int_group(70, 1)});
    EXPECT_TRUE(db.undo_back());
    EXPECT_EQ(layer(), "0");
    EXPECT_EQ(db.header_value("$NEWONE"), nullptr);
    EXPECT_EQ(db.record("LAYER", "FENCE"), 0u);
    EXPECT_TRUE(db.redo());
    EXPECT_EQ(layer(), "FENCE");
    ASSERT_NE(db.header_value("$NEWONE"), nullptr);
    EXPECT_NE(db.record("LAYER", "FENCE"), 0u);
}

TEST_F(Undo, RenamedRecordIsFoundUnderTheNameThatCameBack)
{
    const object_id layer_id = add_layer(db, "FENCE", 1);
    db.command_boundary("RENAME");
    find(db.modify(layer_id), 2)->text = db.intern("HEDGE");
    EXPECT_EQ(db.record("LAYER", "HEDGE"), layer_id);
    EXPECT_TRUE(db.undo_back());
    EXPECT_EQ(db.record("LAYER", "FENCE"), layer_id);
    EXPECT_EQ(db.record("LAYER", "HEDGE"), 0u);
    EXPECT_TRUE(db.redo());
    EXPECT_EQ(db.record("LAYER", "HEDGE"), layer_id);
}

TEST_F(Undo, RedoOnlyStraightAfterAnUndo)
{
    db.command_boundary("POINT");
    const object_id a = point(1);
    EXPECT_TRUE(db.undo_back());
    db.command_boundary("REDO");
    EXPECT_TRUE(db.redo());
    EXPECT_FALSE(db.at(a).erased);
    EXPECT_TRUE(db.undo_back());
    point(2);
    EXPECT_FALSE(db.redo());
}

TEST_F(Undo, EachUndoneStepIsRedoneInTurn)
{
    const object_id a = point(0);
    for (int i = 1; i <= 3; ++i) {
        db.command_boundary("MOVE");
        move(a, i);
    }
    EXPECT_TRUE(db.undo_back());
    EXPECT_TRUE(db.undo_back());
    EXPECT_EQ(x_of(a), 1);
    EXPECT_TRUE(db.redo());
    EXPECT_EQ(x_of(a), 2);
    EXPECT_TRUE(db.redo());
    EXPECT_EQ(x_of(a), 3);
    EXPECT_TRUE(db.undo_back());
    EXPECT_EQ(x_of(a), 2);
}

TEST_F(Undo, SwitchedOffKeepsNothing)
{
    db.command_boundary("POINT");
    const object_id a = point(1);
    db.undo_enable(false);
    EXPECT_FALSE(db.undo_enabled());
    move(a, 5);
    db.undo_enable(true);
    EXPECT_TRUE(db.undo_enabled());
    EXPECT_FALSE(db.undo_back());
    EXPECT_EQ(x_of(a), 5);
}

TEST_F(Undo, ListenersHearWhatComesBack)
{
    struct heard : change_listener {
        std::vector<change_kind> kinds;
        void object_changed(object_id, change_kind kind) override { kinds.push_back(kind); }
    } listener;
    db.command_boundary("POINT");
    const object_id a = point(1);
    db.command_boundary("MOVE");
    move(a, 2);
    db.add_listener(&listener);
    db.undo_back();
    db.undo_back();
    db.redo();
    db.remove_listener(&listener);
    const std::vector<change_kind> expected = {change_kind::modified, change_kind::erased,
                                               change_kind::restored};
    EXPECT_EQ(listener.kinds, expected);
}

// Random changes in steps, each state written down: going all the way back and forth meets them all.
TEST_F(Undo, LongHistoriesComeBackExactly)
{
    std::vector<object_id> ids;
    for (int i = 0; i < 10; ++i)
        ids.push_back(point(i));
    db.undo_enable(true); // forgets how they were made
    const auto state = [&] {
        std::string text;
        for (object_id id = ids.front(); id < db.size(); ++id)
            if (!db.at(id).erased)
                text += std::to_string(id) + ':' + std::to_string(x_of(id)) + ' ';
        return text;
    };
    std::uint32_t seed = 12345;
    const auto random = [&](std::uint32_t below) {
        return (seed = seed * 1664525u + 1013904223u) / 65536u % below;
    };
    std::vector<std::string> states{state()};
    for (int step = 0; step < 200; ++step) {
        db.command_boundary("STEP");
        for (std::uint32_t i = 0; i <= random(4); ++i) {
            const object_id id = ids[random(static_cast<std::uint32_t>(ids.size()))];
            if (const auto what = random(3); what == 0)
                move(id, x_of(id) + 1);
            else if (what == 1)
                db.set_erased(id, !db.at(id).erased);
            else
                ids.push_back(point(step));
        }
        if (state() != states.back())
            states.push_back(state());
    }
    const std::size_t steps = states.size();
    std::vector<std::string> seen{state()};
    while (db.undo_back())
        if (state() != seen.back())
            seen.push_back(state());
    EXPECT_TRUE(std::ranges::equal(seen, std::vector<std::string>(states.rbegin(), states.rend())))
        << seen.size() << " states back, " << states.size() << " forth";
    std::size_t forth = 0;
    while (db.redo())
        ++forth;
    EXPECT_GE(forth, steps - 1);
    EXPECT_EQ(state(), states.back());
}

} // namespace
} // namespace host::db
