// Painting: what programs draw on windows, when it is lost, and what they are told.
#include "host/commandline/commands.h"
#include "hostapi/framework.h"
#include "tests/host/dialogs/window_session.h"

namespace
{

using namespace host::dialogs;

constexpr COLORREF RED = 0x0000FF;

LRESULT note_painting(int code, WPARAM w, LPARAM l)
{
    const auto* message = reinterpret_cast<const CWPSTRUCT*>(l);
    if (message->message == WM_PAINT || message->message == WM_ERASEBKGND || message->message == WM_DESTROY)
        heard().push_back(std::to_string(message->message) + " " + std::to_string(message->hwnd));
    return CallNextHookEx(0, code, w, l);
}

class Painting : public window_session
{
protected:
    static void dot(HWND window, int x, int y, COLORREF color = RED)
    {
        const HDC context = GetDC(window);
        SetPixel(context, x, y, color);
        ReleaseDC(window, context);
    }
};

constexpr const char* TILES = ": edit_box { key = \"e\"; } : image { key = \"i\"; width = 10; height = 4; }"
                              ": image { key = \"j\"; width = 10; height = 4; } ok_cancel;";

// An image tile that a program draws in as the module does: a hook sets a timer when the tile is wiped, a
// filter draws it again.
struct {
    HWND dialog = 0, tile = 0;
    HHOOK hook = 0, filter = 0;
} keeper;

LRESULT keeper_hook(int code, WPARAM w, LPARAM l)
{
    const auto* message = reinterpret_cast<const CWPSTRUCT*>(l);
    if (message->message == WM_ERASEBKGND && message->hwnd == keeper.dialog)
        SetTimer(keeper.tile, 0, 100, nullptr);
    return CallNextHookEx(keeper.hook, code, w, l);
}

void draw_kept()
{
    const HDC context = GetDC(keeper.tile);
    SetPixel(context, 3, 4, RED);
    ReleaseDC(keeper.tile, context);
}

LRESULT keeper_filter(int code, WPARAM w, LPARAM l)
{
    const auto* message = reinterpret_cast<const MSG*>(l);
    if (message->message != WM_TIMER || message->hwnd != keeper.tile)
        return CallNextHookEx(keeper.filter, code, w, l);
    heard().push_back(window_pixel(keeper.tile, 3, 4) == NOT_DRAWN ? "redrawn" : "was there");
    draw_kept();
    KillTimer(keeper.tile, 0);
    return 1;
}

TEST_F(Painting, WipedTileIsDrawnAgainByTimer)
{
    const ads_hdlg dialog = made(TILES, [](ads_callback_packet* packet) {
        if (std::string(packet->value) != "draw")
            return;
        ads_start_image(packet->dialog, "i"); // what DCL draws wipes the images
        ads_fill_image(0, 0, 10, 10, 7);
        ads_end_image();
        draw_kept();
    });
    keeper.dialog = GetActiveWindow();
    const host::dialogs::dialog* dlg = find_dialog(dialog);
    keeper.tile = dlg->tiles[static_cast<std::size_t>(dlg->find("i"))].window;
    keeper.hook = SetWindowsHookExA(WH_CALLWNDPROC, keeper_hook, 0, 0);
    keeper.filter = SetWindowsHookExA(WH_MSGFILTER, keeper_filter, 0, 0);
    draw_kept();
    // Shown once, drawn anew once; a value that changes wipes nothing.
    EXPECT_EQ(run(dialog, "e=other\ne=draw\n!accept\n"), 1);
    EXPECT_EQ(log(), "redrawn; redrawn");
    EXPECT_EQ(timer_count(), 0);
    UnhookWindowsHookEx(keeper.hook);
    UnhookWindowsHookEx(keeper.filter);
}

TEST_F(Painting, WhatDclDrewStaysInItsTileWhenThatIsWiped)
{
    const ads_hdlg dialog = made(TILES);
    ads_start_image(dialog, "i");
    ads_fill_image(0, 0, 10, 10, 7);
    ads_end_image();
    const host::dialogs::dialog* dlg = find_dialog(dialog);
    const tile& image = dlg->tiles[static_cast<std::size_t>(dlg->find("i"))];
    dot(image.window, 3, 4);
    EXPECT_EQ(window_pixel(image.window, 3, 4), RED);
    turn();
    EXPECT_EQ(window_pixel(image.window, 3, 4), NOT_DRAWN);
    ASSERT_EQ(image.drawn.size(), 1u);
    EXPECT_EQ(image.drawn[0].color, 7);
}

TEST_F(Painting, DialogIsToldWhenShownChangedAndGone)
{
    const HHOOK hook = SetWindowsHookExA(WH_CALLWNDPROC, note_painting, 0, 0);
    const ads_hdlg dialog = made(TILES);
    const std::string number = std::to_string(GetActiveWindow());
    run(dialog, "e=1\n!accept\n");
    const std::string all = log();
    const std::string shown = "20 " + number + "; 15 " + number + "; ", changed = "15 " + number + "; ";
    EXPECT_TRUE(all.starts_with(shown + changed + "2 " + number + "; 2 ")) << all;
    EXPECT_TRUE(UnhookWindowsHookEx(hook));
    turn();
}

TEST_F(Painting, DialogUnderABoxThatHasGoneIsWipedAndPainted)
{
    const ads_hdlg dialog = made(TILES);
    turn();
    const HWND window = GetActiveWindow();
    const host::dialogs::dialog* dlg = find_dialog(dialog);
    const HWND image = dlg->tiles[static_cast<std::size_t>(dlg->find("j"))].window;
    dot(image, 0, 0);
    const HHOOK hook = SetWindowsHookExA(WH_CALLWNDPROC, note_painting, 0, 0);
    host::answers_from_text("ok\n");
    MessageBoxA(window, "x", "y", MB_OK);
    EXPECT_EQ(window_pixel(image, 0, 0), RED); // at the next loop
    turn();
    EXPECT_EQ(log(), "20 " + std::to_string(window) + "; 15 " + std::to_string(window));
    EXPECT_EQ(window_pixel(image, 0, 0), NOT_DRAWN);
    UnhookWindowsHookEx(hook);
}

TEST_F(Painting, InvalidatedAreaOfTheDrawingLosesItsPixels)
{
    dot(DRAWING_WINDOW, 100, 100);
    dot(DRAWING_WINDOW, 500, 100);
    const RECT area{80, 80, 120, 120};
    const HHOOK hook = SetWindowsHookExA(WH_CALLWNDPROC, note_painting, 0, 0);
    InvalidateRect(DRAWING_WINDOW, &area, 0);
    EXPECT_EQ(window_pixel(DRAWING_WINDOW, 100, 100), RED);
    EXPECT_EQ(log(), "");
    turn(loop::prompt);
    EXPECT_EQ(log(), "15 3");
    EXPECT_EQ(window_pixel(DRAWING_WINDOW, 100, 100), NOT_DRAWN);
    EXPECT_EQ(window_pixel(DRAWING_WINDOW, 500, 100), RED);
    turn(loop::prompt);
    EXPECT_EQ(log(), "");
    const RECT outside{-50, -50, -10, -10};
    InvalidateRect(DRAWING_WINDOW, &outside, 1);
    turn(loop::prompt);
    EXPECT_EQ(log(), "");
    UnhookWindowsHookEx(hook);
}

TEST_F(Painting, DrawingIsPaintedAtTheEndOfCommandsThatRedrawIt)
{
    const HHOOK hook = SetWindowsHookExA(WH_CALLWNDPROC, note_painting, 0, 0);
    const std::pair<const char*, const char*> cases[] = {
        {"REDRAW", "20 3; 15 3"}, {"REGEN", "20 3; 15 3"}, {"ZOOM", "20 3; 15 3"}, {"LAYER", ""}};
    for (const auto& [command, told] : cases) {
        host::answers_from_text(std::string(command) == "ZOOM" ? "2\n" : "\n");
        dot(DRAWING_WINDOW, 7, 7);
        host::commandline::run_typed(host::current_document(), command);
        EXPECT_EQ(log(), told) << command;
        EXPECT_EQ(window_pixel(DRAWING_WINDOW, 7, 7), *told ? NOT_DRAWN : RED) << command;
    }
    UnhookWindowsHookEx(hook);
}

TEST_F(Painting, AnotherDrawingInFrontIsAnotherPicture)
{
    dot(DRAWING_WINDOW, 7, 7);
    turn(loop::prompt);
    EXPECT_EQ(window_pixel(DRAWING_WINDOW, 7, 7), RED);
    host::open_document();
    turn(loop::prompt);
    EXPECT_EQ(window_pixel(DRAWING_WINDOW, 7, 7), NOT_DRAWN);
}

TEST_F(Painting, WhatIsDrawnInAHookOfPaintingStays)
{
    const HHOOK hook = SetWindowsHookExA(
        WH_CALLWNDPROC,
        [](int code, WPARAM w, LPARAM l) {
            const LRESULT next = CallNextHookEx(0, code, w, l);
            if (reinterpret_cast<const CWPSTRUCT*>(l)->message == WM_PAINT)
                dot(DRAWING_WINDOW, 9, 9);
            return next;
        },
        0, 0);
    InvalidateRect(DRAWING_WINDOW, nullptr, 1);
    turn(loop::prompt);
    EXPECT_EQ(window_pixel(DRAWING_WINDOW, 9, 9), RED);
    UnhookWindowsHookEx(hook);
}

TEST_F(Painting, HookThatAsksForPaintingWhilePaintingHoldsNothingUp)
{
    const HHOOK hook = SetWindowsHookExA(
        WH_CALLWNDPROC,
        [](int, WPARAM, LPARAM) -> LRESULT {
            heard().emplace_back("told");
            InvalidateRect(DRAWING_WINDOW, nullptr, 0);
            return 0;
        },
        0, 0);
    InvalidateRect(DRAWING_WINDOW, nullptr, 0);
    turn(loop::prompt);
    EXPECT_EQ(heard().size(), 1u);
    UnhookWindowsHookEx(hook);
    turn(loop::prompt);
}

// ---- contexts

TEST_F(Painting, PixelsOutsideAreRefused)
{
    const HDC context = GetDC(DRAWING_WINDOW);
    EXPECT_EQ(SetPixel(context, 0, 0, 0xFF123456), 0x123456u);
    EXPECT_EQ(SetPixel(context, 1023, 767, RED), RED);
    for (const auto& [x, y] : {std::pair{-1, 0}, {0, -1}, {1024, 0}, {0, 768}, {INT32_MIN, INT32_MAX}})
        EXPECT_EQ(SetPixel(context, x, y, RED), NOT_DRAWN) << x << "," << y;
    EXPECT_EQ(SetPixel(99999, 0, 0, RED), NOT_DRAWN);
    traced();
    EXPECT_FALSE(ReleaseDC(MAIN_WINDOW, context)); // another window's
    EXPECT_FALSE(DeleteDC(context));
    EXPECT_TRUE(ReleaseDC(DRAWING_WINDOW, context));
    EXPECT_FALSE(ReleaseDC(DRAWING_WINDOW, context));
    EXPECT_EQ(traced(), "ReleaseDC 1 2 -> 0\nReleaseDC 3 2 -> 1\nReleaseDC 3 0 -> 0\n");
    EXPECT_EQ(window_pixel(DRAWING_WINDOW, 0, 0), 0x123456u);
    EXPECT_EQ(window_pixel(DRAWING_WINDOW, -1, 0), NOT_DRAWN);
}

TEST_F(Painting, WhitenessIsCutToTheWindow)
{
    made(TILES);
    const HWND tile = GetWindow(GetWindow(GetActiveWindow(), GW_CHILD), GW_HWNDNEXT); // 60 by 52
    const HDC context = GetDC(tile);
    traced();
    EXPECT_TRUE(PatBlt(context, 0, 0, 250, 170, WHITENESS));
    EXPECT_EQ(traced(), "PatBlt " + std::to_string(tile) + " 0 0 250 170 16711778 -> 1\n");
    EXPECT_EQ(window_pixel(tile, 59, 51), 0xFFFFFFu);
    EXPECT_EQ(window_pixel(tile, 60, 51), NOT_DRAWN);
    EXPECT_TRUE(PatBlt(context, INT32_MAX, INT32_MIN, INT32_MAX, INT32_MAX, WHITENESS));
    EXPECT_TRUE(PatBlt(context, 0, 0, -5, 5, WHITENESS));
    EXPECT_FALSE(PatBlt(context, 0, 0, 5, 5, 12345));
    EXPECT_FALSE(PatBlt(99999, 0, 0, 5, 5, WHITENESS));
    ReleaseDC(tile, context);
}

TEST_F(Painting, BitmapIsStretchedOverTheWindow)
{
    // Two rows of three: white, black, white; black, white, black.
    const unsigned char rows[] = {0xA0, 0, 0x40, 0};
    const HBITMAP bitmap = CreateBitmap(3, 2, 1, 1, rows);
    ASSERT_NE(bitmap, 0u);
    const HDC target = GetDC(DRAWING_WINDOW), memory = CreateCompatibleDC(target);
    const HGDIOBJ before = SelectObject(memory, bitmap);
    EXPECT_NE(before, 0u);
    EXPECT_FALSE(DeleteObject(bitmap)); // in use
    EXPECT_TRUE(StretchBlt(target, 10, 20, 30, 20, memory, 0, 0, 3, 2, SRCCOPY));
    const auto at = [](int x, int y) { return window_pixel(DRAWING_WINDOW, x, y); };
    EXPECT_EQ(at(10, 20), 0xFFFFFFu);
    EXPECT_EQ(at(19, 29), 0xFFFFFFu);
    EXPECT_EQ(at(20, 20), 0u);
    EXPECT_EQ(at(39, 20), 0xFFFFFFu);
    EXPECT_EQ(at(10, 30), 0u);
    EXPECT_EQ(at(20, 39), 0xFFFFFFu);
    for (const auto& [x, y] : {std::pair{9, 20}, {40, 20}, {10, 19}, {10, 40}})
        EXPECT_EQ(at(x, y), NOT_DRAWN) << x << "," << y;
    EXPECT_TRUE(StretchBlt(target, -5000, -5000, INT32_MAX, INT32_MAX, memory, 0, 0, 3, 2, SRCCOPY));
    EXPECT_FALSE(StretchBlt(target, 0, 0, 5, 5, memory, 0, 0, 3, 2, 99));
    EXPECT_FALSE(StretchBlt(target, 0, 0, 0, 5, memory, 0, 0, 3, 2, SRCCOPY));
    EXPECT_EQ(SelectObject(memory, before), bitmap);
    EXPECT_FALSE(StretchBlt(target, 0, 0, 5, 5, memory, 0, 0, 3, 2, SRCCOPY)); // nothing in it
    EXPECT_TRUE(DeleteObject(bitmap));
    EXPECT_TRUE(DeleteDC(memory));
    EXPECT_FALSE(DeleteDC(memory));
    EXPECT_TRUE(ReleaseDC(DRAWING_WINDOW, target));
}

TEST_F(Painting, RowsOfBitmapsAreWholeWords)
{
    unsigned char rows[8] = {}; // 17 wide: 4 bytes a row
    rows[2] = 0x80;             // (16, 0)
    rows[4] = 0x80;             // (0, 1)
    const HBITMAP bitmap = CreateBitmap(17, 2, 1, 1, rows);
    const HDC memory = CreateCompatibleDC(0), target = GetDC(DRAWING_WINDOW);
    SelectObject(memory, bitmap);
    StretchBlt(target, 0, 0, 17, 2, memory, 0, 0, 17, 2, SRCCOPY);
    int white = 0;
    for (int y = 0; y < 2; y++)
        for (int x = 0; x < 17; x++)
            white += window_pixel(DRAWING_WINDOW, x, y) == 0xFFFFFF;
    EXPECT_EQ(white, 2);
    EXPECT_EQ(window_pixel(DRAWING_WINDOW, 16, 0), 0xFFFFFFu);
    EXPECT_EQ(window_pixel(DRAWING_WINDOW, 0, 1), 0xFFFFFFu);
    DeleteDC(memory); // lets the bitmap go
    EXPECT_TRUE(DeleteObject(bitmap));
    ReleaseDC(DRAWING_WINDOW, target);
}

TEST_F(Painting, BitmapsOfOtherFormsAreRefused)
{
    EXPECT_EQ(CreateBitmap(0, 5, 1, 1, nullptr), 0u);
    EXPECT_EQ(CreateBitmap(5, -1, 1, 1, nullptr), 0u);
    EXPECT_EQ(CreateBitmap(5, 5, 1, 8, nullptr), 0u);
    EXPECT_EQ(CreateBitmap(1 << 20, 5, 1, 1, nullptr), 0u);
    EXPECT_EQ(CreateCompatibleDC(99999), 0u);
    EXPECT_EQ(SelectObject(99999, 1), 0u);
}

TEST_F(Painting, ContextOfAWindowThatIsGoneDrawsNothing)
{
    made(TILES);
    const HWND window = GetActiveWindow();
    const HDC context = GetDC(window);
    end_all_dialogs();
    EXPECT_EQ(SetPixel(context, 0, 0, RED), NOT_DRAWN);
    EXPECT_FALSE(PatBlt(context, 0, 0, 5, 5, WHITENESS));
    EXPECT_TRUE(ReleaseDC(window, context));
    turn();
}

} // namespace
