// dcl_tiles.h: the tiles that every DCL file knows.
#pragma once

#include "host/dialogs/dcl_file.h"

namespace host::dialogs
{

// The text of the assemblies, in DCL, over the language's own tiles.
extern const char* const ASSEMBLIES;

} // namespace host::dialogs
