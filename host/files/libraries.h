// libraries.h: the libraries that programs load by name. This host has none of the platform's own; what it
// offers in place of one is registered here by the part of the host that offers it.
#pragma once

#include <initializer_list>

namespace host
{

struct library_function {
    unsigned ordinal;
    const char* name;
    void* address;
};

// From now on LoadLibraryA finds `file_name` (in any directory, in any case; the texts must stay). A name
// that is registered again stands for the new functions.
void register_library(const char* file_name, std::initializer_list<library_function> functions);

} // namespace host
