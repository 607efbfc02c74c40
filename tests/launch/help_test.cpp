// Which help is shown, and the control that shows the product's.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "common/directories.h"
#include "common/text_buffer.h"
#include "common/tracking.h"
#include "hostapi/ads.h"
#include "hostapi/windows.h"
#include "launch/help.h"
#include "tests/fakes/fake_host.h"

namespace
{

using lines = std::vector<std::string>;

constexpr const char* CONTROL = "HKCR\\CLSID\\{ADB880A6-D8FF-11CF-9377-00AA003B7A11}\\InprocServer32|";
constexpr std::uint32_t TEXT = 1, EXPANDABLE_TEXT = 2, NUMBER = 4;
constexpr HWND HELP_WINDOW = 77;

lines shown; // what the control was asked for

HWND note_help(HWND caller, const char* file, unsigned command, std::uintptr_t data)
{
    shown.push_back(std::to_string(caller) + " " + file + " " + std::to_string(command) + " " +
                    std::to_string(data));
    return HELP_WINDOW;
}

void* control_entry()
{
    return reinterpret_cast<void*>(note_help);
}

struct help_session : host_session {
    help_session()
    {
        shown.clear();
        held_help_control = {};
        cmd_active = lisp_active = help_pending = 0;
        current_function[0] = symbol_dir[0] = lsp_dir[0] = '\0';
        fake.lisp["psname"] = text_value(directory());
        fake.libraries["hhctrl.ocx"][14] = control_entry();
        write_xrf("POINTER|Pointer tool|pointer.html\nZTEDIT|Editor|edit.html\n");
    }
    ~help_session() { cmd_active = lisp_active = help_pending = 0; }

    void write_xrf(const std::string& text) { write_text(directory() + "help.xrf", text); }
    void run_function(const std::string& name)
    {
        lisp_active = 1;
        text_set(current_function, name);
    }
    std::string whole() { return "0 " + directory() + "zentrik.chm 0 0"; }
    std::string topic(const std::string& name) { return "0 " + directory() + "zentrik.chm::/" + name + " 0 0"; }
    // The dialog, answered by `ok` with the tiles as given.
    void offer_dialog(const std::string& path, const std::string& zent, const std::string& acad)
    {
        fake.dialogs[path] = {"select_help"};
        fake.person = [zent, acad] {
            fake.tiles["zent"] = zent;
            fake.tiles["acad"] = acad;
            press("ok");
        };
    }
};

TEST(Help, RunningFunctionGetsItsTopic)
{
    help_session session;
    session.run_function("POINTER");
    help_show();
    EXPECT_EQ(shown, lines{session.topic("pointer.html")});
    EXPECT_EQ(std::string(symbol_dir), session.directory()) << "read from psname";
    EXPECT_TRUE(session.heap_is_as_before());
}

TEST(Help, SymbolDirectoryThatIsSetIsKept)
{
    help_session session;
    text_set(symbol_dir, session.directory());
    fake.lisp["psname"] = text_value("/elsewhere/");
    session.run_function("POINTER");
    help_show();
    EXPECT_EQ(shown, lines{session.topic("pointer.html")});
}

TEST(Help, MarkInFrontOfTheNameIsLeftOut)
{
    const std::pair<const char*, bool> cases[] = {
        {"+ZTEDIT", true}, {"-ZTEDIT", true}, {"ZTEDIT", true}, {"++ZTEDIT", false}, {"=ZTEDIT", false}};
    for (const auto& [name, found] : cases) {
        help_session session;
        session.run_function(name);
        help_show();
        EXPECT_EQ(shown, lines{found ? session.topic("edit.html") : session.whole()}) << name;
    }
}

TEST(Help, LastOfTwoLinesWithTheNameWins)
{
    help_session session;
    session.write_xrf("POINTER||first.html\nPLREAD||other.html\nPOINTER||second.html\nPOINTER|no topic\n");
    session.run_function("POINTER");
    help_show();
    EXPECT_EQ(shown, lines{session.topic("second.html")});
}

struct record {
    const char* what;
    std::string xrf, topic; // empty: the whole file
};

TEST(Help, RecordsCountWithAllThreeFieldsAndTheExactName)
{
    const record cases[] = {
        {"blanks and carriage returns at the ends", "  POINTER|x|a.html  \r\n", "a.html"},
        {"no line feed at the end", "POINTER|x|a.html", "a.html"},
        {"empty second field", "POINTER||a.html\n", "a.html"},
        {"a fourth field is passed over", "POINTER|x|a.html|b\n", "a.html"},
        {"two fields", "POINTER|a.html\n", ""},
        {"empty topic", "POINTER|x|\n", ""},
        {"no field", "POINTER\n", ""},
        {"other case", "pointer|x|a.html\n", ""},
        {"longer name", "POINTERS|x|a.html\n", ""},
        {"shorter name", "POINT|x|a.html\n", ""},
        {"blank behind the name", "POINTER |x|a.html\n", ""},
        {"empty file", "", ""},
    };
    for (const record& c : cases) {
        help_session session;
        session.write_xrf(c.xrf);
        session.run_function("POINTER");
        help_show();
        EXPECT_EQ(shown, lines{c.topic.empty() ? session.whole() : session.topic(c.topic)}) << c.what;
    }
}

TEST(Help, RecordsAreReadInPiecesOf252Characters)
{
    help_session session;
    const std::string head = "POINTER|x|", whole = head + std::string(252 - head.size(), 't');
    session.write_xrf(whole + "POINTER|x|piece.html\n");
    session.run_function("POINTER");
    help_show();
    EXPECT_EQ(shown, lines{session.topic("piece.html")});
    shown.clear();
    session.write_xrf(whole + "\n");
    help_show();
    EXPECT_EQ(shown, lines{session.topic(whole.substr(head.size()))});
}

TEST(Help, FunctionThatIsNotListedOpensTheWholeFile)
{
    help_session session;
    session.run_function("NOBODY");
    help_show();
    EXPECT_EQ(shown, lines{session.whole()});
    EXPECT_TRUE(fake.alerts.empty());
}

TEST(Help, MissingCrossReferenceIsToldInAFunction)
{
    help_session session;
    text_set(symbol_dir, "/nowhere/");
    session.run_function("POINTER");
    cmd_active = 1; // the function counts, not the command that it runs
    help_show();
    EXPECT_EQ(fake.alerts, lines{"Zentrik Help is not installed."});
    EXPECT_TRUE(shown.empty());
    EXPECT_TRUE(fake.calls.empty());
}

TEST(Help, HostCommandGetsTheHostsHelp)
{
    help_session session;
    cmd_active = 1;
    help_show();
    EXPECT_EQ(fake.calls, lines{"SendMessageA 5 74 ['_.HELP\n]"});
    fake.calls.clear();
    help_pending = -1; // from the hook: no command can be typed
    help_show();
    EXPECT_EQ(fake.calls, lines{"acedHelp nil [] 261"});
    EXPECT_TRUE(shown.empty());
}

TEST(Help, DialogAsksWhenNothingIsRunning)
{
    struct answer {
        const char *zent, *acad;
        bool product;
        lines calls;
    };
    const answer cases[] = {
        {"1", "0", true, {"LoadLibraryA hhctrl.ocx", "GetProcAddress 14"}},
        {"0", "1", false, {"SendMessageA 5 74 ['_.HELP\n]"}},
        {"1", "1", true, {"LoadLibraryA hhctrl.ocx", "GetProcAddress 14"}},
        {"0", "0", false, {}},
    };
    for (const answer& c : cases) {
        help_session session;
        session.offer_dialog("zentenvr.dcl", c.zent, c.acad);
        help_show();
        EXPECT_EQ(fake.calls, c.calls) << c.zent << c.acad;
        EXPECT_EQ(shown, c.product ? lines{session.whole()} : lines{}) << c.zent << c.acad;
        EXPECT_EQ(fake.loaded_files, 0);
        EXPECT_TRUE(fake.unknown_tiles.empty());
    }
}

TEST(Help, DialogOffersTheProductsHelpFirst)
{
    help_session session;
    session.offer_dialog("zentenvr.dcl", "", "");
    std::string offered;
    fake.person = [&offered] { offered = fake.tiles["zent"]; }; // and closes it
    help_show();
    EXPECT_EQ(offered, "1");
    EXPECT_TRUE(shown.empty());
    EXPECT_TRUE(fake.calls.empty());
    EXPECT_EQ(fake.loaded_files, 0);
}

TEST(Help, ProductsHelpChosenWithoutItsFilesIsTold)
{
    help_session session;
    text_set(symbol_dir, "/nowhere/");
    session.offer_dialog("zentenvr.dcl", "1", "0");
    help_show();
    EXPECT_EQ(fake.alerts, lines{"Zentrik Help is not installed."});
}

TEST(Help, DialogFileIsLookedForByTheVariableWithoutItsDollarSign)
{
    help_session session;
    fake.lisp["lspdir$"] = text_value("/dollar/");
    session.offer_dialog("zentenvr.dcl", "1", "0");
    help_show();
    EXPECT_EQ(shown, lines{session.whole()}) << "by its bare name";
    EXPECT_STREQ(lsp_dir, "");

    shown.clear();
    fake.dialogs.clear();
    fake.lisp["lspdir"] = text_value("/plain/");
    session.offer_dialog("/plain/zentenvr.dcl", "1", "0");
    help_show();
    EXPECT_EQ(shown, lines{session.whole()});
    EXPECT_STREQ(lsp_dir, "/plain/");
}

TEST(Help, NothingHappensWithoutTheDialog)
{
    help_session session;
    help_show(); // no file
    fake.dialogs["zentenvr.dcl"] = {"another"};
    help_show(); // no such dialog in it
    EXPECT_EQ(fake.loaded_files, 0);
    EXPECT_TRUE(shown.empty());
    EXPECT_TRUE(fake.calls.empty());
    EXPECT_TRUE(fake.alerts.empty());
}

TEST(Help, DefaultCrossReferenceNameIsKept)
{
    EXPECT_STREQ(cross_reference_help, "zentr.chm");
}

// ---- the control ------------------------------------------------------------------------------

TEST(HtmlHelp, HandsItsArgumentsOnAndAnswersTheControlsResult)
{
    help_session session;
    EXPECT_EQ(html_help(3, "a.chm::/b.html", 15, 9), HELP_WINDOW);
    EXPECT_EQ(shown, lines{"3 a.chm::/b.html 15 9"});
}

TEST(HtmlHelp, LoadsTheRegisteredLibraryOnce)
{
    help_session session;
    fake.registry[CONTROL] = {TEXT, "C:\\WINNT\\system32\\hhctrl.ocx"};
    fake.libraries["C:\\WINNT\\system32\\hhctrl.ocx"][14] = control_entry();
    html_help(0, "a.chm", 0, 0);
    html_help(0, "b.chm", 0, 0);
    EXPECT_EQ(fake.calls, (lines{"LoadLibraryA C:\\WINNT\\system32\\hhctrl.ocx", "GetProcAddress 14"}));
    EXPECT_EQ(shown.size(), 2u);
    EXPECT_EQ(fake.open_keys, 0);
}

TEST(HtmlHelp, RegisteredPathHasAtMost260Bytes)
{
    struct value {
        std::uint32_t type;
        std::string path;
        bool used;
    };
    const value cases[] = {{TEXT, std::string(259, 'p'), true},
                           {TEXT, std::string(260, 'p'), false},
                           {EXPANDABLE_TEXT, "p", true},
                           {NUMBER, "p", false},
                           {TEXT, "", false}};
    for (const value& c : cases) {
        help_session session;
        fake.registry[CONTROL] = {c.type, c.path};
        html_help(0, "a.chm", 0, 0);
        const std::string registered = "LoadLibraryA " + c.path;
        EXPECT_EQ(fake.calls.front() == registered, c.used) << c.path.size();
        EXPECT_EQ(shown.size(), 1u) << "the library of that name does as well";
        EXPECT_EQ(fake.open_keys, 0);
    }
}

TEST(HtmlHelp, MissingLibraryIsLookedForOnce)
{
    help_session session;
    fake.registry[CONTROL] = {TEXT, "C:\\gone.ocx"};
    fake.libraries.clear();
    EXPECT_EQ(html_help(0, "a.chm", 0, 0), 0u);
    EXPECT_EQ(fake.calls, (lines{"LoadLibraryA C:\\gone.ocx", "LoadLibraryA hhctrl.ocx"}));
    fake.libraries["hhctrl.ocx"][14] = control_entry(); // too late
    EXPECT_EQ(html_help(0, "a.chm", 0, 0), 0u);
    EXPECT_EQ(fake.calls.size(), 2u);
    EXPECT_TRUE(shown.empty());
}

TEST(HtmlHelp, HeldLibraryIsUsedAfterAFailure)
{
    help_session session;
    fake.libraries["hhctrl.ocx"].clear();
    EXPECT_EQ(html_help(0, "a.chm", 0, 0), 0u);
    EXPECT_EQ(html_help(0, "a.chm", 0, 0), 0u);
    EXPECT_TRUE(held_help_control.failed);
    fake.libraries["hhctrl.ocx"][14] = control_entry();
    EXPECT_EQ(html_help(0, "a.chm", 0, 0), HELP_WINDOW);
    EXPECT_EQ(fake.calls, (lines{"LoadLibraryA hhctrl.ocx", "GetProcAddress 14", "GetProcAddress 14",
                                 "GetProcAddress 14"}));
}

} // namespace
