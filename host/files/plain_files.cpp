// What hostapi/files.h is for a program without a CAD host: open_files.cpp over paths as this file system has
// them. The functions of namespace host here are those of paths.cpp and of the host's core that it asks for.
#include <cerrno>
#include <cstdio>
#include <filesystem>

#include "host/core/console.h"
#include "host/core/session.h"
#include "host/files/paths.h"
#include "hostapi/files.h"

namespace host
{

std::string file_path(std::string_view path)
{
    return std::string(path);
}

std::string program_path(std::string_view real)
{
    return std::string(real);
}

std::string directory_of(std::string_view path)
{
    return std::string(path.substr(0, path.rfind('/') + 1));
}

settings& run_settings()
{
    static settings plain;
    return plain;
}

void complain(std::string_view text)
{
    std::fprintf(stderr, "%.*s\n", static_cast<int>(text.size()), text.data());
}

} // namespace host

namespace
{

bool is_directory(const char* path)
{
    std::error_code none;
    return path && std::filesystem::is_directory(path, none);
}

} // namespace

extern "C" {

int file_exists(const char* path)
{
    std::error_code none;
    return path && std::filesystem::exists(path, none);
}

int file_is_directory(const char* path)
{
    return is_directory(path);
}

int file_remove(const char* path)
{
    if (!path || is_directory(path)) {
        errno = path ? EISDIR : EINVAL;
        return -1;
    }
    return std::remove(path);
}

int file_rename(const char* from, const char* to)
{
    return from && to ? std::rename(from, to) : -1;
}
}
