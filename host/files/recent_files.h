// recent_files.h: the drawings that were opened or saved last, in the registry.
#pragma once

#include <string_view>

namespace host
{

// Puts a drawing, named in any form, at the head of the list of this installation, and drops those behind the
// ninth. A drawing stands once. That the list can't be written is told once a run, and hinders nothing.
void note_recent_drawing(std::string_view path);

} // namespace host
