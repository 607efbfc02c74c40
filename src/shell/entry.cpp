// entry.cpp: what the host calls of the module. Each message is a list of steps that run in order.
#include "common/directories.h"
#include "common/lisp_vars.h"
#include "common/tracking.h"
#include "hostapi/editor.h"
#include "launch/help.h"
#include "settings/startup_wizard.h"
#include "shell/commands.h"
#include "shell/framework.h"
#include "shell/functions.h"
#include "shell/hooks.h"
#include "shell/reactors.h"
#include "shell/screen_marks.h"
#include "shell/status_pane.h"
#include "symbols/preview_tiles.h"

namespace
{

using step = void (*)(void* packet);

void clear_current_function(void*)
{
    current_function[0] = '\0';
}

void unlock(void* packet)
{
    acrxUnlockApplication(packet);
}

// Without it the host would keep the user to one drawing while the module is loaded.
void register_for_many_drawings(void* packet)
{
    if (auto* linker = static_cast<AcRxDynamicLinker*>(acrxSysRegistry()->at("DynamicLinker")))
        linker->registerAppMDIAware(packet);
}

void add_doc_reactor(void*)
{
    doc_reactor_add();
}

void remove_doc_reactor(void*)
{
    doc_reactor_remove();
}

void add_editor_reactors(void*)
{
    editor_reactors_add();
}

void remove_editor_reactors(void*)
{
    editor_reactors_remove();
}

void join_framework(void*)
{
    framework_set_up();
}

void leave_framework(void*)
{
    framework_tear_down();
}

void install_hooks(void*)
{
    hooks_install();
}

void remove_hooks(void*)
{
    hooks_remove();
}

void register_commands(void*)
{
    commands_register();
}

void remove_commands(void*)
{
    commands_remove();
}

void define_functions(void*)
{
    lisp_defun_all();
}

void undefine_functions(void*)
{
    lisp_undef_all();
}

void run_function(void*)
{
    lisp_dispatch();
}

void run_wizard(void*)
{
    wizard_calls = {help_show, symbol_tile_preview};
    startup_wizard();
}

void read_symbol_directory(void*)
{
    lisp_get_text(symbol_dir, "psname");
}

// What the steps before have no place for. A loader may keep the module in memory, and its next load has to
// find it as new: who unloads it from a LISP function never hears of that function's end.
void forget(void*)
{
    status_pane_remove();
    screen_marks_forget();
    main_window = doc_window = nullptr;
    cmd_active = lisp_active = help_pending = 0;
    current_function[0] = '\0';
}

// clang-format off
constexpr step INITIAL_LOAD[] = {
    clear_current_function,
    unlock,
    register_for_many_drawings,
    add_doc_reactor,
    join_framework,
    install_hooks,
    register_commands,
    define_functions,
    run_wizard,
    read_symbol_directory,
};
constexpr step UNLOAD[] = {
    unlock,
    remove_editor_reactors,
    remove_doc_reactor,
    leave_framework,
    remove_hooks,
    remove_commands,
    forget,
};
// clang-format on
constexpr step DRAWING_LOAD[] = {add_editor_reactors, define_functions};
constexpr step DRAWING_UNLOAD[] = {unlock, undefine_functions};
constexpr step INVOKE[] = {run_function};

template <std::size_t N>
void run(const step (&steps)[N], void* packet)
{
    for (const step s : steps)
        s(packet);
}

constexpr int HOST_RELEASE = 15;

} // namespace

extern "C" {

// Always answers kRetOK: the value of a call travels by the acedRet... functions, and a load that
// goes on with less than everything is better for the user than one that is refused.
int acrxEntryPoint(int message, void* packet)
{
    switch (message) {
    case AcRx::kInitAppMsg:
        run(INITIAL_LOAD, packet);
        break;
    case AcRx::kUnloadAppMsg:
        run(UNLOAD, packet);
        break;
    case AcRx::kLoadDwgMsg:
        run(DRAWING_LOAD, packet);
        break;
    case AcRx::kUnloadDwgMsg:
        run(DRAWING_UNLOAD, packet);
        break;
    case AcRx::kInvkSubrMsg:
        run(INVOKE, packet);
        break;
    default:
        break;
    }
    return AcRx::kRetOK;
}

// Loaders ask for both names before they send the first message; the second does nothing.
int acrxGetApiVersion();
int acrxGetApiVersion()
{
    return HOST_RELEASE;
}

void _SetacrxPtp();
void _SetacrxPtp() {}
}
