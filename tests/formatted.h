// formatted.h: a formatted text, for the stand-ins of the host's printing.
#pragma once

#include <cstdarg>
#include <cstdio>
#include <string>

// Up to 999 characters of it.
inline std::string formatted(const char* format, va_list arguments)
{
    char text[1000];
    std::vsnprintf(text, sizeof text, format, arguments);
    return text;
}
