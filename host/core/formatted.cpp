#include "host/core/formatted.h"

#include <cstdio>

namespace host
{

std::string formatted(const char* format, va_list values)
{
    va_list again;
    va_copy(again, values);
    const int size = std::vsnprintf(nullptr, 0, format, again);
    va_end(again);
    if (size < 0)
        return {};
    std::string text(static_cast<std::size_t>(size) + 1, '\0');
    std::vsnprintf(text.data(), text.size(), format, values);
    text.pop_back();
    return text;
}

} // namespace host
