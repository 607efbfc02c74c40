// hostapi/processes.h: libraries.
#include "host/files/libraries.h"

#include <string>
#include <vector>

#include "host/core/text.h"
#include "host/files/names.h"
#include "host/files/paths.h"
#include "hostapi/processes.h"

namespace
{

struct library {
    std::string name; // lower case
    std::vector<host::library_function> functions;
    int uses = 0;
};

// A library's handle is its place, counted from 1.
std::vector<library>& libraries()
{
    static std::vector<library> all;
    return all;
}

library* library_of(HINSTANCE handle)
{
    if (handle == 0 || handle > libraries().size() || libraries()[handle - 1].uses == 0)
        return nullptr;
    return &libraries()[handle - 1];
}

constexpr std::uintptr_t LAST_ORDINAL = 0xFFFF;

} // namespace

namespace host
{

void register_library(const char* file_name, std::initializer_list<library_function> functions)
{
    const std::string name = lower(file_name);
    for (library& known : libraries())
        if (known.name == name) {
            known.functions = functions;
            return;
        }
    libraries().push_back({name, functions});
}

} // namespace host

extern "C" {

HINSTANCE LoadLibraryA(const char* name)
{
    if (!name || !*name)
        return 0;
    std::string wanted = host::lower(host::file_name_of(name));
    if (wanted.find('.') == std::string::npos)
        wanted += ".dll";
    for (std::size_t i = 0; i < libraries().size(); i++)
        if (libraries()[i].name == wanted) {
            libraries()[i].uses++;
            return static_cast<HINSTANCE>(i + 1);
        }
    return 0;
}

int FreeLibrary(HINSTANCE handle)
{
    library* held = library_of(handle);
    if (!held)
        return 0;
    held->uses--;
    return 1;
}

void* GetProcAddress(HINSTANCE handle, const char* name)
{
    const library* held = library_of(handle);
    if (!held || !name)
        return nullptr;
    const auto ordinal = reinterpret_cast<std::uintptr_t>(name);
    for (const host::library_function& one : held->functions)
        if (ordinal <= LAST_ORDINAL ? one.ordinal == ordinal : one.name && std::string(name) == one.name)
            return one.address;
    return nullptr;
}
}
