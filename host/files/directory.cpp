// hostapi/files.h: what there is in directories.
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <string>
#include <vector>

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include "host/core/text.h"
#include "host/files/names.h"
#include "host/files/paths.h"
#include "hostapi/files.h"

namespace
{

bool is_directory(const std::string& path)
{
    struct stat state;
    return stat(path.c_str(), &state) == 0 && S_ISDIR(state.st_mode);
}

bool same_file(const std::string& a, const std::string& b)
{
    struct stat first, second;
    return lstat(a.c_str(), &first) == 0 && lstat(b.c_str(), &second) == 0 && first.st_dev == second.st_dev &&
           first.st_ino == second.st_ino;
}

struct listed_name {
    std::string folded, name;
    bool operator<(const listed_name& other) const
    {
        return folded != other.folded ? folded < other.folded : name < other.name;
    }
    bool operator==(const listed_name& other) const { return name == other.name; }
};

listed_name listed(std::string name)
{
    return {host::folded_name(name), std::move(name)};
}

// Names in a directory that fit, in order. Drawings go by the extension that programs expect. Hidden
// files are found by patterns that begin with a point only.
std::vector<listed_name> names_that_fit(const std::string& directory, const std::string& pattern)
{
    std::vector<listed_name> out;
    DIR* listing = opendir(directory.empty() ? "." : directory.c_str());
    if (!listing)
        return out;
    const std::string wanted = host::folded_name(host::program_name(pattern));
    const bool drawings = host::extension_of(wanted) == ".dwg";
    while (const dirent* entry = readdir(listing)) {
        std::string name = host::program_name(entry->d_name);
        if (name == "." || name == ".." || (name[0] == '.' && wanted[0] != '.'))
            continue;
        const std::string_view extension = host::extension_of(name);
        if (drawings && host::same_text(extension, ".dxf"))
            name.replace(name.size() - extension.size(), extension.size(), ".dwg");
        listed_name one = listed(std::move(name));
        if (host::fits_pattern(one.folded, wanted))
            out.push_back(std::move(one));
    }
    closedir(listing);
    std::sort(out.begin(), out.end());
    out.erase(std::unique(out.begin(), out.end()), out.end());
    return out;
}

// The listing that is being walked, so that a walk reads its directory once.
struct {
    std::string pattern;
    std::vector<listed_name> names;
} walk;

} // namespace

extern "C" {

int file_exists(const char* path)
{
    return path && host::existing_path(host::file_path(path)) ? 1 : 0;
}

int file_is_directory(const char* path)
{
    return path && is_directory(host::real_path(path)) ? 1 : 0;
}

int file_remove(const char* path)
{
    if (!path)
        return -1;
    const std::string real = host::file_path(path);
    if (is_directory(real)) {
        errno = EISDIR;
        return -1;
    }
    return unlink(real.c_str());
}

int file_rename(const char* from, const char* to)
{
    if (!from || !to)
        return -1;
    const std::string source = host::file_path(from);
    std::string target = host::file_path(to);
    // A change of case alone: look-up finds the old spelling, the new one is meant.
    if (same_file(source, target))
        target = host::directory_of(target) + host::disk_name(host::file_name_of(to));
    if (std::rename(source.c_str(), target.c_str()) == 0)
        return 0;
    if (errno != EXDEV)
        return -1;
    const auto bytes = host::read_whole(source);
    if (!bytes || !host::replace_file(target, *bytes, {}, nullptr))
        return -1;
    return unlink(source.c_str());
}

int file_find(const char* pattern, const char* previous, char* name, std::size_t size)
{
    if (!pattern || !name || size == 0)
        return 0;
    const std::string wanted = host::file_name_of(pattern);
    if (wanted.empty())
        return 0;
    if (!previous || walk.pattern != pattern) {
        walk.pattern = pattern;
        walk.names = names_that_fit(host::real_path(host::directory_of(pattern)), wanted);
    }
    auto next = walk.names.begin();
    if (previous)
        next = std::upper_bound(walk.names.begin(), walk.names.end(), listed(previous));
    // A name that doesn't fit the caller's room would name another file when cut: it is passed over.
    while (next != walk.names.end() && next->name.size() >= size)
        ++next;
    if (next == walk.names.end())
        return 0;
    next->name.copy(name, next->name.size());
    name[next->name.size()] = '\0';
    return 1;
}
}
