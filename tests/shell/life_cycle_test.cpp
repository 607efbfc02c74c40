// The module in the real host from its load to its unload: what it takes and gives back, what it does with
// windows, saves and functions as a user sees them.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "common/directories.h"
#include "common/text_buffer.h"
#include "common/tracking.h"
#include "host/core/console.h"
#include "host/core/document.h"
#include "host/core/heap.h"
#include "host/core/module.h"
#include "host/core/reactors.h"
#include "host/core/session.h"
#include "host/core/trace.h"
#include "host/dialogs/framework.h"
#include "host/dialogs/message_loop.h"
#include "host/dialogs/windows.h"
#include "hostapi/ads.h"
#include "hostapi/editor.h"
#include "launch/help.h"
#include "settings/startup_wizard.h"
#include "shell/screen_marks.h"
#include "symbols/preview_tiles.h"
#include "tests/shell/module_session.h"

namespace
{

// The names of a trace, a line each; with what tells lines of one name apart.
std::string names_of(const std::string& trace)
{
    std::istringstream lines(trace);
    std::string out, line;
    while (std::getline(lines, line)) {
        std::istringstream words(line);
        std::string name, first, second;
        words >> name >> first >> second;
        out += name;
        if (name == "acrxEntryPoint" || name == "SetWindowsHookExA")
            out += " " + first;
        else if (name == "addCommand")
            out += " " + second;
        out += "\n";
    }
    return out;
}

std::string traced(module_session& session, void (*work)())
{
    const std::string file = session.directory() + "trace";
    host::trace_to(file);
    work();
    host::trace_to("");
    return names_of(read_text(file));
}

void load()
{
    ASSERT_TRUE(host::load_module(acrxEntryPoint, "zentutil"));
}
void unload()
{
    ASSERT_TRUE(host::unload_module("zentutil"));
}

struct held_things {
    std::size_t blocks = host::heap_live_blocks();
    int extensions = host::dialogs::extension_count(), libraries = host::dialogs::library_count();
    int hooks = host::dialogs::hook_count(), timers = host::dialogs::timer_count();
    int windows = host::dialogs::window_count();
    bool operator==(const held_things&) const = default;
};

// ---- load and unload

TEST(LifeCycle, UnloadGivesBackAllThatTheModuleTook)
{
    module_session session;
    unload();
    const held_things before;
    session.printed();
    for (int round = 0; round < 3; ++round) {
        load();
        EXPECT_EQ(host::dialogs::hook_count(), before.hooks + 2);
        EXPECT_EQ(host::dialogs::extension_count(), before.extensions + 1);
        EXPECT_EQ(host::dialogs::library_count(), before.libraries + 1);
        session.lisp("(cf:zentutil \"\" 45 \"text\")");
        session.lisp("(cf:zentutil \"\" 46 \"on\" 1 '(1.0 2.0 0.0))");
        EXPECT_EQ(host::dialogs::window_count(), before.windows + 1);
        unload();
        EXPECT_TRUE(held_things() == before) << round;
        for (const char* name : {"ZTHELP", "ZTCLOSE", "ZTOPEN"})
            EXPECT_EQ(host::find_module_command(name), nullptr) << name;
    }
    host::tell_command(host::command_event::will_start, "LINE"); // nobody listens
    EXPECT_EQ(cmd_active, 0);
    EXPECT_EQ(session.printed(), "");
    load();
}

constexpr const char* DEFINED = //
    "acedDefun\nacedDefun\nacedDefun\nacedDefun\nacedDefun\nacedDefun\nacedDefun\n";
constexpr const char* UNDEFINED = //
    "acedUndef\nacedUndef\nacedUndef\nacedUndef\nacedUndef\nacedUndef\nacedUndef\n";

// The wizard looks for use_startwiz, psname comes last; reads of LISP variables are not traced.
TEST(LifeCycle, LoadRunsItsStepsInOrder)
{
    module_session session;
    unload();
    EXPECT_EQ(traced(session, load), "acrxUnlockApplication\n"
                                     "registerAppMDIAware\n"
                                     "AcApDocManager::addReactor\n"
                                     "AfxInitExtensionModule\n"
                                     "CDynLinkLibrary\n"
                                     "SetWindowsHookExA 4\n"
                                     "SetWindowsHookExA -1\n"
                                     "addCommand \"ZTHELP\"\n"
                                     "addCommand \"ZTCLOSE\"\n"
                                     "addCommand \"ZTOPEN\"\n" +
                                         std::string(DEFINED) +
                                         "acrxEntryPoint 1\n"
                                         "AcEditor::addReactor\n"
                                         "AcEditor::addReactor\n" +
                                         DEFINED + "acrxEntryPoint 3\n");
}

TEST(LifeCycle, UnloadRunsItsStepsInOrder)
{
    module_session session;
    session.lisp("(cf:zentutil \"\" 45 \"text\")");
    EXPECT_EQ(traced(session, unload), "acrxUnlockApplication\n" + std::string(UNDEFINED) +
                                           "acrxEntryPoint 4\n"
                                           "acrxUnlockApplication\n"
                                           "AcEditor::removeReactor\n"
                                           "AcEditor::removeReactor\n"
                                           "AcApDocManager::removeReactor\n"
                                           "~CDynLinkLibrary\n"
                                           "AfxTermExtensionModule\n"
                                           "UnhookWindowsHookEx\n"
                                           "UnhookWindowsHookEx\n"
                                           "removeGroup\n"
                                           "DestroyWindow\n"
                                           "acrxEntryPoint 2\n");
}

TEST(LifeCycle, WhatRanAtUnloadIsForgotten)
{
    module_session session;
    host::tell_lisp(host::lisp_event::will_start, "(c:topic)");
    host::tell_command(host::command_event::will_start, "LINE");
    EXPECT_STREQ(current_function, "TOPIC");
    unload();
    EXPECT_EQ(cmd_active + lisp_active + help_pending, 0);
    EXPECT_STREQ(current_function, "");
}

TEST(LifeCycle, LoadEmptiesTheNameAndReadsTheSymbolDirectory)
{
    module_session session;
    unload();
    text_set(current_function, "OLD");
    text_set(symbol_dir, "old");
    session.lisp("(setq psname \"C:/SYMBOLS/\")");
    load();
    EXPECT_STREQ(current_function, "");
    EXPECT_STREQ(symbol_dir, "C:/SYMBOLS/");
    unload();
    session.lisp("(setq psname nil)");
    load();
    EXPECT_STREQ(symbol_dir, "");
}

TEST(LifeCycle, LoadLinksTheWizardToHelpAndPreviews)
{
    module_session session;
    EXPECT_EQ(wizard_calls.help, help_show);
    EXPECT_EQ(wizard_calls.tile_preview, symbol_tile_preview);
}

TEST(LifeCycle, GoesOnWithoutTheFramework)
{
    module_session session;
    unload();
    host::dialogs::refuse_extensions(true);
    load();
    host::dialogs::refuse_extensions(false);
    EXPECT_NE(host::find_module_command("ZTOPEN"), nullptr);
    EXPECT_EQ(session.lisp("(cf:zentutil \"\" 51 \" A \")"), "\"A\"");
    EXPECT_EQ(session.traced("(cf:zentutil \"\" 45 \"text\")").find("CreateWindowExA"), std::string::npos);
}

// ---- operation 45

TEST(Operation45, ShowsItsTextInTheStatusBar)
{
    module_session session;
    const std::string made = session.traced("(cf:zentutil \"\" 45 \"OP-101\")");
    EXPECT_NE(made.find("CreateWindowExA \"STATIC\" \"OP-101\" 1342177280"), std::string::npos) << made;
    const std::string changed = session.traced("(cf:zentutil \"\" 45 \"OP-102   BS-7\")");
    EXPECT_EQ(changed.find("CreateWindowExA"), std::string::npos);
    EXPECT_NE(changed.find("\"OP-102   BS-7\" -> 1"), std::string::npos) << changed;
    for (const char* call : {"(cf:zentutil \"\" 45)", "(cf:zentutil \"\" 45 \"\")", "(cf:zentutil \"\" 45 7)"})
        EXPECT_EQ(session.traced(call), "") << call;
}

TEST(Operation45, ANarrowStatusBarHasNoPane)
{
    module_session session;
    const int width = host::dialogs::find_window(host::dialogs::STATUS_BAR)->width;
    const int height = host::dialogs::find_window(host::dialogs::STATUS_BAR)->height;
    host::dialogs::resize_window(host::dialogs::STATUS_BAR, 799, height);
    EXPECT_EQ(session.traced("(cf:zentutil \"\" 45 \"text\")"), "");
    host::dialogs::resize_window(host::dialogs::STATUS_BAR, width, height);
    EXPECT_NE(session.traced("(cf:zentutil \"\" 45 \"text\")"), "");
}

// ---- operation 46

// The colour under the middle of a mark at a world point, when the window has been painted anew.
COLORREF drawn_at(double x, double y)
{
    InvalidateRect(host::dialogs::DRAWING_WINDOW, nullptr, 1);
    host::dialogs::paint_window(host::dialogs::DRAWING_WINDOW);
    const ads_point at = {x, y, 0.0};
    int column = 0, row = 0;
    EXPECT_NE(acedCoordFromWorldToPixel(2, at, &column, &row), 0);
    return host::dialogs::window_pixel(host::dialogs::DRAWING_WINDOW, column, row);
}

constexpr COLORREF CYAN = 0xFFFF00, YELLOW = 0x00FFFF;

class Operation46 : public testing::Test
{
protected:
    COLORREF drawn_after(const char* call)
    {
        EXPECT_EQ(session.lisp(call), "nil");
        return drawn_at(3.0, 4.0);
    }
    module_session session;
};

TEST_F(Operation46, SetsAMarkAtAPoint)
{
    const COLORREF nothing = drawn_at(3.0, 4.0);
    // Column and row 7 of each.
    EXPECT_NE(nothing, CYAN);
    EXPECT_EQ(drawn_after("(cf:zentutil \"\" 46 \"on\" 1 '(3.0 4.0 99.0))"), CYAN);
    EXPECT_EQ(drawn_after("(cf:zentutil \"\" 46 \"on\" 2 '(3.0 4.0 0.0))"), YELLOW);
}

TEST_F(Operation46, ClearsAMarkAndAsksForARepaint)
{
    EXPECT_EQ(session.traced("(cf:zentutil \"\" 46 \"off\" -1)"), "");
    for (const char* mark : {"1", "2"}) {
        const std::string n = mark;
        drawn_after(("(cf:zentutil \"\" 46 \"on\" " + n + " '(3.0 4.0 0.0))").c_str());
        const std::string other = n == "1" ? "2" : "1";
        EXPECT_EQ(session.traced("(cf:zentutil \"\" 46 \"off\" -" + other + ")"), "");
        EXPECT_NE(session.traced("(cf:zentutil \"\" 46 \"off\" -" + n + ")").find("InvalidateRect 3"),
                  std::string::npos);
        EXPECT_EQ(session.traced("(cf:zentutil \"\" 46 \"off\" -" + n + ")"), "");
    }
}

TEST_F(Operation46, DoesNothingWithoutItsText)
{
    for (const char* call :
         {"(cf:zentutil \"\" 46)", "(cf:zentutil \"\" 46 \"\" 1 '(3.0 4.0 0.0))",
          "(cf:zentutil \"\" 46 5 1 '(3.0 4.0 0.0))", "(cf:zentutil \"dir\" 46 \"\" 1 '(3.0 4.0 0.0))"})
        EXPECT_NE(drawn_after(call), CYAN) << call;
    EXPECT_EQ(drawn_after("(cf:zentutil \"\" 46 \"on\" 1 '(3.0 4.0 0.0))"), CYAN);
    EXPECT_EQ(session.traced("(cf:zentutil \"\" 46 \"\" -1)"), "");
}

TEST_F(Operation46, TakesPointsInSpaceAndItsTwoMarksOnly)
{
    for (const char* call :
         {"(cf:zentutil \"\" 46 \"on\" 1)", "(cf:zentutil \"\" 46 \"on\" 1 '(3.0 4.0))",
          "(cf:zentutil \"\" 46 \"on\" 1 3.0 4.0)", "(cf:zentutil \"\" 46 \"on\" 0 '(3.0 4.0 0.0))",
          "(cf:zentutil \"\" 46 \"on\" 3 '(3.0 4.0 0.0))", "(cf:zentutil \"\" 46 \"off\" -3)",
          "(cf:zentutil \"\" 46 \"off\" -32768)", "(cf:zentutil \"\" 46 \"on\")"})
        EXPECT_NE(drawn_after(call), CYAN) << call;
}

// ---- messages in the real loops

// PATH is one directory with the system's own behind it; in it a script that is called sk.exe, if it has text.
class keyboard_on_path
{
public:
    keyboard_on_path(const std::string& directory, const std::string& script) : before_(std::getenv("PATH"))
    {
        std::filesystem::create_directory(directory);
        if (!script.empty()) {
            const std::string file = directory + "/sk.exe";
            write_text(file, "#!/bin/sh\n" + script);
            std::filesystem::permissions(file, std::filesystem::perms::owner_all);
        }
        setenv("PATH", (directory + ":/usr/bin:/bin").c_str(), 1);
    }
    ~keyboard_on_path() { setenv("PATH", before_.c_str(), 1); }
    keyboard_on_path(const keyboard_on_path&) = delete;
    keyboard_on_path& operator=(const keyboard_on_path&) = delete;

private:
    std::string before_;
};

// Whether another program has written a file of that text; it is given five seconds.
bool comes_to_hold(const std::string& file, const std::string& text)
{
    for (int tries = 0; tries < 500 && read_text(file) != text; ++tries)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    return read_text(file) == text;
}

TEST(PenInput, StartsNoKeyboardWhereThereIsNone)
{
    module_session session;
    const keyboard_on_path nothing(session.directory() + "tools", "");
    session.printed();
    EXPECT_EQ(SendMessageA(host::dialogs::DRAWING_WINDOW, 902, 22, 0), 0);
    EXPECT_EQ(session.printed(), "");
    SendMessageA(host::dialogs::DRAWING_WINDOW, 902, 23, 0);
    EXPECT_EQ(session.printed(), "Error: Keyboard could not start\n");
    EXPECT_EQ(host::dialogs::focused_window(), host::dialogs::DRAWING_WINDOW);
}

TEST(PenInput, StartsTheKeyboardThatStandsOnThePath)
{
    module_session session;
    const std::string started = session.directory() + "started";
    const keyboard_on_path keyboard(session.directory() + "tools", "echo yes > " + started + "\n");
    session.printed();
    SendMessageA(host::dialogs::DRAWING_WINDOW, 902, 23, 0);
    EXPECT_EQ(session.printed(), "Keyboard started\n");
    EXPECT_EQ(host::dialogs::focused_window(), host::dialogs::DRAWING_WINDOW);
    EXPECT_TRUE(comes_to_hold(started, "yes\n"));
}

// ---- saves

class Save : public testing::Test
{
protected:
    Save() { session.name_drawing(); }
    bool has_settings() { return std::filesystem::exists(session.directory() + "site.ini"); }
    std::string in_session(const char* name) { return session.directory() + name; }
    module_session session;
};

TEST_F(Save, OfACommandStoresSettings)
{
    session.lisp("(setq crdfile \"JOB.CRD\") (command \"_.QSAVE\")");
    EXPECT_NE(read_text(in_session("site.ini")).find("crdfile=JOB.CRD\n"), std::string::npos);
    EXPECT_NE(session.lisp("(tblsearch \"BLOCK\" \"ZENTSETV\")"), "nil");
    EXPECT_EQ(cmd_active, 0);
}

TEST_F(Save, ThatNoCommandStartedStoresNone)
{
    host::tell_saved(nullptr, in_session("site.dwg"));
    EXPECT_FALSE(has_settings());
    host::tell_command(host::command_event::will_start, "HELPSAVE");
    host::tell_saved(nullptr, in_session("site.dwg"));
    EXPECT_FALSE(has_settings());
    host::tell_command(host::command_event::will_start, "QSAVE");
    host::tell_saved(nullptr, in_session("site.dwg"));
    EXPECT_TRUE(has_settings());
}

TEST_F(Save, AfterAFailedCommandStillCountsAsTracked)
{
    host::tell_command(host::command_event::will_start, "TRIM");
    host::tell_command(host::command_event::failed, "TRIM");
    EXPECT_EQ(cmd_active, 1);
    host::tell_saved(nullptr, in_session("site.dwg"));
    EXPECT_TRUE(has_settings());
}

TEST_F(Save, TakesTheDataDirectoryAlong)
{
    std::filesystem::create_directory(in_session("new"));
    session.lisp("(setq tmpdir$ \"old\")");
    session.lisp("(command \"_.QSAVE\")");
    EXPECT_EQ(session.lisp("tmpdir$"), "\"old\"");
    session.lisp("(setq data2dwg 1)");
    session.lisp("(command \"_.QSAVE\")");
    const std::string directory = session.lisp("tmpdir$");
    EXPECT_NE(directory.find(session.directory().substr(0, 6)), std::string::npos) << directory;
    EXPECT_EQ(directory, session.lisp("(getvar \"DWGPREFIX\")"));
}

TEST_F(Save, OfACopyElsewhereStoresSettingsBesideTheCopy)
{
    std::filesystem::create_directory(in_session("new"));
    session.lisp("(setq data2dwg 1 tmpdir$ \"old\")");
    session.lisp("(command \"_.SAVE\" \"" + in_session("new/copy") + "\")");
    EXPECT_TRUE(std::filesystem::exists(in_session("new/copy.ini")));
    EXPECT_FALSE(has_settings());
    EXPECT_EQ(session.lisp("tmpdir$"), "\"" + in_session("new/") + "\"");
    EXPECT_EQ(session.lisp("(getvar \"DWGNAME\")"), "\"site.dwg\"");
}

// ---- functions and commands

TEST(Tracking, SeesFunctionsAndCommandsOfPrograms)
{
    module_session session;
    host::tell_lisp(host::lisp_event::will_start, "(c:topic)");
    session.lisp("(command \"_.LINE\" '(0.0 0.0) '(1.0 0.0) \"\")");
    EXPECT_EQ(cmd_active, 0);
    EXPECT_EQ(lisp_active, 1);
    EXPECT_STREQ(current_function, "TOPIC");
    host::tell_lisp(host::lisp_event::ended);
    EXPECT_STREQ(current_function, "");
}

} // namespace
