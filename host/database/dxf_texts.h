// dxf_texts.h: texts of DXF files: control characters written with carets, and UTF-8 from AC1021 on.
#pragma once

#include <string>
#include <string_view>

namespace host::db
{

// A file's text as the store has it: Windows-1252 (or the bytes of the drawing's other code page), control
// characters as such. `into` is room for the result, which is either there or the text itself.
std::string_view stored_text(std::string_view in_file, bool is_utf8, std::string& into);
// The other way; what comes out is one line without control characters.
void append_text(std::string& out, std::string_view stored, bool as_utf8);

} // namespace host::db
