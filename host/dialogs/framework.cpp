// hostapi/framework.h: the window framework and the host's own windows.
#include "hostapi/framework.h"

#include "host/dialogs/windows.h"

int AfxInitExtensionModule(AFX_EXTENSION_MODULE&, HINSTANCE)
{
    return 0;
}
void AfxTermExtensionModule(AFX_EXTENSION_MODULE&, int) {}
CDynLinkLibrary::CDynLinkLibrary(AFX_EXTENSION_MODULE& state) : state_(&state) {}
CDynLinkLibrary::~CDynLinkLibrary() = default;
CWnd* CWnd::FromHandle(HWND)
{
    return nullptr;
}
CWinApp* acedGetAcadWinApp()
{
    return nullptr;
}
CWnd* acedGetAcadFrame()
{
    return nullptr;
}

extern "C" {
HWND adsw_acadMainWnd()
{
    return host::dialogs::MAIN_WINDOW;
}
HWND adsw_acadDocWnd()
{
    return 0;
}
int acdbDisplayPreviewFromDwg(const char*, HWND, const COLORREF*)
{
    return 0;
}
}
