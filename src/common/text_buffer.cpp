#include "common/text_buffer.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>

void text_set(text_out out, std::string_view from)
{
    if (out.size == 0)
        return;
    const std::size_t length = std::min(from.size(), out.size - 1);
    if (length > 0)
        std::memmove(out.text, from.data(), length);
    out.text[length] = '\0';
}

void text_add(text_out out, std::string_view more)
{
    if (out.size == 0)
        return;
    const void* end = std::memchr(out.text, '\0', out.size);
    const std::size_t used =
        end ? static_cast<std::size_t>(static_cast<const char*>(end) - out.text) : out.size - 1;
    text_set({out.text + used, out.size - used}, more);
}

void text_format(text_out out, const char* format, ...)
{
    if (out.size == 0)
        return;
    va_list arguments;
    va_start(arguments, format);
    if (std::vsnprintf(out.text, out.size, format, arguments) < 0)
        out.text[0] = '\0';
    va_end(arguments);
}
