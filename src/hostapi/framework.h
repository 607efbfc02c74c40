// framework.h: what the module uses of the host's window framework.
#pragma once

#include "hostapi/messages.h"

// State of an extension module; AfxInitExtensionModule fills it.
struct AFX_EXTENSION_MODULE {
    int bInitialized;
    HINSTANCE hModule;
};
// 0 when the framework refuses the module.
int AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, HINSTANCE module);
void AfxTermExtensionModule(AFX_EXTENSION_MODULE& state, int all = 0);

// Puts a module's resources in the framework's chain of those that are searched, while it lives.
class CDynLinkLibrary
{
public:
    explicit CDynLinkLibrary(AFX_EXTENSION_MODULE& state);
    ~CDynLinkLibrary();
    CDynLinkLibrary(const CDynLinkLibrary&) = delete;
    CDynLinkLibrary& operator=(const CDynLinkLibrary&) = delete;

private:
    AFX_EXTENSION_MODULE* state_;
};

// A window of the host or of the framework.
class CWnd
{
public:
    HWND m_hWnd = 0;
    // The wrapper of a window; owned by the framework, null for no window.
    static CWnd* FromHandle(HWND window);
};

// The host's application object.
class CWinApp
{
public:
    virtual ~CWinApp() = default;
    // Takes one waiting message and handles it; 0 when none was waiting.
    virtual int PumpMessage() = 0;
};
CWinApp* acedGetAcadWinApp();
CWnd* acedGetAcadFrame(); // the main frame window

extern "C" {
HWND adsw_acadMainWnd();
HWND adsw_acadDocWnd(); // the window of the drawing in front
// Draws the picture of a drawing file over the window's client area; 0 when there is none.
int acdbDisplayPreviewFromDwg(const char* path, HWND window, const COLORREF* background);

// Entry of a library of the platform: its handle, the reason (1 attached, 0 detached). Non-zero: it may load.
int DllMain(HINSTANCE module, DWORD reason, void* reserved);
}
