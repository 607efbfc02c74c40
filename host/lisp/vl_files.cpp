// vl_files.cpp: files as a whole, directories, parts of paths. Paths in any form that programs use.
#include <chrono>
#include <cstdio>
#include <ctime>
#include <filesystem>

#include "host/core/text.h"
#include "host/files/paths.h"
#include "host/lisp/builtins.h"
#include "hostapi/ads.h"
#include "hostapi/files.h"

namespace host::lisp
{

namespace
{

namespace fs = std::filesystem;

value remove(interpreter& l, arguments a)
{
    const char* path = a.text(0).c_str();
    return l.truth(!file_is_directory(path) && file_remove(path) == 0);
}

// An existing file isn't replaced.
value rename(interpreter& l, arguments a)
{
    return l.truth(!file_exists(a.text(1).c_str()) && file_rename(a.text(0).c_str(), a.text(1).c_str()) == 0);
}

// The number of bytes copied, nil when nothing was. Only appending writes to an existing file.
value copy(interpreter&, arguments a)
{
    const bool append = a.given(2);
    const char *from = a.text(0).c_str(), *to = a.text(1).c_str();
    if (file_is_directory(from) || (!append && file_exists(to)))
        return value::nil();
    host_file* in = file_open(from, "rb");
    host_file* out = in ? file_open(to, append ? "ab" : "wb") : nullptr;
    std::size_t sum = 0;
    bool good = in && out;
    char block[65536];
    for (std::size_t n; good && (n = file_read(block, sizeof block, in)) > 0; sum += n)
        good = file_write(block, n, out) == n;
    if (in)
        file_close(in);
    if (out && file_close(out) != 0)
        good = false;
    return good ? value::integer(static_cast<std::int32_t>(sum)) : value::nil();
}

value size(interpreter&, arguments a)
{
    if (!file_exists(a.text(0).c_str()))
        return value::nil();
    if (file_is_directory(a.text(0).c_str()))
        return value::integer(0);
    std::error_code error;
    const auto bytes = fs::file_size(real_path(a.text(0)), error);
    return error ? value::nil() : value::integer(static_cast<std::int32_t>(bytes));
}

// (year month weekday day hours minutes seconds thousandths) of the last change; Sunday is 0.
value system_time(interpreter&, arguments a)
{
    std::error_code error;
    const auto written = fs::last_write_time(real_path(a.text(0)), error);
    if (error)
        return value::nil();
    const auto time = std::chrono::file_clock::to_sys(written);
    const auto seconds = std::chrono::floor<std::chrono::seconds>(time);
    const std::time_t clock = std::chrono::system_clock::to_time_t(
        std::chrono::time_point_cast<std::chrono::system_clock::duration>(seconds));
    std::tm t{};
    localtime_r(&clock, &t);
    const auto rest = std::chrono::duration_cast<std::chrono::milliseconds>(time - seconds).count();
    list_maker out;
    for (const int n : {t.tm_year + 1900, t.tm_mon + 1, t.tm_wday, t.tm_mday, t.tm_hour, t.tm_min, t.tm_sec,
                        static_cast<int>(rest)})
        out.add(value::integer(n));
    return out.take();
}

value is_directory(interpreter& l, arguments a)
{
    return l.truth(file_is_directory(a.text(0).c_str()) != 0);
}

// Which names are wanted: -1 directories, 0 both, 1 files.
value directory_files(interpreter&, arguments a)
{
    std::string directory = a.given(0) ? a.text(0) : ".";
    const std::string pattern = a.given(1) && a.text(1) != "*.*" ? a.text(1) : "*";
    const std::int32_t wanted = a.given(2) ? a.integer(2) : 0;
    if (directory.empty())
        directory = ".";
    if (directory.back() != '/' && directory.back() != '\\')
        directory += '/';
    const std::string search = directory + pattern;
    list_maker out;
    char name[ADS_PATH_SIZE];
    std::string before;
    for (const char* previous = nullptr; file_find(search.c_str(), previous, name, sizeof name);
         previous = before.c_str()) {
        before = name;
        const bool folder = file_is_directory((directory + before).c_str()) != 0;
        if (wanted == 0 || (wanted < 0) == folder)
            out.add(value::text(before));
    }
    return out.take();
}

value make_directory(interpreter& l, arguments a)
{
    std::error_code error;
    return l.truth(fs::create_directory(real_path(a.text(0)), error) && !error);
}

// ---- parts of a path

std::size_t name_start(const std::string& path)
{
    const std::size_t at = path.find_last_of("/\\:");
    return at == path.npos ? 0 : at + 1;
}

std::size_t dot_of(const std::string& path)
{
    const std::size_t dot = path.rfind('.');
    return dot == path.npos || dot < name_start(path) ? path.size() : dot;
}

value base(interpreter&, arguments a)
{
    const std::string& path = a.text(0);
    const std::size_t start = name_start(path);
    return value::text(path.substr(start, dot_of(path) - start));
}

value extension(interpreter&, arguments a)
{
    const std::string& path = a.text(0);
    const std::size_t dot = dot_of(path);
    return dot == path.size() ? value::nil() : value::text(path.substr(dot));
}

// Without the separator behind it, but for a root.
value directory(interpreter&, arguments a)
{
    const std::string& path = a.text(0);
    std::size_t end = name_start(path);
    if (end > 1 && path[end - 1] != ':' && path[end - 2] != ':')
        --end;
    return value::text(path.substr(0, end));
}

std::string temporary_directory()
{
    resbuf held{};
    if (acedGetVar("TEMPPREFIX", &held) == RTNORM && held.restype == RTSTR && held.resval.rstring) {
        std::string path = held.resval.rstring;
        acad_free(held.resval.rstring);
        if (!path.empty())
            return path;
    }
    std::error_code error;
    return fs::temp_directory_path(error).string();
}

// A name that no file has: pattern, directory and extension with a number between.
value temporary_name(interpreter&, arguments a)
{
    const std::string pattern = a.given(0) ? a.text(0) : "$VL~~";
    const std::size_t start = name_start(pattern), dot = dot_of(pattern);
    std::string directory = a.given(1) ? a.text(1) : start ? pattern.substr(0, start) : temporary_directory();
    const std::string extension = a.given(2) ? a.text(2) : pattern.substr(dot);
    if (!directory.empty() && directory.back() != '/' && directory.back() != '\\')
        directory += '/';
    static int last = 0;
    for (;;) {
        char number[16];
        std::snprintf(number, sizeof number, "%03d", ++last);
        const std::string path = directory + pattern.substr(start, dot - start) + number + extension;
        if (!file_exists(path.c_str()))
            return value::text(path);
    }
}

constexpr builtin TABLE[] = {
    {"vl-file-delete", remove, 1, 1, "s"},
    {"vl-file-rename", rename, 2, 2, "s"},
    {"vl-file-copy", copy, 2, 3, "ss."},
    {"vl-file-size", size, 1, 1, "s"},
    {"vl-file-systime", system_time, 1, 1, "s"},
    {"vl-file-directory-p", is_directory, 1, 1, "s"},
    {"vl-directory-files", directory_files, 0, 3, "SSI"},
    {"vl-mkdir", make_directory, 1, 1, "s"},
    {"vl-filename-base", base, 1, 1, "s"},
    {"vl-filename-extension", extension, 1, 1, "s"},
    {"vl-filename-directory", directory, 1, 1, "s"},
    {"vl-filename-mktemp", temporary_name, 0, 3, "S"},
};

} // namespace

std::span<const builtin> vl_file_table()
{
    return TABLE;
}

} // namespace host::lisp
