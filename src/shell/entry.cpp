// entry.cpp: what the host calls of the module. Each message is a list of steps that run in order.
#include "common/directories.h"
#include "common/lisp_vars.h"
#include "common/tracking.h"
#include "hostapi/editor.h"
#include "shell/functions.h"

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

void read_symbol_directory(void*)
{
    lisp_get_text(symbol_dir, "psname");
}

constexpr step INITIAL_LOAD[] = {clear_current_function, unlock, register_for_many_drawings, define_functions,
                                 read_symbol_directory};
constexpr step UNLOAD[] = {unlock};
constexpr step DRAWING_LOAD[] = {define_functions};
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

// Loaders ask for both names before they send the first message.
int acrxGetApiVersion();
int acrxGetApiVersion()
{
    return HOST_RELEASE;
}

void _SetacrxPtp();
void _SetacrxPtp() {}
}
