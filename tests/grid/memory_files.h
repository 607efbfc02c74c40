// memory_files.h: temporary files kept in memory, counted and made to fail.
#pragma once

namespace memory_files
{
long transfers();             // opened so far
int left();                   // files that are there
void refuse_opening(bool on); // nothing can be opened
void refuse_writing(bool on); // opened, but no byte goes in
} // namespace memory_files
