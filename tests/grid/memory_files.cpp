#include "tests/grid/memory_files.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <memory>

#include "hostapi/ads.h"
#include "hostapi/files.h"

struct host_file {
    std::string path, mode, bytes;
    std::size_t at = 0;
    bool temporary = false, failed = false;
    bool writes() const { return mode != "rb" && mode != "r"; }
};

namespace
{

memory_files::state the_disk;

struct variable {
    int restype;
    double value;
};
std::map<std::string, variable> variables;

std::string& bytes_of(host_file* file)
{
    return file->temporary ? the_disk.files[file->path] : file->bytes;
}

host_file* open(const char* path, const char* mode, bool temporary)
{
    if (the_disk.refuse_opening)
        return nullptr;
    const bool there = the_disk.files.count(path) > 0;
    if (mode[0] == 'r' ? !there : temporary && there)
        return nullptr;
    auto file = std::make_unique<host_file>();
    file->path = path;
    file->mode = mode;
    file->temporary = temporary;
    if (mode[0] == 'r' && !temporary)
        file->bytes = the_disk.files[path];
    if (temporary) {
        the_disk.files[path];
        ++the_disk.opened;
    }
    ++the_disk.open_files;
    return file.release();
}

void note(const host_file* file, std::size_t wanted, std::size_t moved)
{
    if (file->temporary)
        the_disk.log += file->mode + " " + std::to_string(file->at) + " " + std::to_string(wanted) + ">" +
                        std::to_string(moved) + ";";
}

} // namespace

memory_files::state& memory_files::disk()
{
    return the_disk;
}

void memory_files::forget()
{
    the_disk = {};
    clear_variables();
}

void set_variable(const char* name, int restype, double value)
{
    variables[name] = {restype, value};
}

void clear_variables()
{
    variables.clear();
}

extern "C" {

host_file* file_open(const char* path, const char* mode)
{
    return open(path, mode, false);
}

host_file* file_open_temp(const char* name, const char* mode)
{
    return open(name, mode, true);
}

int file_temp_name(char* name, std::size_t size)
{
    static int count = 0;
    if (the_disk.refuse_names)
        return -1;
    std::snprintf(name, size, "zent-%010d", ++count);
    return 0;
}

int file_remove_temp(const char* name)
{
    return the_disk.files.erase(name) ? 0 : -1;
}

void* file_map_temp(const char* name, std::size_t size)
{
    const auto found = the_disk.files.find(name);
    if (the_disk.refuse_mapping || found == the_disk.files.end() || found->second.size() < size)
        return nullptr;
    ++the_disk.mapped;
    return found->second.data();
}

int file_unmap_temp(void* /*bytes*/)
{
    ++the_disk.unmapped;
    return the_disk.lose_mapped ? -1 : 0;
}

int file_close(host_file* file)
{
    const std::unique_ptr<host_file> closing(file);
    --the_disk.open_files;
    const bool done = !file->failed && !the_disk.refuse_closing;
    if (done && file->writes() && !file->temporary)
        the_disk.files[file->path] = file->bytes;
    return done ? 0 : EOF;
}

void file_give_up(host_file* file)
{
    file->failed = true;
    file_close(file);
}

char* file_gets(char* buffer, int size, host_file* file)
{
    int length = 0;
    while (length < size - 1 && file->at < file->bytes.size()) {
        char c = file->bytes[file->at++];
        if (c == '\r') {
            file->at += file->at < file->bytes.size() && file->bytes[file->at] == '\n';
            c = '\n';
        }
        buffer[length++] = c;
        if (c == '\n')
            break;
    }
    buffer[length] = '\0';
    return length ? buffer : nullptr;
}

int file_puts(const char* text, host_file* file)
{
    const std::size_t size = std::strlen(text);
    return file_write(text, size, file) == size ? 0 : -1;
}

std::size_t file_read(void* buffer, std::size_t size, host_file* file)
{
    const std::string& bytes = bytes_of(file);
    const std::size_t left = file->at < bytes.size() ? bytes.size() - file->at : 0;
    const std::size_t got = std::min({size, left, the_disk.read_limit});
    if (got)
        std::memcpy(buffer, bytes.data() + file->at, got);
    note(file, size, got);
    file->at += got;
    return got;
}

std::size_t file_write(const void* buffer, std::size_t size, host_file* file)
{
    std::string& bytes = bytes_of(file);
    const std::size_t put = file->writes() ? std::min(size, the_disk.room) : 0;
    if (the_disk.room != memory_files::NO_LIMIT)
        the_disk.room -= put;
    if (put) {
        bytes.resize(std::max(bytes.size(), file->at + put)); // bytes that nobody has written are 0
        std::memcpy(bytes.data() + file->at, buffer, put);
    }
    file->failed = file->failed || put != size;
    note(file, size, put);
    file->at += put;
    return put;
}

int file_seek(host_file* file, long offset, int whence)
{
    if (the_disk.refuse_seeking)
        return -1;
    file->at = static_cast<std::size_t>(offset) + (whence == SEEK_END ? bytes_of(file).size() : 0);
    return 0;
}

long file_tell(host_file* file)
{
    return static_cast<long>(file->at);
}

int acedGetSym(const char* name, resbuf** value)
{
    *value = nullptr;
    const auto found = variables.find(name);
    if (found == variables.end())
        return RTNORM;
    *value = static_cast<resbuf*>(acad_malloc(sizeof(resbuf)));
    **value = {};
    (*value)->restype = static_cast<short>(found->second.restype);
    if (found->second.restype == RTREAL)
        (*value)->resval.rreal = found->second.value;
    else
        (*value)->resval.rint = static_cast<short>(found->second.value);
    return RTNORM;
}

int acutRelRb(resbuf* list)
{
    acad_free(list);
    return RTNORM;
}
}
