// module.h: loaded modules, the external functions that they define and the calls that they receive.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/core/resbuf.h"

namespace host
{

class document;
struct loaded_module;
using module_entry = int (*)(int message, void* packet);

// Loads a module from a shared object, or from an entry point that is linked in (tests). It gets
// the initial-load message and the drawing-load message of each open drawing; one from a shared object is
// attached by its DllMain before, if it has one. False when it can't be loaded, or is loaded already: the
// reason goes to `why`, or is a complaint where that is null.
bool load_module(const std::string& path, std::string* why = nullptr);
bool load_module(module_entry entry, const std::string& name, std::string* why = nullptr);
// By its name, with or without directory and extension. It gets the drawing-unload message of each open
// drawing and the unload message. What it leaves behind with the host is dropped, with a complaint. False
// with the reason when it isn't loaded, is locked or is at work.
bool unload_module(std::string_view name, std::string* why = nullptr);
void unload_all_modules();
std::vector<std::string> loaded_modules(); // file names
bool is_loaded(std::string_view name);

// To be called when a drawing has been opened or is about to be closed; it is current in the meantime.
void tell_drawing_loaded(document& doc);
void tell_drawing_unloaded(document& doc);

// ---- what modules leave with the host: reactors, commands, hooks, callbacks
// The module whose code runs now; null: none. Whoever keeps a function or object of a module keeps this too.
loaded_module* running_module();
// To be held around each call of such a function: the module counts as at work, so that nobody unloads it
// under its feet, and as running_module. Null changes nothing.
class module_call
{
public:
    explicit module_call(loaded_module* called);
    ~module_call();
    module_call(const module_call&) = delete;
    module_call& operator=(const module_call&) = delete;

private:
    loaded_module *called_, *before_;
};
// Drops what a module that goes has left, and tells it in words ("2 reactors"); empty: there was nothing.
using leftovers_dropper = std::string (*)(const loaded_module* leaving);
bool add_leftovers_dropper(leftovers_dropper drop); // true, for a variable's initialiser

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
