#include "common/arguments.h"

#include <cstring>

namespace
{

const resbuf* take(const resbuf** at)
{
    const resbuf* node = *at;
    if (node)
        *at = node->rbnext;
    return node;
}

} // namespace

const char* next_text(const resbuf** at, const char* standard)
{
    const resbuf* node = take(at);
    return node && node->restype == RTSTR && node->resval.rstring ? node->resval.rstring : standard;
}

int next_short(const resbuf** at, int standard)
{
    const resbuf* node = take(at);
    return node && node->restype != RTSTR ? short_of(*node) : standard;
}

double next_real(const resbuf** at, double standard)
{
    const resbuf* node = take(at);
    if (!node || node->restype == RTSTR)
        return standard;
    double value;
    std::memcpy(&value, &node->resval, sizeof value);
    return value;
}

bool next_point(const resbuf** at, ads_point point)
{
    const resbuf* node = take(at);
    if (!node || node->restype == RTSTR)
        return false;
    std::memcpy(point, &node->resval, sizeof(ads_point));
    return true;
}

bool next_name(const resbuf** at, ads_name name)
{
    const resbuf* node = take(at);
    if (!node || node->restype == RTSTR)
        return false;
    std::memcpy(name, &node->resval, sizeof(ads_name));
    return true;
}

int short_of(const resbuf& node)
{
    short value = 0;
    if (node.restype != RTSTR)
        std::memcpy(&value, &node.resval, sizeof value);
    return value;
}
