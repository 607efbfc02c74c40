#include "common/text.h"

#include <algorithm>
#include <cctype>
#include <cstring>

#include "hostapi/ads.h"

namespace
{

constexpr const char* DIGITS = "0123456789";

bool is_digit(char c)
{
    return c >= '0' && c <= '9';
}

// Order of the whole numbers at the head of two texts, -1, 0 or 1. By their digits, so that a number of
// any length has its place.
int compare_numbers(const char* a, const char* b)
{
    a += std::strspn(a, "0");
    b += std::strspn(b, "0");
    const std::size_t left = std::strspn(a, DIGITS), right = std::strspn(b, DIGITS);
    if (left != right)
        return left < right ? -1 : 1;
    const int order = std::memcmp(a, b, left);
    return order < 0 ? -1 : order > 0 ? 1 : 0;
}

} // namespace

char* str_dup(char* old, const char* text)
{
    const char* from = text ? text : "";
    const std::size_t size = std::strlen(from) + 1;
    char* copy = static_cast<char*>(acad_malloc(size));
    if (copy)
        std::memcpy(copy, from, size);
    // Last, since `text` may be a part of it.
    if (old)
        acad_free(old);
    return copy;
}

char* str_append(char* text, const char* more)
{
    const std::size_t head = text ? std::strlen(text) : 0;
    const std::size_t tail = more ? std::strlen(more) : 0;
    char* joined = static_cast<char*>(acad_malloc(head + tail + 1));
    if (joined) {
        if (head > 0)
            std::memcpy(joined, text, head);
        if (tail > 0)
            std::memcpy(joined + head, more, tail);
        joined[head + tail] = '\0';
    }
    if (text)
        acad_free(text);
    return joined;
}

void str_strip_spaces(char* text)
{
    *std::remove(text, text + std::strlen(text), ' ') = '\0';
}

void str_trim(char* text)
{
    const char* first = text + std::strspn(text, " ");
    std::size_t length = std::strlen(first);
    while (length > 0 && std::strchr(" \r\n", first[length - 1]))
        --length;
    std::memmove(text, first, length);
    text[length] = '\0';
}

void str_upper(char* text)
{
    for (; *text; ++text)
        *text = static_cast<char>(std::toupper(static_cast<unsigned char>(*text)));
}

void str_lower(char* text)
{
    for (; *text; ++text)
        *text = static_cast<char>(std::tolower(static_cast<unsigned char>(*text)));
}

int str_compare_numeric(const char* a, const char* b)
{
    const std::size_t shorter = std::min(std::strlen(a), std::strlen(b));
    for (std::size_t i = 0; i < shorter; ++i) {
        if (is_digit(a[i]) && is_digit(b[i])) {
            if (const int order = compare_numbers(a + i, b + i))
                return order;
        } else if (a[i] != b[i]) {
            return std::strcmp(a + i, b + i);
        }
    }
    return std::strcmp(a, b);
}
