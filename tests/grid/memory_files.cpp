#include "tests/grid/memory_files.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "hostapi/files.h"

struct host_file {
    std::vector<char>* bytes;
    std::size_t at = 0;
    bool refused = false;
};

namespace
{
std::map<std::string, std::vector<char>> files;
long opened = 0;
int names = 0;
bool no_opening = false, no_writing = false;
} // namespace

long memory_files::transfers()
{
    return opened;
}
int memory_files::left()
{
    return static_cast<int>(files.size());
}
void memory_files::refuse_opening(bool on)
{
    no_opening = on;
}
void memory_files::refuse_writing(bool on)
{
    no_writing = on;
}

int file_temp_name(char* name, std::size_t size)
{
    std::snprintf(name, size, "cells%d", ++names);
    return 0;
}

host_file* file_open_temp(const char* name, const char* mode)
{
    if (no_opening)
        return nullptr;
    const bool makes = mode[0] == 'w';
    if (makes ? files.contains(name) : !files.contains(name))
        return nullptr;
    ++opened;
    return new host_file{&files[name]};
}

int file_remove_temp(const char* name)
{
    return files.erase(name) ? 0 : -1;
}

int file_close(host_file* file)
{
    const bool refused = file->refused;
    delete file;
    return refused ? -1 : 0;
}

std::size_t file_read(void* buffer, std::size_t size, host_file* file)
{
    const std::size_t rest = file->bytes->size() - std::min(file->at, file->bytes->size());
    const std::size_t got = std::min(size, rest);
    if (got)
        std::memcpy(buffer, file->bytes->data() + file->at, got);
    file->at += got;
    return got;
}

std::size_t file_write(const void* buffer, std::size_t size, host_file* file)
{
    if (no_writing) {
        file->refused = true;
        return 0;
    }
    if (file->bytes->size() < file->at + size)
        file->bytes->resize(file->at + size);
    std::memcpy(file->bytes->data() + file->at, buffer, size);
    file->at += size;
    return size;
}

int file_seek(host_file* file, long offset, int whence)
{
    const long base = whence == SEEK_SET   ? 0
                      : whence == SEEK_CUR ? static_cast<long>(file->at)
                                           : static_cast<long>(file->bytes->size());
    file->at = static_cast<std::size_t>(base + offset);
    return 0;
}

long file_tell(host_file* file)
{
    return static_cast<long>(file->at);
}
