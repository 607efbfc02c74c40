#include "settings/dialog_memory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>

#include "common/directories.h"
#include "tests/fakes/fake_host.h"

namespace
{

constexpr ads_hdlg DIALOG = 1;

// A directory with a DCL file of two dialogs.
class DialogMemory : public testing::Test
{
protected:
    DialogMemory()
    {
        fake.lisp["usrdir$"] = text_value(host.directory());
        fake.lisp["lspdir$"] = text_value(host.directory());
        put("pts.dcl", "// points\n"
                       "first : dialog {\n"
                       "  label = \"First\";\n"
                       "  : edit_box { key = \"pt\"; }\n"
                       "  : edit_box { label = \"Elevation\";\n"
                       "    key = \"elev\"; }\n"
                       "  ok_cancel;\n"
                       "}\n"
                       "\n"
                       "second : dialog {\n"
                       "  label = \"Second\";\n"
                       "  : toggle { key = \"t\"; }\n"
                       "}\n");
    }
    ~DialogMemory() override { EXPECT_TRUE(host.heap_is_as_before()); }

    void put(const std::string& name, const std::string& text) { write_text(host.directory() + name, text); }
    std::string file(const std::string& name) { return read_text(host.directory() + name); }
    static std::string value(const char* key, int where = DIALOG_MEMORY_BOTH)
    {
        char text[128] = "before";
        const int is_found = dlg_read_tile("pts", "first", where, key, text, sizeof text);
        return is_found ? text : text[0] == '\0' ? "<none>" : "<not emptied>";
    }
    // What the tile gets of a dialogs.ini of this text, with the answer in front.
    std::string loaded(const std::string& memory, const char* key)
    {
        put("dialogs.ini", memory);
        fake.tiles.clear();
        const int answer = dlg_load_all(DIALOG, "pts", "first", DIALOG_MEMORY_ONLY_SHARED);
        return std::to_string(answer) + (fake.tiles.count(key) ? "[" + fake.tiles[key] + "]" : "");
    }

    host_session host;
};

TEST_F(DialogMemory, FirstSaveMakesTheFile)
{
    fake.tiles = {{"pt", "12"}, {"elev", "100.5"}, {"t", "1"}};
    dlg_save_all(DIALOG, "pts", "first", DIALOG_MEMORY_SHARED);
    EXPECT_EQ(file("dialogs.ini"), "pts,first,pt,'12'\npts,first,elev,'100.5'\n");
    EXPECT_EQ(file("dialogs.new"), "<none>");
    EXPECT_EQ(file("pts.ini"), "<none>");
    for (const int shared : {0, 2, -1}) {
        std::filesystem::remove(host.directory() + "pts.ini");
        dlg_save_all(DIALOG, "pts", "second", shared);
        EXPECT_EQ(file("pts.ini"), "pts,second,t,'1'\n") << shared;
        EXPECT_EQ(file("pts.new"), "<none>");
    }
    EXPECT_EQ(std::string(data_dir), host.directory());
    EXPECT_EQ(std::string(lsp_dir), host.directory());
    EXPECT_EQ(host.printed, "");
}

TEST_F(DialogMemory, FreshLinesComeFirstAndThoseOfOtherDialogsFollow)
{
    put("dialogs.ini",
        "other,first,a,'1'\npts,first,pt,'old'\npts,second,t,'0'\npts,first,gone,'x'\nlast,one,b,'2'");
    fake.tiles = {{"pt", "new"}, {"elev", ""}};
    dlg_save_all(DIALOG, "pts", "first", DIALOG_MEMORY_SHARED);
    EXPECT_EQ(file("dialogs.ini"),
              "pts,first,pt,'new'\npts,first,elev,''\nother,first,a,'1'\npts,second,t,'0'\nlast,one,b,'2'");
}

TEST_F(DialogMemory, LinesAreDroppedByAPartOfThem)
{
    put("dialogs.ini", "pts,firsthand,a,'1'\nmypts,first,b,'2'\na,b,c,'pts,first'\npts,fir,d,'3'\n");
    dlg_save_all(DIALOG, "pts", "first", DIALOG_MEMORY_SHARED);
    EXPECT_EQ(file("dialogs.ini"), "pts,first,pt,''\npts,first,elev,''\npts,fir,d,'3'\n");
}

TEST_F(DialogMemory, TilesThatTheDialogDoesNotKnowKeepTheirStoredValue)
{
    put("dialogs.ini", "pts,first,pt,'shared'\npts,first,elev,'7'\n");
    put("pts.ini", "pts,first,pt,'own'\n");
    fake.absent_tiles = {"pt", "elev"};
    dlg_save_all(DIALOG, "pts", "first", DIALOG_MEMORY_SHARED);
    EXPECT_EQ(file("dialogs.ini"), "pts,first,pt,'own'\npts,first,elev,'7'\n");
    dlg_save_tile(DIALOG, "pts", "first", "elev", 0);
    EXPECT_EQ(file("pts.ini"), "pts,first,pt,'own'\npts,first,elev,'7'\n");
    fake.absent_tiles.push_back("none");
    dlg_save_tile(DIALOG, "pts", "first", "none", 0);
    EXPECT_EQ(file("pts.ini"), "pts,first,pt,'own'\npts,first,elev,'7'\npts,first,none,''\n");
}

TEST_F(DialogMemory, TilesAreFoundByPartsOfTheirLines)
{
    struct {
        const char *what, *dcl, *keys;
    } const cases[] = {
        {"plain", "d : dialog {\nlabel=\"x\";\n: a { key = \"k\"; }\n}\n", "k;"},
        {"line behind the header is no tile", "d : dialog {\n: a { key = \"k\"; }\nkey = \"l\";\n}\n", "l;"},
        {"header without room for a line", "d : dialog {", ""},
        {"a line behind the header only", "d : dialog {\nkey = \"k\";", ""},
        {"no semicolon", "d : dialog {\n\nkey = \"k\"\n}\n", ""},
        {"no equals sign", "d : dialog {\n\nkey \"k\";\n}\n", ""},
        {"no quotes", "d : dialog {\n\nkey = k;\nkey = \"k;\n}\n", ""},
        {"first quoted text", "d : dialog {\n\n: a { label = \"L\"; key = \"k\"; }\n}\n", "L;"},
        {"key in another word", "d : dialog {\n\nkeyboard = \"k\";\nmonkey_b = \"m\"; \n}\n", "k;m;"},
        {"two on a line", "d : dialog {\n\nkey = \"a\"; key = \"b\";\n}\n", "a;"},
        {"capitals", "d : dialog {\n\nKEY = \"a\";\n}\n", ""},
        {"comment", "d : dialog {\n\n// key = \"a\";\n}\n", "a;"},
        {"other dialog first", "c : dialog {\n\nkey = \"c\";\n}\nd : dialog {\n\nkey = \"k\";\n}\n", "k;"},
        {"ends at the next", "d : dialog {\n\nkey = \"k\";\n}\ne : dialog {\n\nkey = \"e\";\n}\n", "k;"},
        {"header right behind the header", "d : dialog {\ne : dialog {\n\nkey = \"e\";\n", ""},
        {"word in a comment ends it", "d : dialog {\n\nkey = \"k\";\n// this: dialog {\nkey = \"l\";\n}\n",
         "k;"},
        {"not without a colon", "d : dialog {\n\nkey = \"k\";\n// this dialog {\nkey = \"l\";\n}\n", "k;l;"},
        {"header that is a tile too", "d : dialog {\n\ne : dialog { key = \"e\";\nkey = \"l\";\n}\n", "e;"},
        {"blanks around the name", "  d  : dialog {\n\nkey = \"k\";\n}\n", "k;"},
        {"tabs are none", "\td : dialog {\n\nkey = \"k\";\n}\n", ""},
        {"brace on the next line", "d : dialog\n{\n\nkey = \"k\";\n}\n", ""},
        {"carriage returns", "d : dialog {\r\n\r\nkey = \"k\";\r\n}\r\n", "k;"},
        {"name in other case", "D : dialog {\n\nkey = \"k\";\n}\n", ""},
        {"twice, the first counts", "d : dialog {\n\nkey = \"a\";\n}\nd : dialog {\n\nkey = \"b\";\n}\n", "a;"},
        {"empty key", "d : dialog {\n\nkey = \"\";\n}\n", ";"},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.what);
        put("x.dcl", one.dcl);
        fake.mode_calls.clear();
        dlg_enable_all(DIALOG, "x", "d");
        std::string keys;
        for (const std::string& mode : fake.mode_calls) {
            EXPECT_EQ(mode.substr(mode.find('=')), "=0");
            keys += mode.substr(0, mode.find('=')) + ";";
        }
        EXPECT_EQ(keys, one.keys);

        std::filesystem::remove(host.directory() + "x.ini");
        dlg_save_all(DIALOG, "x", "d", 0);
        std::string saved;
        for (std::size_t at = 0; at < keys.size(); at = keys.find(';', at) + 1)
            saved += "x,d," + keys.substr(at, keys.find(';', at) - at) + ",''\n";
        const bool is_there = file("x.ini") != "<none>";
        EXPECT_EQ(is_there ? file("x.ini") : "", saved);
    }
}

TEST_F(DialogMemory, LongLinesOfADialogFileAreTwoLines)
{
    // 127 characters to a line: "key" and the quoted name must stand in one of the pieces.
    const std::string tile = ": e { key = \"k\"; }";
    for (const int blanks : {109, 110}) {
        put("x.dcl", "d : dialog {\n\n" + std::string(static_cast<std::size_t>(blanks), ' ') + tile + "\n");
        fake.mode_calls.clear();
        dlg_enable_all(DIALOG, "x", "d");
        EXPECT_EQ(fake.mode_calls.size(), 1u) << "only the brace or the line feed is cut off";
    }
    put("x.dcl", "d : dialog {\n\n" + std::string(118, ' ') + tile + "\n");
    fake.mode_calls.clear();
    dlg_enable_all(DIALOG, "x", "d");
    EXPECT_TRUE(fake.mode_calls.empty());
}

TEST_F(DialogMemory, WithoutTheDialogNothingIsWritten)
{
    put("dialogs.ini", "pts,none,a,'1'\n");
    dlg_save_all(DIALOG, "pts", "none", DIALOG_MEMORY_SHARED);
    dlg_save_all(DIALOG, "absent", "first", DIALOG_MEMORY_SHARED);
    dlg_enable_all(DIALOG, "absent", "first");
    EXPECT_EQ(file("dialogs.ini"), "pts,none,a,'1'\n");
    EXPECT_EQ(file("dialogs.new"), "<none>");
    EXPECT_TRUE(fake.mode_calls.empty());
}

TEST_F(DialogMemory, UnsetDirectoriesEndEverything)
{
    for (const char* unset : {"usrdir$", "lspdir$"}) {
        SCOPED_TRACE(unset);
        put("dialogs.ini", "pts,first,pt,'1'\n");
        const fake_value before = fake.lisp[unset];
        for (const bool is_nil : {true, false}) {
            fake.lisp.erase(unset);
            if (!is_nil)
                fake.lisp[unset] = short_value(0);
            dlg_save_all(DIALOG, "pts", "first", DIALOG_MEMORY_SHARED);
            dlg_save_tile(DIALOG, "pts", "first", "pt", DIALOG_MEMORY_SHARED);
            dlg_enable_all(DIALOG, "pts", "first");
            EXPECT_EQ(dlg_load_all(DIALOG, "pts", "first", DIALOG_MEMORY_BOTH), 0);
            EXPECT_EQ(value("pt"), "<none>");
            EXPECT_EQ(file("dialogs.ini"), "pts,first,pt,'1'\n");
            EXPECT_TRUE(fake.mode_calls.empty());
        }
        fake.lisp[unset] = before;
    }
}

TEST_F(DialogMemory, OneTileIsReplacedInItsPlace)
{
    put("dialogs.ini", "a,b,c,'0'\npts,first,pt,'old'\npts,first,elev,'7'\n");
    fake.tiles = {{"pt", "new"}};
    dlg_save_tile(DIALOG, "pts", "first", "pt", DIALOG_MEMORY_SHARED);
    EXPECT_EQ(file("dialogs.ini"), "a,b,c,'0'\npts,first,pt,'new'\npts,first,elev,'7'\n");
    EXPECT_EQ(file("dialogs.new"), "<none>");
    fake.tiles = {{"other", "x"}};
    dlg_save_tile(DIALOG, "pts", "first", "other", DIALOG_MEMORY_SHARED);
    EXPECT_EQ(file("dialogs.ini"), "a,b,c,'0'\npts,first,pt,'new'\npts,first,elev,'7'\npts,first,other,'x'\n");
    dlg_save_tile(DIALOG, "pts", "first", "other", 0);
    EXPECT_EQ(file("pts.ini"), "pts,first,other,'x'\n") << "a first save makes the file";
}

TEST_F(DialogMemory, KeysThatBeginWithTheSavedOneAreReplacedToo)
{
    put("dialogs.ini", "pts,first,pt1,'1'\npts,first,pt,'2'\npts,first,apt,'3'\n");
    fake.tiles = {{"pt", "new"}};
    dlg_save_tile(DIALOG, "pts", "first", "pt", DIALOG_MEMORY_SHARED);
    EXPECT_EQ(file("dialogs.ini"), "pts,first,pt,'new'\npts,first,pt,'new'\npts,first,apt,'3'\n");
    put("dialogs.ini", "pts,first,pt1,'1'\n");
    EXPECT_EQ(value("pt"), "<none>") << "reading asks for the comma behind the key";
    EXPECT_EQ(value("pt1"), "1");
}

TEST_F(DialogMemory, LastLinesWithoutLineFeedAreCopiedAsTheyAre)
{
    put("dialogs.ini", "a,b,c,'0'");
    fake.tiles = {{"pt", "new"}};
    dlg_save_tile(DIALOG, "pts", "first", "pt", DIALOG_MEMORY_SHARED);
    EXPECT_EQ(file("dialogs.ini"), "a,b,c,'0'pts,first,pt,'new'\n");
    EXPECT_EQ(value("pt"), "new") << "lines are found by a part of them";
}

TEST_F(DialogMemory, ValuesAreReadWithoutTheirQuotes)
{
    struct {
        const char *line, *value;
    } const cases[] = {
        {"pts,first,pt,'12'\n", "12"},
        {"pts,first,pt,''\n", ""},
        {"pts,first,pt,'it's'\n", "it's"},
        {"pts,first,pt,'a,b'\n", "a,b"},
        {"pts,first,pt,' a '\n", " a "},
        {"pts,first,pt,'12'\r\n", "12"},
        {"pts,first,pt,'12'", "1"}, // no line feed: one character more is lost
        {"pts,first,pt,''", ""},
        {"pts,first,pt,'", ""},
        {"pts,first,pt,", ""},
        {"pts,first,pt,\n", ""},
        {"pts,first,pt", "<none>"},
        {"pts,first,pt1,'1'\n", "<none>"},
        {"mypts,first,pt,'part'\n", "part"},
        {"pts,first,pt,'1'\npts,first,pt,'2'\n", "1"}, // the first line counts
        {"", "<none>"},
    };
    for (const auto& one : cases) {
        put("dialogs.ini", one.line);
        EXPECT_EQ(value("pt"), one.value) << one.line;
    }
}

TEST_F(DialogMemory, PlacesAreReadAsAskedFor)
{
    put("dialogs.ini", "pts,first,pt,'shared'\npts,first,elev,'7'\n");
    put("pts.ini", "pts,first,pt,'own'\npts,first,t,''\n");
    EXPECT_EQ(value("pt", DIALOG_MEMORY_BOTH), "own");
    EXPECT_EQ(value("pt", DIALOG_MEMORY_ONLY_SHARED), "shared");
    EXPECT_EQ(value("pt", DIALOG_MEMORY_ONLY_OWN), "own");
    EXPECT_EQ(value("pt", 3), "<none>");
    EXPECT_EQ(value("elev", DIALOG_MEMORY_BOTH), "7");
    EXPECT_EQ(value("elev", DIALOG_MEMORY_ONLY_OWN), "<none>");
    EXPECT_EQ(value("t", DIALOG_MEMORY_ONLY_SHARED), "<none>");

    struct {
        int where, answer;
        const char *pt, *elev;
    } const cases[] = {{0, 1, "own", "7"}, {1, 1, "shared", "7"}, {2, 1, "own", ""}, {3, 0, "", ""}};
    for (const auto& one : cases) {
        fake.tiles.clear();
        EXPECT_EQ(dlg_load_all(DIALOG, "pts", "first", one.where), one.answer) << one.where;
        EXPECT_EQ(fake.tiles["pt"], one.pt) << one.where;
        EXPECT_EQ(fake.tiles["elev"], one.elev) << one.where;
    }
    EXPECT_EQ(dlg_load_all(DIALOG, "pts", "second", 0), 0) << "nothing is stored for it";
    EXPECT_EQ(dlg_load_all(DIALOG, "absent", "first", 2), 0);
}

TEST_F(DialogMemory, ValuesAreCutToTheRoomThereIs)
{
    put("dialogs.ini", "pts,first,pt,'abcdef'\n");
    char text[8] = "xxxxxxx";
    EXPECT_EQ(dlg_read_tile("pts", "first", 0, "pt", text, 4), 1);
    EXPECT_STREQ(text, "abc");
    EXPECT_EQ(text[4], 'x');
    EXPECT_EQ(dlg_read_tile("pts", "first", 0, "pt", text, 7), 1);
    EXPECT_STREQ(text, "abcdef");
    text[0] = 'y';
    EXPECT_EQ(dlg_read_tile("pts", "first", 0, "pt", text, 0), 1);
    EXPECT_EQ(text[0], 'y');
}

TEST_F(DialogMemory, LoadedValuesAreCutAtTheirComma)
{
    struct {
        const char *memory, *result;
    } const cases[] = {
        {"pts,first,pt,'12'\n", "1[12]"},
        {"pts,first,pt,'12'", "1[12]"}, // the line feed doesn't count here
        {"pts,first,pt,''\n", "1[]"},
        {"pts,first,pt,'it's'\n", "1[it's]"},
        {"pts,first,pt,'ab,cd'\n", "1[a]"},
        {"pts,first,pt,',b'\n", "1[]"},
        {"pts,first, pt , '12' \n", "1[12]"},
        {"pts,first,pt,' a '\n", "1[ a ]"},
        {"pts,first,pt,x\n", "1[]"},
        {"pts,first,pt,\n", "1[]"},
        {"pts,first,pt\n", "0"},
        {"pts,first", "0"},
        {"pts,second,pt,'1'\n", "0"},
        {"mypts,first,pt,'1'\n", "1[1]"},
        {"pts,first,pt,'1'\npts,first,pt,'2'\n", "1[2]"}, // every line is applied
        {"", "0"},
    };
    for (const auto& one : cases)
        EXPECT_EQ(loaded(one.memory, "pt"), one.result) << one.memory;
    EXPECT_EQ(loaded("pts,firsthand,pt,'1'\n", "pt"), "1") << "the key is another then";
}

TEST_F(DialogMemory, LongLinesAreTwoLines)
{
    const std::string head = "pts,first,pt,'";
    for (const std::size_t length : {125u, 126u, 127u, 128u, 200u}) {
        const std::string text(length - head.size() - 1, 'v');
        put("dialogs.ini", head + text + "'\n");
        // Up to 126 characters the line feed is on the same line.
        const std::string seen = (head + text + "'\n").substr(0, 127).substr(head.size());
        EXPECT_EQ(value("pt"), seen.substr(0, seen.size() - 2)) << length;
        // The line feed is trimmed off, then a quote at each end; of a cut line one character of the value.
        const std::size_t quote = std::min(seen.find('\''), seen.size() - 1);
        EXPECT_EQ(loaded(head + text + "'\n", "pt"), "1[" + seen.substr(0, quote) + "]") << length;
    }
    put("dialogs.ini", head + std::string(120, 'v') + "'\na,b,c,'1'\n");
    fake.tiles = {{"pt", "x"}};
    dlg_save_tile(DIALOG, "pts", "first", "pt", DIALOG_MEMORY_SHARED);
    EXPECT_EQ(file("dialogs.ini"), "pts,first,pt,'x'\n" + std::string(7, 'v') + "'\na,b,c,'1'\n");

    fake.tiles = {{"pt", std::string(300, 'w')}};
    dlg_save_tile(DIALOG, "pts", "first", "pt", DIALOG_MEMORY_SHARED);
    EXPECT_EQ(file("dialogs.ini").substr(0, 145), head + std::string(127, 'w') + "'\nvv")
        << "values are cut to 127";

    fake.tiles = {{"pt", "x"}};
    put("dialogs.ini", head + std::string(120, 'v') + "'\n");
    dlg_save_all(DIALOG, "pts", "first", DIALOG_MEMORY_SHARED);
    EXPECT_EQ(file("dialogs.ini"), "pts,first,pt,'x'\npts,first,elev,''\n" + std::string(7, 'v') + "'\n")
        << "the second of the two names no dialog";
}

// ---- what is left when the work breaks off ------------------------------------------------------------------

TEST_F(DialogMemory, MemoryStaysWhereTheNewOneCannotBeWritten)
{
    const std::string before = "pts,first,pt,'old'\n";
    put("dialogs.ini", before);
    std::filesystem::create_directory(host.directory() + "dialogs.new");
    dlg_save_all(DIALOG, "pts", "first", DIALOG_MEMORY_SHARED);
    dlg_save_tile(DIALOG, "pts", "first", "pt", DIALOG_MEMORY_SHARED);
    EXPECT_EQ(file("dialogs.ini"), before);
    std::filesystem::remove(host.directory() + "dialogs.new");

    // A disk that is full after some bytes.
    std::string large;
    while (large.size() < 100000)
        large += "a,b,c,'some other value'\n";
    put("dialogs.ini", before + large);
    {
        const nearly_full_disk disk(50000);
        dlg_save_all(DIALOG, "pts", "first", DIALOG_MEMORY_SHARED);
        dlg_save_tile(DIALOG, "pts", "first", "pt", DIALOG_MEMORY_SHARED);
    }
    EXPECT_EQ(file("dialogs.ini"), before + large);
    EXPECT_EQ(file("dialogs.new"), "<none>");
}

TEST_F(DialogMemory, MemoryThatCannotBeReadIsNotReplaced)
{
    std::filesystem::create_directory(host.directory() + "dialogs.ini");
    dlg_save_tile(DIALOG, "pts", "first", "pt", DIALOG_MEMORY_SHARED);
    dlg_save_all(DIALOG, "pts", "first", DIALOG_MEMORY_SHARED);
    EXPECT_TRUE(std::filesystem::is_directory(host.directory() + "dialogs.ini"));
}

TEST_F(DialogMemory, LeftOverNewFilesDoNoHarm)
{
    put("dialogs.ini", "a,b,c,'1'\n");
    put("dialogs.new", "half a li");
    fake.tiles = {{"pt", "2"}};
    dlg_save_tile(DIALOG, "pts", "first", "pt", DIALOG_MEMORY_SHARED);
    EXPECT_EQ(file("dialogs.ini"), "a,b,c,'1'\npts,first,pt,'2'\n");
    EXPECT_EQ(file("dialogs.new"), "<none>");
}

TEST_F(DialogMemory, SavedValuesComeBack)
{
    for (const char* text : {"", " ", "'", "''", "it's", "\"", "%s%n", "a=b;c", "\xE4\xFF"}) {
        fake.tiles = {{"pt", text}, {"elev", "0"}};
        dlg_save_all(DIALOG, "pts", "first", 0);
        EXPECT_EQ(value("pt"), text);
        fake.tiles.clear();
        EXPECT_EQ(dlg_load_all(DIALOG, "pts", "first", 0), 1);
        EXPECT_EQ(fake.tiles["pt"], text);
    }
}

} // namespace
