#include "tests/polygon/heap.h"

#include <cmath>
#include <cstdarg>
#include <cstdlib>
#include <utility>

#include "hostapi/ads.h"
#include "tests/formatted.h"

namespace
{
int live = 0;
int until_failure = 0;
bool failed = false;
int until_end = 0; // of the heap
int until_break = 0;
std::string printed;
} // namespace

int test_heap::live_blocks()
{
    return live;
}

void test_heap::fail_at(int n)
{
    until_failure = n;
    failed = false;
}

bool test_heap::has_failed()
{
    return failed;
}

void test_heap::fail_from(int n)
{
    until_end = n;
}

void test_heap::break_at(int n)
{
    until_break = n;
}

int acedUsrBrk()
{
    return until_break > 0 && --until_break == 0 ? 1 : 0;
}

std::string printed_text()
{
    return std::exchange(printed, {});
}

void* acad_malloc(std::size_t size)
{
    if (until_failure > 0 && --until_failure == 0) {
        failed = true;
        return nullptr;
    }
    if (until_end == 1)
        return nullptr;
    if (until_end > 1)
        --until_end;
    ++live;
    return std::malloc(size);
}

void acad_free(void* block)
{
    if (block)
        --live;
    std::free(block);
}

int acutPrintf(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    printed += formatted(format, arguments);
    va_end(arguments);
    return RTNORM;
}

int acedAlert(const char* text)
{
    printed += std::string("[alert] ") + text + "\n";
    return RTNORM;
}

void acutPolar(const ads_point from, ads_real angle, ads_real distance, ads_point out)
{
    const double x = from[0] + distance * std::cos(angle), y = from[1] + distance * std::sin(angle);
    out[2] = from[2];
    out[0] = x;
    out[1] = y;
}
