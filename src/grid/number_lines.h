// number_lines.h: numbers as the lines of a grid's text file hold them.
#pragma once

#include <charconv>
#include <cstdlib>

#include "common/number_text.h"

// Digits as printf gives them by "%.Nf", N up to 6, and a line feed, but no terminator. The end of what was
// written.
inline char* put_number_line(char (&out)[NUMBER_TEXT_SIZE], double value, int places)
{
    char* const last = out + sizeof out - 1;
    char* const end = std::to_chars(out, last, value, std::chars_format::fixed, places).ptr;
    *end = '\n';
    return end + 1;
}

// As atof, but fast on lines that begin with a digit. Not so: hexadecimal numbers and what is too great or too
// small for a double. The line has a terminator somewhere before `end`.
inline double line_number(const char* line, const char* end)
{
    const char* const first = line + (*line == '-');
    double value = 0;
    if (*first < '0' || *first > '9' || first[1] == 'x' || first[1] == 'X' ||
        std::from_chars(line, end, value).ec != std::errc())
        return std::atof(line);
    return value;
}
