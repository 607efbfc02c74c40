#include "common/paths.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <string>

#include "hostapi/files.h"

namespace
{

constexpr const char* SEPARATORS = "\\/";
constexpr std::size_t COPY_BLOCK = 4096;

int replace_all(char* text, char from, char to)
{
    const std::size_t length = std::strlen(text);
    std::replace(text, text + length, from, to);
    return static_cast<int>(length);
}

// 'c:/JOBS//site.dwg' to 'C:\Jobs\Site.dwg'.
std::string tidy_path(std::string_view path)
{
    std::string tidy = path.substr(0, 2) == "\\\\" ? "\\\\" : "";
    bool first = true;
    for (std::size_t at = 0; at < path.size();) {
        const std::size_t end = std::min(path.find_first_of(SEPARATORS, at), path.size());
        if (end > at) {
            if (!first)
                tidy += '\\';
            first = false;
            for (std::size_t i = at; i < end; ++i) {
                const auto c = static_cast<unsigned char>(path[i]);
                tidy += static_cast<char>(i == at ? std::toupper(c) : std::tolower(c));
            }
        }
        at = end + 1;
    }
    return tidy;
}

} // namespace

void path_file_name(const char* path, text_out out)
{
    const std::string_view whole = path;
    const std::size_t last = whole.find_last_of(SEPARATORS);
    text_set(out, last == std::string_view::npos ? whole : whole.substr(last + 1));
}

void path_directory(const char* path, text_out out)
{
    const std::string_view whole = path;
    const std::size_t last = whole.find_last_of(SEPARATORS);
    text_set(out, last == std::string_view::npos ? whole : whole.substr(0, last + 1));
}

int path_to_backslash(char* text)
{
    return replace_all(text, '/', '\\');
}

int path_to_slash(char* text)
{
    return replace_all(text, '\\', '/');
}

void compact_path(const char* path, text_out out, int width)
{
    const std::string tidy = tidy_path(path);
    const int length = static_cast<int>(tidy.size());
    if (length < width) {
        text_set(out, tidy);
        return;
    }
    // Dialog lines were laid out for width - 2 characters. A width with no room for any of the path
    // leaves the dots alone.
    const long from = static_cast<long>(length) - width + 5;
    text_set(out, "...");
    if (from < length)
        text_add(out, std::string_view(tidy).substr(static_cast<std::size_t>(from)));
}

int copy_file(const char* from, const char* to)
{
    host_file* source = file_open(from, "rb");
    if (!source)
        return 0;
    host_file* target = file_open(to, "wb");
    if (!target) {
        file_close(source);
        return 0;
    }
    char block[COPY_BLOCK];
    while (const std::size_t count = file_read(block, sizeof block, source))
        file_write(block, count, target);
    file_close(target);
    file_close(source);
    return 1;
}
