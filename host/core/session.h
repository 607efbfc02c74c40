// session.h: settings of a run, the clock and the user's break.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace host
{

struct settings {
    std::map<char, std::string> drives; // upper-case letter -> directory of this file system
    std::string share;                  // product files
    std::vector<std::string> modules;   // directories of the program's modules, with their separator
    std::string registry;               // registry file; empty: the user's own
    bool crlf = false;                  // line ends of the text files that are written
    bool no_shell = false;              // other programs may not be started
    long break_after = 0;               // the N-th break poll answers yes; 0 never
    std::string clock;                  // YYYYMMDD.HHMMSS, empty: the machine's clock
    std::string dxf_version = "R2000";  // R12, R2000, R2007
};
settings& run_settings();

// Date and time as YYYYMMDD.HHMMSSmmm read as a number (CDATE), and as a Julian day (DATE).
double clock_cdate();
double clock_julian();
std::int64_t clock_milliseconds(); // since the host started; fixed with a fixed clock

// One break poll: true when the user wants to stop.
bool poll_break();
// Asks for a break, from a signal handler too.
void request_break();
// A break that is waiting and hasn't been polled.
bool break_requested();
void clear_break();

} // namespace host
