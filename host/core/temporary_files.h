// temporary_files.h: files of programs in the system's directory for temporary ones, by hostapi/files.h. Those
// that nobody removed go when the program ends.
#pragma once

#include <string>

namespace host
{

// A name that no such file has, of at most 15 characters; empty when there is none to be had.
std::string new_temporary_name();
// A descriptor by "rb", "r+b" or "w+b"; the last makes a new file, for this user only. -1 with errno. A file
// that isn't this user's own is refused.
int open_temporary(const std::string& name, const char* mode);
// The file's place, for messages.
std::string temporary_path(const std::string& name);
bool remove_temporary(const std::string& name);

} // namespace host
