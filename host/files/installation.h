// installation.h: what this host says it is to programs that look for the product they run in.
#pragma once

#include <string>

#include "host/files/registry.h"

namespace host
{

// What the registry holds without a file: the host's installation and the programs that open documents.
std::shared_ptr<registry_key> registry_defaults();

// The installation that the registry names and this host runs as: the first one of the user's own file, else
// the host's. UTF-8.
struct installation {
    std::string subkey, location;
};
installation presented_installation();

// The key of the drawings that this installation opened last, from HKEY_... on.
std::string recent_drawings_key();

} // namespace host
