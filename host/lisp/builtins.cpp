// builtins.cpp: all tables together.
#include "host/lisp/builtins.h"

namespace host::lisp
{

std::span<const std::span<const builtin>> builtin_tables()
{
    static const std::span<const builtin> tables[] = {
        arithmetic_table(), predicate_table(), list_table(),     vl_list_table(),      control_table(),
        string_table(),     vl_string_table(), printing_table(), file_table(),         vl_file_table(),
        error_table(),      geometry_table(),  prompt_table(),   entity_table(),       selection_table(),
        dialog_table(),     command_table(),   variable_table(), symbol_table_table(), screen_table(),
        system_table(),
    };
    return tables;
}

} // namespace host::lisp
