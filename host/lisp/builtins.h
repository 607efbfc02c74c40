// builtins.h: the tables of built-in functions, a family each. A function is one entry.
#pragma once

#include <span>

#include "host/lisp/interpreter.h"

namespace host::lisp
{

std::span<const std::span<const builtin>> builtin_tables();
std::span<const special_form> special_forms();

std::span<const builtin> arithmetic_table();
std::span<const builtin> predicate_table();
std::span<const builtin> list_table();
std::span<const builtin> vl_list_table();
std::span<const builtin> control_table();
std::span<const builtin> string_table();
std::span<const builtin> vl_string_table();
std::span<const builtin> printing_table();
std::span<const builtin> file_table();
std::span<const builtin> vl_file_table();
std::span<const builtin> error_table();
std::span<const builtin> geometry_table();
std::span<const builtin> prompt_table();
std::span<const builtin> entity_table();
std::span<const builtin> selection_table();
std::span<const builtin> symbol_table_table();
std::span<const builtin> dialog_table();
std::span<const builtin> command_table();
std::span<const builtin> variable_table();
std::span<const builtin> screen_table();
std::span<const builtin> system_table();

} // namespace host::lisp
