#include "interchange/file_request.h"

#include <cstring>

#include "common/directories.h"
#include "common/key_word.h"
#include "common/lisp_vars.h"
#include "common/paths.h"
#include "interchange/polyline_file.h"
#include "settings/file_pick.h"

namespace
{

const char* text_of(const resbuf* node)
{
    return node && node->restype == RTSTR && node->resval.rstring ? node->resval.rstring : "";
}

} // namespace

void take_directories(const resbuf* args, char (&default_path)[ADS_PATH_SIZE])
{
    const char* first = text_of(args);
    const char* second = text_of(args ? args->rbnext : nullptr);
    text_set(default_path, first);
    // Small files are put behind data_dir as it is, so a file's own name stays out of it.
    if (std::strpbrk(first, "\\/"))
        path_directory(first, data_dir);
    if (second[0] != '\0')
        text_set(lsp_dir, second);
    else if (lsp_dir[0] == '\0')
        lisp_get_text(lsp_dir, "lspdir$");
}

int ask_polyline_format(int* format)
{
    char word[ADS_TEXT_SIZE];
    const int status =
        ask_key_word("Microstation Zentrik Dtm", "\nPolyline file format [<Zentrik>/DTM/MicroStation]? ", word);
    if (status == RTCAN)
        return RTCAN;
    *format = POLYLINE_FORMAT_OWN;
    if (std::strcmp(word, "Microstation") == 0)
        *format = POLYLINE_FORMAT_MICROSTATION;
    else if (std::strcmp(word, "Dtm") == 0)
        *format = POLYLINE_FORMAT_DTM;
    return RTNORM;
}

int ask_polyline_path(const pick_texts& texts, char (&default_path)[ADS_PATH_SIZE], int flags,
                      char (&path)[ADS_PATH_SIZE])
{
    resbuf picked{};
    const int status = zent_get_file(texts.title, default_path, texts.extensions, flags, &picked);
    if (status == RTNORM)
        text_set(path, text_of(&picked));
    if (picked.restype == RTSTR)
        acad_free(picked.resval.rstring);
    return status;
}
