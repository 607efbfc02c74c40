// The tree of windows: what programs find in it, make in it and are told when it goes.
#include "host/core/command_queue.h"
#include "hostapi/framework.h"
#include "tests/host/dialogs/window_session.h"

namespace
{

using namespace host::dialogs;

class Windows : public window_session
{
protected:
    static HWND image(ads_hdlg dialog, const char* key)
    {
        const host::dialogs::dialog* dlg = find_dialog(dialog);
        return dlg->tiles[static_cast<std::size_t>(dlg->find(key))].window;
    }
};

constexpr const char* TILES = ": button { key = \"b\"; } : image { key = \"i\"; width = 10; height = 4; }"
                              ": row { : image_button { key = \"j\"; width = 20; aspect_ratio = 2; } }"
                              ": list_box { key = \"l\"; } ok_cancel;";

TEST_F(Windows, MainFrameHasItsStatusBarByItsNumber)
{
    EXPECT_EQ(adsw_acadMainWnd(), 1u);
    EXPECT_EQ(acedGetAcadFrame()->m_hWnd, adsw_acadMainWnd());
    const HWND bar = GetDlgItem(adsw_acadMainWnd(), 59393);
    ASSERT_NE(bar, 0u);
    RECT area{-1, -1, -1, -1};
    ASSERT_TRUE(GetClientRect(bar, &area));
    EXPECT_EQ(area.left, 0);
    EXPECT_EQ(area.top, 0);
    EXPECT_EQ(area.right, 1024);
    EXPECT_EQ(area.bottom, 20);
    resize_window(bar, 799, 20);
    ASSERT_TRUE(GetClientRect(bar, &area));
    EXPECT_EQ(area.right, 799);
    resize_window(bar, 1024, 20);
    turn();
    EXPECT_EQ(GetDlgItem(adsw_acadMainWnd(), 59394), 0u);
}

TEST_F(Windows, DrawingsWindowIsAsLargeAsTheScreen)
{
    RECT area{};
    ASSERT_TRUE(GetClientRect(adsw_acadDocWnd(), &area));
    resbuf size{};
    ASSERT_EQ(acedGetVar("SCREENSIZE", &size), RTNORM);
    EXPECT_EQ(area.right, size.resval.rpoint[0]);
    EXPECT_EQ(area.bottom, size.resval.rpoint[1]);
}

TEST_F(Windows, ImageTilesAreChildrenInTheOrderOfTheTiles)
{
    const ads_hdlg dialog = made(TILES);
    std::vector<HWND> images;
    std::string classes;
    for (HWND child = GetWindow(GetActiveWindow(), GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        classes += class_of(child) + " ";
        if (class_of(child) == "adesk_img0000")
            images.push_back(child);
    }
    EXPECT_EQ(classes, "Button adesk_img0000 adesk_img0000 ListBox Button Button ");
    EXPECT_EQ(images, (std::vector<HWND>{image(dialog, "i"), image(dialog, "j")}));
    int width = 0, height = 0;
    ads_dimensions_tile(dialog, "j", &width, &height);
    RECT area{};
    ASSERT_TRUE(GetClientRect(images[1], &area));
    EXPECT_EQ(area.right, width);
    EXPECT_EQ(area.bottom, height);
    EXPECT_EQ(area.right, 120);
    EXPECT_EQ(area.bottom, 60);
}

TEST_F(Windows, ClassNamesAreCutToTheRoom)
{
    made(TILES);
    const HWND tile = GetWindow(GetWindow(GetActiveWindow(), GW_CHILD), GW_HWNDNEXT);
    char name[6] = "";
    EXPECT_EQ(GetClassNameA(tile, name, sizeof name), 5);
    EXPECT_STREQ(name, "adesk");
    EXPECT_EQ(GetClassNameA(tile, name, 0), 0);
    EXPECT_EQ(GetClassNameA(99999, name, sizeof name), 0);
}

TEST_F(Windows, ChildOfTheStatusBarKeepsItsTextAndFont)
{
    const HWND bar = GetDlgItem(adsw_acadMainWnd(), 59393);
    const HWND pane = CreateWindowExA(0, "STATIC", "", 0x50000000, 900, 0, 110, 20, bar, 7, 0, nullptr);
    ASSERT_NE(pane, 0u);
    EXPECT_EQ(class_of(pane), "Static");
    EXPECT_EQ(GetDlgItem(bar, 7), pane);
    EXPECT_EQ(find_window(pane)->x, 900);
    EXPECT_EQ(find_window(pane)->width, 110);
    EXPECT_EQ(GetWindow(bar, GW_CHILD), pane);
    const HFONT font = CreateFontA(16, 8, 0, 0, FW_NORMAL, 0, 0, 0, 0, 0, 0, 0, FIXED_PITCH, "Courier New");
    SendMessageA(pane, WM_SETFONT, font, 1);
    EXPECT_TRUE(SetWindowTextA(pane, "OP-7"));
    EXPECT_EQ(window_title(pane), "OP-7");
    EXPECT_EQ(find_window(pane)->font, font);
    EXPECT_TRUE(DestroyWindow(pane));
    EXPECT_FALSE(DestroyWindow(pane));
    EXPECT_EQ(GetDlgItem(bar, 7), 0u);
    EXPECT_TRUE(DeleteObject(font));
    EXPECT_FALSE(DeleteObject(font));
}

TEST_F(Windows, ChildrenNeedAKnownClassAndAParent)
{
    EXPECT_EQ(CreateWindowExA(0, "no such", "", 0, 0, 0, 1, 1, STATUS_BAR, 1, 0, nullptr), 0u);
    EXPECT_EQ(CreateWindowExA(0, nullptr, "", 0, 0, 0, 1, 1, STATUS_BAR, 1, 0, nullptr), 0u);
    EXPECT_EQ(CreateWindowExA(0, "STATIC", "", 0, 0, 0, 1, 1, 99999, 1, 0, nullptr), 0u);
    EXPECT_FALSE(DestroyWindow(MAIN_WINDOW)); // the host's own stay
    EXPECT_FALSE(DestroyWindow(STATUS_BAR));
}

TEST_F(Windows, FocusGoesFromOneToTheOther)
{
    made(TILES);
    const HWND dialog = GetActiveWindow();
    EXPECT_EQ(SetFocus(dialog), 0u);
    EXPECT_EQ(SetFocus(MAIN_WINDOW), dialog);
    EXPECT_EQ(SetFocus(99999), 0u); // no window: nothing changes
    EXPECT_EQ(focused_window(), MAIN_WINDOW);
    EXPECT_EQ(SetFocus(dialog), MAIN_WINDOW);
    end_all_dialogs();
    EXPECT_EQ(focused_window(), 0u); // gone with its window
}

TEST_F(Windows, WrapperIsOneAWindow)
{
    CWnd* const main = CWnd::FromHandle(MAIN_WINDOW);
    ASSERT_TRUE(main);
    EXPECT_EQ(main->m_hWnd, MAIN_WINDOW);
    EXPECT_EQ(CWnd::FromHandle(MAIN_WINDOW), main);
    EXPECT_EQ(CWnd::FromHandle(0), nullptr);
    EXPECT_EQ(CWnd::FromHandle(99999), nullptr);
}

TEST_F(Windows, ExtensionsAndLibrariesAreCounted)
{
    AFX_EXTENSION_MODULE state{0, 0};
    EXPECT_TRUE(AfxInitExtensionModule(state, 12));
    EXPECT_EQ(state.hModule, 12u);
    EXPECT_TRUE(AfxInitExtensionModule(state, 12)); // a second time changes nothing
    EXPECT_EQ(extension_count(), 1);
    {
        const CDynLinkLibrary library(state);
        EXPECT_EQ(library_count(), 1);
    }
    EXPECT_EQ(library_count(), 0);
    AfxTermExtensionModule(state);
    AfxTermExtensionModule(state);
    EXPECT_EQ(extension_count(), 0);
    refuse_extensions(true);
    EXPECT_FALSE(AfxInitExtensionModule(state, 12));
    refuse_extensions(false);
    EXPECT_EQ(extension_count(), 0);
}

int send_text(HWND window, std::uintptr_t code, const std::string& text, DWORD size)
{
    const COPYDATASTRUCT data{code, size, text.c_str()};
    return static_cast<int>(SendMessageA(window, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data)));
}

TEST_F(Windows, TextForTheCommandLineIsQueued)
{
    host::clear_command_text();
    traced();
    EXPECT_EQ(send_text(MAIN_WINDOW, 1, "(c:one)\n", 9), 1);
    EXPECT_EQ(send_text(MAIN_WINDOW, 1, "(c:two)\nbeyond", 8), 1); // no further than its size
    EXPECT_EQ(traced(), "SendMessageA 1 74 \"(c:one)\\n\" -> 1\nSendMessageA 1 74 \"(c:two)\\n\" -> 1\n");
    EXPECT_EQ(send_text(MAIN_WINDOW, 2, "(c:three)\n", 11), 0);   // another code
    EXPECT_EQ(send_text(DRAWING_WINDOW, 1, "(c:four)\n", 10), 0); // another window
    EXPECT_EQ(SendMessageA(MAIN_WINDOW, WM_COPYDATA, 0, 0), 0);
    host::release_command_text();
    EXPECT_EQ(host::take_command_input(), "(c:one)");
    EXPECT_EQ(host::take_command_input(), "(c:two)");
    EXPECT_FALSE(host::take_command_input());
    host::clear_command_text();
}

TEST_F(Windows, CallsForWindowsThatAreGoneDoNothing)
{
    made(TILES);
    const HWND dialog = GetActiveWindow(), tile = GetWindow(dialog, GW_CHILD);
    end_all_dialogs();
    for (const HWND gone : {dialog, tile, HWND(0)}) {
        RECT area{5, 5, 5, 5};
        EXPECT_EQ(SendMessageA(gone, WM_PAINT, 0, 0), 0);
        EXPECT_EQ(PostMessageA(gone, WM_PAINT, 0, 0), 0);
        EXPECT_EQ(GetWindow(gone, GW_CHILD), 0u);
        EXPECT_EQ(GetWindow(gone, GW_HWNDNEXT), 0u);
        EXPECT_EQ(GetDlgItem(gone, 1), 0u);
        EXPECT_FALSE(GetClientRect(gone, &area));
        EXPECT_EQ(area.left, 5);
        EXPECT_FALSE(InvalidateRect(gone, nullptr, 1));
        EXPECT_FALSE(SetWindowTextA(gone, "x"));
        EXPECT_FALSE(DestroyWindow(gone));
        EXPECT_EQ(GetDC(gone), 0u);
    }
    EXPECT_EQ(GetActiveWindow(), MAIN_WINDOW);
}

TEST_F(Windows, TraceTellsOfWindows)
{
    traced();
    const HWND pane = CreateWindowExA(0, "STATIC", "", 0x50000000, 1, 2, 30, 20, STATUS_BAR, 7, 0, nullptr);
    const RECT area{1, 2, 3, 4};
    InvalidateRect(DRAWING_WINDOW, &area, 1);
    InvalidateRect(DRAWING_WINDOW, nullptr, 0);
    DestroyWindow(pane);
    const std::string number = std::to_string(pane);
    EXPECT_EQ(traced(), "CreateWindowExA \"STATIC\" \"\" 1342177280 1 2 30 20 2 7 -> " + number +
                            "\nInvalidateRect 3 (1 2 3 4) 1 -> 1\nInvalidateRect 3 nil 0 -> 1\nDestroyWindow " +
                            number + " -> 1\n");
    turn();
}

} // namespace
