#include "common/fields.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "common/number_text.h"
#include "hostapi/ads.h"

namespace
{

char* new_text(std::string_view from)
{
    char* copy = static_cast<char*>(acad_malloc(from.size() + 1));
    if (!copy)
        return nullptr;
    from.copy(copy, from.size());
    copy[from.size()] = '\0';
    return copy;
}

// How many occurrences there are up to the n-th; `end` is put behind the last one of them.
int occurrences(std::string_view text, std::string_view delimiter, int n, std::size_t* end)
{
    *end = 0;
    int count = 0;
    while (count < n && !delimiter.empty()) {
        const std::size_t at = text.find(delimiter, *end);
        if (at == text.npos)
            break;
        *end = at + delimiter.size();
        ++count;
    }
    return count;
}

} // namespace

char* cut_last_token(char* text, const char* operators)
{
    const std::string_view all = text;
    const std::size_t last = all.find_last_of(operators);
    const std::size_t kept = last == all.npos ? 0 : last + 1;
    char* token = new_text(all.substr(kept));
    if (token)
        text[kept] = '\0';
    return token;
}

char* cut_first_token(char* text, const char* operators)
{
    const std::string_view all = text;
    const std::size_t first = std::min(all.find_first_of(operators), all.size());
    char* token = new_text(all.substr(0, first));
    if (token)
        std::memmove(text, text + first, all.size() - first + 1);
    return token;
}

char* delimited_at(const char* text, int position)
{
    const std::string_view all = text;
    if (position < 0 || static_cast<std::size_t>(position) >= all.size())
        return new_text("");
    const std::string_view behind = all.substr(static_cast<std::size_t>(position) + 1);
    return new_text(behind.substr(0, behind.find(text[position])));
}

int nth_delimiter(const char* text, const char* delimiter, int n)
{
    if (n < 1)
        return -1;
    if (*text == '\0')
        return 0;
    std::size_t end = 0;
    return static_cast<int>(occurrences(text, delimiter, n, &end) == n ? end - 1 : std::strlen(text));
}

int count_delimiters(const char* text, const char* delimiter)
{
    const std::string_view all = text;
    std::size_t end = 0;
    return occurrences(all, delimiter, static_cast<int>(all.size()), &end);
}

char* nth_field(const char* text, const char* delimiter, int n)
{
    const int length = static_cast<int>(std::strlen(text));
    const int first = n < 1 ? length : nth_delimiter(text, delimiter, n - 1) + 1;
    const int end = nth_delimiter(text, delimiter, n);
    if (first >= end)
        return new_text("");
    return new_text({text + first, static_cast<std::size_t>(end - first)});
}

char* join_value(const char* left, double value, const char* right)
{
    char number[NUMBER_TEXT_SIZE];
    const std::string_view pieces[] = {left, number_text(value, number), right};
    std::size_t size = 1;
    for (const std::string_view piece : pieces)
        size += piece.size();
    char* joined = static_cast<char*>(acad_malloc(size));
    if (!joined)
        return nullptr;
    char* end = joined;
    for (const std::string_view piece : pieces)
        end += piece.copy(end, piece.size());
    *end = '\0';
    return joined;
}
