// drawing_files.cpp: drawings from and to files: OPEN, NEW, QSAVE, SAVE, SAVEAS, CLOSE, QUIT, END. Each
// drawing opens in a document of its own.
#include <algorithm>
#include <filesystem>

#include "host/commandline/closing.h"
#include "host/commandline/commands.h"
#include "host/commandline/edit_commands.h"
#include "host/commandline/open_drawings.h"
#include "host/core/console.h"
#include "host/core/document.h"
#include "host/core/module.h"
#include "host/core/reactors.h"
#include "host/core/session.h"
#include "host/core/text.h"
#include "host/database/dxf.h"
#include "host/database/sysvars.h"
#include "host/files/paths.h"
#include "hostapi/dbobjects.h"

namespace host::commandline
{

namespace
{

struct format_word {
    std::string_view words;
    std::string_view version; // as in the settings of a run
};

constexpr format_word FORMATS[] = {
    {"R12 LT2", "R12"},
    {"R13 R14 LT95 LT97 LT98 2000 LT2000 2004 LT2004 DXF", "R2000"},
    {"2007 LT2007 2010 LT2010 2013 LT2013 2018 LT2018", "R2007"},
};

bool quit = false;

db::dxf_version version_of(std::string_view name)
{
    return name == "R12"     ? db::dxf_version::r12
           : name == "R2007" ? db::dxf_version::r2007
                             : db::dxf_version::r2000;
}

bool write_drawing(document& doc, std::string_view path, std::string_view version, std::string* error)
{
    const std::string file = drawing_path(path);
    db::database& db = db::database_of(doc);
    db::dxf_error failure;
    if (!db::write_dxf(db, file, version_of(version), true, &failure)) {
        *error = failure.text();
        note_file_failure();
        return false;
    }
    db.set_modified(false);
    return true;
}

// Saves for a command.
void save_for_command(command_io& io, std::string_view path, std::string_view version)
{
    std::string error;
    if (!save_and_tell(io.doc(), path, version, &error))
        throw command_failed{error};
}

// A drawing is not written over another one without a word.
task<bool> may_write(command_io& io, std::string path)
{
    constexpr int NO_QUESTION = 2; // EXPERT
    if (!existing_path(drawing_path(path)) || db::int_variable(io.doc(), "EXPERT") >= NO_QUESTION)
        co_return true;
    question q(want::key_word,
               "\nA drawing with this name already exists.\nDo you want to replace it? [Yes/No] <N>: ");
    q.keys("Yes No");
    const answer given = co_await io.ask(std::move(q));
    co_return given.ok() && given.text == "Yes";
}

std::string_view format_of(std::string_view word)
{
    for (const format_word& format : FORMATS)
        if (const std::vector<std::string_view> words = split_blanks(format.words);
            std::any_of(words.begin(), words.end(), [&](std::string_view w) { return same_text(w, word); }))
            return format.version;
    return {};
}

std::string all_formats()
{
    std::string out;
    for (const format_word& format : FORMATS)
        out += std::string(format.words) + " ";
    return out;
}

// Format and path; a path in place of the format is taken as the path.
task<> ask_and_save(command_io& io, bool with_format, bool takes_name)
{
    std::string version = run_settings().dxf_version, path;
    if (with_format) {
        question q(want::text, "\nEnter file format [R12/R14/2000/2004/2007/2010/2013/2018] <2000>: ");
        q.keys(all_formats());
        const answer format = co_await io.ask(std::move(q));
        if (format.status == RTKWORD)
            version = format_of(format.text);
        else if (format.ok())
            path = format.text;
    }
    while (path.empty()) {
        const std::string now = shown_name(io.doc());
        const answer given = co_await io.ask(ask_text(with_default("\nSave drawing as", now)));
        path = given.none() ? now : given.text;
    }
    const bool may = co_await may_write(io, path);
    if (!may)
        co_return;
    std::string error;
    const bool saved = takes_name || io.doc().file.empty() ? save_under_name(io.doc(), path, version, &error)
                                                           : save_and_tell(io.doc(), path, version, &error);
    if (!saved)
        throw command_failed{error};
}

task<bool> may_discard(command_io& io)
{
    if (!io.data().modified())
        co_return true;
    question q(want::key_word, "\nReally want to discard all changes to drawing? [Yes/No] <N>: ");
    q.keys("Yes No");
    const answer given = co_await io.ask(std::move(q));
    co_return given.ok() && given.text == "Yes";
}

} // namespace

bool quit_requested()
{
    return quit;
}

void request_quit(bool on)
{
    quit = on;
}

bool save_and_tell(document& doc, std::string_view path, std::string_view version, std::string* error)
{
    if (!write_drawing(doc, path, version, error))
        return false;
    const while_current here(doc); // reactors look at the drawing that was saved
    // SAVE may have written a copy beside it, under another name.
    const bool is_own_file = path == doc.file || drawing_path(path) == doc.file;
    tell_saved(acdbCurDwg(), is_own_file ? shown_name(doc) : db::drawing_path_for_programs(path));
    return true;
}

bool open_drawing(document& doc, std::string_view path, std::string* error)
{
    const std::string file = drawing_to_read(path);
    db::dxf_error failure;
    std::unique_ptr<db::database> read = db::read_dxf(file, doc, &failure);
    if (!read) {
        *error = failure.text();
        note_file_failure();
        return false;
    }
    db::replace_database(doc, std::move(read));
    doc.file = file;
    doc.named = path;
    db::database_of(doc).set_modified(false);
    return true;
}

bool save_drawing(document& doc, std::string_view path, std::string* error)
{
    return write_drawing(doc, path, run_settings().dxf_version, error);
}

task<> open_command(command_io& io)
{
    const answer given = co_await io.ask(ask_text("\nEnter name of drawing to open: "));
    if (given.none())
        co_return;
    std::string error;
    if (!open_in_front(given.text, &error))
        throw command_failed{error};
}

task<> new_command(command_io& io)
{
    const answer given = co_await io.ask(ask_text("\nEnter template file name or [. (for none)] <.>: "));
    std::string error;
    if (given.none() || given.text == ".")
        new_drawing();
    else if (!new_from_template(given.text, &error))
        throw command_failed{error};
}

task<> qsave_command(command_io& io)
{
    if (io.doc().file.empty()) {
        co_await ask_and_save(io, false, true);
        co_return;
    }
    save_for_command(io, io.doc().file, run_settings().dxf_version);
}

task<> save_command(command_io& io)
{
    co_await ask_and_save(io, false, false);
}

task<> saveas_command(command_io& io)
{
    co_await ask_and_save(io, true, true);
}

task<> close_command(command_io& io)
{
    const bool may = co_await may_discard(io);
    if (!may)
        co_return;
    io.afterwards = [number = io.doc().number()] {
        if (document* doc = document_of_number(number))
            close_when_idle(*doc);
    };
}

task<> quit_command(command_io& io)
{
    const bool may = co_await may_discard(io);
    if (may)
        quit = true;
}

task<> end_command(command_io& io)
{
    co_await qsave_command(io);
    quit = true;
}

} // namespace host::commandline
