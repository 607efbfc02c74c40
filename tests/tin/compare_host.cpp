#include "tests/tin/compare_host.h"

#include <cmath>
#include <cstdarg>
#include <cstdlib>
#include <set>
#include <utility>

#include "hostapi/ads.h"
#include "tests/formatted.h"
#include "tests/tin/plain_network.h"

namespace
{
std::set<void*> blocks;
int until_break = 0;
int until_end = -1;
bool only_one = false;
int asked_for = 0;
std::string text;
} // namespace

void compare_host::break_at(int n)
{
    until_break = n;
}

std::string compare_host::take_text()
{
    return std::exchange(text, {});
}

void compare_host::heap_ends_after(int more, bool again)
{
    until_end = more;
    only_one = again;
    asked_for = 0;
}

int compare_host::blocks_asked_for()
{
    return asked_for;
}

int compare_host::live_blocks()
{
    return static_cast<int>(blocks.size());
}

void compare_host::give_all_back()
{
    for (void* b : blocks)
        std::free(b);
    blocks.clear();
}

void* acad_malloc(std::size_t size)
{
    if (++asked_for > until_end && until_end >= 0 && (!only_one || asked_for == until_end + 1))
        return nullptr;
    return *blocks.insert(std::malloc(size)).first;
}

void acad_free(void* block)
{
    blocks.erase(block);
    std::free(block);
}

int acedUsrBrk()
{
    return until_break > 0 && --until_break == 0 ? 1 : 0;
}

int acutPrintf(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    text += formatted(format, arguments);
    va_end(arguments);
    return RTNORM;
}

// Lines that pass each other in space don't meet, as with the real one: elevations must not be handed in.
int acdbInters(const ads_point a1, const ads_point a2, const ads_point b1, const ads_point b2, int,
               ads_point out)
{
    if (std::fabs(a1[2] - b1[2]) > 1e-8 || std::fabs(a2[2] - b2[2]) > 1e-8)
        return RTERROR;
    plain::point p[4];
    const ads_real* const from[4] = {a1, a2, b1, b2};
    for (int i = 0; i < 4; ++i) {
        p[i].x = from[i][0];
        p[i].y = from[i][1];
    }
    out[0] = out[1] = out[2] = 0; // only whether they meet is asked for
    return plain::inters(p[0], p[1], p[2], p[3]) == plain::norm ? RTNORM : RTERROR;
}
