// module.h: loaded modules, the external functions that they define and the calls that they receive.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/core/resbuf.h"

namespace host
{

class document;
using module_entry = int (*)(int message, void* packet);

// Loads a module from a shared object, or from an entry point that is linked in (tests). It gets
// the initial-load message and the drawing-load message of each open drawing. False, with a
// complaint, when it can't be loaded.
bool load_module(const std::string& path);
bool load_module(module_entry entry, const std::string& name);
// False when it isn't loaded, is locked or is at work.
bool unload_module(std::string_view name);
void unload_all_modules();
std::vector<std::string> loaded_modules();

// To be called when a drawing has been opened or is about to be closed.
void tell_drawing_loaded(document& doc);
void tell_drawing_unloaded(document& doc);

// Whether the current drawing has an external function of that name (any case).
bool is_external(std::string_view name);
std::vector<std::string> external_names();
// Calls one. The result is a new list: a value, or RTLB ... RTLE, or RTNIL. Empty when there is no
// such function or the module refused the call.
list_ptr call_external(std::string_view name, const resbuf* arguments);

// What calls LISP functions for acedInvoke when no external function has the name (set by the
// interpreter). RTNORM or RTERROR.
using lisp_invoker = int (*)(const resbuf* call, resbuf** result);
void set_lisp_invoker(lisp_invoker invoker);

} // namespace host
