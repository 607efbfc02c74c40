// mapped_files.h: temporary files as memory, by hostapi/files.h. A file that somebody shortens, or a disk that
// fails, must not end the program: what is then no longer there reads as zeros, and unmapping tells it.
#pragma once

#include <cstddef>
#include <string>

namespace host
{

// The first `size` bytes, shared and writable; null where the file is shorter, the disk has no room for all of
// it, or the system has no more maps to give.
void* map_temporary(const std::string& name, std::size_t size);
// Whether all of the file was there to the end.
bool unmap_temporary(void* bytes);

} // namespace host
