// formatted.h: text by a printf format, of any length.
#pragma once

#include <cstdarg>
#include <string>

namespace host
{

// Empty when the format is refused.
std::string formatted(const char* format, va_list values);

} // namespace host
