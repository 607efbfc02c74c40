// reactors.h: the reactors that modules have added, and what is told to them.
#pragma once

#include <string_view>

#include "hostapi/editor.h"

namespace host
{

enum class command_event { will_start, ended, cancelled, failed };
enum class lisp_event { will_start, ended, cancelled };

void tell_command(command_event event, std::string_view name);
void tell_lisp(lisp_event event, std::string_view first_line = {});
void tell_saved(AcDbDatabase* database, std::string_view name);

// A command that a module registered, or null. Flags as in hostapi/editor.h.
struct module_command {
    const char* name;
    int flags;
    void (*run)();
};
const module_command* find_module_command(std::string_view name);

} // namespace host
