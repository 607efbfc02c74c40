// files.cpp: text files, and finding them.
#include "host/core/text.h"
#include "host/lisp/builtins.h"
#include "hostapi/ads.h"

namespace host::lisp
{

bool file_object::close()
{
    host_file* const open = std::exchange(file, nullptr);
    return !open || file_close(open) == 0;
}

namespace
{

value open(interpreter& l, arguments a)
{
    const std::string mode = lower(a.text(1));
    if (mode != "r" && mode != "w" && mode != "a")
        l.fail("bad argument value: open mode \"" + a.text(1) + "\"");
    host_file* file = file_open(a.text(0).c_str(), mode.c_str());
    if (!file)
        return value::nil();
    auto* made = new file_object;
    made->file = file;
    made->path = a.text(0);
    made->mode = mode[0];
    return value::of(static_cast<counted*>(made));
}

value close(interpreter& l, arguments a)
{
    file_object* file = a[0].as_file();
    if (!file->file)
        l.wrong_type("streamp", a[0]);
    if (!file->close())
        l.fail("file write error: " + file->path);
    return value::nil();
}

// A line with its line feed, however long; false at the end of the file.
bool read_line_of(host_file* file, std::string* line)
{
    char block[4096];
    line->clear();
    while (file_gets(block, sizeof block, file)) {
        line->append(block);
        if (!line->empty() && line->back() == '\n')
            break;
    }
    return !line->empty();
}

// From the user: what is typed on one line.
std::string typed_line(interpreter& l)
{
    char text[ADS_TEXT_SIZE] = "";
    const int status = acedGetString(1, "", text);
    if (status == RTCAN)
        l.cancel();
    return text;
}

host_file* readable(interpreter& l, const value& v)
{
    file_object* file = v.as_file();
    if (!file->file || file->mode != 'r')
        l.wrong_type("streamp", v);
    return file->file;
}

value read_line(interpreter& l, arguments a)
{
    if (!a.given(0)) {
        std::string line = l.typed_ahead.empty() ? typed_line(l) : std::exchange(l.typed_ahead, {});
        if (line.ends_with('\n'))
            line.pop_back();
        return value::text(line);
    }
    host_file* file = readable(l, a[0]);
    std::string line = std::exchange(a[0].as_file()->pending, {});
    if (line.empty() && !read_line_of(file, &line))
        return value::nil();
    if (line.back() == '\n')
        line.pop_back();
    return value::text(line);
}

value first_char(std::string& line)
{
    const auto c = static_cast<unsigned char>(line.front());
    line.erase(0, 1);
    return value::integer(c);
}

value read_char(interpreter& l, arguments a)
{
    if (!a.given(0)) {
        if (l.typed_ahead.empty())
            l.typed_ahead = typed_line(l) + "\n";
        return first_char(l.typed_ahead);
    }
    host_file* file = readable(l, a[0]);
    std::string& pending = a[0].as_file()->pending;
    if (pending.empty() && !read_line_of(file, &pending))
        return value::nil();
    return first_char(pending);
}

value find_file(interpreter&, arguments a)
{
    char path[ADS_PATH_SIZE];
    if (a.text(0).empty() || acedFindFile(a.text(0).c_str(), path) != RTNORM)
        return value::nil();
    return value::text(path);
}

value file_dialog(interpreter& l, arguments a)
{
    resbuf result{};
    const int status =
        acedGetFileD(a.text(0).c_str(), a.text(1).c_str(), a.text(2).c_str(), a.integer(3), &result);
    l.throw_kept_stop();
    l.poll();
    if (status != RTNORM)
        return value::nil();
    if (result.restype != RTSTR)
        return l.t();
    const value path = value::text(result.resval.rstring ? result.resval.rstring : "");
    acad_free(result.resval.rstring);
    return path;
}

constexpr builtin TABLE[] = {
    {"open", open, 2, 3, "ss."},
    {"close", close, 1, 1, "f"},
    {"read-line", read_line, 0, 1, "F"},
    {"read-char", read_char, 0, 1, "F"},
    {"findfile", find_file, 1, 1, "s"},
    {"findtrustedfile", find_file, 1, 1, "s"},
    {"getfiled", file_dialog, 4, 4, "sssi"},
};

} // namespace

std::span<const builtin> file_table()
{
    return TABLE;
}

} // namespace host::lisp
