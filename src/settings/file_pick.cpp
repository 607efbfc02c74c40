#include "settings/file_pick.h"

#include <cstring>
#include <string>

#include "common/lisp_vars.h"
#include "common/text.h"
#include "hostapi/ads.h"
#include "hostapi/files.h"
#include "hostapi/windows.h"
#include "settings/remembered_files.h"

namespace
{

constexpr const char* PRODUCT = "Zentrik";

void release_text(resbuf* result)
{
    if (result->restype == RTSTR && result->resval.rstring)
        acad_free(result->resval.rstring);
    result->restype = RTNONE;
    result->resval.rstring = nullptr;
}

bool ends_in_separator(std::string_view path)
{
    return !path.empty() && (path.back() == '\\' || path.back() == '/');
}

// Directory that is remembered for the first extension of the list that has one; empty for none.
std::string directory_for(std::string_view extensions)
{
    while (!extensions.empty()) {
        const std::size_t end = std::min(extensions.find(';'), extensions.size());
        if (end > 0) {
            char directory[ADS_PATH_SIZE];
            remembered_directory(std::string(extensions.substr(0, end)).c_str(), directory);
            if (directory[0] != '\0')
                return directory;
        }
        extensions.remove_prefix(std::min(end + 1, extensions.size()));
    }
    return {};
}

// A default that names no file gives way to the remembered directory. One in the job's data directory
// keeps its name; an unset data directory is a part of every text, so then the whole default is kept.
void improve_default(text_out default_path, const char* extensions)
{
    char job_dir[256];
    lisp_get_text(job_dir, "tmpdir$");
    str_upper(job_dir);
    std::string upper = default_path.text;
    str_upper(upper.data());
    const bool in_job_dir = upper.find(job_dir) != std::string::npos;
    if (!upper.empty() && !ends_in_separator(upper) && !in_job_dir && !file_is_directory(default_path.text))
        return;
    const std::string directory = directory_for(extensions);
    if (!directory.empty())
        text_set(default_path, directory + (in_job_dir ? upper.substr(std::strlen(job_dir)) : std::string()));
}

bool user_keeps_existing(const char* path)
{
    char found[ADS_PATH_SIZE];
    if (acedFindFile(path, found) != RTNORM)
        return false;
    char question[ADS_PATH_SIZE + 64], caption[64];
    text_format(question, "%s already exists.\nDo you want to replace it?", path);
    text_format(caption, "%s Message", PRODUCT);
    return MessageBoxA(GetActiveWindow(), question, caption, MB_YESNO | MB_ICONWARNING) == IDNO;
}

int ask_new_file(const char* title, text_out default_path, const char* extensions, int flags, resbuf* result)
{
    for (;;) {
        const int status =
            acedGetFileD(title, default_path.text, extensions, flags | PICK_NO_REPLACE_QUESTION, result);
        if (status != RTNORM || result->restype != RTSTR || !user_keeps_existing(result->resval.rstring))
            return status;
        text_set(default_path, result->resval.rstring);
        release_text(result);
    }
}

} // namespace

int zent_get_file(const char* title, text_out default_path, const char* extensions, int flags, resbuf* result)
{
    str_trim(default_path.text);
    improve_default(default_path, extensions);
    const bool asks_to_replace = (flags & PICK_NEW_FILE) && !(flags & PICK_NO_REPLACE_QUESTION);
    const int status = asks_to_replace ? ask_new_file(title, default_path, extensions, flags, result)
                                       : acedGetFileD(title, default_path.text, extensions, flags, result);
    if (status == RTNORM && result->restype == RTSTR && !lisp_is_integer("do_ini", 0)) {
        char choice[ADS_PATH_SIZE + 8];
        text_set(choice, result->resval.rstring);
        remember_file(choice);
    }
    return status;
}
