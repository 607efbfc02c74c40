// What the module shows on the host's windows: the two marks, the status pane, and the framework under them.
#include <gtest/gtest.h>

#include <map>

#include "shell/framework.h"
#include "shell/screen_marks.h"
#include "shell/status_pane.h"
#include "tests/shell/life/stand_ins.h"

extern "C" int DllMain(HINSTANCE module, DWORD reason, void* reserved);

namespace
{

class Screen : public testing::Test
{
protected:
    void SetUp() override
    {
        framework_set_up();
        noted();
    }
    life_session session;
};
using Marks = Screen;
using StatusPane = Screen;
using Framework = Screen;

// ---- framework

TEST_F(Framework, LibraryEntryKeepsTheInstanceOnEachCall)
{
    EXPECT_EQ(DllMain(88, 1, nullptr), 1);
    EXPECT_EQ(module_instance, 88u);
    EXPECT_EQ(DllMain(89, 0, nullptr), 1);
    EXPECT_EQ(module_instance, 89u);
}

TEST_F(Framework, SetUpAndTearDownBothRefreshTheWindows)
{
    EXPECT_EQ(window_of(main_window), 1u);
    EXPECT_EQ(window_of(doc_window), 2u);
    main_window = doc_window = nullptr;
    screen_marks_forget();
    framework_tear_down();
    EXPECT_EQ(noted(), "library- term");
    EXPECT_EQ(window_of(main_window), 1u);
    EXPECT_EQ(window_of(doc_window), 2u);
    EXPECT_NE(screen_mark_pixels(1), nullptr);
    framework_set_up();
    EXPECT_EQ(noted(), "init:5 library+");
}

TEST_F(Framework, ThatRefusesTheModuleEndsItsSetUp)
{
    framework_tear_down();
    screen_marks_forget();
    main_window = doc_window = nullptr;
    noted();
    life.framework_works = false;
    framework_set_up();
    EXPECT_EQ(noted(), "init:5");
    EXPECT_EQ(main_window, nullptr);
    EXPECT_EQ(screen_mark_pixels(1), nullptr);
    status_text("text");
    screen_mark_set(1, 1.0, 2.0);
    screen_marks_draw();
    screen_mark_clear(1);
    EXPECT_EQ(noted(), "");
    framework_tear_down();
    EXPECT_EQ(noted(), "term");
}

// ---- marks

constexpr const char* ROD_PERSON = //
    ".......BBB.......\n"
    "......BYYYB......\n"
    "......BYYYB......\n"
    "......BYYYB......\n"
    ".......BYB.......\n"
    "......BBYBB......\n"
    ".....BCCBCCB.....\n"
    "....BCCCBCCCB....\n"
    "....BCBGBGBCB....\n"
    "....BCBGBGBCB....\n"
    "....BCBGBGBCB....\n"
    "....BCBGBGBCB....\n"
    ".....BBGBGBB.....\n"
    "......BGBGB......\n"
    "......BGBGB......\n"
    "......BGBGB......\n"
    "......BBBBB......\n";
constexpr const char* LAMP = //
    "......BBBBB......\n"
    ".....BYYYYYB.....\n"
    "....BYYKKKYYB....\n"
    "...BYYYKKKYYYB...\n"
    "...BYYYKKKYYYB...\n"
    "...BYYYKKKYYYB...\n"
    "...BYYYYKYYYYB...\n"
    "...BYYYYYYYYYB...\n"
    "...BYYYKKKYYYB...\n"
    "....BYYYKYYYB....\n"
    ".....BYYYYYB.....\n"
    "......BKKKB......\n"
    "......BSSSB......\n"
    "......BKKKB......\n"
    "......BSSSB......\n"
    "......BKKKB......\n"
    ".......BBB.......\n";

// A mark's table by the letters of its colours.
std::string picture_of(int mark)
{
    const std::map<std::int32_t, char> letters = {{NO_PIXEL, '.'}, {0xFF0000, 'B'}, {0x00FFFF, 'Y'},
                                                  {0xFFFF00, 'C'}, {0x00FF00, 'G'}, {0x000000, 'K'},
                                                  {0xC0C0C0, 'S'}};
    std::string out;
    for (const auto& row : *screen_mark_pixels(mark)) {
        for (const std::int32_t color : row)
            out += letters.count(color) ? letters.at(color) : '?';
        out += '\n';
    }
    return out;
}

TEST_F(Marks, AreARodPersonAndALamp)
{
    EXPECT_EQ(picture_of(1), ROD_PERSON);
    EXPECT_EQ(picture_of(2), LAMP);
}

TEST_F(Marks, StandOnePixelToTheLowerRightOfTheirMiddle)
{
    screen_mark_set(1, 5.0, 6.0);
    screen_marks_draw();
    EXPECT_EQ(life.pixels.size(), 105u);
    EXPECT_EQ(life.pixels.begin()->first.first, 100 + 4 - 7); // the first column with a pixel
    EXPECT_EQ(life.pixels.rbegin()->first.first, 100 + 12 - 7);
    EXPECT_EQ((life.pixels[{100, 43}]), 0xFF0000u); // column 7 of the first row
    EXPECT_EQ((life.pixels[{100, 59}]), 0xFF0000u); // and of the last
    EXPECT_EQ(life.pixels.count({100, 42}), 0u);
    EXPECT_EQ(life.pixels.count({100, 60}), 0u);
}

TEST_F(Marks, WithoutAPlaceOnTheScreenAreNotDrawn)
{
    life.pixel_known = false;
    screen_mark_set(1, 5.0, 6.0);
    screen_marks_draw();
    EXPECT_TRUE(life.pixels.empty());
    EXPECT_EQ(noted(), "pixel:2,5,6,0");
}

TEST_F(Marks, ClearingRepaintsWhereTheyWereDrawnLast)
{
    screen_mark_clear(1);
    EXPECT_EQ(noted(), "");
    screen_mark_set(1, 5.0, 6.0);
    screen_marks_draw();
    life.pixel_known = false; // a later drawing that fails leaves the place
    screen_marks_draw();
    noted();
    screen_mark_clear(2);
    EXPECT_EQ(noted(), "");
    screen_mark_clear(1);
    EXPECT_EQ(noted(), "repaint:2,80,30,120,70");
    screen_mark_clear(1);
    screen_marks_draw();
    EXPECT_EQ(noted(), "");
}

TEST_F(Marks, ThereAreTwo)
{
    for (const int mark : {0, 3, -1, 32767}) {
        screen_mark_set(mark, 5.0, 6.0);
        screen_mark_clear(mark);
        EXPECT_EQ(screen_mark_pixels(mark), nullptr);
    }
    screen_marks_draw();
    EXPECT_EQ(noted(), "");
}

// ---- status pane

TEST_F(StatusPane, IsMadeByTheFirstTextAndKeepsItsWidth)
{
    status_text("OP-101");
    EXPECT_EQ(noted(), "window:STATIC,OP-101,50000000,930,0,60,20,7 font:16,8,400,1,Courier New send:31,48,51");
    status_text("OP-101   BS-102");
    EXPECT_EQ(noted(), "text:31,OP-101   BS-102");
    status_pane_remove();
    EXPECT_EQ(noted(), "destroy:31 delete:51");
    status_pane_remove();
    EXPECT_EQ(noted(), "");
}

TEST_F(StatusPane, NoTextDoesNothing)
{
    status_text("");
    status_text(nullptr);
    EXPECT_EQ(noted(), "");
    status_text("A");
    noted();
    status_text("");
    EXPECT_EQ(noted(), "");
}

TEST_F(StatusPane, NeedsABarOf800Pixels)
{
    life.bar = {0, 0, 799, 20};
    status_text("A");
    EXPECT_EQ(noted(), "");
    life.bar = {0, 0, 800, 24};
    status_text("AB");
    EXPECT_EQ(noted().substr(0, 39), "window:STATIC,AB,50000000,770,0,20,24,7");
}

TEST_F(StatusPane, WithoutABarThereIsNone)
{
    life.status_bar = 0;
    status_text("A");
    EXPECT_EQ(noted(), "");
}

TEST_F(StatusPane, ThatCannotBeMadeIsTriedAgain)
{
    life.windows_can_be_made = false;
    status_text("A");
    EXPECT_EQ(noted(), "window:STATIC,A,50000000,980,0,10,20,7");
    life.windows_can_be_made = true;
    status_text("AB");
    EXPECT_EQ(noted(), "window:STATIC,AB,50000000,970,0,20,20,7 font:16,8,400,1,Courier New send:31,48,51");
}

} // namespace
