// memory_files.h: hostapi/files.h over files that are kept in memory, with faults on demand and a log of what
// was done to temporary files. With tests/polygon/heap.h the whole host of the grid's tests.
#pragma once

#include <cstddef>
#include <limits>
#include <map>
#include <string>

namespace memory_files
{

constexpr std::size_t NO_LIMIT = std::numeric_limits<std::size_t>::max();

struct state {
    std::map<std::string, std::string> files; // by path, and temporary ones by name
    std::string log;                   // "rb 0 160000>57600;" a transfer: mode, place, bytes wanted>moved
    std::size_t room = NO_LIMIT;       // bytes that writes may still store; then the disk is full
    std::size_t read_limit = NO_LIMIT; // bytes that a read gives at most
    bool refuse_opening = false;
    bool refuse_names = false;
    bool refuse_seeking = false;
    bool refuse_closing = false;  // what was written is there all the same
    bool refuse_mapping = true;   // else temporary files can be mapped
    bool lose_mapped = false;     // unmapping tells a fault
    int mapped = 0, unmapped = 0; // how many temporary files ever were
    int open_files = 0;
    int opened = 0; // how often a temporary file was
};
state& disk();
void forget(); // all of it; names of temporary files go on

} // namespace memory_files

// Variables of the AutoLISP programs, for acedGetSym.
struct resbuf;
void set_variable(const char* name, int restype, double value);
void clear_variables();
