#include "tests/topology/surface_host.h"

#include <cmath>

#include "hostapi/ads.h"
#include "hostapi/files.h"

struct host_file {
    std::size_t at;
};

namespace
{
std::string file_name, file_text;
int open_count = 0;
} // namespace

void surface_host::put_file(const std::string& name, const std::string& text)
{
    file_name = name;
    file_text = text;
}

int surface_host::open_files()
{
    return open_count;
}

host_file* file_open(const char* path, const char*)
{
    if (path != file_name)
        return nullptr;
    ++open_count;
    return new host_file{0};
}

int file_close(host_file* file)
{
    --open_count;
    delete file;
    return 0;
}

char* file_gets(char* buffer, int size, host_file* file)
{
    int length = 0;
    while (length < size - 1 && file->at < file_text.size()) {
        char c = file_text[file->at++];
        if (c == '\r') {
            file->at += file->at < file_text.size() && file_text[file->at] == '\n';
            c = '\n';
        }
        buffer[length++] = c;
        if (c == '\n')
            break;
    }
    if (length == 0)
        return nullptr;
    buffer[length] = '\0';
    return buffer;
}

int acdbInters(const ads_point a1, const ads_point a2, const ads_point b1, const ads_point b2, int,
               ads_point out)
{
    const double ax = a2[0] - a1[0], ay = a2[1] - a1[1], bx = b2[0] - b1[0], by = b2[1] - b1[1];
    const double cross = ax * by - ay * bx;
    if (std::fabs(cross) <= 1e-12 * std::hypot(ax, ay) * std::hypot(bx, by))
        return RTERROR;
    const double wx = b1[0] - a1[0], wy = b1[1] - a1[1];
    const double s = (wx * by - wy * bx) / cross, t = (wx * ay - wy * ax) / cross;
    constexpr double slack = 1e-10;
    if (s < -slack || s > 1 + slack || t < -slack || t > 1 + slack)
        return RTERROR;
    out[0] = a1[0] + s * ax;
    out[1] = a1[1] + s * ay;
    out[2] = a1[2];
    return RTNORM;
}
