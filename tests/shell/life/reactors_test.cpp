// What the module keeps of commands, LISP functions, saves and drawings that it hears of.
#include <gtest/gtest.h>

#include "common/text_buffer.h"
#include "common/tracking.h"
#include "host/core/reactors.h"
#include "shell/framework.h"
#include "shell/reactors.h"
#include "shell/status_pane.h"
#include "tests/shell/life/stand_ins.h"

namespace
{

class Commands : public testing::Test
{
protected:
    life_session session;
    ZentCommandReactor reactor;
};
using Lisp = Commands;
using Saves = Commands;
using Documents = Commands;

// ---- commands

TEST_F(Commands, AreTrackedUnlessTheirNameHoldsHelp)
{
    struct {
        const char* name;
        int tracked;
    } const cases[] = {{"LINE", 1},   {"HELP", 0},   {"help", 0}, {"'_.HELP", 0}, {"MYHELPER", 0},
                       {"myHelp", 0}, {"ZTHELP", 0}, {"HEL", 1},  {"", 1}};
    for (const auto& c : cases) {
        cmd_active = 0;
        reactor.commandWillStart(c.name);
        EXPECT_EQ(cmd_active, c.tracked) << c.name;
    }
    EXPECT_EQ(noted(), "");
}

TEST_F(Commands, AreLookedAtForTheirFirst254Characters)
{
    reactor.commandWillStart((std::string(251, 'X') + "HELP").c_str());
    EXPECT_EQ(cmd_active, 1);
    cmd_active = 0;
    reactor.commandWillStart((std::string(250, 'X') + "HELP").c_str());
    EXPECT_EQ(cmd_active, 0);
}

TEST_F(Commands, AHelpCommandLeavesTheFlagAsItIs)
{
    reactor.commandWillStart("LINE");
    reactor.commandWillStart("HELP");
    EXPECT_EQ(cmd_active, 1);
}

TEST_F(Commands, ThatBringADrawingGiveItVariablesOfItsOwn)
{
    for (const char* name : {"OPEN", "NEW"}) {
        reactor.commandWillStart(name);
        EXPECT_EQ(noted(), "set:LISPINIT=1") << name;
    }
    for (const char* name : {"open", "_OPEN", "OPENX", "QSAVE"}) {
        reactor.commandWillStart(name);
        EXPECT_EQ(noted(), "") << name;
    }
}

TEST_F(Commands, TheirStartLeavesTheNameOfTheFunction)
{
    text_set(current_function, "TOPIC");
    reactor.commandWillStart("LINE");
    EXPECT_STREQ(current_function, "TOPIC");
}

TEST_F(Commands, TheirEndIsTheEndOfTheNameUnlessAFunctionRuns)
{
    for (const bool cancelled : {false, true}) {
        for (const int running : {0, 1}) {
            text_set(current_function, "TOPIC");
            cmd_active = 1;
            lisp_active = running;
            cancelled ? reactor.commandCancelled("LINE") : reactor.commandEnded("LINE");
            EXPECT_EQ(cmd_active, 0);
            EXPECT_EQ(lisp_active, running);
            EXPECT_STREQ(current_function, running ? "TOPIC" : "");
        }
    }
    EXPECT_EQ(noted(), "");
}

TEST_F(Commands, ThatChangeTheDrawingsNameRefreshTheTitleAtTheirEnd)
{
    for (const char* name : {"OPEN", "NEW", "QSAVE", "SAVE", "SAVEAS"}) {
        reactor.commandEnded(name);
        EXPECT_EQ(noted(), "title") << name;
        reactor.commandCancelled(name);
        EXPECT_EQ(noted(), "") << name;
    }
    for (const char* name : {"save", "SAVEASX", "LINE", "_QSAVE"}) {
        reactor.commandEnded(name);
        EXPECT_EQ(noted(), "") << name;
    }
}

TEST_F(Commands, AFailingOneStaysActiveUntilTheNextOneEnds)
{
    reactor.commandWillStart("TRIM");
    reactor.commandFailed("TRIM");
    EXPECT_EQ(cmd_active, 1);
    reactor.commandWillStart("LINE");
    reactor.commandEnded("LINE");
    EXPECT_EQ(cmd_active, 0);
}

// ---- LISP functions

TEST_F(Lisp, FunctionIsNamedByItsLine)
{
    struct {
        const char *line, *name; // null: nothing changes
    } const cases[] = {
        {"(c:topic)", "TOPIC"},
        {"(C:TOPIC 1 2)", "TOPIC 1 2"},
        {"(c:topic", "TOPIC"},
        {"(c:)", ""},
        {"(C:help)", nullptr},
        {"(C:HELPER)", "HELPER"},
        {"(c:help 1)", "HELP 1"},
        {"(topic)", nullptr},
        {"(+ 1 (car '(2)) (c:topic))", nullptr}, // the first ")" ends the line
        {"", nullptr},
        {" (c:topic)", ":TOPIC"},
        {"(progn (c:topic))", "OGN (C:TOPIC"}, // three characters go, wherever the mark stands
    };
    for (const auto& c : cases) {
        lisp_active = 0;
        text_set(current_function, "before");
        reactor.lispWillStart(c.line);
        EXPECT_EQ(lisp_active, c.name ? 1 : 0) << c.line;
        EXPECT_STREQ(current_function, c.name ? c.name : "before") << c.line;
    }
    EXPECT_EQ(noted(), "");
}

TEST_F(Lisp, LineIsCutTo254Characters)
{
    reactor.lispWillStart(("(c:" + std::string(400, 'a') + ")").c_str());
    EXPECT_EQ(std::string(current_function), std::string(251, 'A'));
    lisp_active = 0;
    reactor.lispWillStart((std::string(252, ' ') + "(c:topic)").c_str());
    EXPECT_EQ(lisp_active, 0);
}

TEST_F(Lisp, EndIsTheEndOfTheNameUnlessACommandRuns)
{
    for (const bool cancelled : {false, true}) {
        for (const int running : {0, 1}) {
            text_set(current_function, "TOPIC");
            lisp_active = 1;
            cmd_active = running;
            cancelled ? reactor.lispCancelled() : reactor.lispEnded();
            EXPECT_EQ(lisp_active, 0);
            EXPECT_EQ(cmd_active, running);
            EXPECT_STREQ(current_function, running ? "TOPIC" : "");
        }
    }
}

TEST_F(Lisp, EndTakesTheMapMenuBackWhereTheHostHadIt)
{
    reactor.lispEnded();
    EXPECT_EQ(noted(), "");
    life.integers["had_map"] = 0;
    reactor.lispEnded();
    life.integers.clear();
    life.texts["had_map"] = "1";
    reactor.lispEnded();
    EXPECT_EQ(noted(), "");
    life.texts.clear();
    life.integers["had_map"] = 1;
    reactor.lispCancelled();
    EXPECT_EQ(noted(), "");
    reactor.lispEnded();
    EXPECT_EQ(noted(), "menu:Gacmap.pop2=-");
}

TEST_F(Lisp, AFunctionAndACommandInsideEachOtherKeepTheName)
{
    reactor.lispWillStart("(c:topic)");
    reactor.commandWillStart("LINE");
    reactor.commandEnded("LINE");
    EXPECT_STREQ(current_function, "TOPIC");
    EXPECT_EQ(lisp_active, 1);
    reactor.lispEnded();
    EXPECT_STREQ(current_function, "");
    EXPECT_EQ(lisp_active, 0);
}

// ---- saves

TEST_F(Saves, OfATrackedCommandStoreTheSettings)
{
    ZentSaveReactor saves;
    cmd_active = 1;
    saves.saveComplete(nullptr, "C:\\JOB\\SITE.DWG");
    EXPECT_EQ(noted(), "settings:C:\\JOB\\SITE.DWG");
}

TEST_F(Saves, ThatNoTrackedCommandStartedStoreNothing)
{
    ZentSaveReactor saves;
    life.integers["data2dwg"] = 1;
    for (const int active : {0, 2}) {
        cmd_active = active;
        saves.saveComplete(nullptr, "C:\\JOB\\SITE.DWG");
        EXPECT_EQ(noted(), "") << active;
    }
}

TEST_F(Saves, TakeTheDataDirectoryAlongWhereTheUserWantsIt)
{
    ZentSaveReactor saves;
    cmd_active = 1;
    struct {
        const char *path, *put;
    } const cases[] = {
        {"C:\\JOB\\SITE.DWG", " put:tmpdir$=C:\\JOB\\"},
        {"/job/site.dwg", " put:tmpdir$=/job/"},
        {"SITE.DWG", ""},
    };
    for (const auto& c : cases) {
        life.integers["data2dwg"] = 1;
        saves.saveComplete(nullptr, c.path);
        EXPECT_EQ(noted(), std::string("settings:") + c.path + c.put);
        life.integers["data2dwg"] = 0;
        saves.saveComplete(nullptr, c.path);
        EXPECT_EQ(noted(), std::string("settings:") + c.path);
    }
}

// ---- drawings

TEST_F(Documents, ThatComeAndGoSayNothing)
{
    ZentDocReactor documents;
    documents.documentCreated(nullptr);
    documents.documentDestroyed("site.dwg");
    EXPECT_EQ(noted(), "");
}

TEST_F(Documents, TheOneInFrontShowsItsPointsAndItsTitle)
{
    framework_set_up();
    status_text("x");
    noted();
    ZentDocReactor documents;
    struct {
        const char *occupied, *backsight, *shown;
    } const cases[] = {
        {"101", "102", "OP-101   BS-102"},
        {"101", "", "OP-101    "},
        {"", "102", "       BS-102"},
        {"", "", "        "},
    };
    for (const auto& c : cases) {
        life.texts = {{"ocptnm", c.occupied}, {"bsptnm", c.backsight}};
        documents.documentBecameCurrent(nullptr);
        EXPECT_EQ(noted(), std::string("text:31,") + c.shown + " title");
    }
    life.texts.clear();
    life.integers = {{"ocptnm", 7}};
    documents.documentBecameCurrent(nullptr);
    EXPECT_EQ(noted(), "text:31,OP-7     title");
}

TEST_F(Documents, LongNamesOfPointsAreShownWhole)
{
    framework_set_up();
    status_text("x");
    noted();
    ZentDocReactor documents;
    life.texts = {{"ocptnm", std::string(250, 'o')}, {"bsptnm", std::string(250, 'b')}};
    documents.documentBecameCurrent(nullptr);
    EXPECT_EQ(noted(), "text:31,OP-" + std::string(250, 'o') + "   BS-" + std::string(250, 'b') + " title");
}

// ---- their life

TEST_F(Documents, ReactorIsAddedAndRemovedOnce)
{
    doc_reactor_remove();
    EXPECT_EQ(noted(), "");
    doc_reactor_add();
    doc_reactor_remove();
    doc_reactor_remove();
    EXPECT_EQ(noted(), "documents.add documents.remove");
}

TEST_F(Commands, EditorReactorsAreTheSameForEachDrawing)
{
    editor_reactors_add();
    editor_reactors_add();
    host::tell_command(host::command_event::ended, "QSAVE");
    EXPECT_EQ(noted(), "title"); // once
    cmd_active = 1;
    host::tell_saved(nullptr, "/a/b.dwg");
    EXPECT_EQ(noted(), "settings:/a/b.dwg");
    editor_reactors_remove();
    host::tell_command(host::command_event::ended, "QSAVE");
    host::tell_saved(nullptr, "/a/b.dwg");
    EXPECT_EQ(noted(), "");
}

} // namespace
