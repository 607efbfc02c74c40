// replacement.h: a file that is being written beside the one that it is to replace.
#pragma once

#include <string>

namespace host
{

struct replacement {
    std::string target;    // what is replaced, symbolic links followed
    std::string temporary; // beside it; empty when the target is written in place (devices, pipes)
};

// Makes and opens the file to write, with the mode of the target if there is one. -1 with errno when the
// target is a directory, may not be written, or no file can be made beside it.
int begin_replacement(const std::string& path, replacement* out);
// To be called when all is written: flushes, closes, keeps the previous file as `backup` when that isn't
// empty, renames. False with errno: the target is as it was and the temporary file is gone.
bool commit_replacement(const replacement& what, int descriptor, const std::string& backup);
void drop_replacement(const replacement& what, int descriptor);

// Appends the target's bytes to the file being written. False with errno.
bool copy_target(const replacement& what, int descriptor);

} // namespace host
