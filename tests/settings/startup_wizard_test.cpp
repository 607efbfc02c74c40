// The start wizard: when it comes, its two pages, and what it hands the host at its end.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "common/directories.h"
#include "common/tracking.h"
#include "hostapi/ads.h"
#include "settings/startup_wizard.h"
#include "tests/fakes/fake_host.h"

namespace
{

using texts = std::vector<std::string>;

constexpr std::uint32_t TEXT = 1;
constexpr int YES = 6;
const std::string HOST = "Software\\Autodesk\\AutoCAD\\R15.0";
const std::string WHITE_PICTURE = "image: 0 0 120 65 7";
const texts NO_TEXTS;

std::string command(const std::string& text) // as it is handed over, terminator and all
{
    return text + "\n" + std::string(1, '\0');
}

texts helped, previews;

struct wizard : host_session {
    wizard()
    {
        fake.lisp = {{"use_startwiz", short_value(1)},
                     {"lspdir$", text_value("lsp/")},
                     {"usrdir$", text_value(directory())}};
        fake.variables = {{"DWGNAME", text_value("Drawing1.dwg")}, {"DWGPREFIX", text_value("C:\\Work\\")}};
        fake.dialogs["lsp/zentproj.dcl"] = {"start_wiz0", "start_wiz1"};
        fake.started_as = "C:\\Acad\\acad.exe";
        fake.registry[HOST + "\\A|AcadLocation"] = {TEXT, "C:\\Acad"};
        helped.clear();
        previews.clear();
        cmd_active = 0;
        current_function[0] = '\0';
        wizard_calls.help = [] { helped.push_back(current_function); };
        wizard_calls.tile_preview = [](const char* drawing, int tile) {
            previews.push_back(drawing + (" " + std::to_string(tile)));
        };
    }
    ~wizard() { wizard_calls = {}; }
    static void used(int number, const std::string& path)
    {
        fake.registry["HKCU\\" + HOST + "\\A\\Recent File List|File" + std::to_string(number)] = {TEXT, path};
    }
    // Runs the wizard with what the person does; whether it came.
    bool run(std::function<void()> person = nullptr)
    {
        int came = 0;
        fake.person = [&] {
            ++came;
            if (person)
                person();
        };
        startup_wizard();
        fake.person = nullptr;
        EXPECT_TRUE(heap_is_as_before());
        EXPECT_EQ(fake.loaded_files, 0);
        EXPECT_EQ(fake.open_keys, 0);
        EXPECT_EQ(fake.unknown_tiles, NO_TEXTS);
        return came > 0;
    }
};

// ---- when it comes -------------------------------------------------------------------------------

TEST(StartupWizard, ComesOnlyForTheInteger1)
{
    const std::pair<fake_value, bool> cases[] = {
        {short_value(1), true},   {short_value(0), false},  {short_value(2), false}, {short_value(-1), false},
        {real_value(1.0), false}, {text_value("1"), false}, {list_value(), false}};
    for (const auto& [value, comes] : cases) {
        wizard session;
        fake.lisp["use_startwiz"] = value;
        EXPECT_EQ(session.run(), comes) << value.type << " " << value.integer;
    }
    wizard session;
    fake.lisp.erase("use_startwiz");
    EXPECT_FALSE(session.run());
    EXPECT_EQ(cmd_active, 0);
    EXPECT_STREQ(current_function, "");
}

TEST(StartupWizard, ComesForDrawingsWithoutAName)
{
    const std::pair<const char*, bool> cases[] = {
        {"Drawing.dwg", true},    {"DRAWING1.DWG", true},  {"drawing9.dwg", true},   {"MYDRAWING5.DWG", true},
        {"drawing.dwg.x", true},  {"Drawing0.dwg", false}, {"Drawing10.dwg", false}, {"Drawing11.dwg", false},
        {"Drawing1a.dwg", false}, {"Drawing1.dxf", false}, {"site.dwg", false},      {"", false},
    };
    for (const auto& [name, comes] : cases) {
        wizard session;
        fake.variables["DWGNAME"] = text_value(name);
        EXPECT_EQ(session.run(), comes) << name;
    }
}

TEST(StartupWizard, ReadsDirectoriesAndCountsAsTheRunningFunction)
{
    wizard session;
    session.run([] { press("help"); });
    EXPECT_STREQ(lsp_dir, "lsp/");
    EXPECT_EQ(data_dir, session.directory());
    EXPECT_EQ(helped, texts{"STARTUP_WIZARD"});
    EXPECT_EQ(cmd_active, 1) << "until the next command ends";
    EXPECT_STREQ(current_function, "STARTUP_WIZARD");
}

TEST(StartupWizard, FirstPageFollowsIsNew)
{
    struct first_page {
        const char* what;
        fake_value is_new;
        const char* shown; // a key that only this page has
    };
    const first_page cases[] = {{"0", short_value(0), "lister"},
                                {"1", short_value(1), "hsc"},
                                {"text 1", text_value("1"), "hsc"},
                                {"real 1", real_value(1.0), "hsc"},
                                {"text", text_value("no"), "lister"}};
    for (const first_page& c : cases) {
        wizard session;
        fake.lisp["is_new"] = c.is_new;
        EXPECT_TRUE(session.run([&] { EXPECT_TRUE(has_action(c.shown)) << c.what; })) << c.what;
    }
    wizard session;
    fake.lisp["is_new"] = short_value(2);
    EXPECT_FALSE(session.run()) << "there is no such page";
    EXPECT_EQ(fake.typed, NO_TEXTS);
}

TEST(StartupWizard, WithoutItsDialogsItDoesNothing)
{
    for (const texts& there : {NO_TEXTS, texts{"other"}}) {
        wizard session;
        fake.dialogs.clear();
        if (!there.empty())
            fake.dialogs["lsp/zentproj.dcl"] = there;
        session.used(1, "C:\\a.dwg");
        for (const fake_value& page : {short_value(0), short_value(1)}) {
            fake.lisp["is_new"] = page;
            EXPECT_FALSE(session.run());
            EXPECT_EQ(fake.typed, NO_TEXTS);
            EXPECT_EQ(fake.set_order, NO_TEXTS);
        }
    }
}

// ---- recent drawings -----------------------------------------------------------------------------

TEST(StartupWizard, ListsRecentDrawingsInShort)
{
    wizard session;
    session.used(1, "C:\\JOBS\\SITE.DWG");
    session.used(2, "c:/jobs/" + std::string(60, 'x') + "/plan.dwg");
    session.run([] {
        EXPECT_EQ(fake.lists["lister"],
                  (texts{"C:\\Jobs\\Site.dwg", "..." + std::string(37, 'x') + "\\Plan.dwg"}));
        EXPECT_EQ(fake.modes["select"], 1) << "nothing is chosen yet";
    });
    EXPECT_EQ(fake.fills, texts{WHITE_PICTURE});
    EXPECT_EQ(previews, NO_TEXTS);
}

TEST(StartupWizard, ChoiceShowsThePictureAndSwitchesSelectOn)
{
    wizard session;
    session.used(1, "C:\\a.dwg");
    session.used(2, "C:\\b.dwg");
    session.run([] {
        enter("lister", "1");
        EXPECT_EQ(fake.modes["select"], 0);
        enter("lister", "2");
        EXPECT_EQ(fake.modes["select"], 1) << "no such line";
        enter("lister", "0");
        EXPECT_EQ(fake.modes["select"], 0);
        enter("lister", "-1");
        EXPECT_EQ(fake.modes["select"], 1);
        enter("lister", "");
        EXPECT_EQ(fake.modes["select"], 1);
    });
    EXPECT_EQ(previews, (texts{"C:\\b.dwg 1", "C:\\a.dwg 1"}));
    EXPECT_EQ(fake.fills, texts(6, WHITE_PICTURE));
    EXPECT_EQ(fake.typed, NO_TEXTS);
}

TEST(StartupWizard, SelectOpensTheChosenDrawing)
{
    wizard session;
    session.used(1, "C:\\a.dwg");
    session.used(2, "C:\\My Jobs\\b.dwg");
    session.run([] {
        enter("lister", "1");
        press("select");
    });
    EXPECT_EQ(fake.typed, texts{command("(c:open_dwg \"C:/My Jobs/b.dwg\")")});
    EXPECT_EQ(fake.alerts, NO_TEXTS);
}

TEST(StartupWizard, DoubleClickOpensTheDrawing)
{
    wizard session;
    session.used(1, "C:\\a.dwg");
    session.run([] {
        fake.tiles["lister"] = "0";
        press("lister", CBR_DOUBLE_CLICK);
    });
    EXPECT_EQ(fake.typed, texts{command("(c:open_dwg \"C:/a.dwg\")")});
}

TEST(StartupWizard, OnlyADoubleClickOpensFromTheList)
{
    wizard session;
    session.used(1, "C:\\a.dwg");
    session.run([] {
        fake.tiles["lister"] = "0";
        for (const int reason : {1, 2, 3})
            press("lister", reason);
    });
    EXPECT_EQ(previews, texts(3, "C:\\a.dwg 1"));
    EXPECT_EQ(fake.typed, NO_TEXTS);
}

TEST(StartupWizard, DoubleClickBelowTheListDoesNothing)
{
    for (const char* value : {"", "1"}) {
        wizard session;
        session.used(1, "C:\\a.dwg");
        session.run([&] {
            fake.tiles["lister"] = value;
            press("lister", CBR_DOUBLE_CLICK);
        });
        EXPECT_EQ(fake.typed, NO_TEXTS);
    }
}

TEST(StartupWizard, SelectWithoutAChoiceIsTold)
{
    wizard session;
    session.used(1, "C:\\a.dwg");
    session.run([] {
        press("select");
        enter("lister", "1");
        press("select");
    });
    EXPECT_EQ(fake.alerts, (texts{"No File Selected", "Unable to match selected file"}));
    EXPECT_EQ(fake.typed, NO_TEXTS);
}

TEST(StartupWizard, OpenAsksForAFile)
{
    wizard session;
    fake.file_answers = {"D:\\Jobs\\new one.dwg"};
    session.run([] { press("open"); });
    EXPECT_EQ(fake.file_dialogs, texts{"Select File|<null>|dwg|0"});
    EXPECT_EQ(fake.typed, texts{command("(c:open_dwg \"D:/Jobs/new one.dwg\")")});
}

TEST(StartupWizard, OpenCancelledDoesNothing)
{
    wizard session;
    session.run([] { press("open"); });
    EXPECT_EQ(fake.file_dialogs.size(), 1u);
    EXPECT_EQ(fake.typed, NO_TEXTS);
}

TEST(StartupWizard, CancelDoesNothing)
{
    wizard session;
    session.used(1, "C:\\a.dwg");
    session.run([] {
        enter("lister", "0");
        press("cancel");
    });
    EXPECT_EQ(fake.typed, NO_TEXTS);
    EXPECT_EQ(fake.set_order, NO_TEXTS);
}

TEST(StartupWizard, ChoiceOfAnEarlierRunIsForgotten)
{
    wizard session;
    session.used(1, "C:\\a.dwg");
    session.run([] {
        enter("lister", "0");
        fake.tiles["skip_wiz"] = "1";
        press("select");
    });
    EXPECT_EQ(fake.typed.size(), 1u);
    fake.lisp["use_startwiz"] = short_value(1);
    session.run([] {});
    EXPECT_EQ(fake.typed.size(), 1u);
    EXPECT_EQ(fake.lisp["use_startwiz"].integer, 1) << "the tick is forgotten too";
}

TEST(StartupWizard, PathWithAQuoteIsNotTyped)
{
    wizard session;
    session.used(1, "C:\\a\") (alert \"x.dwg");
    session.run([] {
        fake.tiles["lister"] = "0";
        press("select");
    });
    EXPECT_EQ(fake.typed, NO_TEXTS);
    EXPECT_EQ(session.printed, "\nUnable to open 'C:/a\") (alert \"x.dwg'.");
}

TEST(StartupWizard, EachClosingButtonReadsTheTick)
{
    for (const char* key : {"select", "new", "open", "cancel"}) {
        wizard session;
        write_text(session.directory() + "zentrik.ini", "use_startwiz=1\n");
        session.used(1, "C:\\a.dwg");
        bool first = true;
        session.run([&] {
            if (!std::exchange(first, false))
                return; // page 1, closed by the host
            fake.tiles["lister"] = "0";
            fake.tiles["skip_wiz"] = "1";
            press(key);
        });
        EXPECT_EQ(read_text(session.directory() + "zentrik.ini"), "use_startwiz=0\n") << key;
        EXPECT_EQ(fake.lisp["use_startwiz"].integer, 0) << key;
    }
    for (const char* value : {"0", "2", ""}) {
        wizard session;
        write_text(session.directory() + "zentrik.ini", "use_startwiz=1\n");
        session.run([&] {
            fake.tiles["skip_wiz"] = value;
            press("cancel");
        });
        EXPECT_EQ(read_text(session.directory() + "zentrik.ini"), "use_startwiz=1\n") << value;
    }
}

// ---- a new drawing -------------------------------------------------------------------------------

struct new_drawing : wizard {
    new_drawing()
    {
        fake.lisp["is_new"] = short_value(1);
        fake.lisp["sv:sm"] = real_value(50.0);
        fake.lisp["sv:ts"] = real_value(0.1);
        fake.lisp["sv:ps"] = real_value(0.2);
        fake.lisp["eorm$"] = text_value("E");
        fake.lisp["is_metric"] = short_value(0);
    }
};

// What a group of radio buttons does.
void choose_units(const char* chosen, const char* other)
{
    fake.tiles[other] = "0";
    enter(chosen, "1");
}

TEST(NewDrawing, TilesBeginWithTheVariables)
{
    new_drawing session;
    session.run([] {
        const std::map<std::string, std::string> tiles = {
            {"hsc", "50.0"},   {"tog1", "1"},  {"english", "1"},    {"txts", "0.100"},
            {"syms", "0.200"}, {"filenm", ""}, {"syms2", "10.000"}, {"txts2", "5.000"}};
        for (const auto& [key, value] : tiles) {
            EXPECT_EQ(fake.tiles.count(key), 1u) << key;
            EXPECT_EQ(fake.tiles[key], value) << key;
        }
        for (const char* key : {"tog2", "metric"})
            EXPECT_EQ(fake.tiles.count(key), key == std::string("metric") ? 1u : 0u) << key;
    });
}

TEST(NewDrawing, MetricVariablesTickTheMetricTiles)
{
    for (const char* units : {"M", "Metric"}) {
        new_drawing session;
        fake.lisp["eorm$"] = text_value(units);
        fake.lisp["is_metric"] = short_value(1);
        fake.lisp["sv:sm"] = text_value("500.06");
        session.run([] {
            EXPECT_EQ(fake.tiles["hsc"], "500.1");
            EXPECT_EQ(fake.tiles["metric"], "1");
            EXPECT_EQ(fake.tiles["tog2"], "1");
            EXPECT_EQ(fake.tiles.count("english") + fake.tiles.count("tog1"), 0u);
            EXPECT_EQ(fake.tiles["syms2"], "1.000") << "out of the tiles: 0.2 * 500.1 / 100";
            EXPECT_EQ(fake.tiles["txts2"], "0.500");
        });
    }
}

TEST(NewDrawing, UnsetVariablesReadAsNothing)
{
    wizard session;
    fake.lisp["is_new"] = short_value(1);
    session.run([] {
        EXPECT_EQ(fake.tiles["hsc"], "0.0");
        EXPECT_EQ(fake.tiles["txts"], "0.000");
        EXPECT_EQ(fake.tiles["tog1"], "1");
        EXPECT_EQ(fake.tiles["english"], "1");
        EXPECT_EQ(fake.tiles["syms2"], "0.000");
    });
}

TEST(NewDrawing, LowerCaseMAndOtherNumbersAreNotMetric)
{
    new_drawing session;
    fake.lisp["eorm$"] = text_value("metric");
    fake.lisp["is_metric"] = short_value(2);
    session.run([] {
        EXPECT_EQ(fake.tiles["english"], "1");
        EXPECT_EQ(fake.tiles["tog1"], "1");
    });
}

TEST(NewDrawing, PaperSizesGiveSizesInTheDrawing)
{
    new_drawing session;
    session.run([] {
        enter("hsc", "100");
        EXPECT_EQ(fake.tiles["syms2"], "20.000");
        EXPECT_EQ(fake.tiles["txts2"], "10.000");
        enter("txts", "0.25");
        EXPECT_EQ(fake.tiles["txts2"], "25.000");
        enter("syms", "0.0006");
        EXPECT_EQ(fake.tiles["syms2"], "0.060");
        EXPECT_EQ(fake.tiles["syms"], "0.0006") << "stays as typed";
    });
}

TEST(NewDrawing, SizesInTheDrawingGivePaperSizes)
{
    new_drawing session;
    session.run([] {
        enter("syms2", "30");
        EXPECT_EQ(fake.tiles["syms"], "0.600");
        EXPECT_EQ(fake.tiles["txts"], "0.100");
        enter("txts2", "7.5");
        EXPECT_EQ(fake.tiles["txts"], "0.150");
        choose_units("metric", "english");
        enter("syms2", "30");
        EXPECT_EQ(fake.tiles["syms"], "60.000") << "centimetres";
        EXPECT_EQ(fake.tiles["syms2"], "30") << "stays as typed";
    });
}

TEST(NewDrawing, ChoosingMetricTakesMetresAlong)
{
    new_drawing session;
    session.run([] {
        choose_units("metric", "english");
        EXPECT_EQ(fake.tiles["tog2"], "1");
        EXPECT_EQ(fake.tiles["syms2"], "0.100");
        EXPECT_EQ(fake.tiles["txts2"], "0.050");
        fake.tiles["tog2"] = "0";
        choose_units("english", "metric");
        EXPECT_EQ(fake.tiles["tog2"], "0") << "but not the other way round";
        EXPECT_EQ(fake.tiles["txts2"], "5.000");
    });
}

TEST(NewDrawing, ScaleOf0GivesInfinitePaperSizes)
{
    new_drawing session;
    session.run([] {
        enter("hsc", "0");
        EXPECT_EQ(fake.tiles["syms2"], "0.000");
        enter("syms2", "5");
        EXPECT_EQ(fake.tiles["syms"], "inf");
        enter("txts2", "-5");
        EXPECT_EQ(fake.tiles["txts"], "-inf");
    });
}

TEST(NewDrawing, TextsAreReadUpToWhereTheNumberEnds)
{
    const std::pair<const char*, const char*> cases[] = {
        {"0.5abc", "25.000"}, {"abc", "0.000"},   {"", "0.000"},     {" 0.5", "25.000"}, {"1e-1", "5.000"},
        {"-0.5", "-25.000"},  {".5.5", "25.000"}, {"1,5", "50.000"}, {"1/2", "50.000"}};
    for (const auto& [typed, shown] : cases) {
        new_drawing session;
        session.run([&] {
            enter("txts", typed);
            EXPECT_EQ(fake.tiles["txts2"], shown) << typed;
        });
    }
}

TEST(NewDrawing, HugeNumbersAreCutToTheTile)
{
    new_drawing session;
    session.run([] {
        enter("hsc", "1e308");
        enter("txts", "1");
        EXPECT_EQ(fake.tiles["txts2"].size(), 313u) << "309 digits and three decimals";
    });
}

TEST(NewDrawing, PickShowsTheNameAndMovesToOk)
{
    new_drawing session;
    fake.file_answers = {"C:\\JOBS\\" + std::string(40, 'Y') + "\\PLAN.DWG"};
    session.run([] {
        press("select1");
        EXPECT_EQ(fake.tiles["filenm"], "..." + std::string(27, 'y') + "\\Plan.dwg");
        EXPECT_EQ(fake.modes["ok"], 2);
    });
    EXPECT_EQ(fake.file_dialogs, texts{"Drawing to Create||dwg|33"});
}

TEST(NewDrawing, PickOfTheCurrentDrawingIsRefused)
{
    new_drawing session;
    fake.file_answers = {"C:\\Jobs\\a.dwg", "c:\\work\\DRAWING1.dwg"};
    session.run([] {
        press("select1");
        EXPECT_EQ(fake.tiles["filenm"], "C:\\Jobs\\A.dwg");
        fake.modes.clear();
        press("select1");
        EXPECT_EQ(fake.tiles["filenm"], "");
        EXPECT_EQ(fake.modes.count("ok"), 0u);
        press("ok"); // the name from before is gone
    });
    EXPECT_EQ(fake.alerts,
              (texts{"Error: drawing name already active in current\nAutoCAD session. Use another name.",
                     "Missing Drawing Name"}));
    EXPECT_EQ(fake.typed, NO_TEXTS);
}

TEST(NewDrawing, CancelledPickForgetsTheName)
{
    new_drawing session;
    fake.file_answers = {"C:\\Jobs\\a.dwg"};
    session.run([] {
        press("select1");
        press("select1");
        EXPECT_EQ(fake.tiles["filenm"], "");
        press("ok");
    });
    EXPECT_EQ(fake.alerts, texts{"Missing Drawing Name"});
    EXPECT_EQ(fake.set_order, NO_TEXTS);
}

const texts METRIC_VALUES = {"eorm$=\"M\"", "is_metric=1", "sv:sm=500.0", "DIMSCALE=500.0",
                             "sv:ts=0.2",   "DIMTXT=0.2",  "sv:ps=0.3",   "DIMASZ=0.3",
                             "sv:sf=1.0",   "sv:psf=1.5",  "PDSIZE=1.5"};

void fill_in_metric()
{
    fake.tiles["hsc"] = "500";
    fake.tiles["txts"] = "0.2";
    fake.tiles["syms"] = "0.3";
    choose_units("metric", "english");
}

TEST(NewDrawing, OkSetsTheValuesInOrderAndMakesTheDrawing)
{
    new_drawing session;
    fake.file_answers = {"C:\\Jobs\\a.dwg"};
    session.run([] {
        fill_in_metric();
        press("select1");
        press("ok");
    });
    texts order = {"dwg_filenm=\"C:\\\\Jobs\\\\a.dwg\""};
    order.insert(order.end(), METRIC_VALUES.begin(), METRIC_VALUES.end());
    EXPECT_EQ(fake.set_order, order);
    EXPECT_EQ(fake.typed, texts{command("(c:start_wiz)")});
}

TEST(NewDrawing, CancelSetsTheValuesAllTheSame)
{
    new_drawing session;
    session.run([] {
        fill_in_metric();
        press("cancel");
    });
    EXPECT_EQ(fake.set_order, METRIC_VALUES);
    EXPECT_EQ(fake.typed, NO_TEXTS);
}

TEST(NewDrawing, EnglishTileDecidesTheUnits)
{
    const std::pair<const char*, const char*> cases[] = {
        {"1", "eorm$=\"E\""}, {"0", "eorm$=\"M\""}, {"", "eorm$=\"M\""}, {"2", "eorm$=\"M\""}};
    for (const auto& [value, set] : cases) {
        new_drawing session;
        session.run([&] {
            fake.tiles["english"] = value;
            press("cancel");
        });
        ASSERT_GE(fake.set_order.size(), 2u);
        EXPECT_EQ(fake.set_order[0], set) << value;
        EXPECT_EQ(fake.set_order[1], "is_metric=0");
    }
}

TEST(NewDrawing, OkDeletesTheFileThatIsReplaced)
{
    new_drawing session;
    const std::string path = session.directory() + "old.dwg";
    write_text(path, "old");
    fake.file_answers = {path};
    fake.message_answers = {YES};
    session.run([&] {
        press("select1");
        EXPECT_EQ(read_text(path), "old") << "not before OK";
        press("ok");
    });
    EXPECT_EQ(read_text(path), "<none>");
    EXPECT_EQ(fake.messages.size(), 1u) << "the user was asked";
    EXPECT_EQ(fake.typed.size(), 1u);
}

TEST(NewDrawing, CancelKeepsTheFile)
{
    new_drawing session;
    const std::string path = session.directory() + "old.dwg";
    write_text(path, "old");
    fake.file_answers = {path};
    fake.message_answers = {YES};
    session.run([] {
        press("select1");
        press("cancel");
    });
    EXPECT_EQ(read_text(path), "old");
}

TEST(NewDrawing, FollowsTheFirstPage)
{
    wizard session;
    fake.file_answers = {"C:\\Jobs\\a.dwg"};
    int page = 0;
    session.run([&] {
        if (page++ == 0) {
            press("new");
            return;
        }
        press("select1");
        press("ok");
    });
    EXPECT_EQ(page, 2);
    EXPECT_EQ(fake.typed, texts{command("(c:start_wiz)")});
}

TEST(NewDrawing, CancelBehindTheFirstPageDoesNothing)
{
    wizard session;
    int page = 0;
    session.run([&] { press(page++ == 0 ? "new" : "cancel"); });
    EXPECT_EQ(page, 2);
    EXPECT_EQ(fake.typed, NO_TEXTS);
}

TEST(NewDrawing, NameOfAnEarlierRunIsForgotten)
{
    new_drawing session;
    fake.file_answers = {"C:\\Jobs\\a.dwg"};
    session.run([] {
        press("select1");
        press("cancel");
    });
    session.run([] { press("ok"); });
    EXPECT_EQ(fake.alerts, texts{"Missing Drawing Name"});
    EXPECT_EQ(fake.typed, NO_TEXTS);
}

TEST(NewDrawing, OkReadsTheTick)
{
    new_drawing session;
    fake.file_answers = {"C:\\Jobs\\a.dwg"};
    session.run([] {
        press("select1");
        fake.tiles["skip_wiz"] = "1";
        press("ok");
    });
    EXPECT_EQ(fake.lisp["use_startwiz"].integer, 0);
    EXPECT_EQ(fake.typed, texts{command("(c:start_wiz)")}) << "the drawing is made all the same";
}

TEST(NewDrawing, TickOfTheFirstPageIsCarriedOver)
{
    for (const bool has_tile : {true, false}) {
        wizard session;
        if (!has_tile)
            fake.absent_tiles = {"skip_wiz"};
        int page = 0;
        session.run([&] {
            if (page++ == 0) {
                fake.absent_tiles.clear();
                fake.tiles["skip_wiz"] = "1";
                press("new");
                return;
            }
            EXPECT_EQ(fake.tiles["skip_wiz"], "1");
            if (!has_tile)
                fake.absent_tiles = {"skip_wiz"};
            press("cancel");
        });
        EXPECT_EQ(fake.lisp["use_startwiz"].integer, 0) << has_tile;
    }
}

TEST(NewDrawing, TickCanBeTakenBack)
{
    wizard session;
    int page = 0;
    session.run([&] {
        fake.tiles["skip_wiz"] = page == 0 ? "1" : "0";
        press(page++ == 0 ? "new" : "cancel");
    });
    EXPECT_EQ(fake.lisp["use_startwiz"].integer, 1);
}

TEST(NewDrawing, HelpKeepsThePage)
{
    new_drawing session;
    session.run([] { press("help"); });
    EXPECT_EQ(helped, texts{"STARTUP_WIZARD"});
    wizard_calls = {};
    session.run([] { press("help"); });
}

} // namespace
