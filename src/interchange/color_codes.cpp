#include "interchange/color_codes.h"

namespace
{

struct color_pair {
    int host, file;
};
constexpr color_pair COLORS[] = {{1, 4}, {2, 14}, {3, 2}, {4, 3}, {5, 1}, {6, 5}, {7, 15}};

} // namespace

int file_color_of(int host_color)
{
    for (const color_pair& c : COLORS)
        if (c.host == host_color)
            return c.file;
    return host_color;
}

int host_color_of(int file_color)
{
    for (const color_pair& c : COLORS)
        if (c.file == file_color)
            return c.host;
    return file_color;
}
