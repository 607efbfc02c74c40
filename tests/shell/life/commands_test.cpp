// The commands that the module gives to the host.
#include <gtest/gtest.h>

#include <string>

#include "host/core/reactors.h"
#include "shell/commands.h"
#include "tests/shell/life/stand_ins.h"

namespace
{

class HostCommands : public testing::Test
{
protected:
    void SetUp() override { commands_register(); }
    void run(const char* name)
    {
        const host::module_command* found = host::find_module_command(name);
        ASSERT_NE(found, nullptr) << name;
        found->run();
    }
    life_session session;
};

TEST_F(HostCommands, HaveTheirFlagsAndGoAsAGroup)
{
    struct {
        const char* name;
        int flags;
    } const cases[] = {{"ZTHELP", 1}, {"ZTCLOSE", 0}, {"ZTOPEN", 0x200000}};
    for (const auto& c : cases) {
        const host::module_command* found = host::find_module_command(c.name);
        ASSERT_NE(found, nullptr) << c.name;
        EXPECT_EQ(found->flags, c.flags) << c.name;
    }
    commands_remove();
    for (const auto& c : cases)
        EXPECT_EQ(host::find_module_command(c.name), nullptr) << c.name;
}

TEST_F(HostCommands, ZthelpIsHelp)
{
    run("ZTHELP");
    EXPECT_EQ(noted(), "help");
}

TEST_F(HostCommands, ZtcloseClosesAModifiedDrawingInOneRound)
{
    life.documents = {1, 2, 3};
    life.current = 2;
    life.modified = 1;
    run("ZTCLOSE");
    EXPECT_EQ(noted(), "get:DBMOD execute close:1 pump close:3 pump close:2");
}

TEST_F(HostCommands, ZtcloseOfAnUnchangedDrawingGoesTwoRounds)
{
    life.documents = {1, 2};
    life.current = 1;
    run("ZTCLOSE");
    EXPECT_EQ(noted(), "get:DBMOD execute close:2 pump close:1 execute");
}

TEST_F(HostCommands, ZtcloseGoesOneRoundWhereTheHostDoesNotTellOfChanges)
{
    life.modified = -1;
    run("ZTCLOSE");
    EXPECT_EQ(noted(), "get:DBMOD execute close:1");
}

constexpr const char* NOT_SET = "Please set 'opendwgname' to name of the drawing to be open.\n";

TEST_F(HostCommands, ZtopenWithoutANameSaysSoAndOpensNothing)
{
    for (const bool application : {true, false}) {
        life.printed.clear();
        life.application_context = application;
        run("ZTOPEN");
        EXPECT_EQ(life.printed, NOT_SET);
        EXPECT_EQ(noted(), "");
    }
}

TEST_F(HostCommands, ZtopenOpensInApplicationContext)
{
    life.texts["opendwgname"] = "C:/JOB/SITE.DWG";
    life.application_context = true;
    run("ZTOPEN");
    EXPECT_EQ(noted(), "open:C:/JOB/SITE.DWG");
}

TEST_F(HostCommands, ZtopenInADrawingLeavesItForTheOpening)
{
    life.texts["opendwgname"] = "C:/JOB/SITE.DWG";
    run("ZTOPEN");
    EXPECT_EQ(noted(), "execute open:C:/JOB/SITE.DWG");
    life.current = 0;
    run("ZTOPEN");
    EXPECT_EQ(noted(), "");
}

TEST_F(HostCommands, ZtopenOpensNothingOutsideApplicationContext)
{
    life.texts["opendwgname"] = "C:/JOB/SITE.DWG";
    life.steps_run_in_application_context = false;
    run("ZTOPEN");
    EXPECT_EQ(noted(), "execute");
    EXPECT_EQ(life.printed, "");
}

} // namespace
