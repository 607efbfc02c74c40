// surface_host.h: what surfaces ask of their host beyond tests/polygon/heap.h: files, and crossings of lines.
#pragma once

#include <string>

namespace surface_host
{
// The one file there is, by its name.
void put_file(const std::string& name, const std::string& text);
int open_files();
} // namespace surface_host
