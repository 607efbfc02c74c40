// reactors.h: the reactors that modules have added, and what is told to them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "hostapi/editor.h"

namespace host
{

enum class command_event { will_start, ended, cancelled, failed };
enum class lisp_event { will_start, ended, cancelled };

void tell_command(command_event event, std::string_view name);
void tell_lisp(lisp_event event, std::string_view first_line = {});
void tell_saved(AcDbDatabase* database, std::string_view name);

// Reactors of the document manager, and what they are told. `name`: the drawing's, with its path.
void add_document_reactor(AcApDocManagerReactor* reactor);
void remove_document_reactor(AcApDocManagerReactor* reactor);
void tell_document_created(AcApDocument* document);
void tell_document_destroyed(std::string_view name);
void tell_document_became_current(AcApDocument* document);

struct loaded_module;
constexpr int COMMAND_MODAL = 0, COMMAND_TRANSPARENT = 1, COMMAND_SESSION = 0x200000;

// A command that a module registered, by its global or local name, or null. Flags as in hostapi/editor.h.
struct module_command {
    std::string name; // global, upper case
    int flags;
    void (*run)();
    loaded_module* owner;
};
const module_command* find_module_command(std::string_view name);
// Those of all groups, the oldest first, as "GROUP NAME".
std::vector<std::string> module_command_names();

} // namespace host
