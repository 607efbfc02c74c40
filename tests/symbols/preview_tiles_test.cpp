// Pictures of drawings in the image tiles of dialogs, and what keeps them there.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "common/directories.h"
#include "symbols/preview_marks.h"
#include "symbols/preview_tiles.h"
#include "tests/fakes/fake_host.h"

namespace
{

using lines = std::vector<std::string>;
const lines NOTHING;
constexpr const char* IMAGE = "adesk_img0000";

// Handles of image tiles when all children are: the children's own, 101 on.
struct tiles : host_session {
    tiles()
    {
        fake.lisp["psname"] = text_value("C:\\Sym\\");
        fake.child_classes = {IMAGE, IMAGE, IMAGE};
        fake.pictures = {"C:\\SYM\\TREE.DWG", "C:\\SYM\\POLE.DWG", "D:\\X\\HUT.DWG"};
    }
    ~tiles()
    {
        for (HWND dialog = 1; dialog < 20; ++dialog)
            preview_dialog_destroyed(dialog);
        EXPECT_EQ(fake.open_contexts, 0);
        EXPECT_TRUE(heap_is_as_before());
    }
};

lines calls_of(const std::function<void()>& what)
{
    fake.calls.clear();
    what();
    return fake.calls;
}

lines shown(int tile, const std::string& path)
{
    return {"PatBlt " + std::to_string(tile) + " 0 0 250 170 white",
            "picture " + path + " " + std::to_string(tile)};
}

lines timers(const std::vector<int>& handles)
{
    lines all;
    for (const int handle : handles)
        all.push_back("SetTimer " + std::to_string(handle) + " 0 100");
    return all;
}

TEST(TilePreview, GoesToTheNumberedImageTile)
{
    tiles session;
    fake.child_classes = {"Button", IMAGE, "STATIC", "adesk_img0001", IMAGE, IMAGE};
    const std::pair<int, int> cases[] = {{1, 102}, {2, 105}, {3, 106}};
    for (const auto& [index, tile] : cases)
        EXPECT_EQ(calls_of([i = index] { symbol_tile_preview("tree", i); }), shown(tile, "C:\\SYM\\TREE.DWG"));
    for (const int index : {0, -1, 4})
        EXPECT_EQ(calls_of([&] { symbol_tile_preview("tree", index); }), NOTHING) << index;
    fake.child_classes.clear();
    EXPECT_EQ(calls_of([] { symbol_tile_preview("tree", 1); }), NOTHING) << "no children";
}

TEST(TilePreview, NamesASymbolOrAPath)
{
    const std::pair<const char*, const char*> cases[] = {
        {"tree", "C:\\SYM\\TREE.DWG"},         {"Tree.dwg", "C:\\SYM\\TREE.DWG"},
        {"d:\\x\\hut", "D:\\X\\HUT.DWG"},      {"d:\\x\\hut.dwg.old", "D:\\X\\HUT.DWG.OLD"},
        {"d:/x/hut", "C:\\SYM\\D:/X/HUT.DWG"}, {"", "C:\\SYM\\.DWG"},
    };
    for (const auto& [name, path] : cases) {
        tiles session;
        fake.pictures = {path};
        EXPECT_EQ(calls_of([n = name] { symbol_tile_preview(n, 1); }), shown(101, path)) << name;
        EXPECT_STREQ(symbol_dir, "C:\\Sym\\");
    }
}

TEST(TilePreview, WithoutATileTheDirectoryIsReadAllTheSame)
{
    tiles session;
    fake.lisp["psname"] = text_value("E:\\Other\\");
    symbol_tile_preview("tree", 9);
    EXPECT_STREQ(symbol_dir, "E:\\Other\\");
}

TEST(TilePreview, LongPathIsCut)
{
    tiles session;
    const std::string name = "d:\\" + std::string(400, 'x');
    symbol_tile_preview(name.c_str(), 1);
    EXPECT_EQ(fake.calls[1], "picture D:\\" + std::string(253, 'X') + " 101");
}

// ---- what keeps them alive

TEST(TileSlots, TileIsDrawnAgainAWhileAfterItsDialogWasWiped)
{
    tiles session;
    fake.active_window = 7;
    symbol_tile_preview("tree", 1);
    symbol_tile_preview("pole", 3);
    EXPECT_EQ(calls_of([] { preview_dialog_erased(7); }), timers({101, 103}));
    EXPECT_EQ(calls_of([] { preview_dialog_erased(8); }), NOTHING);
    EXPECT_EQ(calls_of([] { preview_dialog_erased(0); }), NOTHING);
    lines again = shown(103, "C:\\SYM\\POLE.DWG");
    again.push_back("KillTimer 103 0");
    EXPECT_EQ(calls_of([] { EXPECT_TRUE(preview_tile_due(103)); }), again);
    EXPECT_EQ(calls_of([] { EXPECT_FALSE(preview_tile_due(102)); }), NOTHING);
    EXPECT_EQ(calls_of([] { EXPECT_FALSE(preview_tile_due(0)); }), NOTHING);
}

TEST(TileSlots, NewPictureTakesTheTilesSlot)
{
    tiles session;
    symbol_tile_preview("tree", 1);
    symbol_tile_preview("pole", 1);
    EXPECT_EQ(calls_of([] { preview_dialog_erased(1); }), timers({101}));
    lines again = shown(101, "C:\\SYM\\POLE.DWG");
    again.push_back("KillTimer 101 0");
    EXPECT_EQ(calls_of([] { preview_tile_due(101); }), again);
}

TEST(TileSlots, AreFreedWithTheirDialog)
{
    tiles session;
    fake.active_window = 7;
    symbol_tile_preview("tree", 1);
    fake.active_window = 8;
    symbol_tile_preview("pole", 2);
    preview_dialog_destroyed(7);
    EXPECT_EQ(calls_of([] { EXPECT_FALSE(preview_tile_due(101)); }), NOTHING);
    EXPECT_EQ(calls_of([] { preview_dialog_erased(7); }), NOTHING);
    EXPECT_EQ(calls_of([] { preview_dialog_erased(8); }), timers({102}));
}

TEST(TileSlots, AreTen)
{
    tiles session;
    fake.child_classes.assign(12, IMAGE);
    for (int index = 1; index <= 11; ++index)
        EXPECT_EQ(calls_of([&] { symbol_tile_preview("tree", index); }),
                  shown(100 + index, "C:\\SYM\\TREE.DWG"));
    EXPECT_EQ(calls_of([] { preview_dialog_erased(1); }).size(), 10u);
    EXPECT_FALSE(preview_tile_due(111)) << "shown, but not kept";
    symbol_tile_preview("pole", 10);
    EXPECT_EQ(calls_of([] { preview_tile_due(110); })[1], "picture C:\\SYM\\POLE.DWG 110")
        << "a tile with a slot keeps it";
}

TEST(TileSlots, FirstFreeSlotIsTakenBeforeTheTilesOwn)
{
    tiles session;
    fake.active_window = 7;
    symbol_tile_preview("tree", 1);
    fake.active_window = 8;
    symbol_tile_preview("tree", 2);
    preview_dialog_destroyed(7);
    symbol_tile_preview("pole", 2);
    // Both slots draw, the older picture last.
    const lines again = calls_of([] { preview_tile_due(102); });
    ASSERT_EQ(again.size(), 6u);
    EXPECT_EQ(again[1], "picture C:\\SYM\\POLE.DWG 102");
    EXPECT_EQ(again[4], "picture C:\\SYM\\TREE.DWG 102");
}

// ---- marks

std::string mark_shown(const std::string& path)
{
    const lines calls = calls_of([&] { symbol_display_preview(101, path.c_str()); });
    const std::string start = "StretchBlt 101 0 0 120 70 <- 0 0 114 67 copy ";
    const std::string& last = calls.back();
    EXPECT_EQ(last.substr(0, start.size()), start);
    return last.substr(std::min(start.size(), last.size()));
}

TEST(DisplayPreview, EmptyPathOnlyWipes)
{
    tiles session;
    EXPECT_EQ(calls_of([] { symbol_display_preview(101, ""); }), lines{"PatBlt 101 0 0 250 170 white"});
}

TEST(DisplayPreview, MarksAreDistinctAndMadeOnce)
{
    tiles session;
    const std::string there = session.directory() + "plain.dwg";
    write_text(there, "");
    const std::string without_picture = mark_shown(there), missing = mark_shown("C:\\none.dwg");
    EXPECT_NE(without_picture, missing);
    EXPECT_EQ(mark_shown(there), without_picture);
    EXPECT_EQ(mark_shown("C:\\none.dwg"), missing);
    EXPECT_EQ(std::count(fake.calls.begin(), fake.calls.end(), "CreateBitmap 114 67"), 0);
}

// The dots of a line of text, two pixels each, from the top of its letters.
std::string line_of_dots(const std::string& rows, int first_row, int dot_row)
{
    const std::string row = rows.substr(static_cast<std::size_t>((first_row + 2 * dot_row) * 115), 114);
    std::string dots;
    for (std::size_t x = 6; x < 108; x += 2)
        dots += row[x];
    dots.erase(0, dots.find_first_not_of(' '));
    dots.erase(dots.find_last_not_of(' ') + 1);
    return dots;
}

TEST(PreviewMarks, SayWhatIsTheMatter)
{
    host_session session;
    const std::string missing = bitmap_rows(missing_file_mark()), plain = bitmap_rows(no_preview_mark());
    EXPECT_EQ(line_of_dots(missing, 17, 0), "#####  ###  #     #####") << missing;
    EXPECT_EQ(line_of_dots(missing, 17, 6), "#      ###  ##### #####");
    EXPECT_EQ(line_of_dots(missing, 37, 1), "## ##   #   #     #       #   ##  # #   #") << missing;
    EXPECT_EQ(line_of_dots(plain, 17, 0), "#   #  ###") << plain;
    EXPECT_EQ(line_of_dots(plain, 37, 0), "####  ####  ##### #   #  ###  ##### #   #") << plain;
    for (const std::string& rows : {missing, plain}) {
        EXPECT_EQ(rows.size(), 115u * 67u);
        EXPECT_EQ(rows.substr(4 * 115, 114), "    " + std::string(106, '#') + "    ") << "frame";
        EXPECT_EQ(rows.substr(0, 114), std::string(114, ' '));
    }
    EXPECT_EQ(missing_file_mark(), missing_file_mark());
}

} // namespace
