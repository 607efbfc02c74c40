// text_buffer.h: how operations of the module hand text out.
//
// An operation that writes text takes a text_out: the caller's buffer together with its size. An
// array is handed over as it is; where only a pointer is left, its size goes with it in braces:
//
//     char name[64];
//     path_file_name(path, name);
//     path_file_name(path, {pointer, size});
//
// A text that is too long is cut to size - 1 bytes; the buffer is always ended by a NUL. A buffer
// of size 0 is left alone.
#pragma once

#include <cstddef>
#include <string_view>

struct text_out {
    char* text;
    std::size_t size; // bytes, with the terminator

    template <std::size_t N>
    text_out(char (&array)[N]) : text(array), size(N)
    {
    }
    text_out(char* buffer, std::size_t buffer_size) : text(buffer), size(buffer_size) {}
};

// `from` may lie in the buffer itself.
void text_set(text_out out, std::string_view from);
void text_add(text_out out, std::string_view more);
void text_format(text_out out, const char* format, ...) __attribute__((format(printf, 2, 3)));
