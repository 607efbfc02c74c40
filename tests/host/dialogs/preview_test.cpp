// The picture of a drawing file in a window.

#include "hostapi/framework.h"
#include "tests/host/dialogs/window_session.h"

namespace
{

using namespace host::dialogs;

class Preview : public window_session
{
protected:
    void SetUp() override
    {
        const ads_hdlg dialog = made(": image { key = \"i\"; width = 10; height = 4; } ok_cancel;"); // 60 by 52
        const host::dialogs::dialog* dlg = find_dialog(dialog);
        tile = dlg->tiles[static_cast<std::size_t>(dlg->find("i"))].window;
    }
    static std::string line(double x1, double y1, double x2, double y2, const std::string& more = "")
    {
        return "0\nLINE\n8\n0\n" + more + "10\n" + std::to_string(x1) + "\n20\n" + std::to_string(y1) +
               "\n11\n" + std::to_string(x2) + "\n21\n" + std::to_string(y2) + "\n";
    }
    static std::string file(const std::string& entities, const std::string& blocks = "")
    {
        return (blocks.empty() ? "" : "0\nSECTION\n2\nBLOCKS\n" + blocks + "0\nENDSEC\n") +
               "0\nSECTION\n2\nENTITIES\n" + entities + "0\nENDSEC\n0\nEOF\n";
    }
    int show(const std::string& entities, const std::string& blocks = "")
    {
        tmp.write("s.dxf", file(entities, blocks));
        return acdbDisplayPreviewFromDwg("s.DWG", tile, nullptr);
    }
    int count() const
    {
        int drawn = 0;
        for (int y = 0; y < 52; y++)
            for (int x = 0; x < 60; x++)
                drawn += window_pixel(tile, x, y) != NOT_DRAWN;
        return drawn;
    }
    bool is_drawn(int x, int y) const { return window_pixel(tile, x, y) == 0; }

    HWND tile = 0;
};

TEST_F(Preview, IsFittedIntoTheWindow)
{
    // As wide as high: the height of the window decides, and it stands in the middle.
    EXPECT_EQ(show(line(100, 100, 200, 200) + line(100, 200, 200, 100)), 1);
    EXPECT_TRUE(is_drawn(4, 51)); // 59 - 51 over 2
    EXPECT_TRUE(is_drawn(55, 0) || is_drawn(54, 0));
    EXPECT_TRUE(is_drawn(4, 0));
    EXPECT_GT(count(), 95);
    EXPECT_LT(count(), 115); // two lines and nothing else
}

TEST_F(Preview, FlatDrawingIsALineInTheMiddle)
{
    EXPECT_EQ(show(line(0, 7, 10, 7)), 1);
    EXPECT_EQ(count(), 60);
    EXPECT_TRUE(is_drawn(0, 26) || is_drawn(0, 25));
}

TEST_F(Preview, DrawsCirclesAndBlocksInBlocks)
{
    const std::string circle = "0\nCIRCLE\n8\n0\n10\n0\n20\n0\n40\n5\n";
    EXPECT_EQ(show(circle), 1);
    EXPECT_TRUE(is_drawn(30, 0) || is_drawn(29, 0));
    EXPECT_FALSE(is_drawn(30, 26));
    const int alone = count();
    EXPECT_GT(alone, 100);
    const auto block = [](const std::string& name, const std::string& inside) {
        return "0\nBLOCK\n8\n0\n2\n" + name + "\n70\n0\n10\n0\n20\n0\n" + inside + "0\nENDBLK\n8\n0\n";
    };
    const auto insert = [](const std::string& name) {
        return "0\nINSERT\n8\n0\n2\n" + name + "\n10\n100\n20\n50\n";
    };
    InvalidateRect(GetActiveWindow(), nullptr, 1);
    turn(); // wipes the tile
    ASSERT_EQ(count(), 0);
    EXPECT_EQ(show(insert("B"), block("A", circle) + block("B", insert("A"))), 1);
    EXPECT_NEAR(count(), alone, 4); // the same picture, wherever it lies
}

TEST_F(Preview, HiddenLayersAndObjectsAreLeftOut)
{
    EXPECT_EQ(show(line(0, 0, 10, 10) + line(0, 10, 10, 0, "60\n1\n")), 1);
    EXPECT_FALSE(is_drawn(4, 0));
    const std::string layers = "0\nSECTION\n2\nTABLES\n0\nTABLE\n2\nLAYER\n70\n2\n"
                               "0\nLAYER\n2\nOFF\n70\n0\n62\n-7\n6\nCONTINUOUS\n"
                               "0\nLAYER\n2\nFROZEN\n70\n1\n62\n7\n6\nCONTINUOUS\n0\nENDTAB\n0\nENDSEC\n";
    for (const char* layer : {"OFF", "FROZEN"}) {
        std::string hidden = line(0, 0, 10, 10);
        hidden.replace(hidden.find("8\n0\n"), 4, "8\n" + std::string(layer) + "\n");
        tmp.write("h.dxf", layers + file(hidden));
        EXPECT_EQ(acdbDisplayPreviewFromDwg("h.dwg", tile, nullptr), 0) << layer;
    }
}

TEST_F(Preview, LinesWithoutAnEndAreCutAtTheWindow)
{
    EXPECT_EQ(
        show(line(0, 0, 10, 10) + "0\nXLINE\n8\n0\n100\nAcDbXline\n10\n5\n20\n5\n30\n0\n11\n1\n21\n0\n31\n0\n"),
        1);
    EXPECT_TRUE(is_drawn(0, 25) || is_drawn(0, 26));
    EXPECT_TRUE(is_drawn(59, 25) || is_drawn(59, 26));
}

TEST_F(Preview, NothingToShowIsToldAndDrawsNothing)
{
    tmp.write("bad.dxf", "0\nSECTION\n2\nENTITIES\n0\nLINE\n10\nabc\n");
    tmp.write("text.dxf", "no drawing at all");
    tmp.write("empty.dxf", file(""));
    tmp.write("point.dxf", file(line(3, 3, 3, 3)));
    tmp.write("real.dwg", "AC1015 \x01\x02");
    const std::string before = history;
    testing::internal::CaptureStderr();
    for (const char* name : {"bad.dwg", "text.dwg", "empty.dwg", "point.dwg", "real.dwg", "none.dwg", ""})
        EXPECT_EQ(acdbDisplayPreviewFromDwg(name, tile, nullptr), 0) << name;
    EXPECT_EQ(acdbDisplayPreviewFromDwg(nullptr, tile, nullptr), 0);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(history, before);
    EXPECT_EQ(count(), 0);
    EXPECT_EQ(show(line(0, 0, 1, 1)), 1);
    EXPECT_EQ(acdbDisplayPreviewFromDwg("s.dwg", 99999, nullptr), 0);
}

TEST_F(Preview, BackgroundFillsTheWindow)
{
    tmp.write("s.dxf", file(line(0, 0, 10, 0)));
    const COLORREF grey = 0x808080;
    traced();
    EXPECT_EQ(acdbDisplayPreviewFromDwg("s.dwg", tile, &grey), 1);
    EXPECT_EQ(traced(), "acdbDisplayPreviewFromDwg \"s.dwg\" " + std::to_string(tile) + " -> 1\n");
    EXPECT_EQ(window_pixel(tile, 0, 0), grey);
    EXPECT_EQ(count(), 60 * 52);
}

TEST_F(Preview, LeavesTheOpenDrawingAlone)
{
    host::document& doc = host::current_document();
    EXPECT_EQ(show(line(0, 0, 1, 1)), 1);
    EXPECT_EQ(&host::current_document(), &doc);
    EXPECT_EQ(host::documents().size(), 1u);
    ads_name last;
    EXPECT_NE(acdbEntLast(last), RTNORM);
}

TEST_F(Preview, BlocksThatHoldEachOtherManyTimesComeToAnEnd)
{
    std::string blocks;
    for (int level = 0; level < 20; level++) {
        const std::string inner = "0\nINSERT\n8\n0\n2\nB" + std::to_string(level - 1) + "\n10\n1\n20\n1\n";
        blocks += "0\nBLOCK\n8\n0\n2\nB" + std::to_string(level) + "\n70\n0\n10\n0\n20\n0\n" +
                  (level ? inner + inner + inner + inner : line(0, 0, 1, 1)) + "0\nENDBLK\n8\n0\n";
    }
    std::string inserts;
    for (int i = 0; i < 200; i++)
        inserts += "0\nINSERT\n8\n0\n2\nB19\n10\n1\n20\n1\n";
    EXPECT_EQ(show(inserts, blocks), 1); // drawn to its end it would not come back
}

} // namespace
