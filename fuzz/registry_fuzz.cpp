// Any bytes as a registry file: what was understood, written and read again, is the same.
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "host/files/registry.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto root = host::parse_registry({reinterpret_cast<const char*>(data), size}, "fuzz.reg");
    const std::string text = host::registry_text(*root);
    if (host::registry_text(*host::parse_registry(text, "written.reg")) != text) {
        std::fprintf(stderr, "registry_fuzz: written again it is something else\n");
        std::abort();
    }
    return 0;
}
