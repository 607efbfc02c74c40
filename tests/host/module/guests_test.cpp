// Guest modules loaded as a host loads them: shared objects that find what they want in this program.
#include <gtest/gtest.h>

#include "host/core/console.h"
#include "host/core/document.h"
#include "host/core/heap.h"
#include "host/core/module.h"
#include "host/core/reactors.h"
#include "host/core/resbuf.h"
#include "host/core/trace.h"
#include "host/database/database.h"
#include "host/database/entities.h"
#include "host/database/sysvars.h"

namespace
{

class Guests : public testing::Test
{
protected:
    void SetUp() override
    {
        host::capture_history(&history_);
        host::open_document();
    }
    void TearDown() override
    {
        host::unload_all_modules();
        host::close_all_documents();
        host::capture_history(nullptr);
    }
    void load(const char* name)
    {
        ASSERT_TRUE(host::load_module(std::string(ZENT_GUESTS) + "/" + name + ".so"));
    }
    // What a call answers, printed; it must give back all that it took.
    std::string call(const char* name, resbuf* arguments = nullptr)
    {
        const host::list_ptr owned(arguments);
        const std::size_t views = host::live_views(), blocks = host::heap_live_blocks();
        std::string printed;
        {
            const host::list_ptr result = host::call_external(name, owned.get());
            printed = result && !result->rbnext ? host::printed_value(*result)
                                                : host::printed_list(result.get(), false);
        }
        EXPECT_EQ(host::live_views(), views) << name;
        EXPECT_EQ(host::heap_live_blocks(), blocks) << name;
        return printed;
    }
    std::string call_answered(const char* name, const char* answers)
    {
        host::answers_from_text(answers);
        return call(name);
    }
    std::string types_in_space()
    {
        const auto& db = host::db::current_database();
        std::string out;
        for (auto id = host::db::first_entity(db, db.model_space()); id; id = host::db::next_entity(db, id))
            out += std::string(db.type_of(id)) + " ";
        return out;
    }
    std::string history_;
};

TEST_F(Guests, OneThatOnlyMakesEntities)
{
    load("guest_entities");
    EXPECT_EQ(call("e:layer", acutBuildList(RTSTR, "GUESTS", RTSHORT, 3, RTNONE)), "0");
    EXPECT_EQ(host::db::text_variable(host::current_document(), "CLAYER"), "GUESTS");
    EXPECT_EQ(call("e:layer", acutBuildList(RTSTR, "guests", RTSHORT, 3, RTNONE)), "6"); // there is one
    EXPECT_EQ(call("e:square", acutBuildList(RTREAL, 5.0, RTNONE)).substr(0, 14), "<Entity name: ");
    EXPECT_EQ(call("e:climb", acutBuildList(RTSHORT, 3, RTNONE)).substr(0, 14), "<Entity name: ");
    EXPECT_EQ(call("e:point", acutBuildList(RTREAL, 1.0, RTREAL, 2.0, RTNONE)), "5100");
    EXPECT_EQ(call("e:square"), "nil");
    EXPECT_EQ(types_in_space(), "LWPOLYLINE POLYLINE POINT ");
    const auto& db = host::db::current_database();
    const auto square = host::db::first_entity(db, db.model_space());
    EXPECT_EQ(db.text_of(db.at(square).groups, 8), "GUESTS");
    EXPECT_EQ(host::db::int_of(db.at(square).groups, 90, 0), 4);
    int vertices = 0;
    const auto climb = host::db::next_entity(db, square);
    for (auto v = host::db::first_child(db, climb); v; v = host::db::next_child(db, v))
        ++vertices;
    EXPECT_EQ(vertices, 3);
}

TEST_F(Guests, ViewsThatComeToNothingLeaveNothing)
{
    load("guest_entities");
    EXPECT_EQ(call("e:nothing"), "T");
    EXPECT_EQ(types_in_space(), "");
}

TEST_F(Guests, OneThatOnlyAsks)
{
    load("guest_points");
    EXPECT_EQ(call_answered("p:point", "1.5,2.5\n"), "(1.5 2.5 0.0)");
    EXPECT_EQ(call_answered("p:from", "@5,0\n"), "(6.5 2.5 0.0)"); // from the last point
    EXPECT_EQ(call_answered("p:point", "^C\n"), "-5002");
    EXPECT_EQ(call_answered("p:point", "\n"), "5000");
    EXPECT_EQ(call_answered("p:word", "y\n"), "\"Yes\"");
    EXPECT_EQ(call_answered("p:word", "\nno\n"), "\"No\""); // asked again
    EXPECT_EQ(call_answered("p:point-or-word", "x\n"), "\"eXit\"");
    EXPECT_EQ(call_answered("p:point-or-word", "7,8,9\n"), "(7.0 8.0 9.0)");
    EXPECT_EQ(call_answered("p:numbers", "0\n-3\n4\n0.5\n"), "4.5");
    EXPECT_EQ(call_answered("p:text", "two words\n"), "\"two words\"");
    EXPECT_NE(history_.find("Where: 1.5,2.5\nTo: @5,0\n"), std::string::npos) << history_;
}

TEST_F(Guests, OneThatOnlyListens)
{
    load("guest_reactor");
    EXPECT_EQ(call("r:heard"), "\"attached\"");
    EXPECT_EQ(call("r:registry"), "T");
    host::tell_command(host::command_event::will_start, "LINE");
    host::tell_command(host::command_event::ended, "LINE");
    host::tell_command(host::command_event::cancelled, "MOVE");
    host::tell_command(host::command_event::failed, "TRIM");
    host::tell_lisp(host::lisp_event::will_start, "(c:topic)");
    host::tell_lisp(host::lisp_event::ended);
    EXPECT_EQ(call("r:heard"), "\"start(LINE)end(LINE)cancel(MOVE)fail(TRIM)lisp((c:topic))lisp-end()\"");
    const host::module_command* command = host::find_module_command("listen");
    ASSERT_NE(command, nullptr);
    command->run();
    EXPECT_EQ(call("r:heard"), "\"[command]\"");
    EXPECT_EQ(call("r:leave"), "T");
    host::tell_command(host::command_event::will_start, "LINE");
    EXPECT_EQ(call("r:heard"), "\"\"");
    EXPECT_TRUE(host::unload_module("guest_reactor"));
    EXPECT_EQ(host::find_module_command("listen"), nullptr);
    host::tell_command(host::command_event::will_start, "LINE"); // nobody is there
}

TEST_F(Guests, SeveralLiveSideBySide)
{
    load("guest_entities");
    load("guest_reactor");
    EXPECT_EQ(host::loaded_modules().size(), 2u);
    EXPECT_EQ(call("e:point", acutBuildList(RTREAL, 1.0, RTREAL, 2.0, RTNONE)), "5100");
    EXPECT_TRUE(host::unload_module("guest_entities"));
    EXPECT_FALSE(host::is_external("e:point"));
    EXPECT_TRUE(host::is_external("r:heard"));
}

} // namespace
