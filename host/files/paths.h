// paths.h: path forms of the product's programs on this file system, and safe writing.
//
// Paths of programs are Windows-1252, those of this file system UTF-8; what already is a path of this
// file system may be given wherever a program's path may.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace host
{

// The path of this file system for one as programs write it ('\' or '/', drive letters, any case).
// What exists is found without regard to case; components that don't exist keep their spelling.
// Never fails: a path to nothing is returned in its own spelling.
std::string real_path(std::string_view path);
// The same, empty when there is no such file or directory.
std::optional<std::string> existing_path(std::string_view path);
// The file for a drawing's name: NAME.DWG stands for NAME.dxf where only that is there, or where
// neither is there (a new one is written as DXF). No extension: as with .dwg.
std::string drawing_path(std::string_view path);
// The file of a drawing that is to be read: as above, but where that isn't there, a file of just that name.
std::string drawing_to_read(std::string_view path);
// Programs turn the backslashes of a path to '/', those of \U+XXXX too. Where `path` leads to no drawing, and
// the same with these put back does, that one; else `path`.
std::string with_escapes_put_back(std::string_view path);
// What files.h opens: a name that ends in .dwg goes by drawing_path, any other by real_path.
std::string file_path(std::string_view path);
// A path of this file system as programs hold it: Windows-1252, other characters as \U+XXXX.
std::string program_path(std::string_view real);
// Looks a file (not a directory) up as programs expect: as named when the name has a root or begins at
// "." or ".."; else in the drawing's directory, in the current one, in the product's directories. An
// absolute path of this file system; empty when it is nowhere.
std::optional<std::string> find_file(std::string_view name);
// The file of a module, named with or without directory and extension (".arx" stands for ".so" where it isn't
// there itself): as find_file, else in the program's directories of modules.
std::optional<std::string> find_module_file(std::string_view name);
// `path` of this file system, from the root on.
std::string absolute_path(const std::string& path);
// An absolute path as programs of the platform hold it, with backslashes and a drive letter: the one that
// `path` has, else one whose directory is the root (Z unless that is set). Windows-1252 for any form.
std::string drive_path(std::string_view path);
// Directory of `path` with its separator; the name behind it.
std::string directory_of(std::string_view path);
std::string file_name_of(std::string_view path);

// Whole contents; nothing with errno set when it can't be read.
std::optional<std::string> read_whole(const std::string& path);
// Writes beside the file, flushes to disk and renames; the previous file stays as `backup` when that
// isn't empty. False with the reason in `error` when anything fails: then the file is as it was.
bool replace_file(const std::string& path, std::string_view bytes, const std::string& backup,
                  std::string* error);

} // namespace host
