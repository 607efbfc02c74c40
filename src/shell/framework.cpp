#include "shell/framework.h"

#include <optional>

#include "shell/screen_marks.h"

HINSTANCE module_instance = 0;
CWnd* main_window = nullptr;
CWnd* doc_window = nullptr;

namespace
{

AFX_EXTENSION_MODULE extension{};
std::optional<CDynLinkLibrary> library;

// What both ways, up and down, do in the same order.
void refresh_windows_and_marks()
{
    main_window = CWnd::FromHandle(adsw_acadMainWnd());
    doc_window = CWnd::FromHandle(adsw_acadDocWnd());
    screen_marks_fill();
}

} // namespace

HWND window_of(const CWnd* wrapper)
{
    return wrapper ? wrapper->m_hWnd : 0;
}

// Without the framework there are no windows and no marks, and the load goes on.
void framework_set_up()
{
    if (!AfxInitExtensionModule(extension, module_instance))
        return;
    library.emplace(extension);
    refresh_windows_and_marks();
}

void framework_tear_down()
{
    library.reset();
    AfxTermExtensionModule(extension);
    refresh_windows_and_marks();
}

extern "C" int DllMain(HINSTANCE module, DWORD, void*)
{
    module_instance = module;
    return 1;
}
