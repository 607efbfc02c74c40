// hostapi/framework.h: the window framework and the host's own windows.
#include "host/dialogs/framework.h"

#include "host/core/trace.h"
#include "host/dialogs/message_loop.h"
#include "host/dialogs/windows.h"

namespace host::dialogs
{

namespace
{

struct {
    int extensions = 0, libraries = 0;
    bool refuses = false;
} framework;

class application : public CWinApp
{
public:
    int PumpMessage() override { return pump_message() ? 1 : 0; }
};

} // namespace

int extension_count()
{
    return framework.extensions;
}
int library_count()
{
    return framework.libraries;
}
void refuse_extensions(bool on)
{
    framework.refuses = on;
}

} // namespace host::dialogs

using namespace host::dialogs;
using host::trace_line;

int AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, HINSTANCE module)
{
    trace_line line("AfxInitExtensionModule");
    const bool takes = !framework.refuses;
    // A second call for the same state changes nothing.
    if (takes && !state.bInitialized) {
        state = {1, module};
        framework.extensions++;
    }
    line.result(takes ? "1" : "0");
    return takes ? 1 : 0;
}

void AfxTermExtensionModule(AFX_EXTENSION_MODULE& state, int)
{
    trace_line line("AfxTermExtensionModule");
    if (state.bInitialized)
        framework.extensions--;
    state = {0, 0};
}

CDynLinkLibrary::CDynLinkLibrary(AFX_EXTENSION_MODULE& state) : state_(&state)
{
    trace_line line("CDynLinkLibrary");
    framework.libraries++;
}

CDynLinkLibrary::~CDynLinkLibrary()
{
    trace_line line("~CDynLinkLibrary");
    framework.libraries--;
}

CWnd* CWnd::FromHandle(HWND number)
{
    window* found = find_window(number);
    if (!found)
        return nullptr;
    if (!found->wrapper) {
        found->wrapper = std::make_unique<CWnd>();
        found->wrapper->m_hWnd = number;
    }
    return found->wrapper.get();
}

CWinApp* acedGetAcadWinApp()
{
    static application host;
    return &host;
}

CWnd* acedGetAcadFrame()
{
    return CWnd::FromHandle(MAIN_WINDOW);
}

extern "C" {
HWND adsw_acadMainWnd()
{
    return MAIN_WINDOW;
}
HWND adsw_acadDocWnd()
{
    return DRAWING_WINDOW;
}
}
