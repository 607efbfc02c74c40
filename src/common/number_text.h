// number_text.h: a double by "%f", whatever its size.
#pragma once

#include <cfloat>
#include <cstdio>

// Sign, digits of the largest number, point, six decimals and a terminator.
constexpr int NUMBER_TEXT_SIZE = 1 + DBL_MAX_10_EXP + 1 + 1 + 6 + 1;

inline const char* number_text(double value, char (&out)[NUMBER_TEXT_SIZE])
{
    std::snprintf(out, sizeof out, "%f", value);
    return out;
}
