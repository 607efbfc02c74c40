// files.h: the module's only way to the file system.
//
// Paths come as the product's programs write them: '\' or '/', drive letters, any case. A file
// opened for writing replaces its predecessor when it is closed, whole or not at all; only temporary files
// change in place.
#pragma once

#include <cstddef>

struct host_file;

extern "C" {
// Modes as fopen: "r", "w", "a", with "b" and "+". Null when the file can't be opened.
host_file* file_open(const char* path, const char* mode);
// 0 when all that was written is safe on disk.
int file_close(host_file* file);
// Closes a file without its predecessor's being replaced.
void file_give_up(host_file* file);
// As fgets, at most size - 1 characters; every kind of line end is handed on as one line feed.
char* file_gets(char* buffer, int size, host_file* file);
// Text with line feeds; the host writes the line ends that the user wants. Negative on failure.
int file_puts(const char* text, host_file* file);
int file_printf(host_file* file, const char* format, ...) __attribute__((format(printf, 2, 3)));
// Bytes as they are. The number read or written.
std::size_t file_read(void* buffer, std::size_t size, host_file* file);
std::size_t file_write(const void* buffer, std::size_t size, host_file* file);
int file_seek(host_file* file, long offset, int whence);
long file_tell(host_file* file);

// Temporary files: in the system's directory for them, private to the user, known by a name without a
// directory. One that nobody removes goes when the program ends, unless that is killed.
// A new name of up to 15 characters into `name`, of which `size` must leave room; the file itself comes with
// the first "w+b". 0, or negative.
int file_temp_name(char* name, std::size_t size);
// Modes "rb", "r+b", "w+b"; the last makes a new file only.
host_file* file_open_temp(const char* name, const char* mode);
int file_remove_temp(const char* name); // 0 when removed
// The first `size` bytes of a temporary file as memory; what is changed there is changed in the file. Null
// where the file is shorter or can't be mapped: then it is read and written. Not to be written otherwise
// meanwhile.
void* file_map_temp(const char* name, std::size_t size);
// 0, or negative when the file was shortened, removed or failed while it was mapped: changes may then be lost.
int file_unmap_temp(void* bytes);

int file_exists(const char* path);       // 1 for a file or a directory
int file_is_directory(const char* path); // 1 for a directory
int file_remove(const char* path);       // 0 when removed
// A file at `to` is replaced, whole or not at all.
int file_rename(const char* from, const char* to);
// First (`previous` null) or next name in a directory that fits the pattern's last component, in
// alphabetical order, into `name`. 1, or 0 when there is none.
int file_find(const char* pattern, const char* previous, char* name, std::size_t size);
}
