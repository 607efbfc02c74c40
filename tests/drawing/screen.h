// screen.h: the host's screen for these tests: it notes what it is asked to show.
#pragma once

#include <string>
#include <vector>

namespace screen
{
extern std::vector<std::string> alerts;
extern std::vector<std::string> vectors; // "x,y,z x,y,z color highlight"
extern int updates;
} // namespace screen
