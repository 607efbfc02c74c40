// hostapi/processes.h: the environment.
#include <algorithm>
#include <cstring>
#include <string>

#include <unistd.h>

#include "host/core/text.h"
#include "hostapi/processes.h"

extern char** environ;

namespace
{

// The value of a variable, whose name is compared as it stands first and then without regard to case. Null when
// there is none.
const char* variable(const std::string& name)
{
    const char* folded = nullptr;
    for (char** one = environ; one && *one; one++) {
        const char* equals = std::strchr(*one, '=');
        if (!equals || name.empty())
            continue;
        const std::string_view known(*one, static_cast<std::size_t>(equals - *one));
        if (known == name)
            return equals + 1;
        if (!folded && host::same_text(known, name))
            folded = equals + 1;
    }
    return folded;
}

std::string expanded(std::string_view text)
{
    std::string out;
    while (!text.empty()) {
        const std::size_t first = text.find('%');
        out += text.substr(0, first);
        if (first == std::string_view::npos)
            break;
        text.remove_prefix(first);
        const std::size_t second = text.find('%', 1);
        const char* value =
            second == std::string_view::npos ? nullptr : variable(host::utf8_of(text.substr(1, second - 1)));
        // A sign that closes no known name may open the next one.
        out += value ? host::cp1252_with_escapes(value) : "%";
        text.remove_prefix(value ? second + 1 : 1);
    }
    return out;
}

} // namespace

extern "C" DWORD ExpandEnvironmentStringsA(const char* text, char* out, DWORD size)
{
    if (!text)
        return 0;
    const std::string full = expanded(text);
    if (out && full.size() < size) {
        full.copy(out, full.size());
        out[full.size()] = '\0';
    } else if (out && size > 0) {
        *out = '\0';
    }
    return static_cast<DWORD>(full.size() + 1);
}
