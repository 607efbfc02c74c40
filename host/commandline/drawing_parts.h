// drawing_parts.h: symbol table records by name, and parts that commands bring in from files.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/database/database.h"

namespace host::commandline
{

std::vector<std::string> record_names(const db::database& db, std::string_view table);
// Names that layers, blocks, styles and linetypes may have: not empty, none of <>/\":;?*|,=`.
bool is_symbol_name(std::string_view name);
// Puts a group in place of that code's first, or at the end of what stands before the extended data.
void put_group(db::group_list& groups, const db::group& value);

// Name of the block of the drawing that an answer at INSERT means. A name that the drawing lacks, and
// "NAME=PATH", are read from a drawing file. Nothing with `error` when there is none.
std::optional<std::string> find_or_load_block(document& doc, std::string_view answer, std::string* error);

// Loads linetypes whose names fit a pattern: from a linetype file, and where there is none of that name
// from the built-in standard ones. The names loaded; those that the drawing has are defined anew.
std::vector<std::string> load_linetypes(db::database& db, std::string_view pattern, std::string_view file);

} // namespace host::commandline
