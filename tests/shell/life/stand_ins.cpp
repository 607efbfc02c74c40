#include "tests/shell/life/stand_ins.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <set>

#include "common/tracking.h"
#include "host/core/console.h"
#include "host/core/heap.h"
#include "hostapi/ads.h"
#include "hostapi/editor.h"
#include "hostapi/framework.h"
#include "launch/help.h"
#include "settings/drawing_settings.h"
#include "settings/title.h"
#include "shell/commands.h"
#include "shell/framework.h"
#include "shell/hooks.h"
#include "shell/reactors.h"
#include "shell/screen_marks.h"
#include "shell/status_pane.h"
#include "symbols/preview_tiles.h"

life_state life;

namespace
{

void note(const std::string& call)
{
    life.calls.push_back(call);
}
std::string number(std::int64_t value)
{
    return std::to_string(value);
}

std::size_t blocks_before = 0;

struct document final : AcApDocument {
    explicit document(int n) : number(n) {}
    AcDbDatabase* database() const override { return nullptr; }
    const char* fileName() const override { return ""; }
    int number;
};

document* document_of(int number)
{
    static std::map<int, std::unique_ptr<document>> all;
    auto& held = all[number];
    if (!held)
        held = std::make_unique<document>(number);
    return held.get();
}

struct document_walk final : AcApDocumentIterator {
    std::vector<int> all = life.documents;
    std::size_t at = 0;
    bool done() const override { return at >= all.size(); }
    void step() override { ++at; }
    AcApDocument* document() const override { return document_of(all[at]); }
};

struct manager final : AcApDocManager {
    void addReactor(AcApDocManagerReactor*) override { note("documents.add"); }
    void removeReactor(AcApDocManagerReactor*) override { note("documents.remove"); }
    AcApDocument* curDocument() const override { return life.current ? document_of(life.current) : nullptr; }
    bool isApplicationContext() const override { return life.application_context; }
    int appContextOpenDocument(const char* file) override
    {
        note(std::string("open:") + file);
        return 0;
    }
    void executeInApplicationContext(void (*step)(void*), void* data) override
    {
        note("execute");
        const bool before = life.application_context;
        life.application_context = life.steps_run_in_application_context;
        step(data);
        life.application_context = before;
    }
    int closeDocument(AcApDocument* closed) override
    {
        const int n = static_cast<document*>(closed)->number;
        note("close:" + number(n));
        std::erase(life.documents, n);
        if (life.current == n)
            life.current = life.documents.empty() ? 0 : life.documents.back();
        return 0;
    }
    AcApDocumentIterator* newAcApDocumentIterator() override { return new document_walk; }
};

struct application final : CWinApp {
    int PumpMessage() override
    {
        note("pump");
        return 0;
    }
};

std::map<HWND, CWnd> wrappers;

int give_text(resbuf** value, const std::string& text)
{
    *value = acutBuildList(RTSTR, text.c_str(), 0);
    return RTNORM;
}

} // namespace

life_session::life_session()
{
    life = life_state();
    cmd_active = lisp_active = help_pending = 0;
    current_function[0] = '\0';
    host::capture_history(&life.printed);
    module_instance = 5;
    blocks_before = host::heap_live_blocks();
}

life_session::~life_session()
{
    editor_reactors_remove();
    doc_reactor_remove();
    status_pane_remove();
    screen_marks_forget();
    commands_remove();
    cmd_active = lisp_active = help_pending = 0;
    host::capture_history(nullptr);
    main_window = doc_window = nullptr;
    EXPECT_EQ(host::heap_live_blocks(), blocks_before);
    EXPECT_EQ(life.contexts, 0);
}

std::string noted()
{
    std::string out;
    for (const std::string& call : life.calls)
        out += (out.empty() ? "" : " ") + call;
    life.calls.clear();
    return out;
}

// ---- lower floors of the module

void title_refresh()
{
    note("title");
}
void save_drawing_settings(const char* path)
{
    note(std::string("settings:") + path);
}
void help_show()
{
    life.pending_in_help = help_pending;
    note("help");
}
void preview_dialog_destroyed(HWND dialog)
{
    note("destroyed:" + number(dialog));
}
void preview_dialog_erased(HWND dialog)
{
    note("erased:" + number(dialog));
}
bool preview_tile_due(HWND tile)
{
    note("due:" + number(tile));
    return life.tile_is_due;
}

// ---- host

AcApDocManager* acDocManagerPtr()
{
    static manager the_manager;
    return &the_manager;
}
CWinApp* acedGetAcadWinApp()
{
    static application the_application;
    return &the_application;
}
int AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, HINSTANCE module)
{
    note("init:" + number(module));
    state.bInitialized = life.framework_works;
    return state.bInitialized;
}
void AfxTermExtensionModule(AFX_EXTENSION_MODULE&, int)
{
    note("term");
}
CDynLinkLibrary::CDynLinkLibrary(AFX_EXTENSION_MODULE& state) : state_(&state)
{
    note("library+");
}
CDynLinkLibrary::~CDynLinkLibrary()
{
    note("library-");
}
CWnd* CWnd::FromHandle(HWND window)
{
    if (window == 0)
        return nullptr;
    wrappers[window].m_hWnd = window;
    return &wrappers[window];
}

extern "C" {

int acedGetSym(const char* name, resbuf** value)
{
    *value = nullptr;
    if (life.texts.count(name))
        return give_text(value, life.texts[name]);
    if (life.integers.count(name))
        *value = acutBuildList(RTSHORT, life.integers[name], 0);
    return RTNORM;
}
int acedPutSym(const char* name, const resbuf* value)
{
    note(std::string("put:") + name + "=" + value->resval.rstring);
    return RTNORM;
}
int acedGetVar(const char* name, resbuf* value)
{
    note(std::string("get:") + name);
    value->restype = RTSHORT;
    value->resval.rint = static_cast<short>(life.modified);
    return life.modified < 0 ? RTERROR : RTNORM;
}
int acedSetVar(const char* name, const resbuf* value)
{
    note(std::string("set:") + name + "=" + number(value->resval.rint) +
         (value->restype == RTSHORT ? "" : " as another type"));
    return RTNORM;
}
int acedMenuCmd(const char* text)
{
    note(std::string("menu:") + text);
    return RTNORM;
}
int acedCoordFromWorldToPixel(int viewport, const ads_point world, int* x, int* y)
{
    note("pixel:" + number(viewport) + "," + number(static_cast<int>(world[0])) + "," +
         number(static_cast<int>(world[1])) + "," + number(static_cast<int>(world[2])));
    if (!life.pixel_known)
        return 0;
    *x = life.pixel_x;
    *y = life.pixel_y;
    return 1;
}
HWND adsw_acadMainWnd()
{
    return 1;
}
HWND adsw_acadDocWnd()
{
    return 2;
}

HHOOK SetWindowsHookExA(int kind, HOOKPROC hook, HINSTANCE module, DWORD thread)
{
    note("hook:" + number(kind) + "," + (hook == window_hook ? "window" : "filter") + "," + number(module) +
         "," + number(thread));
    return kind == WH_CALLWNDPROC ? 41 : 42;
}
int UnhookWindowsHookEx(HHOOK hook)
{
    note("unhook:" + number(hook));
    return 1;
}
LRESULT CallNextHookEx(HHOOK, int code, WPARAM, LPARAM)
{
    note("next:" + number(code));
    return life.next_hook;
}
DWORD GetCurrentThreadId()
{
    return 77;
}
HWND SetFocus(HWND window)
{
    note("focus:" + number(window));
    return 0;
}
int CreateProcessA(const char* application, char* command_line, void*, void*, int, DWORD flags, void*,
                   const char*, const STARTUPINFO* startup, PROCESS_INFORMATION* process)
{
    note(std::string("process:") + (application ? application : "") + command_line + "," + number(flags));
    life.startup = *startup;
    process->hProcess = 81;
    process->hThread = 82;
    return life.process_starts;
}
int CloseHandle(HANDLE handle)
{
    note("handle:" + number(handle));
    return 1;
}

HWND GetDlgItem(HWND parent, int id)
{
    return parent == 1 && id == 59393 ? life.status_bar : 0;
}
int GetClientRect(HWND window, RECT* area)
{
    if (window != life.status_bar)
        return 0;
    *area = life.bar;
    return 1;
}
HWND CreateWindowExA(DWORD, const char* window_class, const char* text, DWORD style, int x, int y, int width,
                     int height, HWND parent, std::uint32_t, HINSTANCE, void*)
{
    char line[200];
    std::snprintf(line, sizeof line, "window:%s,%s,%08X,%d,%d,%d,%d,%d", window_class, text, style, x, y, width,
                  height, static_cast<int>(parent));
    note(line);
    return life.windows_can_be_made ? 31 : 0;
}
int DestroyWindow(HWND window)
{
    note("destroy:" + number(window));
    return 1;
}
HFONT CreateFontA(int height, int width, int, int, int weight, DWORD, DWORD, DWORD, DWORD, DWORD, DWORD, DWORD,
                  DWORD pitch, const char* face)
{
    note("font:" + number(height) + "," + number(width) + "," + number(weight) + "," + number(pitch) + "," +
         face);
    return 51;
}
int DeleteObject(HGDIOBJ object)
{
    note("delete:" + number(object));
    return 1;
}
LRESULT SendMessageA(HWND window, unsigned message, WPARAM wparam, LPARAM)
{
    note("send:" + number(window) + "," + number(message) + "," + number(static_cast<int>(wparam)));
    return 0;
}
int SetWindowTextA(HWND window, const char* text)
{
    note("text:" + number(window) + "," + text);
    return 1;
}
int InvalidateRect(HWND window, const RECT* area, int)
{
    note("repaint:" + number(window) + "," + number(area->left) + "," + number(area->top) + "," +
         number(area->right) + "," + number(area->bottom));
    return 1;
}
HDC GetDC(HWND window)
{
    ++life.contexts;
    return window + 1000;
}
int ReleaseDC(HWND, HDC)
{
    --life.contexts;
    return 1;
}
COLORREF SetPixel(HDC, int x, int y, COLORREF color)
{
    life.pixels[{x, y}] = color;
    return color;
}
}
