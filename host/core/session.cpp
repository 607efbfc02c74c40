// session.cpp: settings, clock and break.
#include "host/core/session.h"

#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <ctime>

#include "hostapi/ads.h"

namespace host
{

namespace
{

std::atomic<bool> break_waiting = false;
long polls = 0;

struct moment {
    int year, month, day, hour, minute, second, millisecond;
};

moment now()
{
    moment m{};
    const std::string& fixed = run_settings().clock;
    if (!fixed.empty() && std::sscanf(fixed.c_str(), "%4d%2d%2d.%2d%2d%2d", &m.year, &m.month, &m.day, &m.hour,
                                      &m.minute, &m.second) == 6)
        return m;
    const auto time = std::chrono::system_clock::now();
    const std::time_t seconds = std::chrono::system_clock::to_time_t(time);
    std::tm parts{};
    localtime_r(&seconds, &parts);
    const auto whole = std::chrono::time_point_cast<std::chrono::seconds>(time);
    return {parts.tm_year + 1900,
            parts.tm_mon + 1,
            parts.tm_mday,
            parts.tm_hour,
            parts.tm_min,
            parts.tm_sec,
            static_cast<int>(std::chrono::duration_cast<std::chrono::milliseconds>(time - whole).count())};
}

// Day number of the proleptic Gregorian calendar (Fliegel and Van Flandern).
long julian_day(int year, int month, int day)
{
    const long a = (month - 14) / 12;
    return (1461L * (year + 4800 + a)) / 4 + (367L * (month - 2 - 12 * a)) / 12 -
           (3L * ((year + 4900 + a) / 100)) / 4 + day - 32075;
}

} // namespace

settings& run_settings()
{
    static settings values;
    return values;
}

double clock_cdate()
{
    const moment m = now();
    return m.year * 10000.0 + m.month * 100.0 + m.day + m.hour / 1e2 + m.minute / 1e4 + m.second / 1e6 +
           m.millisecond / 1e9;
}

double clock_julian()
{
    const moment m = now();
    const double seconds = m.hour * 3600.0 + m.minute * 60.0 + m.second + m.millisecond / 1000.0;
    return static_cast<double>(julian_day(m.year, m.month, m.day)) + seconds / 86400.0;
}

std::int64_t clock_milliseconds()
{
    if (!run_settings().clock.empty())
        return 0;
    static const auto start = std::chrono::steady_clock::now();
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start)
        .count();
}

bool poll_break()
{
    ++polls;
    if (polls == run_settings().break_after)
        return true;
    return break_waiting.exchange(false);
}

void request_break()
{
    break_waiting = true;
}
bool break_requested()
{
    return break_waiting;
}
void clear_break()
{
    break_waiting = false;
}

} // namespace host

int acedUsrBrk()
{
    return host::poll_break() ? 1 : 0;
}
